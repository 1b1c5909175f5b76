#include "support/BenchProject.h"

#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "devices/prog/TDevProgExec.h"
#include "devices/tools/TDevToolsExec.h"
#include "link/wire/TSerialPort.h"
#include "settings/TAppData.h"
#include "support/ScriptedPeer.h"
#include "support/namedTexts.h"

#include <memory>

namespace {

class ChipExec : public IDeviceExec
{
public:
    using IDeviceExec::IDeviceExec;

    bool execute(TSerialPort*, bool&, int&, int&) override { return false; }

    bool readChipId(TSerialPort* port, QString& id) override
    {
        QByteArray payload;
        if (!port->exchange(3, payload)) {
            m_errorText = port->errorString();
            return false;
        }
        id = QString::fromLatin1(payload);
        m_errorText = "unreadable";
        return id != "?";
    }
};

/// The programmer's description, blanks standing for line ends.
constexpr char model[] =
    "[Main] Interface=4660 [Port] TimeOut=10000 [Protocol] MAX_DATA=64 "
    "[PinType] I=true L=true H=true [Pins] 1=1,CS 2=1,SO 3=0,GND 4=1,SI "
    "[Reset] MIN=10 MAX=1000 DEF=-400 "
    "[Vcc] MIN=1.8 MAX=5 DEF=3.3 [Vpp] MIN=9 MAX=26 DEF=12 "
    "[Icc] MIN=1 MAX=200 DEF=50 [Ipp] MIN=1 MAX=70 DEF=20.5 "
    "[Frequency] FQ_MIN=1000 FQ_MAX=8000000 FQ_DEF=1000000 DT_MIN=10 DT_MAX=90 DT_DEF=50 "
    "[CHIP] CLK_MIN=1000 CLK_MAX=20000000 CLK_DEF=1000000 ";

} // namespace

TData textParams(const QString& text)
{
    TData data;
    for (const QString& word : text.split(' ', Qt::SkipEmptyParts)) {
        const QString key = word.section('=', 0, 0);
        QString value = word.section('=', 1).replace('~', ' ');
        if (value.startsWith("0x"))
            value = QString::number(value.toLongLong(nullptr, 16));
        if (key == key::erase_blocks || key.endsWith("_cfg"))
            data.insert(key, value.split(',', Qt::SkipEmptyParts));
        else
            data.insert(key, value);
    }
    return data;
}

QByteArray BenchChip::deviceParamBlock(const TData&) const
{
    return QByteArray::fromHex(deviceValue("block").toByteArray());
}

IDeviceExec* BenchChip::createExec(const TData& data) const
{
    return new ChipExec(data);
}

BenchProject::BenchProject()
{
    registerMetaTypes();
    loadNamedTexts();
    appData().PathDevices = m_dir.path();
    appData().PathProgs = m_dir.path();
    appData().ProgDefault = 0;
    setPort("no-such-port");
    setProg({});
    project().setCatalogue(this);
    project().setFile(m_dir.file("bench.prj"));
    addCfg("First");
}

BenchProject::~BenchProject()
{
    project().reset();
    project().setCatalogue(&deviceList());
    appData().progNames.clear();
    appData().progTypes.clear();
}

void BenchProject::setPort(const QString& port)
{
    appData().progNames.append("bench", true, port, "Model");
}

void BenchProject::setProg(const QByteArray& lines)
{
    static int version = 0;
    // A settings file that changes within its time stamp is not read again: each gets a name of its own.
    const QString name = QString("model%1.cfg").arg(++version);
    m_dir.write(name, QByteArray(model).replace(' ', '\n') + lines);
    appData().progTypes.append("Model", name);
}

int BenchProject::addCfg(const QString& name)
{
    m_cfg = project().addCfg(name, QString(), -1);
    return m_cfg;
}

int BenchProject::add(const QString& text, const TData& params)
{
    TData data = textParams(text.section(' ', 1));
    for (auto it = params.begin(); it != params.end(); ++it)
        data[it.key()] = it.value();
    data[key::id_cfg] = m_cfg;
    data[key::status] = true;
    data[key::cmd] = text.section(' ', 0, 0);
    const int id = project().addCmd(data, -1);
    project().bindAll();
    return id;
}

TData BenchProject::data(int id_cmd) const
{
    return project().cmdById(id_cmd)->toData();
}

IDevice* BenchProject::create(const QString& name, const QString& file)
{
    return file.isEmpty() ? deviceList().create(name, file) : new BenchChip(name, m_chip);
}

BenchRun runCommand(const IDevice& device, int id_cmd, TSerialPort& port, const PercentHook& hook)
{
    BenchRun run;
    const TDataCmd* command = project().cmdById(id_cmd);
    run.cur_cfg = command->cfgId();
    run.cur_cmd = id_cmd;
    const std::unique_ptr<IDeviceExec> exec(device.createExec(command->toData()));
    QObject::connect(exec.get(), &IDeviceExec::signalEventText, [&run](TCodeExec code, const QString& text) {
        run.events.append(QString("%1:%2").arg(QString::number(code), text));
    });
    QObject::connect(exec.get(), &IDeviceExec::signalEventProc, [&](int percent) {
        run.percents.append(percent);
        if (hook)
            hook(*exec, percent);
    });
    const auto noteStart = [&run](int id) { run.events.append(QString("start:%1").arg(id)); };
    if (const auto* tools = qobject_cast<TDevToolsExec*>(exec.get()))
        QObject::connect(tools, &TDevToolsExec::signalExecuteFromCmd, noteStart);
    if (const auto* prog = qobject_cast<TDevProgExec*>(exec.get()))
        QObject::connect(prog, &TDevProgExec::signalExecuteFromCmd, noteStart);
    if (command->cmd() == "readChipId") {
        QString id;
        run.ok = exec->readChipId(&port, id);
        project().cmdById(id_cmd)->setParam({{key::data, id}});
    } else {
        run.ok = exec->execute(&port, run.exit, run.cur_cfg, run.cur_cmd);
    }
    run.errorText = exec->errorText();
    run.isOpen = port.isOpen();
    return run;
}

BenchRun runCommands(const IDevice& device, const QList<int>& ids, ScriptedPeer& peer,
                     const PercentHook& hook)
{
    peer.start();
    TSerialPort port;
    BenchRun run;
    run.ok = port.open(peer.path(), QIODevice::ReadWrite);
    port.setTimeout(peer.hasSilence() ? 300 : 10000);
    port.setMaxData(65535);
    for (int i = 0; i < ids.size() && run.ok; ++i)
        run = runCommand(device, ids.at(i), port, hook);
    run.errorText.prepend(peer.finish());
    return run;
}
