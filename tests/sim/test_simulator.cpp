#include "support/ScriptedPeer.h"
#include "support/SimProcess.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

const QByteArray oldAvr =
    "gui_type = s|DevAVR8_SPI\nprg_type = s|avr\nflash_size = D|2048\neeprom_size = D|128\n"
    "flash_page_size = u|0\nsignature = s|1E9101\nlock_def = s|FF\nalg_lock_write = d|0\n";

// Descriptions that no shipped chip has: AVRs without page mode and with their fuses in one instruction, in
// lists with what people write.
const struct
{
    const char* name;
    QByteArray text;
} files[] = {
    {"devices.lst", "# chips\r\n  old=sub\\old.dev  \r\nno entry\r\nmid=mid.dev\n"},
    {"types.lst", "flash=1\navr=2\navr=8\n"},
    {"sub/old.dev", "fuse_def = s|DF\nalg_fuse_read = d|0\nalg_fuse_write = d|0\n" + oldAvr},
    {"mid.dev", "fuse_def = s|DA\nalg_fuse_read = d|1\nalg_fuse_write = d|1\n" + oldAvr},
};

// What it shows | chip, "-" for none, and options | requests and answers; "!7" is an error reply.
const char sequences[] = R"(
the programmer itself | W25Q64JV | 80 > D204, 80 00 > !2, 82 > !1, 00 > !1, 83 03 >, 83 04 > !3, 83 > !2, 85 >,
    86 70FE >, 86 0000 > !3, 87 A0860100 F401 >, 87 A0860100 E903 > !3, 88 0000 000102030405060708 >, 88 0000 09 > !3,
    89 21 >, 8A 2100 > !2, 8B 21 10270000 01 >, 8B 21 10270000 02 > !3, 8C 78 1027 00 >, 8C 78 10270000 00 > !2
a chip is selected first | W25Q64JV | 03 0300 9F > !5, 84 0100 > !2, 84 6300 00 40420F00 > !6, SPI, 03 0300 9F > EF4017,
    02 40420F00 >, 02 40420F > !2, 01 0000 0008 >, 01 0000 09 > !3, 05 0300 9F > !1, 03 0300 > !2, 84 >, 03 0300 9F > !5
another family drives the socket | W25Q64JV | AVR, 07 00 30000000 > FFFFFFFF, I2C, 05 0400 A0 00 > !7
an empty socket | - | SPI, 03 0300 9F > FFFFFF, 04 02 000000 00 >, 03 0100 0B 000000 00 > FF,
    AVR, 07 00 30000000 > FFFFFFFF, 03 0000 0200 > FFFF, 04 0000 0000 >, 05 0000 0100 > FF, 06 0000 00 >,
    I2C, 03 00 >, 05 0100 A0 00 > !7, 04 A0 00 00 > !7
payload longer than a frame | W25Q64JV --max-data=8 | SPI, 04 02 000000 11223344 >, 04 02 000000 0000000000 > !2,
    03 0400 0B 000000 00 > 11223344
the longest payload | W25Q64JV | SPI, 04 02 000000 00*65531 >, 03 FFFF 0B 000000 00 > 00*256 FF*65279
faults that do not fit their frame | W25Q64JV --fault=flip@1 --fault=short@2 --fault=error=7@3 | 80 > D204, SPI,
    04 02 000000 00 > !7, 03 0100 0B 000000 00 > FF

programming only clears bits | W25Q64JV | SPI, 04 02 000010 F0F0 >, 04 02 000010 3C >, 03 0300 0B 000010 00 > 30F0FF
a program wraps in its page | W25Q64JV | SPI, 04 02 0001FE 01020304 >, 03 0300 0B 0001FE 00 > 0102FF,
    03 0300 0B 000100 00 > 0304FF, 03 0200 0B 000000 00 > FFFF
