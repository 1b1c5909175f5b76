#include "sim/SimClient.h"
#include "support/SimProcess.h"
#include "support/tables.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// The chip models, each with the shipped description of a real part, or with one written here where no
/// shipped one has the case.
class TestSimChips : public QObject
{
    Q_OBJECT

private slots:
    void spiSequence_data();
    void spiSequence();
    void spiEraseKeepsItsNeighbours_data();
    void spiEraseKeepsItsNeighbours();
    void spiSfdp();
    void avrSequence_data();
    void avrSequence();
    void avrExtendedAddress();
    void avrOldPart();
    void i2cSequence_data();
    void i2cSequence();
    void emptySocket();
    void readsDescriptionsAsWritten();
    void everyShippedChipAnswers();

private:
    void startWith(const QString& chip, const QStringList& more = {});
    void select(const char* block) { QCOMPARE(m_client->askHex(0x84, block).error(), -1); }
    void play(const QStringList& steps);
    QByteArray spiRead(int address, int count);

    std::unique_ptr<SimProcess> m_sim;
    std::unique_ptr<SimClient> m_client;
};

namespace {

const char* const spiBlock = "0100 00 40420F00";
const char* const avrBlock = "0200 00 40420F00 00 05";
const char* const i2cBlock = "0300 00 00 A0860100 0A";

QByteArray hexOf(const SimReply& reply)
{
    return reply.error() < 0 ? reply.payload.toHex().toUpper() : "E" + QByteArray::number(reply.error());
}

QByteArray address24(int address)
{
    QByteArray bytes;
    return bytes.append(char(address >> 16)).append(char(address >> 8)).append(char(address));
}

} // namespace

void TestSimChips::startWith(const QString& chip, const QStringList& more)
{
    m_client.reset();
    m_sim = std::make_unique<SimProcess>(QStringList{"--chip", chip} + more);
    QVERIFY2(m_sim->isReady(), m_sim->output().constData());
    m_client = std::make_unique<SimClient>(m_sim->path());
}

/// Each step is "opcode payload > answer" in hexadecimal; "E7" as the answer is an error reply.
void TestSimChips::play(const QStringList& steps)
{
    for (const QString& step : steps) {
        const QStringList sides = step.split('>');
        const QByteArray request = QByteArray::fromHex(sides[0].toLatin1());
        const QByteArray reply = hexOf(m_client->ask(uchar(request[0]), request.mid(1)));
        QVERIFY2(reply == sides[1].toLatin1().replace(' ', ""), qPrintable(step + " gave " + reply));
    }
}

QByteArray TestSimChips::spiRead(int address, int count)
{
    QByteArray payload;
    payload.append(char(count))
        .append(char(count >> 8))
        .append('\x0B')
        .append(address24(address))
        .append('\0');
    return m_client->ask(3, payload).payload;
}

void TestSimChips::spiSequence_data()
{
    tableColumns<QStringList>("steps");
    tableRow("programming only clears bits",
             QStringList{"04 02 000010 F0F0 >", "04 02 000010 3C > ", "03 0300 0B 000010 00 > 30F0FF"});
    tableRow("a program wraps in its page",
             QStringList{"04 02 0001FE 01020304 >", "03 0300 0B 0001FE 00 > 0102FF",
                         "03 0300 0B 000100 00 > 0304FF", "03 0200 0B 000000 00 > FFFF"});
    tableRow("a read wraps at the end",
             QStringList{"04 02 7FFFFF 11 >", "04 02 000000 22 >", "03 0200 0B 7FFFFF 00 > 1122"});
    tableRow(
        "C7 and 60 with an address do nothing",
        QStringList{"04 02 000000 00 >", "04 C7 000000 >", "04 60 000000 >", "03 0100 0B 000000 00 > 00"});
    tableRow("60 alone erases the chip",
             QStringList{"04 02 000000 00 >", "04 60 >", "03 0100 0B 000000 00 > FF"});
    tableRow(
        "an erase with two address bytes or four does nothing",
        QStringList{"04 02 000000 00 >", "04 D8 0000 >", "04 D8 000000 00 >", "03 0100 0B 000000 00 > 00"});
    tableRow("no change without write enable",
             QStringList{"03 0000 02 000000 00 >", "03 0000 D8 000000 >", "03 0100 0B 000000 00 > FF"});
    tableRow("the write enable is seen and used up",
             QStringList{"03 0000 06 >", "03 0100 05 > 02", "04 02 000000 00 >", "03 0100 05 > 00"});
    tableRow("status registers as shipped",
             QStringList{"03 0100 05 > 00", "03 0100 35 > 02", "03 0100 15 > 60"});
    tableRow("status registers", QStringList{"04 01 1F >", "04 31 42 >", "04 11 64 >", "03 0200 05 > 1C1C",
                                             "03 0100 35 > 42", "03 0100 15 > 64"});
    tableRow("security registers",
             QStringList{"04 42 002000 5AA5 >", "04 42 002000 F0 >", "03 0300 48 002000 00 > 50A5FF",
                         "03 0100 48 001000 00 > FF", "04 42 0020FF 1122 >", "03 0200 48 0020FF 00 > 1100",
                         "04 44 003000 >", "03 0100 48 0020FF 00 > 11", "04 44 002000 >",
                         "03 0100 48 0020FF 00 > FF", "03 0100 0B 002000 00 > FF"});
    tableRow("unknown instruction", QStringList{"03 0200 77 0000 > FFFF", "04 77 >", "03 0300 9F > EF4017"});
    tableRow("instruction cut off", QStringList{"03 0200 0B 0000 > FFFF", "04 02 00 >", "04 02 000000 >"});
}

