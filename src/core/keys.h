#pragma once

#include <QLatin1String>

// Every word that stands in a project, device or list file, written once. The constants need no
// construction at run time, so that the process-wide objects may use them before main.

/// Keys of parameters, device descriptions and lists.
namespace key {
// Reserved keys of a whole command.
inline constexpr QLatin1String id_cmd("id_cmd");
inline constexpr QLatin1String id_cfg("id_cfg");
inline constexpr QLatin1String status("status");
inline constexpr QLatin1String cmd("cmd");
inline constexpr QLatin1String valid_dev("valid_dev");
inline constexpr QLatin1String valid_param("valid_param");

// Lists.
inline constexpr QLatin1String file("file");
inline constexpr QLatin1String name("name");
inline constexpr QLatin1String expand("expand");
inline constexpr QLatin1String parent("parent");
inline constexpr QLatin1String id("id");
inline constexpr QLatin1String list("list");

// Device descriptions.
inline constexpr QLatin1String addr_mask("addr_mask");
inline constexpr QLatin1String addr_size("addr_size");
inline constexpr QLatin1String reset_pol("reset_pol");
inline constexpr QLatin1String reset("reset");
inline constexpr QLatin1String clk_def("clk_def");
inline constexpr QLatin1String osccal_cfg("osccal_cfg");
inline constexpr QLatin1String osccal_def("osccal_def");
inline constexpr QLatin1String security_reg_size("security_reg_size");
inline constexpr QLatin1String sfdp_reg_size("sfdp_reg_size");
inline constexpr QLatin1String status_reg_cfg("status_reg_cfg");
inline constexpr QLatin1String status_reg_def("status_reg_def");
inline constexpr QLatin1String lock_cfg("lock_cfg");
inline constexpr QLatin1String lock_def("lock_def");
inline constexpr QLatin1String fuse_cfg("fuse_cfg");
inline constexpr QLatin1String fuse_def("fuse_def");
inline constexpr QLatin1String signature("signature");
inline constexpr QLatin1String pin_count("pin_count");
inline constexpr QLatin1String width_data("width_data");
inline constexpr QLatin1String width_addr("width_addr");
inline constexpr QLatin1String lock_polling("lock_polling");
inline constexpr QLatin1String lock_delay("lock_delay");
inline constexpr QLatin1String fuse_polling("fuse_polling");
inline constexpr QLatin1String fuse_delay("fuse_delay");
inline constexpr QLatin1String eeprom_polling("eeprom_polling");
inline constexpr QLatin1String eeprom_delay("eeprom_delay");
inline constexpr QLatin1String eeprom_addr_begin("eeprom_addr_begin");
inline constexpr QLatin1String eeprom_page_size("eeprom_page_size");
inline constexpr QLatin1String eeprom_size("eeprom_size");
inline constexpr QLatin1String flash_polling("flash_polling");
inline constexpr QLatin1String flash_delay("flash_delay");
inline constexpr QLatin1String flash_addr_begin("flash_addr_begin");
inline constexpr QLatin1String flash_page_size("flash_page_size");
inline constexpr QLatin1String flash_size("flash_size");
inline constexpr QLatin1String delay("delay");
inline constexpr QLatin1String addr_begin("addr_begin");
inline constexpr QLatin1String page_size("page_size");
inline constexpr QLatin1String size("size");
inline constexpr QLatin1String erase_polling("erase_polling");
inline constexpr QLatin1String erase_delay("erase_delay");
inline constexpr QLatin1String erase_blocks("erase_blocks");
inline constexpr QLatin1String erase("erase");
inline constexpr QLatin1String alg_unique_id_read("alg_unique_id_read");
inline constexpr QLatin1String alg_osccal_read("alg_osccal_read");
inline constexpr QLatin1String alg_security_reg_write("alg_security_reg_write");
inline constexpr QLatin1String alg_security_reg_read("alg_security_reg_read");
inline constexpr QLatin1String alg_security_reg_erase("alg_security_reg_erase");
inline constexpr QLatin1String alg_fsdp_read("alg_fsdp_read");
inline constexpr QLatin1String alg_status_reg_read("alg_status_reg_read");
inline constexpr QLatin1String alg_status_reg_write("alg_status_reg_write");
inline constexpr QLatin1String alg_lock_read("alg_lock_read");
inline constexpr QLatin1String alg_lock_write("alg_lock_write");
inline constexpr QLatin1String alg_fuse_read("alg_fuse_read");
inline constexpr QLatin1String alg_fuse_write("alg_fuse_write");
inline constexpr QLatin1String alg_eeprom_read("alg_eeprom_read");
inline constexpr QLatin1String alg_eeprom_write("alg_eeprom_write");
inline constexpr QLatin1String alg_flash_read("alg_flash_read");
inline constexpr QLatin1String alg_flash_write("alg_flash_write");
inline constexpr QLatin1String alg_erase("alg_erase");
inline constexpr QLatin1String alg_ident("alg_ident");
inline constexpr QLatin1String alg_read("alg_read");
inline constexpr QLatin1String alg_write("alg_write");
inline constexpr QLatin1String info("info");
inline constexpr QLatin1String comment("comment");
inline constexpr QLatin1String cfg_cmd_list("cfg_cmd_list");
inline constexpr QLatin1String cfg_hw("cfg_hw");
inline constexpr QLatin1String cfg_sw("cfg_sw");
inline constexpr QLatin1String dev_file("dev_file");
inline constexpr QLatin1String prg_section("prg_section");
inline constexpr QLatin1String prg_type("prg_type");
inline constexpr QLatin1String gui_type("gui_type");

// Project model.
inline constexpr QLatin1String prj_file("prj_file");
inline constexpr QLatin1String work_path("work_path");
inline constexpr QLatin1String description("description");
inline constexpr QLatin1String configurations("configurations");
inline constexpr QLatin1String commands("commands");
inline constexpr QLatin1String splitter("splitter");
inline constexpr QLatin1String version("version");

// Command parameters.
inline constexpr QLatin1String duration("duration");
inline constexpr QLatin1String state("state");
inline constexpr QLatin1String data("data");
inline constexpr QLatin1String count("count");
inline constexpr QLatin1String addr_device("addr_device");
inline constexpr QLatin1String addr_file("addr_file");
inline constexpr QLatin1String format("format");
inline constexpr QLatin1String fill_char("fill_char");
inline constexpr QLatin1String begin("begin");
inline constexpr QLatin1String addr("addr");
inline constexpr QLatin1String clk("clk");
inline constexpr QLatin1String ocp("ocp");
inline constexpr QLatin1String ipp("ipp");
inline constexpr QLatin1String vpp("vpp");
inline constexpr QLatin1String icc("icc");
inline constexpr QLatin1String vcc("vcc");
inline constexpr QLatin1String duty_cycle("duty_cycle");
inline constexpr QLatin1String freq("freq");
inline constexpr QLatin1String stop("stop");
inline constexpr QLatin1String execute("execute");
inline constexpr QLatin1String route("route");
inline constexpr QLatin1String device("device");
inline constexpr QLatin1String alt_port("alt_port");
inline constexpr QLatin1String alt_enabled("alt_enabled");
inline constexpr QLatin1String prog("prog");
inline constexpr QLatin1String fill("fill");
inline constexpr QLatin1String crc_name("crc_name");
inline constexpr QLatin1String cfg("cfg");
inline constexpr QLatin1String value("value");
inline constexpr QLatin1String limit("limit");
inline constexpr QLatin1String delta("delta");
inline constexpr QLatin1String to_cmd("to_cmd");

// Stored in old files, used by nothing.
inline constexpr QLatin1String pos("pos");
inline constexpr QLatin1String cfg_status("cfg_status");
} // namespace key

