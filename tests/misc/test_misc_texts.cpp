#include "formats/chunkSize.h"
#include "misc/TNormCmdParam.h"

#include <QtTest>

#include <limits>

namespace {

constexpr qint64 greatest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();

} // namespace

/// How values look in the table and in the log.
class TestMiscTexts : public QObject
{
    Q_OBJECT

private slots:
    void size_data();
    void size();
    void exactlyFortyThreeSizesHaveAUnit();
    void freq_data();
    void freq();
    void ranges_data();
    void ranges();
    void hexNumbers();
    void bytes();
    void likePattern_data();
    void likePattern();
    void likeALongPattern();
    void lastAddresses_data();
    void lastAddresses();
    void pieces_data();
    void pieces();
};

void TestMiscTexts::size_data()
{
    QTest::addColumn<qint64>("n");
    QTest::addColumn<QString>("text");
    const auto row = [](qint64 n, const char* text) {
        QTest::newRow(text) << n << QString::fromLatin1(text);
    };
    row(0, "0 byte");
    row(1000, "1000 byte");
    row(1024, "1 Kbyte");
    row(1536, "1536 byte");
    row(192 * 1024, "192 Kbyte");
    row(384 * 1024, "384 Kbyte");
    row(768 * 1024, "768 Kbyte");
    row(512 * 1024, "512 Kbyte");
    row(1 << 20, "1 Mbyte");
    row(qint64(512) << 30, "512 Gbyte");
    row(qint64(1) << 40, "1 Tbyte");
    row(qint64(1) << 49, "512 Tbyte");
    row(qint64(1) << 50, "1125899906842624 byte");
    row(-1024, "-1024 byte");
    row(192 * 1024 * 1024, "201326592 byte");
}

void TestMiscTexts::size()
{
    QFETCH(qint64, n);
    QTEST(textSize(n), "text");
}

void TestMiscTexts::exactlyFortyThreeSizesHaveAUnit()
{
    int units = 0;
    for (int power = 0; power < 63; ++power) {
        for (const qint64 n : {qint64(1) << power, (qint64(1) << power) + (qint64(1) << power) / 2})
            units += textSize(n).endsWith(QLatin1String(" byte")) ? 0 : 1;
    }
    QCOMPARE(units, 43);
}

void TestMiscTexts::freq_data()
{
    QTest::addColumn<qint64>("hz");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << qint64(0) << "0 Hz";
    QTest::newRow("999") << qint64(999) << "999 Hz";
    QTest::newRow("1000") << qint64(1000) << "1 KHz";
    QTest::newRow("999999") << qint64(999999) << "999.999 KHz";
    QTest::newRow("1000000") << qint64(1000000) << "1 MHz";
    QTest::newRow("1500000") << qint64(1500000) << "1.5 MHz";
    QTest::newRow("999999999") << qint64(999999999) << "999.999999 MHz";
    QTest::newRow("no unit") << qint64(1000000000) << "1000000000 ";
}

void TestMiscTexts::freq()
{
    QFETCH(qint64, hz);
    QTEST(textFreq(hz), "text");
    QFETCH(QString, text);
    QCOMPARE(textFreqDuty(hz, 25), text + QStringLiteral(", 25 %"));
}

void TestMiscTexts::ranges_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("fill") << textRange(0x100, 0x10000, 0xA) << "0x100..0x100FF :0x0A";
    QTest::newRow("one byte") << textRange(5, 1, 0xFF) << "0x05..0x05 :0xFF";
    QTest::newRow("beyond 32 bits") << textRange(qint64(1) << 32, 2, 0) << "0x100000000..0x100000001 :0x00";
    QTest::newRow("end of numbers") << textRange(greatest, 2, 0)
                                    << "0x7FFFFFFFFFFFFFFF..0x7FFFFFFFFFFFFFFF :0x00";
    QTest::newRow("hex") << textRangeHex(0x10, QStringLiteral("aabb  cc")) << "0x10..0x12 :AABB CC";
    QTest::newRow("hex, empty") << textRangeHex(0, QString()) << "0x00..0x00 :";
    QTest::newRow("hex, half a byte") << textRangeHex(0, QStringLiteral("ABC")) << "0x00..0x01 :ABC";
    QTest::newRow("compare") << textCompare(0x1234, 0xF0, 0x0F) << "Address: 0x1234, Data: 0xF0, Read: 0x0F";
}

void TestMiscTexts::ranges()
{
    QFETCH(QString, text);
    QTEST(text, "expected");
}

