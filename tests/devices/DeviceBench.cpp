#include "DeviceBench.h"

#include "core/IDevice.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/IDeviceExec.h"
#include "devices/TDev24.h"
#include "devices/TDev25.h"
#include "devices/TDev93C.h"
#include "devices/TDevAVR8.h"
#include "link/TProg.h"
#include "link/TSerialPort.h"

#include <QRegularExpression>

namespace {

template <class Device> IDevice* make(const TData& data)
{
    return new Device(QStringLiteral("chip"), data);
}

/// The chips: a W25Q64, a 24C16, a Microwire part, and an AVR of the size of an ATmega2560 with pacing
/// bytes that tell the commands apart.
const struct
{
    const char* family;
    IDevice* (*make)(const TData& data);
    const char* description;
} chips[] = {
    {"dev25", make<TDev25>,
     "signature=EF4017 addr_begin=0 size=0x800000 page_size=256 erase=D8|65536 status_reg_def=000260 "
     "erase_blocks=20|4096,52|32768,bad,D8|65536,21|4096 status_reg_cfg=frm+,frm- security_reg_size=768 "
     "sfdp_reg_size=256 prg_section=BUS cfg_hw=421"},
    {"dev24", make<TDev24>,
     "addr_begin=0 size=0x800 page_size=16 addr_size=1 addr_mask=5 delay=261 cfg_hw=7 prg_section=BUS"},
    {"dev93c", make<TDev93C>, "addr_begin=0 size=128 prg_section=BUS"},
    {"avr", make<TDevAVR8_SPI>,
     "signature=1E9801 cfg_cmd_list=2 flash_size=0x40000 flash_page_size=256 eeprom_size=4096 "
     "alg_flash_read=1 "
     "alg_flash_write=2 alg_fuse_read=1 alg_fuse_write=2 alg_lock_read=1 alg_lock_write=1 fuse_def=6299FF "
     "lock_def=FF osccal_def=0000 osccal_cfg=frm+,frm- flash_delay=261 eeprom_polling=1 erase_delay=10 "
     "fuse_polling=1 lock_delay=11 prg_section=BUS"},
};

const QByteArray progLines = "[BUS]\nCLK_LIST=true\nCLK_MIN=1\nCLK_MAX=16000000\nCLK_DEF=8000000\n"
                             "CLKLV_8000000=66051\n[Reset]\nMIN=10\nMAX=500\nDEF=-300\n[Protocol]\nMAX_DATA=";

QByteArray bytesOf(QString text)
{
    static const QRegularExpression repeated(QStringLiteral("([0-9A-F]{2})\\*(\\d+)"));
    for (auto match = repeated.match(text); match.hasMatch(); match = repeated.match(text))
        text.replace(match.capturedStart(), match.capturedLength(),
                     match.captured(1).repeated(match.captured(2).toInt()));
    return QByteArray::fromHex(text.toLatin1());
}

QByteArray numberedTexts()
{
    QByteArray table;
    for (int id = 0; id < 430; ++id)
        table += "@" + QByteArray::number(id) + (id == 417 || id == 419 || id == 427 ? " %1\n" : "\n");
    return table;
}

} // namespace

TData benchParams(const QString& text)
{
    TData data;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QString key = word.section(QLatin1Char('='), 0, 0);
        QString value = word.section(QLatin1Char('='), 1).replace(QLatin1Char('~'), QLatin1Char(' '));
        if (value.startsWith(QLatin1String("0x")))
            value = QString::number(value.toLongLong(nullptr, 16));
        if (key == key::erase_blocks || key.endsWith(QLatin1String("_cfg")))
            data.insert(key, value.split(QLatin1Char(','), Qt::SkipEmptyParts));
        else
            data.insert(key, value);
    }
    return data;
}

DeviceBench::DeviceBench(const QString& chip)
    : m_dir(TestDir::Empty)
{
    const TData changes = benchParams(chip.section(QLatin1Char(' '), 1));
    for (const auto& row : chips) {
        if (chip.section(QLatin1Char(' '), 0, 0) != QLatin1String(row.family))
            continue;
        TData data = benchParams(QString::fromLatin1(row.description));
        for (auto it = changes.begin(); it != changes.end(); ++it)
            data.insert(it.key(), it.value());
        m_device.reset(row.make(data));
    }
    const QString maxData = changes.value(QStringLiteral("MAX_DATA"), 64).toString();
    m_prog = std::make_unique<TProg>(
        m_dir.write(QStringLiteral("bench.cfg"), progLines + maxData.toLatin1() + '\n'));
    project().clear();
    project().fromData(
        {{key::prj_file, m_dir.file(QStringLiteral("bench.prj"))}, {key::work_path, m_dir.path()}});
    m_cfg = project().addCfg(QStringLiteral("Config"), {}, -1);
    lang().load(m_dir.write(QStringLiteral("bench.lng"), numberedTexts()));
}

DeviceBench::~DeviceBench()
{
    project().clear();
}

TData DeviceBench::command(const QString& text)
{
    const QString word = text.section(QLatin1Char(' '), 0, 0);
    const int id = project().addCmd({{key::id_cfg, m_cfg}, {key::status, true}, {key::cmd, word}}, -1);
    TDataCmd* command = project().cmdById(id);
    command->bind(m_device.get(), m_device.get(), m_prog.get(), true);
    TData data = command->toData();
    m_device->setDefaultParams(data);
    command->setParam(data);
    command->setParam(benchParams(text.section(QLatin1Char(' '), 1)));
    return command->toData();
}

DeviceBench::Result DeviceBench::play(const QStringList& commands, const QString& script)
{
    ScriptedPeer peer;
    for (const QString& line : script.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QByteArray request = bytesOf(line.section(QLatin1Char('>'), 0, 0));
        const QByteArray reply = peerFrame(quint8(request.at(0)), bytesOf(line.section(QLatin1Char('>'), 1)));
        peer.expect(peerFrame(quint8(request.at(0)), request.mid(1)),
                    line.contains(QLatin1Char('>')) ? reply : QByteArray());
    }
    return run(commands, peer);
}

DeviceBench::Result DeviceBench::runWith(const QString& command, const Chip& chip)
{
    ScriptedPeer peer;
    peer.otherwise([&chip](const QByteArray& request) {
        QByteArray reply;
        const bool isGood = chip(quint8(request.at(1)), request.mid(4, request.size() - 5), reply);
        return isGood ? peerFrame(quint8(request.at(1)), reply)
                      : peerFrame(0xFF, QByteArray::fromHex("0300"));
    });
    return run({command}, peer);
}

DeviceBench::Result DeviceBench::run(const QStringList& commands, ScriptedPeer& peer)
{
    Result result;
    peer.start();
    TSerialPort port;
    port.setTimeout(300);
    port.setMaxData(65535);
    result.ok = port.open(peer.path(), QIODevice::ReadWrite);
    for (int i = 0; i < commands.size() && result.ok; ++i)
        result.ok = runOne(command(commands.at(i)), port, result);
    port.close();
    result.error.prepend(peer.finish());
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
    if (command.value(key::cmd) == QLatin1String("readChipId")) {
        const bool isRead = exec->readChipId(&port, result.data);
        result.error = exec->errorText();
        return isRead;
    }
    const bool ok = exec->execute(&port, exitRun, cfg, cmd);
    result.error = exec->errorText();
    result.data = project().cmdById(command.value(key::id_cmd).toInt())->param(key::data).toString();
    return ok;
}
