#include "console/list.h"

#include "base/keys.h"
#include "console/print.h"
#include "core/model/shared_settings.h"
#include "devices/TDeviceList.h"
#include "devices/shared/description.h"
#include "formats/crc/createCRC.h"
#include "link/lists/AutoList.h"
#include "link/lists/line_rules.h"
#include "settings/TAppData.h"

#include <QSerialPortInfo>

#include <algorithm>

namespace {

using Rows = QList<QStringList>;

Rows chips()
{
    const QHash<QString, QString> files = TDeviceList::deviceFiles();
    QStringList names = files.keys();
    std::sort(names.begin(), names.end());
    Rows rows;
    for (const QString& name : names) {
        const TData data = readDescription(deviceFolderFile(devicesFolder(), files[name]));
        rows.append({name, data.value(key::gui_type).toString(), files[name]});
    }
    return rows;
}

Rows oneColumn(const QStringList& texts)
{
    Rows rows;
    for (const QString& text : texts)
        rows.append({text});
    return rows;
}

Rows families()
{
    return oneColumn(autoNames(devicesFolder()));
}

Rows checksums()
{
    return oneColumn(crcNames());
}

Rows programmers()
{
    const TProgName& names = appData().progNames;
    Rows rows;
    for (int i = 0; i < names.count(); ++i) {
        const TProgRecord record = names.record(i);
        rows.append({names.name(i), record.port, record.type,
                     record.enabled ? QStringLiteral("1") : QStringLiteral("0")});
    }
    return rows;
}

Rows ports()
{
    Rows rows;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts())
        rows.append({port.portName(), port.description()});
    return rows;
}

struct List
{
    const char* what;
    Rows (*rows)();
};

constexpr List lists[] = {{"chips", chips},
                          {"families", families},
                          {"programmers", programmers},
                          {"checksums", checksums},
                          {"ports", ports}};

} // namespace

void printList(const QString& what)
{
    for (const List& list : lists) {
        if (what != QLatin1String(list.what))
            continue;
        QByteArray lines;
        for (QStringList row : list.rows()) {
            for (QString& field : row)
                field = printable(field);
            lines += (row.join(QLatin1Char('\t')) + QLatin1Char('\n')).toUtf8();
        }
        printOut(lines);
    }
}