void TestMiscTexts::hexNumbers()
{
    QCOMPARE(hex(0), QStringLiteral("00"));
    QCOMPARE(hex(0xABC), QStringLiteral("ABC"));
    QCOMPARE(hex(0xFFFFFFFFU), QStringLiteral("FFFFFFFF"));
    QCOMPARE(hex(qint64(-1)), QStringLiteral("FFFFFFFFFFFFFFFF"));
    QCOMPARE(fromHex(QStringLiteral("fFfFfFfF")), 0xFFFFFFFFU);
    QCOMPARE(fromHex(QStringLiteral("xyz")), 0U);
    QCOMPARE(fromHexLong(QStringLiteral("123456789A")), qint64(0x123456789A));
}

void TestMiscTexts::bytes()
{
    QCOMPARE(hexToBytes(QStringLiteral(" A b\tC\nd ")), QByteArray("\xAB\xCD"));
    QCOMPARE(bytesToHex(QByteArray("\x00\xAB\x7F", 3)), QStringLiteral("00AB7F"));
    QCOMPARE(bytesToHex({}), QString());
    QCOMPARE(padState(QStringLiteral("HL"), 4), QStringLiteral("HL--"));
    QCOMPARE(padState(QStringLiteral("HLIH"), 2), QStringLiteral("HL"));
    QCOMPARE(padState(QStringLiteral("HL"), 0), QString());
}

void TestMiscTexts::likePattern_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::newRow("no blanks") << "0000"
                               << "12AB34";
    QTest::newRow("pairs") << "00 00 00"
                           << "12 AB 34";
    QTest::newRow("odd places") << " 0  00"
                                << " 1  2AB34";
    QTest::newRow("shorter") << "00 "
                             << "12 AB34";
    QTest::newRow("longer") << "00 00 00 00 "
                            << "12 AB 34";
    QTest::newRow("empty") << ""
                           << "12AB34";
}

void TestMiscTexts::likePattern()
{
    QFETCH(QString, pattern);
    QTEST(bytesToHexLike(pattern, QByteArray("\x12\xAB\x34")), "text");
}

void TestMiscTexts::likeALongPattern()
{
    // Some seconds if every blank moved the rest of the text.
    const int n = 2000000;
    QElapsedTimer timer;
    timer.start();
    const QString text = bytesToHexLike(QStringLiteral("00 ").repeated(n), QByteArray(n, '\x5A'));
    QCOMPARE(text, QStringLiteral("5A ").repeated(n).trimmed());
    QVERIFY(timer.elapsed() < 2000);
}

void TestMiscTexts::lastAddresses_data()
{
    QTest::addColumn<qint64>("addr");
    QTest::addColumn<qint64>("count");
    QTest::addColumn<qint64>("last");
    QTest::newRow("one") << qint64(7) << qint64(1) << qint64(7);
    QTest::newRow("none") << qint64(7) << qint64(0) << qint64(6);
    QTest::newRow("negative count") << qint64(7) << smallest << qint64(6);
    QTest::newRow("from 0 to the end") << qint64(0) << greatest << greatest - 1;
    QTest::newRow("too far") << qint64(2) << greatest << greatest;
    QTest::newRow("smallest") << smallest << qint64(0) << smallest;
    QTest::newRow("negative address") << qint64(-5) << greatest << greatest - 6;
}

void TestMiscTexts::lastAddresses()
{
    QFETCH(qint64, addr);
    QFETCH(qint64, count);
    QTEST(lastAddress(addr, count), "last");
}

void TestMiscTexts::pieces_data()
{
    QTest::addColumn<qint64>("addr");
    QTest::addColumn<qint64>("last");
    QTest::addColumn<qint64>("block");
    QTest::addColumn<qint64>("n");
    QTest::newRow("on the border") << qint64(512) << qint64(10000) << qint64(256) << qint64(256);
    QTest::newRow("inside") << qint64(500) << qint64(10000) << qint64(256) << qint64(12);
    QTest::newRow("last byte") << qint64(99) << qint64(99) << qint64(256) << qint64(1);
    QTest::newRow("beyond") << qint64(100) << qint64(99) << qint64(256) << qint64(0);
    QTest::newRow("no block") << qint64(0) << qint64(99) << qint64(0) << qint64(0);
    QTest::newRow("no power of two") << qint64(50) << qint64(99) << qint64(60) << qint64(10);
    QTest::newRow("end of numbers") << greatest - 1 << greatest << greatest << qint64(1);
}

void TestMiscTexts::pieces()
{
    QFETCH(qint64, addr);
    QFETCH(qint64, last);
    QFETCH(qint64, block);
    QTEST(chunkSize(addr, last, block), "n");
}

QTEST_GUILESS_MAIN(TestMiscTexts)
#include "test_misc_texts.moc"
