// The chip families: every frame byte by byte, every refusal, and what the catalogue says of a command.

#include "DeviceBench.h"
#include "devices/flash/TDev25.h"
#include "devices/shared/IDeviceExec.h"
#include "link/wire/TSerialPort.h"
#include "support/tables.h"

namespace {

// Chip | commands, each on its own or with "+" behind the one before | frames | "ok" with the command's data,
// or "fails" with its text.
const char runs[] = R"(
dev25 | set_clk clk=8000000 | 02 03020100 > | ok
dev25 | ident | 03 03009F > EF4017 | ok
dev25 | ident | 03 03009F > EF401700 | fails Read signature: EF401700 (@DeviceUnknown)
dev25 | ident | 03 03009F > C22017 | fails Read signature: C22017 (MX25L6406E)
dev25 | file_read format=BIN file=in | 03 4000 0B000000 00 > !3 | fails @ProgWrongParam
dev25 | readChipId | 03 03009F > 0ABCDE | ok 0ABCDE
dev25 | leave state=HIL | 01 0000 050104 > | ok
dev25 | data_read addr_device=0x123456 data=00~00 | 03 0200 0B123456 00 > A10F | ok A1 0F
dev25 | data_read data=0000 | 03 0200 0B000000 00 > 11 | fails
dev25 | data_read data=0000 | 03 0200 0B000000 00 | fails @NoAnswer
dev25 MAX_DATA=4 | data_verify addr_device=0x10 data=8182838485 | 03 0400 0B000010 00 > 81828384, 03 0100 0B000014 00 > F5 | fails Address: 0x14, Data: 0x85, Read: 0xF5
dev25 | char_write addr_device=0x10 count=2 fill_char=0xA5 + data_write addr_device=0x7FFFFE data=A1B2 | 04 02000010 A5A5 >, 04 027FFFFE A1B2 > | ok A1B2
dev25 size=0x20000 | erase | 04 D8000000 >, 04 D8010000 > | ok
dev25 size=0x8000 | erase | | ok
dev25 erase=D8|65536|1 | erase | | fails
dev25 erase=D8|0 | erase | | fails
dev25 | erase_blocks size=65536 begin=2 count=2 + erase_blocks size=4096 begin=1 count=0 + erase_blocks size=4096 begin=1 count=1 | 04 D8020000 >, 04 D8030000 >, 04 21001000 > | ok
dev25 | erase_blocks size=8192 begin=0 count=1; status_reg_write data=0002 | | fails
dev25 erase_blocks=xy|8192,1D8|8192 | erase_blocks size=8192 begin=0 count=1 | | fails
dev25 MAX_DATA=4 | test_empty_blocks size=4 begin=3 count=2 | 03 0400 0B00000C 00 > FF*4, 03 0400 0B000010 00 > FFFFFF7F | fails Address: 0x13, Data: 0xFF, Read: 0x7F
dev25 | status_reg_read | 03 010005 > 1C, 03 010035 > 02, 03 010015 > 60 | ok 1C0260
dev25 | status_reg_read | 03 010005 > 1C, 03 010035 | fails @NoAnswer
dev25 status_reg_def=00000000 | status_reg_read | | fails
dev25 | status_reg_write data=1c~02~61 | 04 011C >, 04 3102 >, 04 1161 > | ok 1c 02 61
dev25 status_reg_def=0002 | status_reg_write data=0002 | | fails
dev25 | status_reg_verify data=1C0260 | 03 010005 > 1C, 03 010035 > 02, 03 010015 > 60 | ok 1C0260
dev25 | status_reg_verify data=1c0260 | 03 010005 > 1C, 03 010035 > 02, 03 010015 > 60 | fails Registers: Data: 1c0260, Read: 1C0260
dev25 status_reg_def=1C | status_reg_verify data=1C | 03 010005 > 1C, 03 010035 > FF, 03 010015 > FF | ok 1C
dev25 status_reg_count=2 status_reg_def=0000 | status_reg_read | 03 010005 > 1C, 03 010035 > 02 | ok 1C02
dev25 status_reg_count=2 status_reg_def=0000 | status_reg_write data=1C02 + status_reg_verify data=1C02 | 04 011C >, 04 3102 >, 03 010005 > 1C, 03 010035 > 02 | ok 1C02
dev25 status_reg_count=1 status_reg_def=00 | status_reg_verify data=1C | 03 010005 > 1E | fails Registers: Data: 1C, Read: 1E
dev25 status_reg_count=4 | status_reg_read; status_reg_write data=1C0200; status_reg_verify data=1C0200 | | fails
dev25 | security_reg_erase data=5 | 04 44001000 >, 04 44003000 > | ok 5
dev25 security_reg_size=0 | security_reg_erase | | ok 255
dev25 MAX_DATA=100 | security_reg_test_empty data=4 | 03 5800 48003000 00 > FF*88, 03 6400 48003058 00 > FF*100, 03 4400 480030BC 00 > FF*68 | ok 4
dev25 MAX_DATA=300 | security_reg_test_empty data=2 | 03 0001 48002000 00 > FF*255 00 | fails Address: 0x1FF, Data: 0xFF, Read: 0x00
dev25 | security_reg_test_empty data=0 | | ok 0
dev25 MAX_DATA=100 | security_reg_write file=in format=BIN addr_device=0x1FE count=4 | 04 420020FE 3031 >, 04 42003000 3233 > | ok
dev25 MAX_DATA=100 | security_reg_verify file=in format=BIN addr_device=0xFE count=4 | 03 0200 480010FE 00 > 3031, 03 0200 48002000 00 > 3233 | ok
dev25 | security_reg_read file=out format=BIN addr_device=16 count=2 | 03 0200 48001010 00 > AABB | ok
dev25 security_reg_size=5120 | security_reg_write file=in format=BIN addr_device=3840 count=4 | | fails @AddrOutsideDevice
dev25 | unique_id_read | 03 0800 4B00000000 > D164A95B0F9C2A37 | ok D164A95B0F9C2A37
dev25 | unique_id_read | 03 0800 4B00000000 > D164A95B0F9C2A | fails
dev25 | sfdp_reg_read file=out format=BIN addr_device=16 count=2 | 03 0200 5A000010 00 > 5346 | ok
dev25 alg_ident=1 alg_erase=1 alg_flash_read=1 alg_flash_write=1 | ident; erase; test_empty; char_write | | fails
dev25 alg_status_reg_read=1 alg_status_reg_write=1 alg_unique_id_read=1 | status_reg_read; status_reg_write; unique_id_read | | fails
dev25 alg_security_reg_erase=1 alg_security_reg_read=1 | security_reg_erase; security_reg_test_empty | | fails
dev25 alg_security_reg_write=1 alg_fsdp_read=1 | security_reg_write file=in format=BIN count=4; sfdp_reg_read file=out format=BIN count=4 | | fails

dev25 MAX_DATA=0 | test_empty; data_read data=00; char_write; file_write file=in; file_read file=out; security_reg_test_empty data=1 | | fails @SizeMissing
dev25 page_size=0 | data_write data=00 | | fails @SizeMissing
dev25 | erase_blocks size=0 begin=0 count=1 | | fails @SizeMissing
dev25 page_size=-256 | file_write file=in | | fails @SizeMissing
dev25 size=0 | test_empty; erase | | fails @SizeMissing
dev25 | data_write addr_device=0x7FFFFF data=1122; data_write addr_device=-2 data=1122; data_read addr_device=-2 data=1122 | | fails @AddrOutsideDevice
dev25 addr_begin=256 | data_write addr_device=255 data=1122 | | fails @AddrOutsideDevice
dev25 size=0x2000000 | data_write addr_device=0xFFFFFF data=1122; erase | | fails @AddrOutsideDevice
dev25 | erase_blocks size=65536 begin=127 count=2; erase_blocks size=65536 begin=-1 count=1;
    erase_blocks size=65536 begin=0x7FFFFFFFFFFF count=0x7FFFFFFFFFFF; test_empty_blocks size=65536 begin=128 count=1 | | fails @AddrOutsideDevice

avr | ident | 07 0030000000 > 0030001E, 07 0030000100 > 00300098, 07 0030000200 > 00300001 | ok
avr | ident | 07 0030000000 > 0030001E, 07 0030000100 > 00300095, 07 0030000200 > 0030000F | fails Read signature: 1E950F (@DeviceUnknown)
avr | ident | 07 0030000000 > 0030FF1E | fails @WrongEcho
avr | readChipId | 07 0030000000 > 0030001E, 07 0030000100 > 00300095, 07 0030000200 > 0030000F | ok 1E950F
avr | erase | 07 0AAC800000 > 00AC8000 | ok
avr | erase | 07 0AAC800000 > 00AC80FF | fails @WrongEcho
avr | leave reset=true duration=-300 | 01 D4FE 000000 > | ok
avr alg_flash_read=0 | flash_data_read addr_device=0x1234 data=0000 | 03 34120200 > A1B2 | ok A1B2
avr | flash_data_read addr_device=0x31234 data=00 | 07 004D000300 > 004D0000, 03 34120100 > A1 | ok A1
avr | flash_data_read addr_device=0x1FFFF data=0000 | 07 004D000100 > 004D0001, 03 FFFF0100 > A1, 07 004D000200 > 004D0002, 03 00000100 > B2 | ok A1B2
avr | flash_data_read addr_device=0x10000 data=00 + flash_data_write addr_device=0x10010 data=0000 + flash_data_read addr_device=0x1FFFF data=00 | 07 004D000100 > 004D0001, 03 00000100 > FF, 04 10000000 >, 07 054C800800 > 004C8008, 03 FFFF0100 > FF | ok FF
avr | flash_data_read addr_device=2 data=00 + flash_data_read addr_device=0 data=00 + flash_data_write addr_device=0 data=0000 | 07 004D000000 > 004D0000, 03 02000100 > FF, 07 004D000000 > 004D0000, 03 00000100 > FF, 04 00000000 >, 07 054C000000 > 004C0000 | ok 0000
avr alg_flash_write=0 | flash_data_write addr_device=0x1234 data=A1B2 | 04 3412A1B2 > | ok A1B2
avr alg_flash_write=1 | flash_data_write addr_device=0x1234 data=A1B2 + flash_data_write addr_device=0x11 data=A1 + flash_data_write addr_device=0x10 data=A1 |
    04 3412A1B2 >, 07 054C091A00 > 004C091A, 04 1000FFA1 >, 07 054C000800 > 004C0008, 04 1000A1FF >, 07 054C000800 > 004C0008 | ok A1
avr alg_flash_write=1 | flash_data_write addr_device=0x3F data=A1B2 | 04 3E00FFA1 >, 07 054C001F00 > 004C001F, 04 4000B2FF >, 07 054C002000 > 004C0020 | ok A1B2
avr alg_flash_write=1 | flash_data_write data=A1B2 | 04 0000A1B2 >, 07 054C000000 > 004C00 | fails
avr alg_flash_write=1 | flash_data_write addr_device=0x10000 data=A1 | | fails @AddrOutsideDevice
avr | flash_data_write addr_device=0x3FFFE data=A1B2 | 07 004D000300 > 004D0003, 04 FEFFA1B2 >, 07 054CFFFF00 > 004CFFFF | ok A1B2
avr MAX_DATA=5 alg_flash_write=1 | flash_data_write data=A1B2C3D4E5 | 04 0000A1B2C3D4 >, 07 054C000000 > 004C0000, 04 0400E5FF >, 07 054C000200 > 004C0002 | ok A1B2C3D4E5
avr flash_page_size=0 alg_flash_write=0 flash_delay=5 | flash_data_write addr_device=0x3F data=A1B2C3 | 04 3E00FFA1 >, 04 4000B2C3 > | ok A1B2C3
avr flash_page_size=0 alg_flash_write=1 | flash_data_write addr_device=0x10 data=A1B2C3 | 04 1000A1B2 >, 07 054C000800 > 004C0008, 04 1200C3FF >, 07 054C000900 > 004C0009 | ok A1B2C3
avr flash_page_size=0 alg_flash_write=0 flash_delay=1250 | flash_data_write addr_device=2 data=A1B2C3D4 | 04 0200A1B2 >, 04 0400C3D4 > | ok A1B2C3D4
avr flash_page_size=0 alg_flash_write=0 flash_delay=9999 | flash_data_write data=A1B2C3 | 04 0000A1B2 >, 04 0200C3FF > | ok A1B2C3
avr flash_page_size=-1 | flash_data_write data=A1 | | fails @SizeMissing
avr | eeprom_data_read addr_device=0x123 data=00~00 | 05 23010200 > A1B2 | ok A1 B2
avr eeprom_delay=2500 | eeprom_data_write addr_device=1 data=A1B2C3 | 06 0100A1 >, 06 0200B2C3 > | ok A1B2C3
avr eeprom_page_size=8 | eeprom_data_write addr_device=0x11E data=A1B2C3 | 06 1E01A1B2 >, 06 2001C3 > | ok A1B2C3
avr alg_fuse_read=0 | fuse_read | 07 0058000000 > 005800FF | ok 21
avr | fuse_read | 07 0050000000 > 00500062, 07 0058080000 > 00580899, 07 0050080000 > 005008FE | ok 6299FE
avr | fuse_verify data=6299FF | 07 0050000000 > 00500062, 07 0058080000 > 00580899, 07 0050080000 > 005008FE | fails Fuse Bits: Data: 6299FF, Read: 6299FE
avr alg_fuse_write=0 fuse_def=21 | fuse_write data=20 | 07 FFACBE0000 > 00ACBE00 | ok 20
avr alg_fuse_write=1 fuse_def=1F | fuse_write data=FF | 07 FFACBF0000 > 00ACBF00 | ok FF
avr | fuse_write data=6A99FD | 07 FFACA0006A > 00ACA000, 07 FFACA80099 > 00ACA800, 07 FFACA400FD > 00ACA400 | ok 6A99FD
avr fuse_def= alg_fuse_write=0 | fuse_write | | fails
avr alg_lock_read=0 | lock_read | 07 0058000000 > 005800DF | ok 04
avr | lock_read | 07 0058000000 > 005800DF | ok DF
avr | lock_read | 07 0058000000 > 005800 | fails
avr | lock_verify data=FF | 07 0058000000 > 005800FC | fails Fuse Bits: Data: FF, Read: FC
avr alg_lock_write=0 | lock_write data=F9 | 07 0BACF90000 > 00ACF900 | ok F9
avr | lock_write data=FC | 07 0BACE000FC > 00ACE000 | ok FC
avr | osccal_read | 07 0038000000 > 003800A1, 07 0038000100 > 003800B2 | ok A1B2
avr alg_ident=1 alg_erase=1 alg_eeprom_read=1 alg_eeprom_write=1 | ident; erase; test_empty_eeprom; eeprom_char_write | | fails
avr alg_flash_write=3 alg_fuse_write=3 alg_osccal_read=1 | flash_data_write data=A1; fuse_write; osccal_read | | fails
avr osccal_def= | osccal_read; fuse_write data=6299; lock_write data= | | fails

dev24 | data_read addr_device=0x7FF data=00 | 05 0100 AE FF > A1 | ok A1
dev24 size=0x20000 addr_size=2 | data_read addr_device=0x1234 data=00~00 | 05 0200 A0 1234 > A1B2 | ok A1 B2
dev24 size=0x20000 addr_size=2 | data_verify addr_device=0x1FFFF data=A1 | 05 0100 A2 FFFF > A1 | ok A1
dev24 MAX_DATA=3 size=0x20000 addr_size=2 read_block=65536 | data_read addr_device=0xFFFF data=0000 | 05 0100 A0 FFFF > A1, 05 0100 A2 0000 > B2 | ok A1B2
dev24 | data_write addr_device=0x10F data=A1B2 | 04 A2 0F A1 >, 04 A2 10 B2 > | ok A1B2
dev24 | set_addr addr=7 + leave | 03 0A >, 01 0000 000000 > | ok
dev24 | readChipId | | ok
dev24 MAX_DATA=8 addr_begin=4 size=14 | erase | 04 A0 04 FF*4 >, 04 A0 08 FF*8 >, 04 A0 10 FF*2 > | ok
dev24 alg_read=1 alg_write=1 | test_empty; erase | | fails
dev24 addr_size=0 | data_write data=00 | | fails
dev24 addr_size=3 | data_read data=00 | | fails
dev24 size=0x1000 | data_write addr_device=0x800 data=00 | | fails @AddrOutsideDevice
dev24 page_size=0 | erase | | fails @SizeMissing

dev93c | set_clk clk=8000000 | 02 00127A00 > | ok
dev93c | erase | 03 > | ok
dev93c | char_verify; leave | | fails
)";

