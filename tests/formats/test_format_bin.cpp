#include "formats/TFormat.h"
#include "formats/chunkSize.h"
#include "hexkit.h"

class TestFormatBin : public QObject
{
    Q_OBJECT

private slots:
    void chunkSizes_data();
    void chunkSizes();
    void names();
    void failingOpen_data();
    void failingOpen();
    void piecesOfRead_data();
    void piecesOfRead();
    void writes_data();
    void writes();
    void noRoom();

private:
    Files m_files;
};

void TestFormatBin::chunkSizes_data()
{
    QTest::addColumn<qint64>("addr");
    QTest::addColumn<qint64>("last");
    QTest::addColumn<qint64>("block");
    QTest::addColumn<qint64>("size");
    const qint64 top = std::numeric_limits<qint64>::max();
    const auto row = [](const char* name, qint64 addr, qint64 last, qint64 block, qint64 size) {
        QTest::newRow(name) << addr << last << block << size;
    };
    row("whole block", 0, 1000, 256, 256);
    row("up to the border", 250, 1000, 256, 6);
    row("last byte of the range", 1000, 1000, 256, 1);
    row("range ends first", 512, 600, 256, 89);
    row("border and end together", 512, 767, 256, 256);
    row("beyond the range", 1001, 1000, 256, 0);
    row("block of no power of two", 250, 1000, 100, 50);
    row("block 0", 0, 1000, 0, 0);
    row("negative block", 0, 1000, -1, 0);
    row("end of the number range", top - 1, top, 0x1000000, 2);
    row("all numbers", 0, top, top, top);
    row("below 0", -10, 100, 16, 10);
    row("from end to end", -top - 1, top, 16, 16);
}

void TestFormatBin::chunkSizes()
{
    QFETCH(qint64, addr);
    QFETCH(qint64, last);
    QFETCH(qint64, block);
    QTEST(chunkSize(addr, last, block), "size");
}

void TestFormatBin::names()
{
    QCOMPARE(TFormat::formatList(), QStringList({"HEX", "BIN", "BIN+"}));
    QCOMPARE(TFormat::fileFilter(), QString("*.bin *.hex"));
    // Only the lower-case names are binary; the suffix of the file plays no part.
    m_files.make("colon.bin", ":");
    const QMap<QString, bool> binary = {
        {"bin", true}, {"bin+", true}, {"hex", false}, {"BIN", false}, {"", false}};
    for (auto it = binary.cbegin(); it != binary.cend(); ++it) {
        TFormat format(it.key(), m_files.path("colon.bin"), 0, 0, 0, 16);
        qint64 addr = 0;
        QByteArray data;
        QVERIFY(format.open(0));
        QVERIFY2(format.read(addr, data) == it.value(), qPrintable(it.key()));
    }
}

void TestFormatBin::failingOpen_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("file");
    QTest::addColumn<qint64>("addrFile");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("text");
    m_files.make("ten", "0123456789");
    QTest::newRow("missing bin") << "bin"
                                 << "none %1 %2" << qint64(0) << 0 << "text 417 ";
    QTest::newRow("missing hex") << "hex"
                                 << "none %1 %2" << qint64(0) << 0 << "text 417 ";
    QTest::newRow("beyond the end") << "bin"
                                    << "ten" << qint64(11) << 0 << "text 418 %1";
    QTest::newRow("folder, bin") << "bin"
                                 << "." << qint64(0) << 0 << "text 419 file to open is a directory";
    QTest::newRow("folder, hex") << "hex"
                                 << "." << qint64(0) << 0 << "text 417 file to open is a directory";
    QTest::newRow("no folder, bin") << "bin"
                                    << "a/b" << qint64(0) << 1 << "text 419 No such file or directory";
    QTest::newRow("no folder, bin+") << "bin+"
                                     << "a/b" << qint64(0) << 1 << "text 419 No such file or directory";
    QTest::newRow("no folder, hex") << "hex"
                                    << "a/b" << qint64(0) << 1 << "text 417 No such file or directory";
}