void TestSimChips::spiSequence()
{
    QFETCH(QStringList, steps);
    startWith("W25Q64JV");
    select(spiBlock);
    play(steps);
}

void TestSimChips::spiEraseKeepsItsNeighbours_data()
{
    tableColumns<int, int>("opcode", "size");
    tableRow("4 KiB", 0x20, 4096);
    tableRow("32 KiB", 0x52, 32768);
    tableRow("64 KiB", 0xD8, 65536);
}

void TestSimChips::spiEraseKeepsItsNeighbours()
{
    QFETCH(int, opcode);
    QFETCH(int, size);
    const QTemporaryDir dir;
    const QString image = dir.filePath("image");
    QFile file(image);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8 * 1024 * 1024, '\0'));
    file.close();
    startWith("W25Q64JV", {"--image", image});
    select(spiBlock);
    const int begin = 5 * size;
    QCOMPARE(m_client->ask(4, QByteArray(1, char(opcode)) + address24(begin + size / 2 + 3)).error(), -1);
    QCOMPARE(spiRead(begin - 2, 3).toHex(), QByteArray("0000ff"));
    QCOMPARE(spiRead(begin + size - 1, 3).toHex(), QByteArray("ff0000"));
    QCOMPARE(spiRead(begin, size / 2), QByteArray(size / 2, '\xFF'));
    QCOMPARE(spiRead(begin + size / 2, size / 2), QByteArray(size / 2, '\xFF'));
}

void TestSimChips::spiSfdp()
{
    startWith("W25Q64JV");
    select(spiBlock);
    const QByteArray area = m_client->askHex(3, "0001 5A 000000 00").payload;
    QCOMPARE(area.size(), 256);
    QCOMPARE(area.left(4), QByteArray("SFDP"));
    QCOMPARE(int(area[8]), 0);
    const int words = area[11];
    const int table = area[12];
    QVERIFY(words >= 9 && table >= 16 && table + 4 * words <= area.size());
    const auto word = [&](int index) {
        quint32 value = 0;
        for (int i = 3; i >= 0; i--)
            value = value << 8 | uchar(area[table + 4 * index + i]);
        return value;
    };
    QCOMPARE(word(0) & 3U, 1U);
    QCOMPARE(word(0) >> 8 & 0xFFU, 0x20U);
    QCOMPARE(word(0) >> 17 & 3U, 0U);
    QCOMPARE(word(1), 8U * 1024 * 1024 * 8 - 1);
    QCOMPARE(word(7), 0x520F200CU);
    QCOMPARE(word(8), 0x0000D810U);
    // A read in the middle gives the same bytes.
    QCOMPARE(m_client->askHex(3, "0400 5A 000010 00").payload, area.mid(16, 4));
}