// Chip | command | its text in the table | valid or not | all its parameters, where they matter.
const char shown[] = R"(
dev25 | set_clk | 8 MHz | valid | clk=8000000
dev25 | set_clk clk=7000000 | 7 MHz | wrong
dev25 | set_clk clk=4302967296 | 4302967296 | wrong
dev25 | erase_blocks | 0x00..0x7FFFFF (8 Mbyte) | valid | size=65536 begin=0 count=128
dev25 | erase_blocks begin=1 count=2 | 0x10000..0x2FFFF (128 Kbyte) | valid
dev25 | erase_blocks count=x | 0x00..0xFFFFFFFFFFFFFFFF (0 byte) | wrong
dev25 size=0x8000 | erase_blocks | 0x00..0xFFFFFFFFFFFFFFFF (0 byte) | valid | size=65536 begin=0 count=0
dev25 | char_write | 0x00..0x7FFFFF :0xFF | valid | addr_device=0 count=0x800000 fill_char=255
dev25 | char_write count=x | 0x00..0xFFFFFFFFFFFFFFFF :0xFF | wrong
dev25 | char_write fill_char=4294967551 | 0x00..0x7FFFFF :0xFF | wrong
dev25 | file_write file=x count=18446744073709551616 | HEX: x | wrong
dev25 | char_write addr_device=1 | 0x01..0x800000 :0xFF | wrong
dev25 | data_read | 0x00..0x00 : | wrong | addr_device=0 data=
dev25 | data_write data=a1~b2 | 0x00..0x01 :A1 B2 | valid
dev25 addr_begin=16 | file_write | HEX: | wrong | file= format=HEX addr_file=0 addr_device=16 count=0x800000
dev25 | status_reg_read | 000260 | valid | data=000260
dev25 | status_reg_read data=1C | 1C | valid
dev25 | status_reg_write data=1c~0260 | 1c 0260 | valid
dev25 | status_reg_verify data=1C02 | 1C02 | wrong
dev25 | security_reg_erase | Registers: 111 | valid | data=255
dev25 | security_reg_erase data=6 | Registers: 110 | valid
dev25 | security_reg_erase data=x | Registers: 000 | wrong
dev25 security_reg_size=0 | security_reg_test_empty | Registers: | valid
dev25 | security_reg_read | HEX: | wrong | file= format=HEX addr_file=0 addr_device=0 count=768
dev25 | security_reg_read file=x | HEX: x | valid
dev25 | security_reg_read file=x count=769 | HEX: x | wrong
dev25 | sfdp_reg_read | HEX: | wrong | file= format=HEX addr_file=0 addr_device=0 count=256
dev25 | sfdp_reg_read file=x addr_device=1 | HEX: x | wrong
dev25 | unique_id_read | 0000000000000000 | valid | data=0000000000000000
dev25 | leave | --- | valid | state=
dev25 | leave state=? | ?-- | wrong
avr | leave | -300 ms, --- | valid | state= reset=true duration=-300
avr | leave duration=300 | 300 ms, --- | wrong
avr | lock_write | FF | valid | data=FF
avr | fuse_write data=6299FX | 6299FX | wrong
avr | flash_char_verify | 0x00..0x3FFFF :0xFF | valid
avr | eeprom_char_write | 0x00..0xFFF :0xFF | valid
avr | eeprom_data_write addr_device=4096 data=00 | 0x1000..0x1000 :00 | wrong
dev24 | set_addr | Address: 0-0 | valid | addr=0
dev24 | set_addr addr=6 | Address: 1-0 | valid
dev24 | set_addr addr=8 | Address: 0-0 | wrong
dev24 | set_addr addr=4294967296 | Address: 0-0 | wrong
dev24 | set_addr addr=-1 | Address: 1-1 | wrong
)";