a read wraps at the end | W25Q64JV | SPI, 04 02 7FFFFF 11 >, 04 02 000000 22 >, 03 0200 0B 7FFFFF 00 > 1122
erases of another length do nothing | W25Q64JV | SPI, 04 02 000000 00 >, 04 C7 000000 >, 04 60 000000 >, 04 D8 0000 >,
    04 D8 000000 00 >, 03 0100 0B 000000 00 > 00, 04 60 >, 03 0100 0B 000000 00 > FF
4 KiB | W25Q64JV | SPI, 04 02 004FFF 00 >, 04 02 005000 00 >, 04 02 005FFF 00 >, 04 02 006000 00 >, 04 20 005803 >,
    03 0200 0B 004FFF 00 > 00FF, 03 0200 0B 005FFF 00 > FF00
32 KiB | W25Q64JV | SPI, 04 02 007FFF 00 >, 04 02 008000 00 >, 04 02 00FFFF 00 >, 04 02 010000 00 >, 04 52 00C003 >,
    03 0200 0B 007FFF 00 > 00FF, 03 0200 0B 00FFFF 00 > FF00
64 KiB | W25Q64JV | SPI, 04 02 00FFFF 00 >, 04 02 010000 00 >, 04 02 01FFFF 00 >, 04 02 020000 00 >, 04 D8 018003 >,
    03 0200 0B 00FFFF 00 > 00FF, 03 0200 0B 01FFFF 00 > FF00
no change without write enable | W25Q64JV | SPI, 03 0000 02 000000 00 >, 03 0000 D8 000000 >,
    03 0100 0B 000000 00 > FF
status registers | W25Q64JV | SPI, 03 0100 05 > 00, 03 0100 35 > 02, 03 0100 15 > 60, 04 01 1F >, 04 31 42 >,
    04 11 64 >, 03 0200 05 > 1C1C, 03 0100 35 > 42, 03 0100 15 > 64
security registers | W25Q64JV | SPI, 04 42 002000 5AA5 >, 04 42 002000 F0 >, 03 0300 48 002000 00 > 50A5FF,
    03 0100 48 001000 00 > FF, 04 42 0020FF 1122 >, 03 0200 48 0020FF 00 > 1100, 04 44 003000 >,
    03 0100 48 0020FF 00 > 11, 04 44 002000 >, 03 0100 48 0020FF 00 > FF, 03 0100 0B 002000 00 > FF
SFDP: 64 Mbit, 4, 32 and 64 KiB erases | W25Q64JV | SPI, 03 0400 5A 000000 00 > 53464450,
    03 0800 5A 000008 00 > 00000109100000FF, 03 0800 5A 000010 00 > E52080FFFFFFFF03,
    03 0800 5A 00002C 00 > 0C200F5210D80000

signature | ATmega328P | AVR, 07 00 30000000 > 0030001E, 07 00 30000100 > 00300095, 07 00 30000200 > 0030000F
a page needs its commit | ATmega328P | AVR, 04 0000 11223344 >, 03 0000 0400 > FFFFFFFF, 07 05 4C000000 > 004C0000,
    03 0000 0500 > 11223344FF
a commit goes to the page of its address | ATmega328P | AVR, 04 8000 1122 >, 07 05 4C004000 > 004C0040,
    03 7F00 0400 > FF1122FF, 03 0000 0200 > FFFF
the page buffer wraps and is emptied | ATmega328P | AVR, 04 7E00 11223344 >, 07 05 4C000000 > 004C0000,
    03 0000 0300 > 3344FF, 03 7E00 0300 > 1122FF, 07 05 4C004000 > 004C0040, 03 8000 0200 > FFFF
selecting empties the page buffer | ATmega328P | AVR, 04 0000 0000 >, AVR, 07 05 4C000000 > 004C0000, 03 0000 0200 > FFFF
EEPROM bytes are replaced | ATmega328P | AVR, 06 1000 0102 >, 06 1000 F0 >, 05 0F00 0400 > FFF002FF,
    07 05 C0001055 > 00C00010, 07 00 A0001000 > 00A00055