void TestSimChips::avrSequence_data()
{
    tableColumns<QString, QStringList>("chip", "steps");
    const auto row = [](const char* name, const char* chip, const QStringList& steps) {
        tableRow(name, chip, steps);
    };
    row("signature", "ATmega328P",
        {"07 00 30000000 > 0030001E", "07 00 30000100 > 00300095", "07 00 30000200 > 0030000F"});
    row("page needs its commit", "ATmega328P",
        {"04 0000 11223344 >", "03 0000 0400 > FFFFFFFF", "07 05 4C000000 > 004C0000",
         "03 0000 0500 > 11223344FF"});
    row("commit goes to the page of its address", "ATmega328P",
        {"04 8000 1122 >", "07 05 4C004000 > 004C0040", "03 7F00 0400 > FF1122FF", "03 0000 0200 > FFFF"});
    row("page buffer wraps and is emptied", "ATmega328P",
        {"04 7E00 11223344 >", "07 05 4C000000 > 004C0000", "03 0000 0300 > 3344FF", "03 7E00 0300 > 1122FF",
         "07 05 4C004000 > 004C0040", "03 8000 0200 > FFFF"});
    row("selecting empties the page buffer", "ATmega328P",
        {"04 0000 0000 >", "84 0200 00 40420F00 00 05 >", "07 05 4C000000 > 004C0000",
         "03 0000 0200 > FFFF"});
    row("EEPROM bytes are replaced", "ATmega328P",
        {"06 1000 0102 >", "06 1000 F0 >", "05 0F00 0400 > FFF002FF", "07 05 C0001055 > 00C00010",
         "07 00 A0001000 > 00A00055"});
    row("chip erase", "ATmega328P",
        {"04 0000 0000 >", "07 05 4C000000 > 004C0000", "06 0000 00 >", "07 05 ACE000FF > 00ACE000",
         "07 09 AC800000 > 00AC8000", "03 0000 0200 > FFFF", "05 0000 0100 > FF"});
    row("three fuse bytes as shipped", "ATmega328P",
        {"07 00 50000000 > 00500062", "07 00 58080000 > 005808D9", "07 00 50080000 > 005008FF"});
    row("fuses take any value and keep it", "ATmega328P",
        {"07 05 ACA000E2 > 00ACA000", "07 05 ACA800F9 > 00ACA800", "07 05 ACA400FD > 00ACA400",
         "07 00 50000000 > 005000E2", "07 00 58080000 > 005808F9", "07 00 50080000 > 005008FD",
         "07 00 30000000 > 0030001E"});
    row("lock bits go one way until an erase", "ATmega328P",
        {"07 00 58000000 > 005800FF", "07 05 ACE000EF > 00ACE000", "07 05 ACE000FF > 00ACE000",
         "07 00 58000000 > 005800EF", "07 09 AC800000 > 00AC8000", "07 00 58000000 > 005800FF"});
    row("a lock bit stops writing", "ATmega328P",
        {"06 0000 12 >", "07 05 ACE000FE > 00ACE000", "06 0000 34 >", "05 0000 0100 > 12",
         "07 05 ACA00000 > 00ACA000", "07 00 50000000 > 00500062", "04 0000 0000 >",
         "07 05 4C000000 > 004C0000", "03 0000 0200 > FFFF"});
    row("both lock bits stop reading", "ATmega328P",
        {"06 0000 12345678 >", "07 05 ACE000FC > 00ACE000", "05 0000 0400 > 00000101"});
    row("wrong lengths", "ATmega328P",
        {"03 000004 > E2", "04 00 > E2", "05 0000 > E2", "06 00 > E2", "07 00300000 > E2", "08 00 > E1"});
}

void TestSimChips::avrSequence()
{
    QFETCH(QString, chip);
    QFETCH(QStringList, steps);
    startWith(chip);
    select(avrBlock);
    play(steps);
}

void TestSimChips::avrExtendedAddress()
{
    startWith("ATmega2560");
    select(avrBlock);
    // Word 0x1FF80 of page 0x3FF00: 16 bits of it go into the commit.
    play({"07 00 4D000300 > 004D0003", "04 00FF A1A2 >", "07 05 4CFF8000 > 004CFF80", "03 00FF 0200 > A1A2",
          "07 00 4D000100 > 004D0001", "03 00FF 0200 > FFFF", "04 FEFF B1B2 >", "07 05 4CFF8000 > 004CFF80",
          "03 FEFF 0300 > B1B2FF", "07 00 4D000000 > 004D0000", "03 00FF 0200 > FFFF"});
    // A read counts on over a 64 KiB line.
    play({"07 00 4D000200 > 004D0002", "04 0000 C1C2 >", "07 05 4C000000 > 004C0000",
          "07 00 4D000100 > 004D0001", "03 FEFF 0400 > B1B2C1C2"});
    // Selecting the chip again forgets the extended address.
    play({"84 0200 00 40420F00 00 05 >", "03 FEFF 0200 > FFFF"});
}

