#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "devices/microwire/TDev93C.h"
#include "forms/FormBench.h"
#include "forms/TFormCommand.h"
#include "forms/chip/TFormDevEraseBlocks.h"
#include "forms/edits/TPortBox.h"
#include "forms/edits/TWgtEditFileName.h"

#include <QtWidgets>

/// chip, or "-", or "list" for a programmer with listed frequencies | command as stored | what the user does
/// | what is reported | the command's row | tool tips of the fields and the buttons at first, if told
constexpr char editRows[] = R"(
- | counter value=3 limit=10 delta=-1 | type 0; type 1 ^; type 0 99999999999; type 2 v* | delta=-1 limit=11 value=3; delta=-1 limit=11 value=2147483647; delta=-2 limit=11 value=2147483647; delta=1 limit=11 value=2147483647 | Value: 2147483647, Limit: 11, Delta: 1 | 0..2147483647; 0..2147483647; -2147483648..2147483647; Default: 0; Default: 10; Default: 1
- | counter value=0 limit=5 delta=-1 | type 0 v; type 2 -99999999999 | delta=-2147483648 limit=5 value=0 | Value: 0, Limit: 5, Delta: -2147483648
- | delay value=100 | type 0 0; type 0 v; press 0 | value=0; value=100 | 100 ms | 0..2147483647 ms; Default: 100 ms
- | counter value=4294967296 limit=many delta=1 | type 0; type 1; type 2 ^; type 0 5; press 1 | delta=2 limit=many value=4294967296; delta=2 limit=many value=5; delta=2 limit=10 value=5 | Value: 5, Limit: 10, Delta: 2
- | delay value=99999999999 | type 0; type 0 5 | value=5 | 5 ms
- | calc_crc crc_name=CRC32 format=bin file=a.bin addr=0 count=16 fill=300 | type 4; type 0 1F; choose 1 HEX | addr=31 count=16 crc_name=CRC32 file=a.bin fill=300 format=bin; addr=31 count=16 crc_name=CRC32 file=a.bin fill=300 format=HEX | CRC32: a.bin
- | set_vcc vcc=3.3 | type 0; type 0 3.3; type 0 2.5; type 0 9; press 0 | vcc=2.5; vcc=5; vcc=3.3 | 3.3 V
- | set_vpp vpp=25 | type 0 ^^v; type 0 * | vpp=26; vpp=25; vpp=12 | 12.0 V
- | set_vicc vcc=99 icc=50 ocp=false | type 1 20.125; check 0 | icc=20.125 ocp=false vcc=99; icc=20.125 ocp=true vcc=99 | 99.0 V, 20.125 mA, OCP
- | set_vipp vpp=50 ipp=20.5 ocp=true | press 1; press 0; check 0 | ipp=20.5 ocp=true vpp=12; ipp=20.5 ocp=false vpp=12 | 12.0 V, 20.500 mA | 9..26 V; 1..70 mA; Default: 12 V; Default: 20.5 mA
- | reset duration=400 | type 0 -400; type 0 5; type 0 -5000; type 0 0; press 0 | duration=-400; duration=10; duration=-1000; duration=-400 | -400 ms | -10..-1000, 10..1000 ms; Default: -400 ms
- | set_freq freq=1000 duty_cycle=70 | type 0; type 0 2000 | duty_cycle=50 freq=2000 | 2 KHz | 1000..8000000 Hz; Default: 1000000
list | set_freq freq=1500 duty_cycle=50 | choose 1 25 %; choose 0 2 MHz | duty_cycle=25 freq=1500; duty_cycle=25 freq=1000; duty_cycle=25 freq=2000000 | 2 MHz, 25 %
- | set_io state=HZ | choose 2 I (input) | state=HZI | HZI
- | set_io state=HZIIII | press 2 | state=LLL | LLL
W25Q64 | set_clk clk=5 | choose 0 8 MHz | clk=1000000; clk=8000000 | 8 MHz
ATmega328P | set_clk clk=5000 | type 0 v; press 0; type 0 99999999999 | clk=4999; clk=5000; clk=9000000 | 9 MHz | 1000..9000000 Hz; Default: 5000
W25Q64 | erase_blocks size=4096 begin=200 count=9999 | type 1; choose 0 32 Kbyte; type 0 250; type 1 *v; choose 0 64 Kbyte | begin=200 count=56 size=32768; begin=250 count=6 size=32768; begin=250 count=5 size=32768; begin=250 count=5 size=65536 | 0xFA0000..0xFEFFFF (327680 byte) | 0..2047; 1..1848; Default: 0; Default: 1848
W25Q64 | erase_blocks size=4096 begin=0 count=2048 | type 0 2040; choose 0 32 Kbyte; type 0 255; type 1 ^v; type 0 0 | begin=2040 count=8 size=4096; begin=2040 count=256 size=32768; begin=255 count=1 size=32768; begin=0 count=256 size=32768 | 0x00..0x7FFFFF (8 Mbyte)
W25Q64 | test_empty_blocks size=123 begin=0 count=1 | type 0 1; choose 0 4 Kbyte | begin=0 count=1 size=4096 | 0x00..0xFFF (4 Kbyte)
W25Q64 | char_write addr_device=0 count=99999999 fill_char=255 | type 4 0x100; type 4 0xA5; type 0 0x7FFFF0; press 1; press 2 | addr_device=0 count=99999999 fill_char=165; addr_device=8388592 count=16 fill_char=165; addr_device=8388592 count=16 fill_char=255 | 0x7FFFF0..0x7FFFFF :0xFF | 0x00..0x7FFFFF; 0..8388607; 0x01..0x800000; 1..8388608; 0x00..0xFF; 0..255; Default: 0x00 [0]; Default: 0x800000 [8388608]; Default: 0xFF [255]
W25Q64 | char_write addr_device=8388607 count=1 fill_char=0 | press 1; type 1 8388000; type 1 8388608 | addr_device=8388000 count=608 fill_char=0; addr_device=8388608 count=8388608 fill_char=0 | 0x800000..0xFFFFFF :0x00
W25Q64 | char_write addr_device=here count=1e3 fill_char=4x | type 1; type 5 7; type 2 5; press 0 | addr_device=here count=1e3 fill_char=7; addr_device=here count=5 fill_char=7; addr_device=0 count=5 fill_char=7 | 0x00..0x04 :0x07
W25Q64 | data_write addr_device=16 data=00~0 | type 2; type 2 ab c; type 2 *; type 1 99999999; press 0 | addr_device=16 data=ABC; addr_device=99999999 data=ABC; addr_device=0 data=ABC | 0x00..0x01 :ABC
W25Q64 | file_write file=a format=hex addr_file=77 addr_device=0 count=8388608 | type 0 1; type 2 0x10; choose 0 BIN; type 0 0x20 | addr_device=16 addr_file=77 count=8388592 file=a format=HEX; addr_device=16 addr_file=77 count=8388592 file=a format=BIN; addr_device=16 addr_file=32 count=8388592 file=a format=BIN | BIN: a
ATmega328P | flash_file_read file=a format=ihex addr_file=0 addr_device=99999 count=0 | type 2; type 3 100 | addr_device=100 addr_file=0 count=0 file=a format=ihex | IHEX: a
W25Q64 | file_write file=a format=bin addr_file=0 addr_device=0 count=200000 | type 2 7FFFFF; type 2 800000; type 3 0; type 5 300; type 2 7FFFFF; type 2 0 | addr_device=8388607 addr_file=0 count=1 file=a format=BIN; addr_device=8388608 addr_file=0 count=200000 file=a format=BIN; addr_device=0 addr_file=0 count=200000 file=a format=BIN; addr_device=0 addr_file=0 count=300 file=a format=BIN; addr_device=8388607 addr_file=0 count=1 file=a format=BIN; addr_device=0 addr_file=0 count=300 file=a format=BIN | BIN: a
W25Q64 | leave state=L? | choose 1 H (output - high); press 1 | state=L--; state=LI-; state=LL-; state=LH-; state=III | III
ATmega328P | leave state=L reset=true duration=100 | choose 0 H (output - high); type 0 -2000; type 0 *; check 0 | duration=100 reset=true state=H--; duration=-1000 reset=true state=H--; duration=-400 reset=true state=H--; duration=-400 reset=false state=H-- | H-- | -1000..-10 ms; Default: -400 ms; - (not change); I (input); L (output - low); H (output - high)
ATmega328P | leave state=LLL reset=true duration=long | type 0; choose 0 H (output - high) | duration=long reset=true state=HLL | 0 ms, HLL
ATmega328P | leave state=LLL reset=false duration=5 | check 0 | duration=-10 reset=true state=LLL | -10 ms, LLL
ATmega328P | fuse_write data=62D9FF | check 2 | data=62D8FF | 62D8FF
W25Q64 | security_reg_erase data=5 | check 1 | data=07 | Registers: 111
AT24C02 | set_addr addr=1 | check 0; check 2 | data=05; data=04 | Address: 100
)";

