#include "formats/TFormat.h"
#include "hexkit.h"

#include <QRandomGenerator>

namespace {

/// Reads a whole run the way a command does; a failure is its text as last piece.
QStringList readPieces(TFormat& format, qint64 addr)
{
    QStringList pieces;
    QByteArray data;
    while (pieces.size() < 1000) {
        if (!format.read(addr, data))
            return pieces << format.errorText();
        if (data.isEmpty())
            return pieces;
        pieces += QString::number(addr, 16) + ":" + data.toHex();
        addr += data.size();
    }
    return pieces << "endless";
}

QByteArray counted(int n, int from = 0)
{
    QByteArray bytes(n, '\0');
    for (int i = 0; i < n; ++i)
        bytes[i] = char(from + i);
    return bytes;
}

const QString wrong("text 420 %1");

} // namespace

class TestFormatHex : public QObject
{
    Q_OBJECT

private slots:
    void reads_data();
    void reads();
    void malformed_data();
    void malformed();
    void garbage();
    void crossesBanks();
    void writes_data();
    void writes();
    void writesNothingYet();
    void abortedWrite();
    void anyPieceSize();
    void randomImages();

private:
    Files m_files;
};

void TestFormatHex::reads_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qint64>("first");
    QTest::addColumn<qint64>("last");
    QTest::addColumn<qint64>("chunk");
    QTest::addColumn<QStringList>("pieces");
    const auto row = [](const char* name, const QByteArray& text, qint64 first, qint64 last, qint64 chunk,
                        const QStringList& pieces) {
        QTest::newRow(name) << text << first << last << chunk << pieces;
    };
    const QByteArray ab = hexLine(0, 0, "\x0a\x0b");
    const QByteArray cd = hexLine(0, 2, "\x0c\x0d");
    const QByteArray gap = hexLine(0, 0x10, "\x0e\x0f");
    row("empty file", "", 0, 99, 16, {});
    row("one record", ab + hexEnd, 0, 99, 16, {"0:0a0b"});
    row("no end record", ab + cd, 0, 99, 16, {"0:0a0b0c0d"});
    row("no last line end", ab + hexEnd.trimmed(), 0, 99, 16, {"0:0a0b"});
    row("unix line ends, small digits", QByteArray(ab + cd + hexEnd).replace("\r", "").toLower(), 0, 99, 16,
        {"0:0a0b0c0d"});
    row("white space behind the colon", ":02 0000\t00 0A0 B E9 \n" + hexEnd, 0, 99, 16, {"0:0a0b"});
    row("gap", ab + cd + gap + hexEnd, 0, 99, 16, {"0:0a0b0c0d", "10:0e0f"});
    row("pieces are aligned", hexLine(0, 6, counted(12)) + hexEnd, 6, 99, 8,
        {"6:0001", "8:0203040506070809", "10:0a0b"});
    row("blank line before the end", ab + "\r\n" + hexEnd, 0, 99, 16, {wrong});
    row("blank line behind the end", ab + hexEnd + "\r\nnonsense\r\n", 0, 99, 16, {"0:0a0b"});
    row("other types are skipped",
        ab + hexLine(3, 0, "1234") + hexLine(5, 0, "1234") + hexLine(9, 0, "") + cd + hexEnd, 0, 99, 16,
        {"0:0a0b0c0d"});
    row("record over the last address is whole", ab + cd + gap + hexEnd, 0, 2, 16, {"0:0a0b0c0d"});
    row("record above the last address", ab + gap + hexEnd, 0, 0xF, 16, {"0:0a0b"});
    row("front is cut", hexLine(0, 0, counted(8)) + hexEnd, 5, 99, 16, {"5:050607"});
    row("below the range is skipped", ab + cd + gap + hexEnd, 2, 99, 16, {"2:0c0d", "10:0e0f"});
    row("below the range, behind it", gap + ab + hexEnd, 0x10, 99, 16, {"10:0e0f"});
    row("not ascending", gap + ab + hexEnd, 0, 99, 16, {"10:0e0f", wrong});
    row("twice the same", ab + ab + hexEnd, 0, 99, 16, {"0:0a0b", wrong});
    row("overlap", ab + hexLine(0, 1, "\x0b\x0c") + hexEnd, 0, 99, 16, {"0:0a0b", wrong});
    row("empty data record", ab + hexLine(0, 0x40, "") + cd + hexEnd, 0, 99, 16, {"0:0a0b0c0d"});
    row("type 04", hexUpper(4, 0x12) + ab + hexEnd, 0, 0x12FFFF, 16, {"120000:0a0b"});
    row("type 02 as upper address", hexUpper(2, 0xF) + ab + hexEnd, 0, 0xFFFFFFFF, 16, {"f0000:0a0b"});
    row("type 02 as segment", hexUpper(2, 0x1000) + ab + hexUpper(2, 0xF000) + ab + hexEnd, 0, 0xFFFFFFFF, 16,
        {"10000:0a0b", "f0000:0a0b"});
    row("type 02 that is no segment", hexUpper(2, 0x1234) + ab + hexEnd, 0, 0xFFFFFFFF, 16,
        {"12340000:0a0b"});
    row("type 04 is never a segment", hexUpper(4, 0x1000) + ab + hexEnd, 0, 0xFFFFFFFF, 16,
        {"10000000:0a0b"});
    row("address record ends the piece", ab + hexUpper(4, 0) + cd + hexUpper(4, 1) + ab + hexEnd, 0, 0x1FFFF,
        16, {"0:0a0b", "2:0c0d", "10000:0a0b"});
    row("highest addresses", hexUpper(4, 0xFFFF) + hexLine(0, 0xFFFE, "\x0a\x0b") + hexEnd, 0, 0xFFFFFFFF, 16,
        {"fffffffe:0a0b"});
    row("longest record", hexLine(0, 0, counted(255)) + hexEnd, 0, 999, 256, {"0:" + counted(255).toHex()});
    row("nothing in range", ab + hexEnd, 0x40, 0x4F, 16, {});
    row("no chunk", ab + hexEnd, 0, 99, 0, {"text 424 %1"});
}