chip erase | ATmega328P | AVR, 04 0000 0000 >, 07 05 4C000000 > 004C0000, 06 0000 00 >, 07 05 ACE000FF > 00ACE000,
    07 09 AC800000 > 00AC8000, 03 0000 0200 > FFFF, 05 0000 0100 > FF
fuses take any value and keep it | ATmega328P | AVR, 07 00 50000000 > 00500062, 07 00 58080000 > 005808D9,
    07 00 50080000 > 005008FF, 07 05 ACA000E2 > 00ACA000, 07 05 ACA800F9 > 00ACA800, 07 05 ACA400FD > 00ACA400,
    07 00 50000000 > 005000E2, 07 00 58080000 > 005808F9, 07 00 50080000 > 005008FD
lock bits go one way until an erase | ATmega328P | AVR, 07 00 58000000 > 005800FF, 07 05 ACE000EF > 00ACE000,
    07 05 ACE000FF > 00ACE000, 07 00 58000000 > 005800EF, 07 09 AC800000 > 00AC8000, 07 00 58000000 > 005800FF
a lock bit stops writing | ATmega328P | AVR, 06 0000 12 >, 07 05 ACE000FE > 00ACE000, 06 0000 34 >, 05 0000 0100 > 12,
    07 05 ACA00000 > 00ACA000, 07 00 50000000 > 00500062, 04 0000 0000 >, 07 05 4C000000 > 004C0000,
    03 0000 0200 > FFFF
both lock bits stop reading | ATmega328P | AVR, 06 0000 12345678 >, 07 05 ACE000FC > 00ACE000, 05 0000 0400 > 00000101
extended address: word 1FF80 of the page 3FF00 | ATmega2560 | AVR, 07 00 4D000300 > 004D0003, 04 00FF A1A2 >,
    07 05 4CFF8000 > 004CFF80, 03 00FF 0200 > A1A2, 07 00 4D000100 > 004D0001, 03 00FF 0200 > FFFF,
    04 FEFF B1B2 >, 07 05 4CFF8000 > 004CFF80, 03 FEFF 0300 > B1B2FF, 07 00 4D000000 > 004D0000, 03 00FF 0200 > FFFF
a read counts on over a line of 64 KiB | ATmega2560 | AVR, 07 00 4D000100 > 004D0001, 04 FEFF B1B2 >,
    07 05 4CFF8000 > 004CFF80, 07 00 4D000200 > 004D0002, 04 0000 C1C2 >, 07 05 4C000000 > 004C0000,
    07 00 4D000100 > 004D0001, 03 FEFF 0400 > B1B2C1C2, AVR, 03 FEFF 0200 > FFFF
without pages, and one fuse bit beside the lock bits | old | AVR, 04 0200 1234 >, 03 0100 0400 > FF1234FF,
    07 00 58000000 > 005800DF, 07 05 ACBE0000 > 00ACBE00, 07 00 58000000 > 005800DE, 07 05 ACFD0000 > 00ACFD00,
    07 00 58000000 > 0058005E, 07 09 AC800000 > 00AC8000, 07 00 58000000 > 005800DE, 03 0200 0200 > FFFF
five fuse bits in an instruction | mid | AVR, 07 00 50000000 > 005000DA, 07 05 ACB50000 > 00ACB500,
    07 00 50000000 > 005000D5, 07 05 ACF90000 > 00ACF900, 07 00 58000000 > 005800F9

one address byte | 24C02 | I2C, 04 A0 10 1234 >, 05 0400 A0 0F > FF1234FF, 04 A0 10 F0 >, 05 0200 A0 10 > F034,
    04 A0 20 >, 05 0100 A0 20 > FF