/// The forms of all commands but the drawn ones, worked as a user works them.
class TestCommandForms : public QObject
{
    Q_OBJECT

private slots:
    void edits_data() { textRows(editRows, {"chip", "command", "steps", "reports", "text", "tips"}); }
    void edits()
    {
        QFETCH(QString, chip);
        QFETCH(QString, command);
        FormBench bench;
        if (chip == "list")
            bench.setProg("[Frequency]\nFQ_LIST=true\nFQLV_1000=1\nFQLV_2000000=1\n"
                          "DT_SHOW=true\nDT_LIST=true\nDTLV_25=1\nDTLV_50=1\n");
        if (chip == "list" || chip == "-")
            bench.addProg();
        else
            bench.addShippedChip(chip);
        bench.open(command);
        QFETCH(QString, tips);
        QStringList shown;
        for (const TWgtEditBase* edit : bench.form()->findChildren<TWgtEditBase*>())
            shown << edit->lineEdit()->toolTip();
        for (const QPushButton* button : bench.form()->findChildren<QPushButton*>())
            shown << button->toolTip();
        if (!tips.isEmpty())
            QCOMPARE(shown, tips.split("; "));

        QFETCH(QString, steps);
        for (const QString& step : steps.split("; "))
            bench.act(step);
        QTEST(bench.reports().join("; "), "reports");
        QTEST(bench.rowText(), "text");
        QApplication::setCursorFlashTime(0);
        const QImage picture = bench.form()->grab().toImage();
        QVERIFY(qobject_cast<TFormCommand*>(bench.form())->updateParams(bench.data(bench.idCmd)));
        QCOMPARE(bench.form()->grab().toImage(), picture);
        QTEST(bench.rowText(), "text");
        QCOMPARE(bench.reports(), QStringList());
        bench.reopen();
        QTEST(bench.rowText(), "text");
    }

