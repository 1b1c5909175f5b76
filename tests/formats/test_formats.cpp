#include "base/chunkSize.h"
#include "formats/data/TFormat.h"
#include "hexkit.h"
#include "settings/TAppData.h"
#include "support/namedTexts.h"

#include <csignal>
#include <fcntl.h>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Reads a whole run the way a command does: "address:bytes", in hexadecimal, for each piece, and at its end
/// the text of a failure, or "-" and the number of bytes that were left out.
QString readPieces(TFormat& format, qint64 addr)
{
    QStringList pieces;
    QByteArray data;
    while (pieces.size() < 1000) {
        if (!format.read(addr, data)) {
            pieces += format.errorText();
            break;
        }
        if (data.isEmpty()) {
            if (format.leftOut() > 0)
                pieces += QString::number(-format.leftOut());
            break;
        }
        pieces += QString::number(addr, 16) + ":" + data.toHex();
        addr += data.size();
    }
    return pieces.join(' ');
}

QByteArray counted(int n, int from = 0)
{
    QByteArray bytes(n, '\0');
    for (int i = 0; i < n; ++i)
        bytes[i] = char(from + i);
    return bytes;
}

} // namespace

class TestFormats : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadNamedTexts(); }
    void chunkSizes()
    {
        const qint64 top = std::numeric_limits<qint64>::max();
        const auto row = [](const char* name, qint64 addr, qint64 last, qint64 block, qint64 size) {
            compareRow(name, chunkSize(addr, last, block), size);
        };
        row("whole block", 0, 1000, 256, 256);
        row("up to the border", 250, 1000, 256, 6);
        row("last byte of the range", 1000, 1000, 256, 1);
        row("beyond the range", 1001, 1000, 256, 0);
        row("block 0", 0, 1000, 0, 0);
        row("end of the number range", top - 1, top, 0x1000000, 2);
        row("from end to end", -top - 1, top, 16, 16);
    }

    void names()
    {
        QCOMPARE(TFormat::formatList(), QStringList({"HEX", "BIN", "BIN+"}));
        QCOMPARE(TFormat::fileFilter(), QString("*.bin *.hex"));
        // Only the lower-case names are binary; the suffix of the file plays no part.
        for (const char* name : {"bin", "bin+"})
            compareRow(name, read(name, "x", 0, 0, 9, 16), QString("0:78"));
        for (const char* name : {"hex", "BIN", "Bin+", ""})
            compareRow(name, read(name, "x", 0, 0, 9, 16), wrongLine(1));
    }

    void failingOpen()
    {
        m_dir.write("ten", "0123456789");
        const auto row = [this](const char* format, const char* file, qint64 addrFile, int mode,
                                const QString& text) {
            TFormat data(format, m_dir.file(file), addrFile, 0, 100, 16);
            QVERIFY(!data.open(mode));
            compareRow(file, data.errorText(), text);
        };
        row("bin", "none %1 %2", 0, 0, "@FileNotFound ");
        row("hex", "none %1 %2", 0, 0, "@FileNotFound ");
        row("bin", "ten", 11, 0, "@FileAddrBeyondEnd");
        row("bin", ".", 0, 0, "@FileNotOpened file to open is a directory");
        row("hex", ".", 0, 0, "@FileNotFound file to open is a directory");
        row("bin", "a/b", 0, 1, "@FileNotOpened No such file or directory");
        row("bin+", "a/b", 0, 1, "@FileNotOpened No such file or directory");
        row("hex", "a/b", 0, 1, "@FileNotFound No such file or directory");
    }

    void binReads()
    {
        const auto row = [this](const char* name, qint64 file, qint64 first, qint64 last, qint64 chunk,
                                const QString& pieces) {
            compareRow(name, read("bin", counted(10), file, first, last, chunk), pieces);
        };
        row("aligned", 0, 0, 9, 4, "0:00010203 4:04050607 8:0809");
        row("pieces go by the device address", 0, 6, 11, 4, "6:0001 8:02030405 -4");
        row("shifted in the file", 3, 0x100, 0x103, 64, "100:03040506 -6");
        row("short file", 8, 0, 99, 16, "0:0809 -8");
        row("file ends with a piece", 0, 0, 99, 5, "0:0001020304 5:0506070809");
        row("at the end of the file", 10, 0, 99, 16, "-10");
        row("negative address in the file", -1, 0, 9, 16, "Unknown error");
        // The address of the caller decides how long a piece is.
        TFormat file("bin", m_dir.write("in", counted(10)), 0, 0, 9, 4);
        QVERIFY(file.open(0));
        QCOMPARE(readPieces(file, 7), QString("7:00 8:0102 -7"));
    }

    void binWrites()
    {
        const auto row = [this](const char* format, qint64 addr, const QByteArray& after) {
            TFormat file(format, m_dir.write("out", "oldoldoldold"), addr, 0, 3, 16);
            QVERIFY(file.open(1));
            QVERIFY(file.write(addr, "abX"));
            QVERIFY(file.write(addr + 2, "cd")); // goes back
            QVERIFY(file.close());
            compareRow(format, m_dir.read("out"), after);
        };
        row("bin", 0, "abcd");
        row("bin", 3, QByteArray("\0\0\0abcd", 7));
        row("bin+", 3, "oldabcdldold");
        row("bin+", 12, "oldoldoldoldabcd");
    }

    void hexReads()
    {
        const auto row = [this](const char* name, const QByteArray& text, qint64 first, qint64 last,
                                const QByteArray& pieces) {
            compareRow(name, read("hex", text, first, first, last, 16), QString(pieces));
        };
        const QByteArray ab = hexLine(0, 0, "\x0a\x0b");
        const QByteArray cd = hexLine(0, 2, "\x0c\x0d");
        const QByteArray gap = hexLine(0, 0x10, "\x0e\x0f");
        const qint64 top = 0xFFFFFFFF;
        row("empty file", "", 0, 99, "");
        row("no end record", ab + cd, 0, 99, "0:0a0b0c0d");
        row("white space", ":02 0000\t00 0A0 B E9 \n" + hexEnd, 0, 99, "0:0a0b");
        row("gap", ab + cd + gap + hexEnd, 0, 99, "0:0a0b0c0d 10:0e0f");
        row("pieces are aligned", hexLine(0, 14, counted(6)) + hexEnd, 14, 99, "e:0001 10:02030405");
        row("lines behind the end", ab + hexEnd + "\r\nnonsense\r\n" + cd, 0, 99, "0:0a0b -2");
        row("other types", ab + hexLine(3, 0, "1234") + hexLine(5, 0, "1234") + hexLine(9, 0, "") + cd, 0, 99,
            "0:0a0b0c0d");
        row("above the last address", ab + gap, 0, 0xF, "0:0a0b -2");
        row("in the range, behind one above it", ab + gap + cd + hexUpper(4, 1) + ab, 0, 0xF,
            "0:0a0b0c0d -4");
        row("taken whole over the last address", hexLine(0, 0, counted(4)) + gap, 0, 1, "0:00010203 -2");
        row("front is cut", hexLine(0, 0, counted(8)), 5, 99, "5:050607 -5");
        row("below the range, behind it", gap + hexLine(0, 0xE, "xy"), 0x10, 99, "10:0e0f -2");
        row("empty data record", ab + hexLine(0, 0x40, "") + cd, 0, 99, "0:0a0b0c0d");
        row("type 02 as upper address", hexUpper(2, 0xF) + ab, 0, top, "f0000:0a0b");
        row("type 02 as segment", hexUpper(2, 0x1000) + ab + hexUpper(2, 0xF000) + ab, 0, top,
            "10000:0a0b f0000:0a0b");
        row("type 02 that is no segment", hexUpper(2, 0x1234) + ab, 0, top, "12340000:0a0b");
        row("type 04 is never a segment", hexUpper(4, 0x1000) + ab, 0, top, "10000000:0a0b");
        row("address record ends the piece", ab + hexUpper(4, 0) + cd + hexUpper(4, 1) + ab, 0, top,
            "0:0a0b 2:0c0d 10000:0a0b");
        row("highest addresses", hexUpper(4, 0xFFFF) + hexLine(0, 0xFFFE, "\x0a\x0b"), 0, top,
            "fffffffe:0a0b");
        row("longest record", hexLine(0, 0, QByteArray(255, 'x')), 0xFD, 999, "fd:7878 -253");
        const auto wrong = [&](const QByteArray& text, const QString& pieces) {
            compareRow(QString(text), read("hex", text, 0, 0, 99, 16), pieces);
        };
        wrong(ab + cd + "\r\n" + hexEnd, wrongLine(3));
        wrong(gap + ab, "10:0e0f " + wrongLine(2));
        wrong(ab + hexLine(0, 1, "\x0b\x0c"), "0:0a0b " + wrongLine(2));
        // The range counts from the device's address or the file's, whichever ends higher.
        const QByteArray all = hexLine(0, 0, counted(0x60)) + hexLine(0, 0x60, counted(0x60, 0x60));
        compareRow("range of the device", read("hex", all, 0, 0x80, 0xBE, 256),
                   hexFrom(0x80, 0x40) + " -128");
        compareRow("range of the file", read("hex", all, 0x40, 0, 0x1F, 256), hexFrom(0, 0x60) + " -96");
        compareRow("no chunk", read("hex", ab, 0, 0, 99, 0), QString("@SizeMissing"));
    }

    void malformedHex()
    {
        const QByteArray good = ":020000000A0BE9";
        // Lengths, sums and digits that are wrong, lines that are no record or more than one.
        QByteArrayList lines = QByteArray(":|:00000000|:010000000A0BEA|:030000000A0BE8|:020000000A0BEA|"
                                          ":020000000A0BE90|:020000000G0BE3|:0200-00000A0BE9|;020000000A0BE9|"
                                          " :020000000A0BE9|:020000000A0BE9:020000000A0BE9|"
                                          ":020000000A0BE9\r:020000000A0BE9|\xef\xbb\xbf:020000000A0BE9")
                                   .split('|');
        lines += {QByteArray(good).insert(5, '\0'),
                  good + '\0',
                  QByteArray(good).replace(5, 1, "\xe9"),
                  good + QByteArray(1024 - good.size(), ' '),
                  ":" + QByteArray(1000, '0'),
                  ":" + QByteArray(1 << 20, '0'),
                  hexLine(4, 0, "\x01").trimmed(),
                  hexLine(2, 0, "\x01\x02\x03").trimmed()};
        // Behind a good record, so that the failure must come from this line.
        for (const QByteArray& line : qAsConst(lines))
            compareRow(QString::fromLatin1(line.left(80)),
                       read("hex", hexLine(0, 0, "x") + line + "\n" + hexEnd, 0, 0, 99, 16), wrongLine(2));
        // A sparse file of 100 MB: it must fail at its first line, not be read into memory.
        QFile large(m_dir.write("large", ""));
        QVERIFY(large.resize(100 * 1000 * 1000));
        TFormat format("hex", large.fileName(), 0, 0, 0x7FFFFFFFFFFFFFFF, 0x1000000);
        QVERIFY(format.open(0));
        QCOMPARE(readPieces(format, 0), wrongLine(1, "large"));
    }

    void hexWrites()
    {
        bool linear = false;
        const auto row = [&](const char* name, qint64 first, int size, int piece, const QByteArray& text) {
            TFormat format("hex", m_dir.write("out.hex", "old content"), first, 0, size - 1, piece);
            format.setLinear(linear);
            QVERIFY(format.open(1));
            for (int at = 0; at < size; at += piece)
                QVERIFY(format.write(first + at, counted(qMin(piece, size - at), at)));
            QVERIFY(format.close());
            compareRow(name, m_dir.read("out.hex"), text + hexEnd);
        };
        const QByteArray lastLine = hexLine(0, 0xFFF0, counted(16));
        row("literal bytes", 0x30, 2, 16, ":020030000001CD\r\n");
        row("off the grid", 10, 14, 64, hexLine(0, 10, counted(14)));
        row("up to the grid", 10, 24, 64,
            hexLine(0, 10, counted(6)) + hexLine(0, 16, counted(16, 6)) + hexLine(0, 32, counted(2, 22)));
        row("remainder is not merged", 0, 24, 20,
            hexLine(0, 0, counted(16)) + hexLine(0, 16, counted(4, 16)) + hexLine(0, 20, counted(4, 20)));
        row("type 02", 0xFFF0, 17, 32,
            hexUpper(2, 0) + lastLine + hexUpper(2, 1) + hexLine(0, 0, counted(1, 16)));
        row("type 02 up to 0xFFFFF", 0xFFFF0, 16, 16, hexUpper(2, 0xF) + lastLine);
        row("type 04", 0xFFFF0, 17, 9,
            hexUpper(4, 0xF) + hexLine(0, 0xFFF0, counted(9)) + hexLine(0, 0xFFF9, counted(7, 9)) +
                hexUpper(4, 0x10) + hexLine(0, 0, counted(1, 16)));
        row("literal address record", 0x10000, 1, 16, ":020000020001FB\r\n:0100000000FF\r\n");
        linear = true;
        row("type 04 where it was 02", 0xFFF0, 17, 32,
            hexUpper(4, 0) + lastLine + hexUpper(4, 1) + hexLine(0, 0, counted(1, 16)));
        row("no address record, no type 04", 0, 1, 16, hexLine(0, 0, counted(1)));

        TFormat far("hex", m_dir.file("far.hex"), 0xFFFFFFFF, 0, 1, 16);
        QVERIFY(far.open(1));
        QVERIFY(far.write(0xFFFFFFFF, counted(1)));
        QVERIFY2(!far.write(0x100000000, counted(1)), "no record can hold this address");
        QCOMPARE(far.errorText(), QString("@AddrOutsideDevice"));
    }

    // Nothing but a good close changes the old file, and then its link stays.
    void newFileTakesItsPlace()
    {
        const TestDir dir(TestDir::Empty);
        for (const char* name : {"bin", "hex"}) {
            const QString target = dir.write("target", "old");
            QVERIFY(QFile::link(target, dir.file(name)));
            for (const bool closed : {false, true}) {
                TFormat file(name, dir.file(name), 0, 0, 99, 16);
                QVERIFY(file.open(1) && file.isReplacing() && file.write(0, counted(20)));
                compareRow(name, dir.read("target"), QByteArray("old"));
                QVERIFY(!closed || file.close());
            }
            QVERIFY(QFileInfo(dir.file(name)).isSymLink() && dir.read("target").size() >= 20);
            QVERIFY(QFile::remove(dir.file(name)));
        }
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList("target"));
    }

    void pipes()
    {
        const QByteArray pipe = QFile::encodeName(m_dir.file("pipe"));
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        TFormat lonely("bin", m_dir.file("pipe"), 0, 0, 99, 16);
        QVERIFY(!lonely.open(1));
        QCOMPARE(lonely.errorText(), QString("@FileNotOpened @PipeNobodyReads"));
        const int reader = ::open(pipe.constData(), O_RDONLY | O_NONBLOCK);
        TFormat file("bin", m_dir.file("pipe"), 0, 0, 99, 16);
        QVERIFY(file.open(1) && !file.isReplacing());
        QVERIFY(file.write(0, "ab") && file.write(2, "cd"));
        QVERIFY(!file.write(9, "ef"));
        QCOMPARE(file.errorText(), QString("@FileOnlyInOrder"));
        char got[9] = {};
        QCOMPARE(int(::read(reader, got, 8)), 4);
        QCOMPARE(got, "abcd");
        ::close(reader);
        QVERIFY(!file.write(4, "gone"));
        QCOMPARE(file.errorText(), QString("Broken pipe"));
    }

    // The disk takes a part of a piece before it has no room for the rest.
    void fullDisk()
    {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit none{RLIM_INFINITY, RLIM_INFINITY};
        const rlimit some{1000, RLIM_INFINITY};
        for (const char* name : {"bin", "bin+", "hex"}) {
            TFormat file(name, m_dir.file("big"), 0, 0, 9999, 16);
            QVERIFY(file.open(1));
            setrlimit(RLIMIT_FSIZE, &some);
            const bool good = file.write(0, QByteArray(2000, 'x')) && file.close();
            setrlimit(RLIMIT_FSIZE, &none);
            QVERIFY(!good);
            compareRow(name, file.errorText(), QString("File too large"));
        }
    }

    void fullDevice()
    {
        for (const char* name : {"bin", "hex"}) {
            TFormat file(name, "/dev/full", 0, 0, 99, 16);
            QVERIFY(file.open(1));
            // 15 bytes of a HEX file are still in memory.
            QVERIFY(!(file.write(0, counted(15)) && file.close()));
            compareRow(name, file.errorText(), QString("@DiskFull No space left on device"));
        }
    }

    // Longer than what the reader takes in at once, over banks, with a gap.
    void roundTrip()
    {
        constexpr qint64 first = 0xFFF3;
        constexpr int size = 0x21000;
        const QByteArray part = counted(size);
        TFormat writer("hex", m_dir.file("long.hex"), first, 0, 0x3FFFF, 60);
        QVERIFY(writer.open(1));
        for (int at = 0; at < size; at += 60)
            QVERIFY(writer.write(first + at, part.mid(at, 60)));
        QVERIFY(writer.write(0x40005, "behind the gap"));
        QVERIFY(writer.close());
        const QByteArray whole = part + QByteArray(0x40005 - first - size, '-') + "behind the gap";
        for (const int chunk : {1, 7, 64, 5000, 0x1000000}) {
            TFormat reader("hex", m_dir.file("long.hex"), first, first, 0x4FFFF, chunk);
            QVERIFY(reader.open(0));
            QByteArray image;
            QByteArray data;
            for (qint64 at = first; reader.read(at, data) && !data.isEmpty(); at += data.size()) {
                QVERIFY(at / chunk == (at + data.size() - 1) / chunk);
                image.append(QByteArray(int(at - first) - image.size(), '-')).append(data);
            }
            QVERIFY2(image == whole, qPrintable(QString::number(chunk)));
        }
    }

private:
    QString read(const char* format, const QByteArray& content, qint64 addrFile, qint64 first, qint64 last,
                 qint64 chunk) const
    {
        TFormat file(format, m_dir.write("%3", content), addrFile, first, last, chunk);
        return file.open(0) ? readPieces(file, first) : "cannot open";
    }

    /// What is told about a line of the file.
    QString wrongLine(int number, const QString& file = "%3") const
    {
        return "@FilePlace @HexWrongLine " + m_dir.file(file) + ' ' + QString::number(number);
    }

    /// One piece of counted bytes.
    static QString hexFrom(int addr, int n)
    {
        return QString::number(addr, 16) + ':' + counted(n, addr).toHex();
    }

    const TestDir m_dir{TestDir::Empty};
};

QTEST_GUILESS_MAIN(TestFormats)
#include "test_formats.moc"