void TestSimChips::avrOldPart()
{
    QTemporaryDir dir;
    QFile list(dir.filePath("devices.lst"));
    QFile types(dir.filePath("types.lst"));
    QVERIFY(list.open(QIODevice::WriteOnly) && types.open(QIODevice::WriteOnly));
    list.write("old=old.dev\nmid=mid.dev\n");
    types.write("avr=2\n");
    list.close();
    types.close();
    const QByteArray common =
        "gui_type = s|DevAVR8_SPI\nprg_type = s|avr\nflash_size = D|2048\neeprom_size = D|128\n"
        "flash_page_size = u|0\nsignature = s|1E9101\nlock_def = s|FF\nalg_lock_write = d|0\n";
    const QPair<const char*, QByteArray> files[] = {
        {"old.dev", "fuse_def = s|DF\nalg_fuse_read = d|0\nalg_fuse_write = d|0\n"},
        {"mid.dev", "fuse_def = s|DA\nalg_fuse_read = d|1\nalg_fuse_write = d|1\n"}};
    for (const auto& [name, own] : files) {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(common + own);
    }
    const auto start = [&](const QString& chip) {
        m_client.reset();
        m_sim = std::make_unique<SimProcess>(QStringList{"--chip", chip}, dir.path());
        QVERIFY2(m_sim->isReady(), m_sim->output().constData());
        m_client = std::make_unique<SimClient>(m_sim->path());
        select("0200 00 40420F00 05 05");
    };
    start("old");
    // Without page mode a write is at once in the flash. The fuse has one bit that can be written, and is
    // read together with the lock bits.
    play({"04 0200 1234 >", "03 0100 0400 > FF1234FF", "07 00 58000000 > 005800DF",
          "07 05 ACBE0000 > 00ACBE00", "07 00 58000000 > 005800DE", "07 05 ACFD0000 > 00ACFD00",
          "07 00 58000000 > 0058005E", "07 09 AC800000 > 00AC8000", "07 00 58000000 > 005800DE",
          "03 0200 0200 > FFFF"});
    start("mid");
    play({"07 00 50000000 > 005000DA", "07 05 ACB50000 > 00ACB500", "07 00 50000000 > 005000D5",
          "07 05 ACF90000 > 00ACF900", "07 00 58000000 > 005800F9"});
}

void TestSimChips::i2cSequence_data()
{
    tableColumns<QString, int, QStringList>("chip", "pins", "steps");
    const auto row = [](const char* name, const char* chip, int pins, const QStringList& steps) {
        tableRow(name, chip, pins, steps);
    };
    row("one address byte", "24C02", 0,
        {"04 A0 10 1234 >", "05 0400 A0 0F > FF1234FF", "04 A0 10 F0 >", "05 0200 A0 10 > F034"});
    row("two address bytes", "24C512", 0,
        {"04 A0 1234 AB >", "05 0200 A0 1233 > FFAB", "05 0100 A0 3412 > FF"});
    row("block bits beside a pin", "24C08", 4,
        {"04 A6 05 33 > E7", "03 08 >", "04 A6 05 33 >", "05 0100 A6 05 > 33", "05 0100 A2 05 > FF"});
    row("a write wraps in its page", "24C16", 0,
        {"04 A0 0E 01020304 >", "05 0500 A0 0D > FF0102FFFF", "05 0300 A0 00 > 0304FF"});
    row("its own address only", "24C02", 5,
        {"04 A0 00 11 > E7", "05 0100 A0 00 > E7", "03 0A >", "04 A0 00 11 >", "05 0100 A0 00 > 11",
         "03 00 >", "05 0100 A0 00 > E7"});
    row("address without data writes nothing", "24C02", 0, {"04 A0 20 >", "05 0100 A0 20 > FF"});
    row("wrong requests", "24C02", 0,
        {"03 > E2", "03 01 > E3", "03 10 > E3", "04 > E2", "05 0100 > E2", "06 00 > E1"});
}