// Chip | number of its commands | beginnings of those that a new chip brings back to its default | not one of
// them.
const char catalogue[] = R"(
dev25 | 31 | status_reg | fuse_read
dev24 | 16 | - | ident
dev93c | 16 | - | ident
avr | 36 | fuse|lock|osccal | set_addr
avr cfg_cmd_list=1 | 35 | fuse|lock | osccal_read
avr cfg_cmd_list=0 | 30 | lock_write | fuse_read
)";

// Chip | block of the selection. No types.lst stands here, so the family is 0; the clock is its level.
const char blocks[] = R"(
dev25 | 0000A503020100
dev24 | 000007010302010005
dev93c |
avr | 0000000302010000FF
avr flash_page_size=0 | 0000000302010005FF
avr flash_page_size=0 flash_polling=1 eeprom_polling=0 | 00000003020100FF00
)";

} // namespace

class TestFamilies : public QObject
{
    Q_OBJECT

private slots:
    void run_data() { textRows(runs, {"chip", "command", "frames", "outcome"}); }
    void run()
    {
        QFETCH(QString, chip);
        QFETCH(QString, command);
        QFETCH(QString, frames);
        QFETCH(QString, outcome);
        DeviceBench bench(chip);
        bench.dir().write("in", "0123");
        bench.dir().write("signature.lst",
                          "# list\n\nC22017 = no such key\n C22017=MX25L6406E\r\nC22017=later\n");
        for (const QString& each : command.split("; ")) {
            const auto result = bench.play(each.split(" + "), frames);
            const QString text =
                result.ok ? "ok " + result.errorText + bench.result() : "fails " + result.errorText;
            QCOMPARE(text.trimmed(), outcome);
            // Whatever was read and kept is told.
            if (result.ok &&
                each.section(" + ", -1).contains(QRegularExpression("(?<!file|sfdp_reg)_read"))) {
                const QString read = each.startsWith("security") ? "AABB" : bench.result();
                QCOMPARE(result.events.last(), "4:" + read);
            }
            QCOMPARE(bench.dir().read("in"), QByteArray("0123"));
        }
    }

