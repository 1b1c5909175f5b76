#include "base/keys.h"
#include "devices/shared/IDeviceExec.h"
#include "formats/crc/ICRC.h"
#include "formats/crc/createCRC.h"
#include "formats/hexkit.h"
#include "link/wire/TSerialPort.h"
#include "support/BenchProject.h"

#include <limits>
#include <memory>

namespace {

/// The line of a checksum over these bytes, with its kind.
QString resultOf(const QString& name, const QByteArray& data)
{
    const std::unique_ptr<ICRC> crc(createCRC(name));
    crc->update(data.constData(), data.size());
    return "4:" + name + ": " + QString::fromLatin1(crc->result().toHex().toUpper());
}

} // namespace

class TestCalcCrc : public QObject
{
    Q_OBJECT

private slots:
    void ranges()
    {
        const auto row = [this](const char* name, const QByteArray& content, const char* format, qint64 addr,
                                qint64 count, const QByteArray& taken, const QString& remark = {}) {
            m_bench.dir().write("data", content);
            const BenchRun outcome = run("CRC-32", format, addr, count);
            QVERIFY2(outcome.ok, qPrintable(outcome.errorText));
            QStringList events{resultOf("CRC-32", taken)};
            for (const QString& each : remark.split("; ", Qt::SkipEmptyParts))
                events += "3:@" + each;
            compareRow(name, outcome.events, events);
        };
        const auto fill = [](int n) { return QByteArray(n, '\xEE'); };
        const QByteArray digits("0123456789");
        const QByteArray hex = hexLine(0, 4, "abcd") + hexLine(0, 0x20, "efgh") + hexUpper(4, 0x30) +
                               hexLine(0, 0, "x") + hexEnd;
        row("inside a binary file", digits, "BIN", 3, 4, "3456", "FileLeftOut 4 03 06 6");
        row("binary file too short", digits, "bin+", 8, 100, "89" + fill(98),
            "FileLeftOut 2 08 09 8; FileEndsEarly " + m_bench.dir().file("data") + " 98 0A");
        row("whole binary file", digits, "bin", 0, 10, digits);
        row("less than nothing", digits, "bin", 5, -3, "", "FileNoData " + m_bench.dir().file("data"));
        row("gaps of a HEX file", hex, "hex", 0, 0x30, fill(4) + "abcd" + fill(24) + "efgh" + fill(12),
            "FileLeftOut 8 04 23 1");
        row("range ends in a record", hex, "hex", 4, 3, "abc", "FileLeftOut 3 04 06 6");
        row("range begins in a record", hex, "HEX", 6, 4, "cd" + fill(2), "FileLeftOut 2 06 07 7");
        row("record above the range", hexLine(0, 9, "x") + hex, "hex", 4, 4, "abcd", "FileLeftOut 4 04 07 6");
        row("gap of many blocks", hex, "hex", 0x20, 0x2FFFE1, "efgh" + fill(0x2FFFDC) + "x",
            "FileLeftOut 5 20 300000 4");
        const QByteArray large = digits.repeated(2000000);
        row("longer than a block", large, "bin", 5, large.size() - 10, large.mid(5, large.size() - 10),
            "FileLeftOut 19999990 05 1312CFA 10");
        row("end of all addresses", hex, "hex", std::numeric_limits<qint64>::max() - 3, 99, fill(3),
            "FileNoData " + m_bench.dir().file("data"));
    }

    void failures()
    {
        m_bench.dir().write("bad.hex", hexLine(0, 0, "ab") + hexLine(4, 0, QByteArray(2, '\0')) + ":what\n");
        // No such checksum, no such file; of a broken one what was taken is told.
        const QString rows[][4] = {{"CRC32", "bad.hex", "", ""},
                                   {"CRC32", "none", "@FileNotFound ", ""},
                                   {"CRC-8", "bad.hex",
                                    "@FilePlace @HexWrongLine " + m_bench.dir().file("bad.hex") + " 3",
                                    resultOf("CRC-8", "ab")}};
        for (const auto& row : rows) {
            const BenchRun outcome = run(row[0], "hex", 0, 100, {}, row[1]);
            QVERIFY(!outcome.ok);
            QCOMPARE(outcome.errorText + '|' + outcome.events.join(""), row[2] + '|' + row[3]);
        }
    }

    void stops()
    {
        for (const QByteArray& content : {QByteArray(hexEnd), QByteArray(1 << 24, 'x')}) {
            m_bench.dir().write("data", content);
            QElapsedTimer timer;
            timer.start();
            const BenchRun outcome = run("CRC-82/DARC", content == hexEnd ? "hex" : "bin", 0, qint64(1) << 40,
                                         [](IDeviceExec& exec, int) { exec.slotStop(); });
            QVERIFY(outcome.ok && outcome.events.size() == 1);
            QVERIFY(outcome.events[0].startsWith("4:CRC-82/DARC: "));
            QVERIFY2(timer.elapsed() < 5000, "only a few blocks are taken before a stop is seen");
        }
    }

private:
    /// A calc_crc over the file "data", or another one.
    BenchRun run(const QString& name, const QString& format, qint64 addr, qint64 count,
                 const PercentHook& hook = {}, const QString& file = "data")
    {
        // As from a project file: every value is a string.
        const int id = m_bench.add(cmd::calc_crc, {{key::crc_name, name},
                                                   {key::file, m_bench.dir().file(file)},
                                                   {key::format, format},
                                                   {key::addr, QString::number(addr)},
                                                   {key::count, QString::number(count)},
                                                   {key::fill, "238"}});
        TSerialPort none;
        return runCommand(m_tools, id, none, hook);
    }

    BenchProject m_bench;
    TDevTools m_tools{dev_class::tools, {}};
};

QTEST_GUILESS_MAIN(TestCalcCrc)
#include "test_calc_crc.moc"