/// Key words of commands.
namespace cmd {
// Flow, tools and programmer; whole-chip commands.
inline constexpr QLatin1String process("process");
inline constexpr QLatin1String jamp("jamp");
inline constexpr QLatin1String counter("counter");
inline constexpr QLatin1String delay("delay");
inline constexpr QLatin1String pause("pause");
inline constexpr QLatin1String stop("stop");
inline constexpr QLatin1String execute("execute");
inline constexpr QLatin1String calc_crc("calc_crc");
inline constexpr QLatin1String set_prog("set_prog");
inline constexpr QLatin1String set_device("set_device");
inline constexpr QLatin1String auto_detect("auto_detect");
inline constexpr QLatin1String set_freq("set_freq");
inline constexpr QLatin1String set_io("set_io");
inline constexpr QLatin1String set_vcc("set_vcc");
inline constexpr QLatin1String set_vpp("set_vpp");
inline constexpr QLatin1String set_vicc("set_vicc");
inline constexpr QLatin1String set_vipp("set_vipp");
inline constexpr QLatin1String reset("reset");
inline constexpr QLatin1String ident("ident");
inline constexpr QLatin1String set_clk("set_clk");
inline constexpr QLatin1String set_addr("set_addr");
inline constexpr QLatin1String erase("erase");
inline constexpr QLatin1String erase_blocks("erase_blocks");
inline constexpr QLatin1String test_empty("test_empty");
inline constexpr QLatin1String test_empty_blocks("test_empty_blocks");
inline constexpr QLatin1String test_empty_flash("test_empty_flash");
inline constexpr QLatin1String test_empty_eeprom("test_empty_eeprom");
inline constexpr QLatin1String leave("leave");

// Memory.
inline constexpr QLatin1String char_write("char_write");
inline constexpr QLatin1String char_verify("char_verify");
inline constexpr QLatin1String data_write("data_write");
inline constexpr QLatin1String data_read("data_read");
inline constexpr QLatin1String data_verify("data_verify");
inline constexpr QLatin1String file_write("file_write");
inline constexpr QLatin1String file_read("file_read");
inline constexpr QLatin1String file_verify("file_verify");
inline constexpr QLatin1String flash_char_write("flash_char_write");
inline constexpr QLatin1String flash_char_verify("flash_char_verify");
inline constexpr QLatin1String flash_data_write("flash_data_write");
inline constexpr QLatin1String flash_data_read("flash_data_read");
inline constexpr QLatin1String flash_data_verify("flash_data_verify");
inline constexpr QLatin1String flash_file_write("flash_file_write");
inline constexpr QLatin1String flash_file_read("flash_file_read");
inline constexpr QLatin1String flash_file_verify("flash_file_verify");
inline constexpr QLatin1String eeprom_char_write("eeprom_char_write");
inline constexpr QLatin1String eeprom_char_verify("eeprom_char_verify");
inline constexpr QLatin1String eeprom_data_write("eeprom_data_write");
inline constexpr QLatin1String eeprom_data_read("eeprom_data_read");
inline constexpr QLatin1String eeprom_data_verify("eeprom_data_verify");
inline constexpr QLatin1String eeprom_file_write("eeprom_file_write");
inline constexpr QLatin1String eeprom_file_read("eeprom_file_read");
inline constexpr QLatin1String eeprom_file_verify("eeprom_file_verify");

// Registers.
inline constexpr QLatin1String fuse_write("fuse_write");
inline constexpr QLatin1String fuse_read("fuse_read");
inline constexpr QLatin1String fuse_verify("fuse_verify");
inline constexpr QLatin1String lock_write("lock_write");
inline constexpr QLatin1String lock_read("lock_read");
inline constexpr QLatin1String lock_verify("lock_verify");
inline constexpr QLatin1String status_reg_write("status_reg_write");
inline constexpr QLatin1String status_reg_read("status_reg_read");
inline constexpr QLatin1String status_reg_verify("status_reg_verify");
inline constexpr QLatin1String security_reg_erase("security_reg_erase");
inline constexpr QLatin1String security_reg_test_empty("security_reg_test_empty");
inline constexpr QLatin1String security_reg_write("security_reg_write");
inline constexpr QLatin1String security_reg_read("security_reg_read");
inline constexpr QLatin1String security_reg_verify("security_reg_verify");
inline constexpr QLatin1String unique_id_read("unique_id_read");
inline constexpr QLatin1String sfdp_reg_read("sfdp_reg_read");
inline constexpr QLatin1String osccal_read("osccal_read");
inline constexpr QLatin1String unlock("unlock");
inline constexpr QLatin1String lock("lock");

/// Draws a rule in the command selector; no command.
inline constexpr QLatin1String separator("separator");
} // namespace cmd

/// Class words: which class serves a command or a chip.
namespace dev_class {
inline constexpr QLatin1String avr8_spi("DevAVR8_SPI");
inline constexpr QLatin1String dev25("Dev25");
inline constexpr QLatin1String dev24("Dev24");
inline constexpr QLatin1String prog("Prog");
inline constexpr QLatin1String tools("Tools");
} // namespace dev_class