    void show_data() { textRows(shown, {"chip", "command", "text", "valid", "params"}); }
    void show()
    {
        QFETCH(QString, chip);
        QFETCH(QString, command);
        DeviceBench bench(chip);
        const TData data = bench.command(command);
        const QString text = bench.device().paramsText(data, nullptr).trimmed();
        QTEST(text, "text");
        // A value that is about to be read does not stand there as if it were today's.
        const bool reads = command.contains(QRegularExpression("(data|status_reg|unique_id)_read"));
        QCOMPARE(bench.device().beginText(data).trimmed(), !reads                ? text
                                                           : text.contains("..") ? text.section(' ', 0, 0)
                                                                                 : QString());
        const QString valid = bench.device().checkParams(data) ? "valid" : "wrong";
        QTEST(valid, "valid");
        QVERIFY(!bench.device().createForm(data));
        QFETCH(QString, params);
        const TData expected = textParams(params);
        for (auto it = expected.begin(); it != expected.end(); ++it)
            QCOMPARE(it.key() + data.value(it.key()).toString(), it.key() + it.value().toString());
        QVERIFY(expected.isEmpty() || data.size() == expected.size() + 6);
    }

    void allCommands_data() { textRows(catalogue, {"chip", "keys", "refreshed", "missing"}); }
    void allCommands()
    {
        QFETCH(QString, chip);
        QFETCH(QString, refreshed);
        DeviceBench bench(chip);
        const IDevice& device = bench.device();
        const QStringList keys = device.commandKeys();
        QTEST(QString::number(keys.size()), "keys");
        QFETCH(QString, missing);
        QVERIFY(!device.hasCommand(missing) && !device.hasCommand(cmd::separator));
        QCOMPARE(device.hasReset(), keys.contains(cmd::flash_data_read));
        TSerialPort closed;
        for (const QString& key : keys) {
            if (key == cmd::separator)
                continue;
            TData data = bench.command(key + " data=old");
            QVERIFY(device.hasCommand(key) && !device.commandTitle(data).isEmpty());
            QCOMPARE(device.refreshParams(data), key.contains(QRegularExpression("^(" + refreshed + ")")));
            const std::unique_ptr<IDeviceExec> exec(device.createExec(data));
            bool exitRun = false;
            int none = 0;
            QVERIFY(!exec->execute(&closed, exitRun, none, none));
            const bool known =
                keys.size() != 16 || keys.contains(cmd::set_addr) || key == cmd::set_clk || key == cmd::erase;
            QCOMPARE(key + exec->errorText(), key + (known ? "@PortNotOpen" : ""));
        }
    }

