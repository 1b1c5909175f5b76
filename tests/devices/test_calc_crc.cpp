#include "core/keys.h"
#include "devices/TDevToolsExec.h"
#include "formats/ICRC.h"
#include "formats/createCRC.h"
#include "formats/hexkit.h"

#include <QElapsedTimer>

#include <limits>
#include <memory>

namespace {

QString resultOf(const QString& name, const QByteArray& data)
{
    const std::unique_ptr<ICRC> crc(createCRC(name));
    crc->update(data.constData(), data.size());
    return name + ": " + QString::fromLatin1(crc->result().toHex().toUpper());
}

} // namespace

class TestCalcCrc : public QObject
{
    Q_OBJECT

private slots:
    void ranges();
    void failures();
    void stops();

private:
    /// What a command does: its return value, its error text and its lines of kind ceResult.
    struct Outcome
    {
        bool good = false;
        QString error;
        QStringList lines;
    };
    Outcome run(const TData& data, bool stopAtOnce = false);
    TData command(const QString& name, const QString& file, const QString& format, qint64 addr,
                  qint64 count) const
    {
        // As from a project file: every value is a string.
        return {{key::cmd, QString(cmd::calc_crc)},
                {key::crc_name, name},
                {key::file, m_files.path(file)},
                {key::format, format},
                {key::addr, QString::number(addr)},
                {key::count, QString::number(count)},
                {key::fill, "238"}};
    }

    Files m_files;
};

TestCalcCrc::Outcome TestCalcCrc::run(const TData& data, bool stopAtOnce)
{
    Outcome outcome;
    TDevToolsExec exec(data);
    connect(&exec, &IDeviceExec::signalEventText, this, [&](TCodeExec code, const QString& text) {
        if (code == ceResult)
            outcome.lines += text;
    });
    if (stopAtOnce)
        connect(&exec, &IDeviceExec::signalEventProc, &exec, &IDeviceExec::slotStop);
    bool exit = false;
    int cfg = 0;
    int cmd = 0;
    outcome.good = exec.execute(nullptr, exit, cfg, cmd);
    outcome.error = exec.errorText();
    return outcome;
}

void TestCalcCrc::ranges()
{
    const auto row = [this](const char* name, const QByteArray& content, const char* format, qint64 addr,
                            qint64 count, const QByteArray& taken) {
        m_files.make("data", content);
        const Outcome outcome = run(command("CRC-32", "data", format, addr, count));
        QVERIFY2(outcome.good, qPrintable(outcome.error));
        compareRow(name, outcome.lines, QStringList(resultOf("CRC-32", taken)));
    };
    const auto fill = [](int n) { return QByteArray(n, '\xEE'); };
    const QByteArray digits("0123456789");
    const QByteArray hex =
        hexLine(0, 4, "abcd") + hexLine(0, 0x20, "efgh") + hexUpper(4, 0x30) + hexLine(0, 0, "x");
    row("format in capitals", digits, "BIN", 0, 10, digits);
    row("inside a binary file", digits, "bin", 3, 4, "3456");
    row("binary file too short", digits, "bin+", 8, 100, "89" + fill(98));
    row("less than nothing", digits, "bin", 5, -3, "");
    row("gaps of a HEX file", hex, "hex", 0, 0x30, fill(4) + "abcd" + fill(24) + "efgh" + fill(12));
    row("range ends in a record", hex, "hex", 4, 3, "abc");
    row("range begins in a record", hex, "HEX", 6, 4, "cd" + fill(2));
    row("gap of many blocks", hex, "hex", 0x20, 0x2FFFE1, "efgh" + fill(0x2FFFDC) + "x");
    const QByteArray large = digits.repeated(2000000);
    row("longer than a block", large, "bin", 5, large.size() - 10, large.mid(5, large.size() - 10));
    row("end of all addresses", hex, "hex", std::numeric_limits<qint64>::max() - 3, 99, fill(3));
}

void TestCalcCrc::failures()
{
    m_files.make("bad.hex", hexLine(0, 0, "ab") + hexLine(4, 0, QByteArray(2, '\0')) + ":what\n");
    const auto row = [this](const char* name, const char* file, const QString& error,
                            const QStringList& lines) {
        const Outcome outcome = run(command(name, file, "hex", 0, 100));
        QVERIFY(!outcome.good);
        compareRow(name, outcome.error, error);
        compareRow(name, outcome.lines, lines);
    };
    row("CRC32", "bad.hex", "", {}); // no such checksum
    row("CRC32", "none", "text 417 ", {});
    row("CRC-8", "bad.hex", "text 420 %1", {resultOf("CRC-8", "ab")}); // what was taken is told
}

void TestCalcCrc::stops()
{
    for (const QByteArray& content : {QByteArray(hexEnd), QByteArray(1 << 24, 'x')}) {
        m_files.make("data", content);
        QElapsedTimer timer;
        timer.start();
        const char* format = content == hexEnd ? "hex" : "bin";
        const Outcome outcome = run(command("CRC-82/DARC", "data", format, 0, qint64(1) << 40), true);
        QVERIFY(outcome.good);
        QCOMPARE(outcome.lines.size(), 1);
        QVERIFY(outcome.lines[0].startsWith("CRC-82/DARC: "));
        QVERIFY2(timer.elapsed() < 5000, "only a few blocks are taken before a stop is seen");
    }
}

QTEST_GUILESS_MAIN(TestCalcCrc)
#include "test_calc_crc.moc"
