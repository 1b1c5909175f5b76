#include "devices/tools/TDevTools.h"

#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "core/model/references.h"
#include "devices/tools/TDevToolsExec.h"
#include "misc/TNormCmdParam.h"
#include "misc/TParamReader.h"
#include "settings/TAppData.h"

namespace {

constexpr TParamReader param("devices/TDevTools");

bool isInt(const TData& data, const QString& key)
{
    qint64 value = 0;
    return readInt(param(data, key), value);
}

bool isCount(const TData& data, const QString& key)
{
    qint64 value = 0;
    return readInt(param(data, key), value) && value >= 0;
}

QString number(const TData& data, const QString& key)
{
    return QString::number(param(data, key).toLongLong());
}

void defaultPause(TData&) {}

bool checkPause(const TData&)
{
    return true;
}

QString textPause(const TData&)
{
    return {};
}

// No parameters either.
constexpr auto defaultStop = defaultPause;
constexpr auto checkStop = checkPause;
constexpr auto textStop = textPause;

void defaultProcess(TData& data)
{
    data[key::file] = QString();
    data[key::must_succeed] = 0;
}

bool checkProcess(const TData& data)
{
    // Older projects do not have the flag.
    return isFlag(data.value(key::must_succeed)) && !param(data, key::file).toString().isEmpty();
}

QString textProcess(const TData& data)
{
    return param(data, key::file).toString();
}

void defaultJamp(TData& data)
{
    const QList<TDataCmd*> commands = project().cmdsOfCfg(param(data, key::id_cfg).toInt());
    data[key::to_cmd] = commands.isEmpty() ? -1 : commands.first()->id();
}

bool checkJamp(const TData& data)
{
    return project().cmdById(referenceId(param(data, key::to_cmd))) != nullptr;
}

QString textJamp(const TData& data)
{
    const TDataCmd* target = project().cmdById(referenceId(param(data, key::to_cmd)));
    if (!target)
        return {};
    return QStringLiteral("\"%1\".\"%2\"")
        .arg(project().cfgName(target->cfgId()), cmdCode().name(target->cmd()));
}

void defaultCounter(TData& data)
{
    data[key::value] = 0;
    data[key::limit] = 0;
    data[key::delta] = 1;
}

bool checkCounter(const TData& data)
{
    return isCount(data, key::value) && isCount(data, key::limit) && isInt(data, key::delta);
}

QString textCounter(const TData& data)
{
    return QStringLiteral("Value: %1, Limit: %2, Delta: %3")
        .arg(number(data, key::value), number(data, key::limit), number(data, key::delta));
}

void defaultDelay(TData& data)
{
    data[key::value] = 100;
}

bool checkDelay(const TData& data)
{
    return isCount(data, key::value);
}

QString textDelay(const TData& data)
{
    return QStringLiteral("%1 ms").arg(number(data, key::value));
}

void defaultExecute(TData& data)
{
    data[key::cfg] = -1;
}

bool checkExecute(const TData& data)
{
    return project().cfgById(referenceId(param(data, key::cfg))) != nullptr;
}

QString textExecute(const TData& data)
{
    return project().cfgName(referenceId(param(data, key::cfg)));
}

void defaultSetProg(TData& data)
{
    project().locked([&data] { data[key::prog] = appData().progNames.name(appData().ProgDefault); });
    data[key::alt_enabled] = false;
    data[key::alt_port] = QString();
}

bool checkSetProg(const TData& data)
{
    return project().binding(param(data, key::id_cmd).toInt()).prog != nullptr;
}

QString textSetProg(const TData& data)
{
    QString alias = param(data, key::prog).toString();
    bool known = false;
    TProgRecord record;
    // The lists may be changed by the settings while a run asks.
    project().locked([&] {
        known = appData().progNames.contains(alias);
        record = appData().progNames.record(alias);
    });
    if (!known)
        return alias;
    const QString port =
        param(data, key::alt_enabled).toBool() ? param(data, key::alt_port).toString() : record.port;
    return QStringLiteral("%1: %2, %3").arg(alias, port, record.type);
}

void defaultCalcCRC(TData& data)
{
    data[key::crc_name] = QStringLiteral("CRC32");
    data[key::file] = QString();
    data[key::format] = QStringLiteral("bin");
    data[key::addr] = qint64(0);
    data[key::count] = qint64(0);
    data[key::fill] = 255;
}

bool checkCalcCRC(const TData& data)
{
    return areNumbers(data, key::addr, key::count) && isInt(data, key::fill);
}

QString textCalcCRC(const TData& data)
{
    return QStringLiteral("%1: %2").arg(param(data, key::crc_name).toString(),
                                        param(data, key::file).toString());
}

} // namespace

const TDevTools::Row TDevTools::rowTable[] = {
#define VM_TOOL(word, Name, title, reference) {cmd::word, default##Name, check##Name, text##Name},
#include "base/tools.def"
};

TDevTools::TDevTools(const QString& name, const TData& data)
    : TPseudoDevice(name, data, rowTable, TCmdCode::toolsKeys())
{
}

IDeviceExec* TDevTools::createExec(const TData& data) const
{
    return new TDevToolsExec(data);
}