    void nothingToEdit()
    {
        FormBench bench;
        const std::unique_ptr<QWidget> empty(TDev93C("", {}).createForm({{key::cmd, "unlock"}}));
        QVERIFY(empty && empty->children().isEmpty());
        // The chip is smaller than the block.
        TFormDevEraseBlocks form({{key::size, 65536}, {key::begin, 0}, {key::count, 1}}, {4096, 65536}, 2000);
        showActive(form);
        const QSignalSpy changes(&form, &TFormDevEraseBlocks::signalChangedCmdParam);
        for (const TWgtEditBase* edit : form.findChildren<TWgtEditBase*>())
            QCOMPARE(edit->lineEdit()->toolTip(), QString("0..0"));
        enter(form.findChild<TWgtEditBase*>()->lineEdit(), "1");
        QCOMPARE(changes.size(), 0);
        QTest::keyClick(form.findChild<QComboBox*>(), Qt::Key_Up);
        QCOMPARE(changes.last().first().value<TData>().value(key::count).toInt(), 0);
    }

    // A word that is in the selector but not in a table of forms would show an empty page.
    void eachHasForm()
    {
        for (const QString& word : TCmdCode::toolsKeys() + TCmdCode::progKeys()) {
            FormBench bench;
            bench.addProg();
            if (word != cmd::separator) {
                bench.open(word);
                QVERIFY2(bench.form(), qPrintable(word));
            }
        }
    }

