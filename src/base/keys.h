#pragma once

#include <QLatin1String>

// Every word that stands in a project, device or list file, written once. The constants need no
// construction at run time, so that the process-wide objects may use them before main.

/// A word with its length counted by the compiler.
namespace keys_detail {
template <int N> constexpr QLatin1String word(const char (&text)[N])
{
    return QLatin1String(text, N - 1);
}
} // namespace keys_detail

/// Keys of parameters, device descriptions and lists.
namespace key {
// Reserved keys of a whole command.
inline constexpr QLatin1String id_cmd = keys_detail::word("id_cmd");
inline constexpr QLatin1String id_cfg = keys_detail::word("id_cfg");
inline constexpr QLatin1String status = keys_detail::word("status");
inline constexpr QLatin1String cmd = keys_detail::word("cmd");
inline constexpr QLatin1String valid_dev = keys_detail::word("valid_dev");
inline constexpr QLatin1String valid_param = keys_detail::word("valid_param");

// Lists.
inline constexpr QLatin1String file = keys_detail::word("file");
inline constexpr QLatin1String name = keys_detail::word("name");
inline constexpr QLatin1String expand = keys_detail::word("expand");
inline constexpr QLatin1String parent = keys_detail::word("parent");
inline constexpr QLatin1String id = keys_detail::word("id");
inline constexpr QLatin1String list = keys_detail::word("list");

// Device descriptions.
inline constexpr QLatin1String addr_mask = keys_detail::word("addr_mask");
inline constexpr QLatin1String read_block = keys_detail::word("read_block");
inline constexpr QLatin1String addr_size = keys_detail::word("addr_size");
inline constexpr QLatin1String reset_pol = keys_detail::word("reset_pol");
inline constexpr QLatin1String reset = keys_detail::word("reset");
inline constexpr QLatin1String clk_def = keys_detail::word("clk_def");
inline constexpr QLatin1String osccal_cfg = keys_detail::word("osccal_cfg");
inline constexpr QLatin1String osccal_def = keys_detail::word("osccal_def");
inline constexpr QLatin1String security_reg_size = keys_detail::word("security_reg_size");
inline constexpr QLatin1String sfdp_reg_size = keys_detail::word("sfdp_reg_size");
inline constexpr QLatin1String status_reg_cfg = keys_detail::word("status_reg_cfg");
inline constexpr QLatin1String status_reg_def = keys_detail::word("status_reg_def");
inline constexpr QLatin1String status_reg_count = keys_detail::word("status_reg_count");
inline constexpr QLatin1String lock_cfg = keys_detail::word("lock_cfg");
inline constexpr QLatin1String lock_def = keys_detail::word("lock_def");
inline constexpr QLatin1String fuse_cfg = keys_detail::word("fuse_cfg");
inline constexpr QLatin1String fuse_def = keys_detail::word("fuse_def");
inline constexpr QLatin1String signature = keys_detail::word("signature");
inline constexpr QLatin1String pin_count = keys_detail::word("pin_count");
inline constexpr QLatin1String width_data = keys_detail::word("width_data");
inline constexpr QLatin1String width_addr = keys_detail::word("width_addr");
inline constexpr QLatin1String lock_polling = keys_detail::word("lock_polling");
inline constexpr QLatin1String lock_delay = keys_detail::word("lock_delay");
inline constexpr QLatin1String fuse_polling = keys_detail::word("fuse_polling");
inline constexpr QLatin1String fuse_delay = keys_detail::word("fuse_delay");
inline constexpr QLatin1String eeprom_polling = keys_detail::word("eeprom_polling");
inline constexpr QLatin1String eeprom_delay = keys_detail::word("eeprom_delay");
inline constexpr QLatin1String eeprom_addr_begin = keys_detail::word("eeprom_addr_begin");
inline constexpr QLatin1String eeprom_page_size = keys_detail::word("eeprom_page_size");
inline constexpr QLatin1String eeprom_size = keys_detail::word("eeprom_size");
inline constexpr QLatin1String flash_polling = keys_detail::word("flash_polling");
inline constexpr QLatin1String flash_delay = keys_detail::word("flash_delay");
inline constexpr QLatin1String flash_addr_begin = keys_detail::word("flash_addr_begin");
inline constexpr QLatin1String flash_page_size = keys_detail::word("flash_page_size");
inline constexpr QLatin1String flash_size = keys_detail::word("flash_size");
inline constexpr QLatin1String delay = keys_detail::word("delay");
inline constexpr QLatin1String addr_begin = keys_detail::word("addr_begin");
inline constexpr QLatin1String page_size = keys_detail::word("page_size");
inline constexpr QLatin1String size = keys_detail::word("size");
inline constexpr QLatin1String erase_polling = keys_detail::word("erase_polling");
inline constexpr QLatin1String erase_delay = keys_detail::word("erase_delay");
inline constexpr QLatin1String erase_blocks = keys_detail::word("erase_blocks");
inline constexpr QLatin1String erase = keys_detail::word("erase");
inline constexpr QLatin1String alg_unique_id_read = keys_detail::word("alg_unique_id_read");
inline constexpr QLatin1String alg_osccal_read = keys_detail::word("alg_osccal_read");
inline constexpr QLatin1String alg_security_reg_write = keys_detail::word("alg_security_reg_write");
inline constexpr QLatin1String alg_security_reg_read = keys_detail::word("alg_security_reg_read");
inline constexpr QLatin1String alg_security_reg_erase = keys_detail::word("alg_security_reg_erase");
inline constexpr QLatin1String alg_fsdp_read = keys_detail::word("alg_fsdp_read");
inline constexpr QLatin1String alg_status_reg_read = keys_detail::word("alg_status_reg_read");
inline constexpr QLatin1String alg_status_reg_write = keys_detail::word("alg_status_reg_write");
inline constexpr QLatin1String alg_lock_read = keys_detail::word("alg_lock_read");
inline constexpr QLatin1String alg_lock_write = keys_detail::word("alg_lock_write");
inline constexpr QLatin1String alg_fuse_read = keys_detail::word("alg_fuse_read");
inline constexpr QLatin1String alg_fuse_write = keys_detail::word("alg_fuse_write");
inline constexpr QLatin1String alg_eeprom_read = keys_detail::word("alg_eeprom_read");
inline constexpr QLatin1String alg_eeprom_write = keys_detail::word("alg_eeprom_write");
inline constexpr QLatin1String alg_flash_read = keys_detail::word("alg_flash_read");
inline constexpr QLatin1String alg_flash_write = keys_detail::word("alg_flash_write");
inline constexpr QLatin1String alg_erase = keys_detail::word("alg_erase");
inline constexpr QLatin1String alg_ident = keys_detail::word("alg_ident");
inline constexpr QLatin1String alg_read = keys_detail::word("alg_read");
inline constexpr QLatin1String alg_write = keys_detail::word("alg_write");
inline constexpr QLatin1String info = keys_detail::word("info");
inline constexpr QLatin1String comment = keys_detail::word("comment");
inline constexpr QLatin1String warning = keys_detail::word("warning");
inline constexpr QLatin1String cfg_cmd_list = keys_detail::word("cfg_cmd_list");
inline constexpr QLatin1String cfg_hw = keys_detail::word("cfg_hw");
inline constexpr QLatin1String cfg_sw = keys_detail::word("cfg_sw");
inline constexpr QLatin1String dev_file = keys_detail::word("dev_file");
inline constexpr QLatin1String prg_section = keys_detail::word("prg_section");
inline constexpr QLatin1String prg_type = keys_detail::word("prg_type");
inline constexpr QLatin1String gui_type = keys_detail::word("gui_type");

// Project model.
inline constexpr QLatin1String prj_file = keys_detail::word("prj_file");
inline constexpr QLatin1String work_path = keys_detail::word("work_path");
inline constexpr QLatin1String description = keys_detail::word("description");
inline constexpr QLatin1String configurations = keys_detail::word("configurations");
inline constexpr QLatin1String commands = keys_detail::word("commands");
inline constexpr QLatin1String splitter = keys_detail::word("splitter");
inline constexpr QLatin1String version = keys_detail::word("version");

// Command parameters.
inline constexpr QLatin1String duration = keys_detail::word("duration");
inline constexpr QLatin1String state = keys_detail::word("state");
inline constexpr QLatin1String data = keys_detail::word("data");
inline constexpr QLatin1String count = keys_detail::word("count");
inline constexpr QLatin1String addr_device = keys_detail::word("addr_device");
inline constexpr QLatin1String addr_file = keys_detail::word("addr_file");
inline constexpr QLatin1String format = keys_detail::word("format");
inline constexpr QLatin1String fill_char = keys_detail::word("fill_char");
inline constexpr QLatin1String begin = keys_detail::word("begin");
inline constexpr QLatin1String addr = keys_detail::word("addr");
inline constexpr QLatin1String clk = keys_detail::word("clk");
inline constexpr QLatin1String ocp = keys_detail::word("ocp");
inline constexpr QLatin1String ipp = keys_detail::word("ipp");
inline constexpr QLatin1String vpp = keys_detail::word("vpp");
inline constexpr QLatin1String icc = keys_detail::word("icc");
inline constexpr QLatin1String vcc = keys_detail::word("vcc");
inline constexpr QLatin1String duty_cycle = keys_detail::word("duty_cycle");
inline constexpr QLatin1String freq = keys_detail::word("freq");
inline constexpr QLatin1String stop = keys_detail::word("stop");
inline constexpr QLatin1String execute = keys_detail::word("execute");
inline constexpr QLatin1String route = keys_detail::word("route");
inline constexpr QLatin1String device = keys_detail::word("device");
inline constexpr QLatin1String alt_port = keys_detail::word("alt_port");
inline constexpr QLatin1String alt_enabled = keys_detail::word("alt_enabled");
inline constexpr QLatin1String prog = keys_detail::word("prog");
inline constexpr QLatin1String fill = keys_detail::word("fill");
inline constexpr QLatin1String crc_name = keys_detail::word("crc_name");
inline constexpr QLatin1String cfg = keys_detail::word("cfg");
inline constexpr QLatin1String value = keys_detail::word("value");
inline constexpr QLatin1String limit = keys_detail::word("limit");
inline constexpr QLatin1String delta = keys_detail::word("delta");
inline constexpr QLatin1String to_cmd = keys_detail::word("to_cmd");
inline constexpr QLatin1String must_succeed = keys_detail::word("must_succeed");

// Stored in old files, used by nothing.
inline constexpr QLatin1String pos = keys_detail::word("pos");
inline constexpr QLatin1String cfg_status = keys_detail::word("cfg_status");
} // namespace key