    void deviceBlock_data() { textRows(blocks, {"chip", "block"}); }
    void deviceBlock()
    {
        QFETCH(QString, chip);
        DeviceBench bench(chip);
        TData data = bench.command(cmd::set_clk);
        data.remove(key::clk);
        QVERIFY(bench.device().setDeviceDefaults(data));
        const bool hasPins = data.contains(key::addr);
        QVERIFY(bench.device().checkDeviceParams(data));
        data[key::addr] = 3;
        const QString block = bench.device().deviceParamBlock(data).toHex().toUpper();
        QTEST(block, "block");
        data[key::addr] = 8;
        QCOMPARE(bench.device().checkDeviceParams(data), !hasPins);
        data[key::clk] = "4302967296";
        data[key::addr] = 3;
        QVERIFY(!bench.device().checkDeviceParams(data));
    }

    // Three registers of an older project on a chip that is now known to have fewer.
    void olderRegisters()
    {
        DeviceBench bench("dev25 status_reg_count=2 status_reg_def=0000");
        const int id = bench.command("status_reg_write data=1c02~60").value(key::id_cmd).toInt();
        project().markMadeFor();
        project().normalizeAll();
        QCOMPARE(project().cmdById(id)->param(key::data), QVariant("1C02"));
    }

    void generatedForms()
    {
        const auto spec = [](const QString& chip, const QString& command) {
            DeviceBench bench(chip);
            return static_cast<const TFamilyDevice&>(bench.device()).formSpec(bench.command(command));
        };
        const TFormSpec mask = spec("dev25", "security_reg_erase data=5");
        QCOMPARE(mask.items, (QStringList{"frm+", "ckl|01|-|e|-|Security Register #1 (0x00..0xFF)",
                                          "ckl|02|-|e|-|Security Register #2 (0x100..0x1FF)",
                                          "ckl|04|-|e|-|Security Register #3 (0x200..0x2FF)", "frm-"}));
        QCOMPARE(mask.value + mask.defaultValue, QString("0507"));
        const TFormSpec pins = spec("dev24", "set_addr addr=6");
        QCOMPARE(pins.items, (QStringList{"frm+", "grp+|@GroupAddressPins", "ckl|04|-|e|-|A2||",
                                          "ckl|02|-|-|-|NC||", "ckl|01|-|e|-|A0||", "grp-", "frm-"}));
        QCOMPARE(pins.value + pins.defaultValue, QString("0400"));
        QCOMPARE(spec("dev25", cmd::erase_blocks).blockSizes, (QList<int>{4096, 32768, 65536, 4096}));
        QVERIFY(spec("dev25", cmd::status_reg_read).showEdit && !spec("avr", cmd::osccal_read).showEdit);
        for (const QString& chip : {QString("dev25 status_reg_cfg="), QString("avr status_reg_cfg=x")})
            QVERIFY(spec(chip, cmd::status_reg_read).kind == TFormSpec::Kind::None);
        // The edit of a mask comes back in hexadecimal.
        DeviceBench bench("dev25");
        TData edited{{key::id_cmd, bench.command(cmd::security_reg_erase).value(key::id_cmd)},
                     {key::data, "10"}};
        QCOMPARE(bench.device().normalizeParams(edited).value(key::data), QVariant(16U));
    }
};

QTEST_GUILESS_MAIN(TestFamilies)
#include "test_families.moc"