two address bytes | 24C512 | I2C, 04 A0 1234 AB >, 05 0200 A0 1233 > FFAB, 05 0100 A0 3412 > FF
block bits beside a pin | 24C08 --address=4 | I2C, 04 A6 05 33 > !7, 03 08 >, 04 A6 05 33 >, 05 0100 A6 05 > 33,
    05 0100 A2 05 > FF
a write wraps in its page | 24C16 | I2C, 04 A0 0E 01020304 >, 05 0500 A0 0D > FF0102FFFF, 05 0300 A0 00 > 0304FF
reads begin again at a border inside | 24LC1026 | I2C, 04 A0 0000 11 >, 04 A2 0000 22 >, 05 0200 A0 FFFF > FF11
its own address only | 24C02 --address=5 | I2C, 04 A0 00 11 > !7, 05 0100 A0 00 > !7, 03 0A >, 04 A0 00 11 >,
    05 0100 A0 00 > 11, 03 00 >, 05 0100 A0 00 > !7
)";

// What it shows | bytes sent | bytes that come back. A request 80 is C0800000C0.
const char streams[] = R"(
a wrong checksum | C0 84 07 00 01 01 00 40 42 0F 00 24 | C0 FF 02 00 04 00 3B
text in front | 41542B474D520D0A C0800000C0 | C0800200D204E8
bytes of a broken frame in front | 0000 FF 8000 C0800000C0 | C0800200D204E8
two frames and the beginning of one | C0800000C0 C0820000BE C08100 | C0800200D204E8 C0FF020001003E
)";

// A fault of the answer that would be C0030300EF4017F4 | bytes that come instead.
const char faults[] = R"(
silent |
cut | C0030300
checksum | C0030300EF4017F5
error=515 | C0FF020003023A
short | C0030200EF400C
flip | C0030300EF4037D4
echo | C0030300EF4017F4
)";

/// A host that knows the wire protocol and nothing else, written for these tests alone.
class SimClient
{
public:
    explicit SimClient(const QString& path)
        : m_fd(open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY))
    {
    }
    ~SimClient() { close(m_fd); }
    SimClient(const SimClient&) = delete;
    SimClient& operator=(const SimClient&) = delete;

    /// Exchanges lines of PeerLine, with commas between them; gives the first one that was answered
    /// otherwise, and how, and nothing when all is well. SPI, AVR and I2C select a chip of that family.
    QString play(QString lines)
    {
        lines.replace("SPI", "84 0100 00 40420F00 >");
        lines.replace("AVR", "84 0200 00 40420F00 00 05 >");
        lines.replace("I2C", "84 0300 00 00 A0860100 0A >");
        for (const QString& text : lines.split(',')) {
            const PeerLine line(text);
            send(peerFrame(uchar(line.request.at(0)), line.request.mid(1)));
            const QByteArray answer = receive(line.answer.isEmpty() ? 100 : 3000);
            if (answer != line.answer)
                return text.trimmed() + " gave " + answer.toHex().toUpper();
        }
        return {};
    }

    void send(const QByteArray& bytes)
    {
        int done = 0;
        while (done < bytes.size()) {
            const ssize_t put = write(m_fd, bytes.constData() + done, size_t(bytes.size() - done));
            if (put <= 0)
                return;
            done += int(put);
        }
    }

    /// One whole frame that begins within so many milliseconds, or what of it comes before a gap.
    QByteArray receive(int limit = 3000)
    {
        QByteArray bytes;
        pollfd line{m_fd, POLLIN, 0};
        char byte = 0;
        int size = 4;
        while (bytes.size() < size && poll(&line, 1, bytes.isEmpty() ? limit : 150) > 0 &&
               read(m_fd, &byte, 1) == 1) {
            bytes.append(byte);
            if (bytes.size() == 4)
                size = 5 + uchar(bytes[2]) + 256 * uchar(bytes[3]);
        }
        return bytes;
    }

    /// Throws away what lies unread, as a host does before each request.
    void clear() { tcflush(m_fd, TCIOFLUSH); }

private:
    int m_fd;
};

