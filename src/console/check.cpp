#include "console/check.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/keys.h"
#include "console/print.h"
#include "core/files/TCtrlProject.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/shared/deviceWarnings.h"

#include <QHash>

namespace {

/// A command as it is shown.
struct Row
{
    int pos;
    QString config;
    QString cmd;
    bool status;
    bool validDev;
    bool validParam;
    QString title;
    QString params;
};

Row rowOf(const TDataCmd& command, int pos, const QString& config)
{
    Row row{pos, config, command.cmd(), command.status(), command.validDev(), command.validParam(), {}, {}};
    const TData data = command.toData();
    if (const IDevice* device = command.device()) {
        row.title = device->commandTitle(data);
        row.params = device->paramsText(data, nullptr);
    } else {
        row.title = cmdCode().name(row.cmd);
    }
    return row;
}

QByteArray textLine(const Row& row)
{
    const char* verdict = !row.validDev ? "device" : !row.validParam ? "params" : "ok";
    QStringList fields{QString::number(row.pos), row.config, row.cmd,
                       QLatin1String(verdict),   row.title,  row.params};
    for (QString& field : fields)
        field = printable(field);
    return (fields.join(QLatin1Char('\t')) + QLatin1Char('\n')).toUtf8();
}

QByteArray jsonObject(const Row& row)
{
    return jsonLine({{"pos", row.pos},
                     {"config", row.config},
                     {"cmd", row.cmd},
                     {"status", row.status},
                     {"valid_dev", row.validDev},
                     {"valid_param", row.validParam},
                     {"title", row.title},
                     {"params", row.params}});
}

QHash<int, QString> configNames()
{
    QHash<int, QString> names;
    for (const TDataCfg* config : project().cfgList())
        names.insert(config->id(), config->name());
    return names;
}

/// What the description of a chosen chip warns of.
void printWarnings(const TDataCmd& command)
{
    const IDevice* family = command.family();
    if (!family || !command.status() || command.cmd() != cmd::set_device)
        return;
    for (const QString& line : deviceWarnings(family->deviceData()))
        printError(langText(Text::DeviceWarning).arg(printable(family->name()), printable(line)));
}

} // namespace

int checkProject(const QString& file, bool json)
{
    TCtrlProject control;
    if (control.open(file, project()) != 0) {
        printError(QStringLiteral("%1: %2").arg(file, control.errorText()));
        return 2;
    }
    const QHash<int, QString> names = configNames();
    // A JSON file that is no project: no lines and no fault would look like a good one.
    if (names.isEmpty()) {
        printError(QStringLiteral("%1 has no configuration").arg(file));
        return 2;
    }
    QByteArray lines;
    bool valid = true;
    int pos = 0;
    for (const TDataCmd* command : project().cmdList()) {
        const Row row = rowOf(*command, pos++, names.value(command->cfgId()));
        lines += json ? jsonObject(row) : textLine(row);
        if (row.status && !(row.validDev && row.validParam))
            valid = false;
        printWarnings(*command);
    }
    printOut(lines);
    return valid ? 0 : 1;
}