void TestFormatHex::reads()
{
    QFETCH(QByteArray, text);
    QFETCH(qint64, first);
    QFETCH(qint64, last);
    QFETCH(qint64, chunk);
    TFormat format("hex", m_files.make("in.hex", text), first, first, last, chunk);
    QVERIFY(format.open(0));
    QTEST(readPieces(format, first), "pieces");
    QVERIFY(format.close());
}

void TestFormatHex::malformed_data()
{
    QTest::addColumn<QByteArray>("line");
    const QByteArray good = ":020000000A0BE9";
    QTest::newRow("no colon") << good.mid(1);
    QTest::newRow("blank first") << " " + good;
    QTest::newRow("colon only") << QByteArray(":");
    QTest::newRow("shorter than its frame") << QByteArray(":00000000");
    QTest::newRow("length too small") << QByteArray(":010000000A0BEA");
    QTest::newRow("length too large") << QByteArray(":030000000A0BE8");
    QTest::newRow("sum") << QByteArray(":020000000A0BEA");
    QTest::newRow("odd digits") << good + "0";
    QTest::newRow("letter") << QByteArray(":020000000G0BE9");
    QTest::newRow("bad character between") << QByteArray(":0200-00000A0BE9");
    QTest::newRow("second colon") << good + good;
    QTest::newRow("lone CR between records") << good + "\r" + good;
    QTest::newRow("NUL inside") << QByteArray(good).insert(5, '\0');
    QTest::newRow("NUL behind") << good + '\0';
    QTest::newRow("byte of 8 bits") << QByteArray(good).replace(5, 1, "\xe9");
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + good;
    QTest::newRow("1024 characters") << good + QByteArray(1024 - good.size(), ' ');
    QTest::newRow("a megabyte") << ":" + QByteArray(1 << 20, '0');
    QTest::newRow("address record of one byte") << hexLine(4, 0, "\x01").trimmed();
    QTest::newRow("address record of three bytes") << hexLine(2, 0, "\x01\x02\x03").trimmed();
}

void TestFormatHex::malformed()
{
    QFETCH(QByteArray, line);
    // Behind a good record, so that the failure must come from this line.
    const QByteArray text = hexLine(0, 0, "\x01") + line + "\n" + hexEnd;
    TFormat format("hex", m_files.make("bad.hex", text), 0, 0, 99, 16);
    QVERIFY(format.open(0));
    QCOMPARE(readPieces(format, 0), QStringList(wrong));
}

