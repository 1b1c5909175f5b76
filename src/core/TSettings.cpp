#include "core/TSettings.h"

namespace {

constexpr uint rgbMask = 0xFFFFFF;

} // namespace

TSettings::TSettings(const QString& file)
    : QSettings(file, QSettings::IniFormat)
{
    setIniCodec("UTF-8");
}

TSettings::~TSettings() = default;

bool TSettings::readBool(const QString& key, bool def) const
{
    return value(key, def).toBool();
}

int TSettings::readInt(const QString& key, int def) const
{
    return value(key, def).toInt();
}

QString TSettings::readString(const QString& key, const QString& def) const
{
    return value(key, def).toString();
}

QColor TSettings::readColor(const QString& key, const QColor& def) const
{
    // Wider than an int, so that a number with an alpha part keeps its low bits instead of becoming 0.
    const qlonglong number = value(key, def.rgb() & rgbMask).toLongLong();
    return QColor(static_cast<QRgb>(number & rgbMask));
}

QList<int> TSettings::readSizes(const QString& key, const QList<int>& def) const
{
    const QStringList texts = readList(key);
    if (texts.size() < 2)
        return def;
    QList<int> sizes;
    for (const QString& text : texts)
        sizes.append(text.toInt());
    return sizes;
}

QByteArray TSettings::readBytes(const QString& key) const
{
    return QByteArray::fromHex(readString(key, {}).toLatin1());
}

QStringList TSettings::readList(const QString& key) const
{
    return value(key).toStringList();
}

QKeySequence TSettings::readKeySequence(const QString& key) const
{
    // An unquoted comma in the file makes a list: "Ctrl+," and "Ctrl+K, Ctrl+C" come back as two items.
    const QString text = readList(key).join(QLatin1String(", ")).trimmed();
    return QKeySequence::fromString(text, QKeySequence::PortableText);
}

void TSettings::write(const QString& key, bool value)
{
    setValue(key, value);
}

void TSettings::write(const QString& key, int value)
{
    setValue(key, value);
}

void TSettings::write(const QString& key, const QString& value)
{
    setValue(key, value);
}

void TSettings::write(const QString& key, const QColor& value)
{
    setValue(key, static_cast<int>(value.rgb() & rgbMask));
}

void TSettings::write(const QString& key, const QList<int>& value)
{
    QStringList texts;
    for (int size : value)
        texts.append(QString::number(size));
    setValue(key, texts);
}

void TSettings::write(const QString& key, const QByteArray& value)
{
    setValue(key, QString::fromLatin1(value.toHex()));
}

void TSettings::write(const QString& key, const QStringList& value)
{
    setValue(key, value);
}