/// Key words of commands.
namespace cmd {
// Flow and tools.
#define VM_TOOL(word_, Name, title, reference)                                                               \
    inline constexpr QLatin1String word_ = keys_detail::word(#word_);
#include "base/tools.def"
// Programmer; whole-chip commands.
inline constexpr QLatin1String set_device = keys_detail::word("set_device");
inline constexpr QLatin1String auto_detect = keys_detail::word("auto_detect");
inline constexpr QLatin1String set_freq = keys_detail::word("set_freq");
inline constexpr QLatin1String set_io = keys_detail::word("set_io");
inline constexpr QLatin1String set_vcc = keys_detail::word("set_vcc");
inline constexpr QLatin1String set_vpp = keys_detail::word("set_vpp");
inline constexpr QLatin1String set_vicc = keys_detail::word("set_vicc");
inline constexpr QLatin1String set_vipp = keys_detail::word("set_vipp");
inline constexpr QLatin1String reset = keys_detail::word("reset");
inline constexpr QLatin1String ident = keys_detail::word("ident");
inline constexpr QLatin1String set_clk = keys_detail::word("set_clk");
inline constexpr QLatin1String set_addr = keys_detail::word("set_addr");
inline constexpr QLatin1String erase = keys_detail::word("erase");
inline constexpr QLatin1String erase_blocks = keys_detail::word("erase_blocks");
inline constexpr QLatin1String test_empty = keys_detail::word("test_empty");
inline constexpr QLatin1String test_empty_blocks = keys_detail::word("test_empty_blocks");
inline constexpr QLatin1String test_empty_flash = keys_detail::word("test_empty_flash");
inline constexpr QLatin1String test_empty_eeprom = keys_detail::word("test_empty_eeprom");
inline constexpr QLatin1String leave = keys_detail::word("leave");

// Memory.
inline constexpr QLatin1String char_write = keys_detail::word("char_write");
inline constexpr QLatin1String char_verify = keys_detail::word("char_verify");
inline constexpr QLatin1String data_write = keys_detail::word("data_write");
inline constexpr QLatin1String data_read = keys_detail::word("data_read");
inline constexpr QLatin1String data_verify = keys_detail::word("data_verify");
inline constexpr QLatin1String file_write = keys_detail::word("file_write");
inline constexpr QLatin1String file_read = keys_detail::word("file_read");
inline constexpr QLatin1String file_verify = keys_detail::word("file_verify");
inline constexpr QLatin1String flash_char_write = keys_detail::word("flash_char_write");
inline constexpr QLatin1String flash_char_verify = keys_detail::word("flash_char_verify");
inline constexpr QLatin1String flash_data_write = keys_detail::word("flash_data_write");
inline constexpr QLatin1String flash_data_read = keys_detail::word("flash_data_read");
inline constexpr QLatin1String flash_data_verify = keys_detail::word("flash_data_verify");
inline constexpr QLatin1String flash_file_write = keys_detail::word("flash_file_write");
inline constexpr QLatin1String flash_file_read = keys_detail::word("flash_file_read");
inline constexpr QLatin1String flash_file_verify = keys_detail::word("flash_file_verify");
inline constexpr QLatin1String eeprom_char_write = keys_detail::word("eeprom_char_write");
inline constexpr QLatin1String eeprom_char_verify = keys_detail::word("eeprom_char_verify");
inline constexpr QLatin1String eeprom_data_write = keys_detail::word("eeprom_data_write");
inline constexpr QLatin1String eeprom_data_read = keys_detail::word("eeprom_data_read");
inline constexpr QLatin1String eeprom_data_verify = keys_detail::word("eeprom_data_verify");
inline constexpr QLatin1String eeprom_file_write = keys_detail::word("eeprom_file_write");
inline constexpr QLatin1String eeprom_file_read = keys_detail::word("eeprom_file_read");
inline constexpr QLatin1String eeprom_file_verify = keys_detail::word("eeprom_file_verify");

// Registers.
inline constexpr QLatin1String fuse_write = keys_detail::word("fuse_write");
inline constexpr QLatin1String fuse_read = keys_detail::word("fuse_read");
inline constexpr QLatin1String fuse_verify = keys_detail::word("fuse_verify");
inline constexpr QLatin1String lock_write = keys_detail::word("lock_write");
inline constexpr QLatin1String lock_read = keys_detail::word("lock_read");
inline constexpr QLatin1String lock_verify = keys_detail::word("lock_verify");
inline constexpr QLatin1String status_reg_write = keys_detail::word("status_reg_write");
inline constexpr QLatin1String status_reg_read = keys_detail::word("status_reg_read");
inline constexpr QLatin1String status_reg_verify = keys_detail::word("status_reg_verify");
inline constexpr QLatin1String security_reg_erase = keys_detail::word("security_reg_erase");
inline constexpr QLatin1String security_reg_test_empty = keys_detail::word("security_reg_test_empty");
inline constexpr QLatin1String security_reg_write = keys_detail::word("security_reg_write");
inline constexpr QLatin1String security_reg_read = keys_detail::word("security_reg_read");
inline constexpr QLatin1String security_reg_verify = keys_detail::word("security_reg_verify");
inline constexpr QLatin1String unique_id_read = keys_detail::word("unique_id_read");
inline constexpr QLatin1String sfdp_reg_read = keys_detail::word("sfdp_reg_read");
inline constexpr QLatin1String osccal_read = keys_detail::word("osccal_read");
inline constexpr QLatin1String unlock = keys_detail::word("unlock");
inline constexpr QLatin1String lock = keys_detail::word("lock");

/// Draws a rule in the command selector; no command.
inline constexpr QLatin1String separator = keys_detail::word("separator");
} // namespace cmd

/// Class words: which class serves a command or a chip.
namespace dev_class {
inline constexpr QLatin1String avr8_spi = keys_detail::word("DevAVR8_SPI");
inline constexpr QLatin1String dev25 = keys_detail::word("Dev25");
inline constexpr QLatin1String dev24 = keys_detail::word("Dev24");
inline constexpr QLatin1String prog = keys_detail::word("Prog");
inline constexpr QLatin1String tools = keys_detail::word("Tools");
} // namespace dev_class