void TestFormatHex::garbage()
{
    // A sparse file of 100 MB: it must fail at its first line, not be read into memory.
    QFile file(m_files.make("large", ""));
    QVERIFY(file.resize(100 * 1000 * 1000));
    TFormat format("hex", file.fileName(), 0, 0, 0x7FFFFFFFFFFFFFFF, 0x1000000);
    QVERIFY(format.open(0));
    QCOMPARE(readPieces(format, 0), QStringList(wrong));
}

void TestFormatHex::crossesBanks()
{
    // More than one block of the reader and two banks, in one piece up to each address record.
    QByteArray text;
    for (int bank = 0; bank < 2; ++bank) {
        text += hexUpper(4, bank);
        for (int offset = 0; offset < 0x10000; offset += 32)
            text += hexLine(0, offset, counted(32, bank + offset / 32));
    }
    TFormat format("hex", m_files.make("banks.hex", text + hexEnd), 0, 0, 0x1FFFF, 0x1000000);
    QVERIFY(format.open(0));
    const QStringList pieces = readPieces(format, 0);
    QCOMPARE(pieces.size(), 2);
    for (int bank = 0; bank < 2; ++bank) {
        QCOMPARE(pieces[bank].section(':', 0, 0).toInt(nullptr, 16), bank * 0x10000);
        const QByteArray bytes = QByteArray::fromHex(pieces[bank].section(':', 1).toLatin1());
        QCOMPARE(bytes.size(), 0x10000);
        for (int i = 0; i < bytes.size(); ++i)
            QVERIFY(bytes[i] == char(bank + i / 32 + i % 32));
    }
}

void TestFormatHex::writes_data()
{
    QTest::addColumn<qint64>("first");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("piece");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, qint64 first, int size, int piece, const QByteArray& text) {
        QTest::newRow(name) << first << size << piece << text + hexEnd;
    };
    row("nothing", 0, 0, 16, "");
    row("one byte", 0, 1, 16, hexLine(0, 0, counted(1)));
    row("literal bytes", 0x30, 2, 16, ":020030000001CD\r\n");
    row("full lines", 0, 35, 64,
        hexLine(0, 0, counted(16)) + hexLine(0, 16, counted(16, 16)) + hexLine(0, 32, counted(3, 32)));
    row("off the grid", 10, 30, 64,
        hexLine(0, 10, counted(6)) + hexLine(0, 16, counted(16, 6)) + hexLine(0, 32, counted(8, 22)));
    row("remainder is not merged", 0, 24, 20,
        hexLine(0, 0, counted(16)) + hexLine(0, 16, counted(4, 16)) + hexLine(0, 20, counted(4, 20)));
    row("short across the grid", 14, 4, 4, hexLine(0, 14, counted(4)));
    row("up to the first bank's end", 0xFFF0, 16, 16, hexLine(0, 0xFFF0, counted(16)));
    row("type 02", 0xFFF0, 17, 32,
        hexUpper(2, 0) + hexLine(0, 0xFFF0, counted(16)) + hexUpper(2, 1) + hexLine(0, 0, counted(1, 16)));
    row("type 02 up to 0xFFFFF", 0xFFFF0, 16, 16, hexUpper(2, 0xF) + hexLine(0, 0xFFF0, counted(16)));
    row("type 04", 0xFFFF0, 18, 9,
        hexUpper(4, 0xF) + hexLine(0, 0xFFF0, counted(9)) + hexLine(0, 0xFFF9, counted(7, 9)) +
            hexUpper(4, 0x10) + hexLine(0, 0, counted(2, 16)));
    row("literal address record", 0x10000, 1, 16, ":020000020001FB\r\n:0100000000FF\r\n");
}

void TestFormatHex::writes()
{
    QFETCH(qint64, first);
    QFETCH(int, size);
    QFETCH(int, piece);
    TFormat format("hex", m_files.make("out.hex", "old content"), first, 0, size - 1, piece);
    QVERIFY(format.open(1));
    for (int at = 0; at < size; at += piece)
        QVERIFY(format.write(first + at, counted(qMin(piece, size - at), at)));
    QVERIFY(format.close());
    QTEST(m_files.content("out.hex"), "text");
}