void TestFormatBin::failingOpen()
{
    QFETCH(QString, format);
    QFETCH(QString, file);
    QFETCH(qint64, addrFile);
    QFETCH(int, mode);
    TFormat data(format, m_files.path(file), addrFile, 0, 100, 16);
    QVERIFY(!data.open(mode));
    QTEST(data.errorText(), "text");
}

void TestFormatBin::piecesOfRead_data()
{
    QTest::addColumn<qint64>("addrFile");
    QTest::addColumn<qint64>("addrDevice");
    QTest::addColumn<qint64>("addrEnd");
    QTest::addColumn<qint64>("chunk");
    QTest::addColumn<QStringList>("pieces");
    const auto row = [](const char* name, qint64 file, qint64 first, qint64 last, qint64 chunk,
                        QStringList pieces) {
        QTest::newRow(name) << file << first << last << chunk << pieces;
    };
    row("aligned", 0, 0, 9, 4, {"0:0123", "4:4567", "8:89"});
    row("pieces go by the device address", 0, 6, 11, 4, {"6:01", "8:2345"});
    row("shifted in the file", 3, 100, 103, 64, {"100:3456"});
    row("short file", 8, 0, 99, 16, {"0:89"});
    row("file ends with a piece", 0, 0, 99, 5, {"0:01234", "5:56789"});
    row("at the end of the file", 10, 0, 99, 16, {});
    row("empty range", 0, 5, 4, 16, {});
    row("no chunk", 0, 0, 9, 0, {"text 424 %1"});
    row("negative address in the file", -1, 0, 9, 16, {"Unknown error"});
}

void TestFormatBin::piecesOfRead()
{
    QFETCH(qint64, addrFile);
    QFETCH(qint64, addrDevice);
    QFETCH(qint64, addrEnd);
    QFETCH(qint64, chunk);
    TFormat format("bin", m_files.make("ten", "0123456789"), addrFile, addrDevice, addrEnd, chunk);
    QVERIFY(format.open(0));
    QStringList pieces;
    qint64 addr = addrDevice;
    for (QByteArray data; pieces.size() < 100; addr += data.size()) {
        if (!format.read(addr, data))
            pieces += format.errorText();
        if (data.isEmpty())
            break;
        pieces += QString::number(addr) + ":" + data;
    }
    QTEST(pieces, "pieces");
    QVERIFY(format.close());
}

void TestFormatBin::writes_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<qint64>("addr");
    QTest::addColumn<QByteArray>("after");
    const QByteArray old("oldoldoldold");
    QTest::newRow("bin drops the old content") << "bin" << old << qint64(0) << QByteArray("abcd");
    QTest::newRow("bin begins with a hole") << "bin" << old << qint64(3) << QByteArray("\0\0\0abcd", 7);
    QTest::newRow("bin+ keeps what is around") << "bin+" << old << qint64(3) << QByteArray("oldabcdldold");
    QTest::newRow("bin+ appends") << "bin+" << old << qint64(12) << QByteArray("oldoldoldoldabcd");
}

void TestFormatBin::writes()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, before);
    QFETCH(qint64, addr);
    TFormat file(format, m_files.make("out", before), addr, 0, 3, 16);
    QVERIFY(file.open(1));
    QVERIFY(file.write(addr, "abX"));
    QVERIFY(file.write(addr + 2, "cd")); // goes back
    QVERIFY(file.close());
    QTEST(m_files.content("out"), "after");
}

void TestFormatBin::noRoom()
{
    if (!QFile::exists("/dev/full"))
        QSKIP("needs a device that takes no bytes");
    for (const char* name : {"bin", "hex"}) {
        TFormat file(name, "/dev/full", 0, 0, 99, 16);
        QVERIFY(file.open(1));
        QVERIFY(file.write(0, QByteArray(5, 'x'))); // is still in memory
        QVERIFY(!file.close());
        QCOMPARE(file.errorText(), QString("No space left on device"));
    }
}

QTEST_GUILESS_MAIN(TestFormatBin)
#include "test_format_bin.moc"
