#include "base/TCmdCode.h"

#include "base/keys.h"

#include <algorithm>

namespace {

struct Entry
{
    QLatin1String key;
    const char* name;
};

constexpr Entry entries[] = {
#define VM_TOOL(word, Name, title, reference) {cmd::word, title},
#include "base/tools.def"
    {cmd::set_device, "Set Device"},
    {cmd::auto_detect, "Auto Detect"},
    {cmd::set_freq, "Set Frequency"},
    {cmd::set_io, "Set I/O"},
    {cmd::set_vcc, "Set Vcc"},
    {cmd::set_vpp, "Set Vpp"},
    {cmd::set_vicc, "Set VIcc"},
    {cmd::set_vipp, "Set VIpp"},
    {cmd::reset, "Reset"},
    {cmd::ident, "Identification"},
    {cmd::set_clk, "Set CLK"},
    {cmd::set_addr, "Set Address"},
    {cmd::erase, "Erase"},
    {cmd::erase_blocks, "Erase (blocks)"},
    {cmd::test_empty, "Test Empty"},
    {cmd::test_empty_blocks, "Test Empty (blocks)"},
    {cmd::test_empty_flash, "Test Empty Flash"},
    {cmd::test_empty_eeprom, "Test Empty EEPROM"},
    {cmd::leave, "Leave"},
    {cmd::fuse_write, "Fuse Bits Write"},
    {cmd::fuse_read, "Fuse Bits Read"},
    {cmd::fuse_verify, "Fuse Bits Verify"},
    {cmd::lock_write, "Lock Bits Write"},
    {cmd::lock_read, "Lock Bits Read"},
    {cmd::lock_verify, "Lock Bits Verify"},
    {cmd::status_reg_write, "Status Reg Write"},
    {cmd::status_reg_read, "Status Reg Read"},
    {cmd::status_reg_verify, "Status Reg Verify"},
    {cmd::security_reg_erase, "Security Reg Erase"},
    {cmd::security_reg_test_empty, "Security Reg Test Empty"},
    {cmd::security_reg_write, "Security Reg Write"},
    {cmd::security_reg_read, "Security Reg Read"},
    {cmd::security_reg_verify, "Security Reg Verify"},
    {cmd::unique_id_read, "Unique ID Read"},
    {cmd::sfdp_reg_read, "SFDP Reg Read"},
    {cmd::osccal_read, "OSCCAL Read"},
    {cmd::unlock, "Unlock"},
    {cmd::lock, "Lock"},
};

struct Memory
{
    const char* key;
    const char* name;
};

constexpr Memory memories[] = {{"", ""}, {"flash_", "Flash "}, {"eeprom_", "EEPROM "}};

struct Operation
{
    const char* source;
    const char* operation;
    const char* name;
};

constexpr Operation operations[] = {
    {"char", "write", "Write"}, {"char", "verify", "Verify"}, {"data", "write", "Write"},
    {"data", "read", "Read"},   {"data", "verify", "Verify"}, {"file", "write", "Write"},
    {"file", "read", "Read"},   {"file", "verify", "Verify"},
};

constexpr QLatin1String toolsWords[] = {
#define VM_TOOL(word, Name, title, reference) cmd::word,
#define VM_TOOL_RULE cmd::separator,
#include "base/tools.def"
};

constexpr QLatin1String progWords[] = {cmd::set_device, cmd::auto_detect, cmd::reset,
                                       cmd::set_io,     cmd::set_freq,    cmd::set_vcc,
                                       cmd::set_vpp,    cmd::set_vicc,    cmd::set_vipp};

template <size_t N> QStringList toList(const QLatin1String (&words)[N])
{
    QStringList list;
    for (const QLatin1String& word : words)
        list.append(word);
    return list;
}

template <size_t N> bool contains(const QLatin1String (&words)[N], const QString& key)
{
    return std::find(std::begin(words), std::end(words), key) != std::end(words);
}

} // namespace

TCmdCode::TCmdCode()
{
    for (const Entry& entry : entries)
        m_names.insert(entry.key, QLatin1String(entry.name));
    for (const Memory& memory : memories) {
        for (const Operation& op : operations) {
            m_names.insert(
                QStringLiteral("%1%2_%3").arg(QLatin1String(memory.key), QLatin1String(op.source),
                                              QLatin1String(op.operation)),
                QStringLiteral("%1%2 (%3)")
                    .arg(QLatin1String(memory.name), QLatin1String(op.name), QLatin1String(op.source)));
        }
    }
}

QString TCmdCode::name(const QString& key) const
{
    return m_names.value(key);
}

QStringList TCmdCode::toolsKeys()
{
    return toList(toolsWords);
}

QStringList TCmdCode::progKeys()
{
    return toList(progWords);
}

bool TCmdCode::isTools(const QString& key)
{
    return contains(toolsWords, key);
}

bool TCmdCode::isProg(const QString& key)
{
    return contains(progWords, key);
}