void TestFormatHex::writesNothingYet()
{
    if (!QFile::exists("/dev/full"))
        QSKIP("needs a device that takes no bytes");
    TFormat format("hex", "/dev/full", 0, 0, 0xFFFF, 0x10000);
    QVERIFY(format.open(1));
    QVERIFY(format.write(0, QByteArray()));
    QVERIFY(format.write(0, counted(15)));
    QVERIFY(!format.write(15, QByteArray(0x8000, 'x')));
    QCOMPARE(format.errorText(), QString("No space left on device"));
    TFormat far("hex", m_files.path("far.hex"), 0xFFFFFFFF, 0, 1, 16);
    QVERIFY(far.open(1));
    QVERIFY(far.write(0xFFFFFFFF, counted(1)));
    QVERIFY2(!far.write(0x100000000, counted(1)), "no record can hold this address");
    QCOMPARE(far.errorText(), QString("text 425 %1"));
}

void TestFormatHex::abortedWrite()
{
    {
        TFormat format("hex", m_files.path("half.hex"), 0, 0, 99, 16);
        QVERIFY(format.open(1));
        QVERIFY(format.write(0, counted(20)));
    }
    QCOMPARE(m_files.content("half.hex"), hexLine(0, 0, counted(16)));
}

void TestFormatHex::anyPieceSize()
{
    // A dump over the line between two banks comes out whole whatever the programmer's frame holds.
    const qint64 first = 0xFF80;
    const QByteArray bytes = counted(256);
    for (int chunk = 1; chunk <= 270; ++chunk) {
        TFormat format("hex", m_files.path("any.hex"), first, first, first + 255, chunk);
        QVERIFY(format.open(1));
        for (int at = 0; at < 256;) {
            const int n = qMin(chunk - int((first + at) % chunk), 256 - at);
            QVERIFY(format.write(first + at, bytes.mid(at, n)));
            at += n;
        }
        QVERIFY(format.close());
        bool ok = false;
        const Image image = parseHex(m_files.content("any.hex"), ok);
        QVERIFY2(ok && image.size() == 256, qPrintable(QString::number(chunk)));
        for (int i = 0; i < 256; ++i)
            QVERIFY(image.value(first + i) == uchar(bytes[i]));
    }
}

void TestFormatHex::randomImages()
{
    QRandomGenerator random(20);
    for (int turn = 0; turn < 300; ++turn) {
        Image written;
        QByteArray text;
        qint64 addr = random.bounded(0x20000);
        const qint64 begin = addr;
        qint64 upper = 0;
        for (int record = random.bounded(1, 60); record > 0; --record) {
            if (random.bounded(4) == 0)
                addr += random.bounded(1, random.bounded(2) ? 20 : 0x18000);
            const int n = int(qMin<qint64>(random.bounded(1, 40), 0x10000 - addr % 0x10000));
            if (addr / 0x10000 != upper || random.bounded(10) == 0)
                text += hexUpper(random.bounded(2) && addr < 0x100000 ? 2 : 4, int(upper = addr / 0x10000));
            const QByteArray data = counted(n, random.bounded(256));
            text += hexLine(0, int(addr % 0x10000), data);
            for (int i = 0; i < n; ++i)
                written[addr++] = uchar(data[i]);
        }
        const qint64 first = begin + random.bounded(40);
        const int chunk = random.bounded(1, random.bounded(2) ? 70 : 5000);
        TFormat format("hex", m_files.make("random.hex", text + hexEnd), first, first, addr, chunk);
        QVERIFY(format.open(0));
        Image read;
        QByteArray data;
        for (qint64 at = first;;) {
            QVERIFY2(format.read(at, data), text.constData());
            if (data.isEmpty())
                break;
            QVERIFY(at / chunk == (at + data.size() - 1) / chunk);
            for (const char c : data)
                read[at++] = uchar(c);
        }
        while (!written.isEmpty() && written.firstKey() < first)
            written.erase(written.begin());
        QVERIFY2(read == written, text.constData());
    }
}

QTEST_GUILESS_MAIN(TestFormatHex)
#include "test_format_hex.moc"
