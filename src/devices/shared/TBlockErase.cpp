#include "devices/shared/TBlockErase.h"

bool TBlockErase::fromText(const QString& text, TBlockErase& erase)
{
    const QStringList fields = text.split(QLatin1Char('|'));
    if (fields.size() != 2)
        return false;
    bool isNumber = false;
    const uint op = fields.at(0).toUInt(&isNumber, 16);
    if (!isNumber || op > 0xFF)
        return false;
    erase.op = quint8(op);
    erase.bytes = fields.at(1).toLongLong();
    return true;
}

QList<TBlockErase> blockErases(const QStringList& texts)
{
    QList<TBlockErase> erases;
    for (const QString& text : texts) {
        TBlockErase erase;
        if (TBlockErase::fromText(text, erase))
            erases.append(erase);
    }
    return erases;
}