/// What comes when these bytes are expected, and right behind them.
QString receiveFor(SimClient& client, const QString& expected)
{
    QByteArray all;
    for (QByteArray part = " "; !part.isEmpty(); all += part)
        part = client.receive(all.size() * 2 < expected.size() ? 2000 : 50);
    return QString::fromLatin1(all.toHex().toUpper());
}

// Options | exit code: 2 for words that make no sense, 1 for what cannot be done.
const char refused[] = R"(
--chip | 2
--baud 0 | 2
--interface 65536 | 2
--max-data 65536 | 2
--address 8 | 2
--fault silent@0 | 2
--fault loud@1 | 2
--fault error=x@1 | 2
--image file | 2
--port= | 2
--chip W25Q9999 | 1
--chip W25Q64JV --devices /nowhere | 1
--trace /nowhere/trace | 1
--chip W25Q64JV --image / | 1
)";

const QString program = QStringLiteral(VM_BUILD_DIR "/velmarkion-sim");

/// Exit code and words of a program that ends at once; the code of one that goes on is -1.
std::pair<int, QByteArray> ended(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool isOver = process.waitForFinished(5000) && process.exitStatus() == QProcess::NormalExit;
    process.kill();
    process.waitForFinished();
    return {isOver ? process.exitCode() : -1, process.readAll()};
}

} // namespace

