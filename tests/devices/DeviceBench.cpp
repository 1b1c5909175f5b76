#include "DeviceBench.h"

#include "core/IDevice.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/IDeviceExec.h"
#include "link/TProg.h"
#include "link/TSerialPort.h"

namespace {

QByteArray frameOf(const QString& text)
{
    const QByteArray bytes = QByteArray::fromHex(text.toLatin1());
    return peerFrame(quint8(bytes.at(0)), bytes.mid(1));
}

QString textOf(const QByteArray& frame)
{
    const QByteArray payload = frame.mid(4, frame.size() - 5);
    return QString::fromLatin1(frame.mid(1, 1).toHex() + ' ' + payload.toHex()).toUpper().trimmed();
}

} // namespace

DeviceBench::DeviceBench(IDevice* device, int maxData, const QByteArray& moreProg)
    : m_dir(TestDir::Empty)
    , m_device(device)
{
    const QByteArray text = "[Protocol]\nMAX_DATA=" + QByteArray::number(maxData) + "\n" + moreProg + "\n";
    m_prog = std::make_unique<TProg>(m_dir.write(QStringLiteral("bench.cfg"), text));
    project().clear();
    project().fromData(
        {{key::prj_file, m_dir.file(QStringLiteral("bench.prj"))}, {key::work_path, m_dir.path()}});
    m_cfg = project().addCfg(QStringLiteral("Config"), {}, -1);
    loadNumberedTexts(m_dir);
}

DeviceBench::~DeviceBench()
{
    project().clear();
}

TData DeviceBench::command(const QString& key, const TData& param)
{
    const int id = project().addCmd({{key::id_cfg, m_cfg}, {key::status, true}, {key::cmd, key}}, -1);
    TDataCmd* command = project().cmdById(id);
    command->bind(m_device.get(), m_device.get(), m_prog.get(), true);
    TData data = command->toData();
    m_device->setDefaultParams(data);
    for (auto it = param.begin(); it != param.end(); ++it)
        data.insert(it.key(), it.value());
    command->setParam(data);
    return command->toData();
}

DeviceBench::Result DeviceBench::play(const QList<TData>& commands, const QStringList& script)
{
    ScriptedPeer peer;
    for (const QString& line : script) {
        const QStringList sides = line.split(QLatin1Char('>'));
        const QByteArray request = frameOf(sides.at(0));
        const QByteArray reply = QByteArray::fromHex(sides.value(1).toLatin1());
        peer.expect(request, sides.size() < 2 ? QByteArray() : peerFrame(quint8(request.at(1)), reply));
    }
    return run(commands, peer);
}

DeviceBench::Result DeviceBench::runWith(const TData& command, const Chip& chip)
{
    ScriptedPeer peer;
    peer.otherwise([&chip](const QByteArray& request) {
        QByteArray reply;
        if (!chip(quint8(request.at(1)), request.mid(4, request.size() - 5), reply))
            return peerFrame(0xFF, QByteArray::fromHex("0300"));
        return peerFrame(quint8(request.at(1)), reply);
    });
    return run({command}, peer);
}

DeviceBench::Result DeviceBench::run(const QList<TData>& commands, ScriptedPeer& peer)
{
    Result result;
    peer.start();
    TSerialPort port;
    port.setTimeout(300);
    port.setMaxData(65535);
    if (!port.open(peer.path(), QIODevice::ReadWrite)) {
        result.error = port.errorString();
        return result;
    }
    for (const TData& command : commands) {
        result.ok = runOne(command, port, result);
        if (!result.ok)
            break;
    }
    port.close();
    result.error.prepend(peer.finish());
    const QList<QByteArray> requests = peer.requests();
    for (const QByteArray& request : requests)
        result.requests.append(textOf(request));
    return result;
}

bool DeviceBench::runOne(const TData& command, TSerialPort& port, Result& result)
{
    const std::unique_ptr<IDeviceExec> exec(m_device->createExec(command));
    QObject::connect(exec.get(), &IDeviceExec::signalEventProc, exec.get(), [&](int percent) {
        result.percents.append(percent);
        if (onPercent)
            onPercent(*exec, percent);
    });
    QObject::connect(exec.get(), &IDeviceExec::signalEventText, exec.get(),
                     [&](TCodeExec code, const QString& text) {
                         if (code == ceWork)
                             result.works.append(text);
                     });
    bool exitRun = false;
    int cfg = m_cfg;
    int cmd = -1;
    const bool ok = readsId ? exec->readChipId(&port, readId) : exec->execute(&port, exitRun, cfg, cmd);
    result.error = exec->errorText();
    result.data = project().cmdById(command.value(key::id_cmd).toInt())->param(key::data).toString();
    return ok;
}

void loadNumberedTexts(const TestDir& dir)
{
    QByteArray table;
    for (int id = 0; id < 430; ++id)
        table += "@" + QByteArray::number(id) + (id == 417 || id == 419 || id == 427 ? " %1\n" : "\n");
    lang().load(dir.write(QStringLiteral("bench.lng"), table));
}