    void programmer()
    {
        FormBench bench;
        bench.open("set_prog prog=gone alt_enabled=false alt_port=ttyX");
        bench.act("check 0");
        QLineEdit* port = bench.line<TPortBox>();
        enter(port, "ttyX");
        enter(port, "./sim");
        bench.act("choose 0 bench");
        QCOMPARE(bench.reports(), (QStringList{"alt_enabled=true alt_port=ttyX prog=gone",
                                               "alt_enabled=true alt_port=./sim prog=gone",
                                               "alt_enabled=true alt_port=./sim prog=bench"}));
        // What is being typed goes with the form.
        type(port, "X");
        bench.reopen();
        QCOMPARE(bench.rowText(), QString("bench: ./sim, Model"));
    }

    void targets()
    {
        FormBench bench;
        const int first = project().cfgIdAt(0);
        const int stop = bench.add(cmd::stop);
        const int second = bench.addCfg("Second");
        const int pause = bench.add(cmd::pause);
        bench.open("jamp to_cmd=12345");
        bench.act("choose 0 First"); // a step from no choice at all
        bench.act("choose 0 Second");
        QCOMPARE(bench.reports(),
                 (QStringList{QString("to_cmd=%1").arg(stop), QString("to_cmd=%1").arg(pause)}));
        // The list has changed behind the form: the next entry is not the one that stood there.
        project().removeCmd(pause);
        bench.part<QComboBox>(1)->setFocus();
        QTest::keyClick(bench.part<QComboBox>(1), Qt::Key_Down);
        QCOMPARE(bench.reports(), QStringList{QString("to_cmd=%1").arg(bench.idCmd)});

        bench.open("execute cfg=12345");
        bench.act("choose 0 First");
        bench.addCfg("Third");
        bench.act("choose 0 Third");
        QCOMPARE(bench.reports(), (QStringList{QString("cfg=%1").arg(first), QString("cfg=%1").arg(second),
                                               QString("cfg=%1").arg(project().cfgIdAt(2))}));
        QCOMPARE(bench.rowText(), QString("Third"));
    }

    void commandLine()
    {
        FormBench bench;
        bench.open("process file=make~~all");
        bench.part<TWgtEditFileName>()->choose("/opt/my tools/flash");
        enter(bench.part<QLineEdit>(), "> -x");
        QCOMPARE(bench.rowText(), QString("\"/opt/my tools/flash\" -x"));
        // An older project has no flag; the edit above has given it one.
        QCOMPARE(bench.data(bench.idCmd).value(key::must_succeed).toString(), QString("0"));
        QTest::keyClick(bench.part<QCheckBox>(), Qt::Key_Space);
        QCOMPARE(bench.data(bench.idCmd).value(key::must_succeed).toString(), QString("1"));
    }

    void countedWhileEdited()
    {
        // A run counts while the user types another limit: neither is lost.
        FormBench bench;
        bench.open("counter value=3 limit=10 delta=-1");
        QLineEdit* limit = bench.line(1);
        type(limit, "20");
        QVERIFY(
            qobject_cast<TFormCommand*>(bench.form())->updateParams({{"id_cmd", bench.idCmd}, {"value", 2}}));
        QCOMPARE(bench.line()->text(), QString("2"));
        QTest::keyClick(limit, Qt::Key_Return);
        QCOMPARE(bench.reports(), QStringList{"delta=-1 limit=20 value=2"});
    }
};

QTEST_MAIN(TestCommandForms)
#include "test_command_forms.moc"