void TestSimChips::i2cSequence()
{
    QFETCH(QString, chip);
    QFETCH(int, pins);
    QFETCH(QStringList, steps);
    startWith(chip, {"--address", QString::number(pins)});
    select(i2cBlock);
    play(steps);
}

void TestSimChips::emptySocket()
{
    m_client.reset();
    m_sim = std::make_unique<SimProcess>();
    m_client = std::make_unique<SimClient>(m_sim->path());
    select(spiBlock);
    play({"03 0300 9F > FFFFFF", "04 02 000000 00 >", "03 0100 0B 000000 00 > FF"});
    select(avrBlock);
    play({"07 00 30000000 > FFFFFFFF", "03 0000 0200 > FFFF", "04 0000 0000 >", "05 0000 0100 > FF",
          "06 0000 00 >"});
    select(i2cBlock);
    play({"03 00 >", "05 0100 A0 00 > E7", "04 A0 00 00 > E7"});
}

void TestSimChips::readsDescriptionsAsWritten()
{
    // Windows line ends and folders, comments, lines to skip, a repeated key, numbers in every base, and a
    // list that another list and a plain key interrupt.
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir("sub"));
    const QPair<const char*, QByteArray> files[] = {
        {"devices.lst", "# chips\r\n  my chip=sub\\my.dev  \r\nno entry\r\n"},
        {"types.lst", "first=7\nfirst=8\n"},
        {"sub/my.dev", "# size = D|1\r\nsize = D|16\r\nno bar = 5\r\nsize = q|32\r\n|\r\n=\r\n"
                       "gui_type=s|Dev25\r\nprg_type = s|first\r\nsize=X|10000\r\npage_size = b|1000\r\n"
                       "signature = s|AB CD EF\r\nerase_blocks = l|20|1024\r\ninfo = l|a|b|c\r\n"
                       "erase_blocks = l|20|4096\r\nstatus_reg_def = s|000000\r\nerase_blocks = l|52|8192\r\n"
                       "erase = s|D8|65536"}};
    for (const auto& [name, text] : files) {
        QFile file(dir.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    m_client.reset();
    m_sim = std::make_unique<SimProcess>(QStringList{"--chip", "my chip"}, dir.path());
    QVERIFY2(m_sim->isReady(), m_sim->output().constData());
    m_client = std::make_unique<SimClient>(m_sim->path());
    select("0700 00 40420F00");
    play({"84 0800 00 40420F00 > E6", "84 0700 00 40420F00 >", "03 0300 9F > ABCDEF", "04 02 000006 112233 >",
          "03 0200 0B 000006 00 > 1122", "03 0200 0B 000000 00 > 33FF", "04 02 001000 00 >", "04 20 000800 >",
          "03 0100 0B 000000 00 > FF", "03 0100 0B 001000 00 > 00", "04 52 000000 >",
          "03 0100 0B 001000 00 > FF", "04 02 00FFFF 00 >", "03 0100 0B FFFFFF 00 > 00"});
}

void TestSimChips::everyShippedChipAnswers()
{
    QFile list(QStringLiteral(VM_BUILD_DIR "/devices/devices.lst"));
    QVERIFY(list.open(QIODevice::ReadOnly | QIODevice::Text));
    int chips = 0;
    while (!list.atEnd()) {
        const QByteArray line = list.readLine().trimmed();
        const int equals = line.indexOf('=');
        if (line.isEmpty() || line.startsWith('#') || equals < 0)
            continue;
        const QString name = QString::fromUtf8(line.left(equals));
        startWith(name);
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(name));
        m_client->askHex(0x84, spiBlock);
        const bool spi = m_client->askHex(3, "0300 9F").payload != QByteArray(3, '\xFF');
        m_client->askHex(0x84, avrBlock);
        const bool avr = hexOf(m_client->askHex(7, "00 30000000")) == "0030001E";
        m_client->askHex(0x84, i2cBlock);
        const bool i2c = m_client->askHex(5, "0100 A0 0000").error() < 0;
        QVERIFY2(int(spi) + int(avr) + int(i2c) == 1, qPrintable(name));
        chips++;
    }
    QVERIFY(chips >= 32);
}

QTEST_GUILESS_MAIN(TestSimChips)
#include "test_sim_chips.moc"
