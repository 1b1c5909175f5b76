#include "DeviceBench.h"

#include "devices/avr/TDevAVR8.h"
#include "devices/flash/TDev25.h"
#include "devices/i2c/TDev24.h"
#include "devices/microwire/TDev93C.h"
#include "support/ScriptedPeer.h"

namespace {

template <class Device> IDevice* make(const QString& name, const TData& data)
{
    return new Device(name, data);
}

/// The chips: a W25Q64, a 24C16, a Microwire part, and an AVR of the size of an ATmega2560 with pacing
/// bytes that tell the commands apart.
const struct
{
    const char* family;
    IDevice* (*make)(const QString& name, const TData& data);
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
     "alg_flash_read=1 alg_flash_write=2 alg_fuse_read=1 alg_fuse_write=2 alg_lock_read=1 alg_lock_write=1 "
     "fuse_def=6299FF lock_def=FF osccal_def=0000 osccal_cfg=frm+,frm- flash_delay=261 eeprom_polling=1 "
     "erase_delay=10 fuse_polling=1 lock_delay=11 prg_section=BUS"},
};

const QByteArray progLines = "[BUS]\nCLK_LIST=true\nCLK_MIN=1\nCLK_MAX=16000000\nCLK_DEF=8000000\n"
                             "CLKLV_8000000=66051\n[Reset]\nMIN=10\nMAX=500\nDEF=-300\n[Protocol]\nMAX_DATA=";

} // namespace

DeviceBench::DeviceBench(const QString& chip)
    : m_family(chip.section(' ', 0, 0))
    , m_description(textParams(chip.section(' ', 1)))
{
    TData folders = project().toData();
    folders[key::work_path] = dir().path();
    project().fromData(folders);
    setProg(progLines + m_description.value(QStringLiteral("MAX_DATA"), 64).toByteArray() + '\n');
    addProg();
    m_chip = addChip();
}

IDevice* DeviceBench::create(const QString& name, const QString& file)
{
    for (const auto& row : chips) {
        if (file.isEmpty() || m_family != QLatin1String(row.family))
            continue;
        TData data = textParams(QString::fromLatin1(row.description));
        for (auto it = m_description.begin(); it != m_description.end(); ++it)
            data.insert(it.key(), it.value());
        data[key::dev_file] = dir().file(file);
        return row.make(name, data);
    }
    return BenchProject::create(name, file);
}

TData DeviceBench::command(const QString& text)
{
    m_last = add(text.section(' ', 0, 0));
    TData data = BenchProject::data(m_last);
    device().setDefaultParams(data);
    TDataCmd* command = project().cmdById(m_last);
    command->setParam(data);
    command->setParam(textParams(text.section(' ', 1)));
    return command->toData();
}

BenchRun DeviceBench::play(const QStringList& commands, const QString& script)
{
    ScriptedPeer peer;
    peer.expectText(script);
    QList<int> ids;
    for (const QString& text : commands)
        ids.append(command(text).value(key::id_cmd).toInt());
    return runCommands(device(), ids, peer, onPercent);
}

BenchRun DeviceBench::runWith(const QString& text, const Chip& chip)
{
    ScriptedPeer peer;
    peer.otherwise([&chip](const QByteArray& request) {
        QByteArray reply;
        const bool isGood = chip(quint8(request.at(1)), request.mid(4, request.size() - 5), reply);
        return isGood ? peerFrame(quint8(request.at(1)), reply)
                      : peerFrame(0xFF, QByteArray::fromHex("0300"));
    });
    const int id = command(text).value(key::id_cmd).toInt();
    return runCommands(device(), {id}, peer, onPercent);
}