/// The simulated programmer: its requests and the models of the chips; bytes that are no good request; the
/// faults that it can be told to make; and the program with its options, link, image, trace and end.
class TestSimulator : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const auto& file : files)
            m_own.write(file.name, file.text);
    }

    void sequence_data() { textRows(sequences, {"what", "chip", "steps"}); }
    void sequence()
    {
        QFETCH(QString, chip);
        QFETCH(QString, steps);
        const QStringList options = chip == "-" ? QStringList() : QString("--chip=" + chip).split(' ');
        const bool isOwn = files[0].text.contains(chip.toLatin1() + '=');
        SimProcess sim(options, isOwn ? m_own.path() : QString());
        QVERIFY2(sim.isReady(), sim.output().constData());
        QCOMPARE(SimClient(sim.path()).play(steps), QString());
    }

    void stream_data() { textRows(streams, {"what", "sent", "received"}); }
    void stream()
    {
        QFETCH(QString, sent);
        QFETCH(QString, received);
        SimProcess sim({"--chip", "W25Q64JV"});
        SimClient client(sim.path());
        client.send(QByteArray::fromHex(sent.toLatin1()));
        received.remove(' ');
        QCOMPARE(receiveFor(client, received), received);
        // The beginning of a frame is given up after a silence.
        QCOMPARE(client.receive(sent.endsWith("C08100") ? 700 : 0), QByteArray());
        QCOMPARE(client.play("80 > D204"), QString());
    }

    void fault_data() { textRows(faults, {"fault", "received"}); }
    void fault()
    {
        QFETCH(QString, fault);
        QFETCH(QString, received);
        SimProcess sim({"--chip", "W25Q64JV", "--fault", fault + "@2", "--fault=" + fault + "@4"});
        QVERIFY2(sim.isReady(), sim.output().constData());
        SimClient client(sim.path());
        QCOMPARE(client.play("SPI"), QString());
        for (int i = 0; i < 2; i++) {
            client.send(peerFrame(3, QByteArray::fromHex("03009F")));
            QCOMPARE(receiveFor(client, received), received);
            QCOMPARE(client.play("03 0300 9F > EF4017"), QString());
        }
    }

    void hangupClosesTheLine()
    {
        SimProcess sim({"--chip", "W25Q64JV", "--fault", "hangup@2"});
        SimClient client(sim.path());
        QCOMPARE(client.play("80 > D204, 80"), QString());
        QTRY_VERIFY(!QFileInfo(sim.path()).isSymLink());
    }

    void keepsToTheBaudRate()
    {
        SimProcess sim({"--chip", "W25Q64JV", "--baud", "19200"});
        SimClient client(sim.path());
        QCOMPARE(client.play("SPI"), QString());
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(client.play("03 F401 0B 000000 00 > FF*500"), QString());
        // 12 bytes there and 505 back, 10 bits each.
        const qint64 due = (12 + 505) * 10 * 1000 / 19200;
        QVERIFY2(timer.elapsed() >= due - 5, QByteArray::number(timer.elapsed()).constData());
        QVERIFY2(timer.elapsed() < due * 3, QByteArray::number(timer.elapsed()).constData());
    }

    void waitsAfterEachByteOfAChipWithoutPages()
    {
        SimProcess sim({"--chip", "old", "--baud", "1000000"}, m_own.path());
        SimClient client(sim.path());
        // Flash pacing 60 ms, EEPROM pacing 90 ms.
        QCOMPARE(client.play("84 0200 00 40420F00 3C 5A >"), QString());
        QElapsedTimer timer;
        for (const char* step : {"04 0000 00000000", "06 0000 0000"}) {
            const QByteArray request = PeerLine(step).request;
            timer.start();
            client.send(peerFrame(uchar(request.at(0)), request.mid(1)));
            QCOMPARE(client.receive(), peerFrame(uchar(request.at(0))));
            const qint64 due = request.at(0) == 4 ? 4 * 60 : 2 * 90;
            QVERIFY2(timer.elapsed() >= due - 5, QByteArray::number(timer.elapsed()).constData());
        }
    }

    // Being held up is no fault of the line.
    void nothingIsLostWhileOneEndIsHeldUp()
    {
        SimProcess sim({"--chip", "W25Q64JV"});
        SimClient client(sim.path());
        QCOMPARE(client.play("SPI"), QString());
        const QByteArray request = peerFrame(3, QByteArray::fromHex("FFFF0B0000000000"));
        client.send(request.left(6));
        QTest::qWait(200);
        kill(sim.id(), SIGSTOP);
        client.send(request.mid(6));
        QTest::qWait(700);
        kill(sim.id(), SIGCONT);
        // An answer longer than the line holds, which the host does not take for a while.
        QTest::qWait(1500);
        QCOMPARE(client.receive().size(), 65535 + 5);
        QCOMPARE(client.play("80 > D204"), QString());
    }

    void refuses_data() { textRows(refused, {"options", "code"}); }
    void refuses()
    {
        QFETCH(QString, options);
        const TestDir dir(TestDir::Empty);
        QStringList arguments = options.split(' ');
        if (!options.contains("--port"))
            arguments = QStringList{"--port", dir.file("sim")} + arguments;
        const auto [code, output] = ended(arguments);
        QTEST(QString::number(code), "code");
        QVERIFY(!output.isEmpty() && !output.contains("ready"));
        QCOMPARE(output.contains("--help"), code == 2);
        QVERIFY(!QFileInfo(dir.file("sim")).isSymLink());
    }

    void replacesStaleLinkAndEndsOnSignal()
    {
        const TestDir dir(TestDir::Empty);
        const QString link = dir.file("sim");
        QProcess first;
        first.start(program, {"--port", link});
        QVERIFY(first.waitForReadyRead(5000));
        first.kill();
        QVERIFY(first.waitForFinished(5000));
        QVERIFY(QFileInfo(link).isSymLink());
        // The next simulator is most likely given the terminal of the one that is gone.
        SimProcess other{QStringList()};
        QVERIFY2(other.isReady(), other.output().constData());
        QProcess second;
        second.start(program, {"--port", link});
        QVERIFY(second.waitForReadyRead(5000));
        QCOMPARE(second.readAllStandardOutput(), "ready " + link.toUtf8() + "\n");
        QCOMPARE(SimClient(link).play("80 > D204"), QString());
        second.terminate();
        QVERIFY(second.waitForFinished(5000));
        QVERIFY(second.exitStatus() == QProcess::NormalExit && second.exitCode() == 0);
        QVERIFY(!QFileInfo(link).isSymLink() && second.readAllStandardOutput().isEmpty());
    }

    void leavesForeignFiles()
    {
        const TestDir dir(TestDir::Empty);
        QVERIFY(QFile::link(dir.write("notes", "keep me"), dir.file("link")));
        for (const char* name : {"notes", "link"}) {
            QCOMPARE(ended({"--port", dir.file(name)}).first, 1);
            QCOMPARE(dir.read(name), QByteArray("keep me"));
        }
        SimProcess running({"--name", "first"});
        QVERIFY2(running.isReady(), running.output().constData());
        QCOMPARE(ended({"--port", running.path()}).first, 1);
        QCOMPARE(SimClient(running.path()).play("81 > 6669727374"), QString());
    }

    void imageIsLoadedAndSaved()
    {
        const TestDir dir(TestDir::Empty);
        const QString image = dir.write("chip.bin", QByteArray::fromHex("F00F55"));
        SimProcess sim({"--chip", "W25Q64JV", "--image", image});
        QVERIFY2(sim.isReady(), sim.output().constData());
        QCOMPARE(SimClient(sim.path()).play("SPI, 03 0400 0B 000000 00 > F00F55FF, 04 02 7FFFFF 12 >"),
                 QString());
        QVERIFY(sim.stop());
        const QByteArray saved = dir.read("chip.bin");
        QCOMPARE(saved.size(), 8 * 1024 * 1024);
        QCOMPARE(saved.left(4).toHex() + saved.right(2).toHex(), QByteArray("f00f55ffff12"));
        // One that is larger than the chip is left as it is.
        QCOMPARE(ended({"--chip", "24C16", "--image", image, "--port", dir.file("sim")}).first, 1);
        QCOMPARE(dir.read("chip.bin"), saved);
    }

    void traceHasEveryFrame()
    {
        const TestDir dir(TestDir::Empty);
        SimProcess sim({"--trace", dir.file("trace"), "--fault", "cut@2", "--fault", "silent@3"});
        QVERIFY2(sim.isReady(), sim.output().constData());
        SimClient client(sim.path());
        for (const char* frame : {"C0800000C0", "C0800000C0", "C083010001BB"}) {
            client.send(QByteArray::fromHex(frame));
            client.receive(150);
        }
        const QRegularExpression line("^\\d\\d:\\d\\d:\\d\\d\\.\\d{6} ([<>])((?: [0-9A-F]{2})*)$");
        QStringList frames;
        for (const QByteArray& row : dir.read("trace").trimmed().split('\n')) {
            const QRegularExpressionMatch match = line.match(QString::fromLatin1(row));
            QVERIFY2(match.hasMatch(), row.constData());
            frames << match.captured(1) + match.captured(2);
        }
        const QStringList expected = {"> C0 80 00 00 C0", "< C0 80 02 00 D2 04 E8", "> C0 80 00 00 C0",
                                      "< C0 80 02", "> C0 83 01 00 01 BB"};
        QCOMPARE(frames, expected);
    }

    void survivesItsHosts()
    {
        SimProcess sim({"--chip", "W25Q64JV"});
        QVERIFY2(sim.isReady(), sim.output().constData());
        {
            // A host that dies in the middle of a frame, with an answer that it never took.
            SimClient client(sim.path());
            QCOMPARE(client.play("SPI"), QString());
            client.send(QByteArray::fromHex("C0030700FFFF0B000000002DC0040010"));
        }
        QTest::qWait(1300);
        SimClient next(sim.path());
        next.clear();
        next.send(QByteArray(5, '\0'));
        QTest::qWait(50);
        next.clear();
        QCOMPARE(next.play("80 > D204"), QString());
    }

private:
    TestDir m_own{TestDir::Empty};
};

QTEST_GUILESS_MAIN(TestSimulator)
#include "test_simulator.moc"
