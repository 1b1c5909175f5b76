#include "formats/ICRC.h"
#include "formats/crcTable.h"
#include "formats/createCRC.h"

#include <QFile>
#include <QRandomGenerator>
#include <QtTest>

#include <memory>

namespace {

/// Names of one algorithm in the order of the catalogue, and its published check value: the checksum of the
/// nine characters "123456789".
struct TCheck
{
    const char* names;
    const char* check;
};

const TCheck checks[] = {
    {"CRC-3/GSM", "04"},
    {"CRC-3/ROHC", "06"},
    {"CRC-4/G-704 CRC-4/ITU", "07"},
    {"CRC-4/INTERLAKEN", "0B"},
    {"CRC-5/EPC CRC-5/EPC-C1G2", "00"},
    {"CRC-5/ITU CRC-5/G-704", "07"},
    {"CRC-5/USB", "19"},
    {"CRC-6/CDMA2000-A", "0D"},
    {"CRC-6/CDMA2000-B", "3B"},
    {"CRC-6/DARC", "26"},
    {"CRC-6/ITU CRC-6/G-704", "06"},
    {"CRC-6/GSM", "13"},
    {"CRC-7 CRC-7/MMC", "75"},
    {"CRC-7/ROHC", "53"},
    {"CRC-7/UMTS", "61"},
    {"CRC-8/AUTOSAR", "DF"},
    {"CRC-8/BLUETOOTH", "26"},
    {"CRC-8/CDMA2000", "DA"},
    {"CRC-8/DARC", "15"},
    {"CRC-8/DVB-S2", "BC"},
    {"CRC-8/GSM-A", "37"},
    {"CRC-8/GSM-B", "94"},
    {"CRC-8/HITAG", "B4"},
    {"CRC-8/I-CODE", "7E"},
    {"CRC-8/I-432-1 CRC-8/ITU", "A1"},
    {"CRC-8/LTE", "EA"},
    {"CRC-8/MAXIM-DOW CRC-8/MAXIM DOW-CRC", "A1"},
    {"CRC-8/MIFARE-MAD", "99"},
    {"CRC-8/NRSC-5", "F7"},
    {"CRC-8/OPENSAFETY", "3E"},
    {"CRC-8/ROHC", "D0"},
    {"CRC-8/SAE-J1850", "4B"},
    {"CRC-8/SMBUS CRC-8", "F4"},
    {"CRC-8/TECH-3250 CRC-8/AES CRC-8/EBU", "97"},
    {"CRC-8/WCDMA", "25"},
    {"CRC-10/I-610 CRC-10 CRC-10/ATM", "0199"},
    {"CRC-10/CDMA2000", "0233"},
    {"CRC-10/GSM", "012A"},
    {"CRC-11 CRC-11/FLEXRAY", "05A3"},
    {"CRC-11/UMTS", "0061"},
    {"CRC-12/CDMA2000", "0D4D"},
    {"X-CRC-12 CRC-12/DECT", "0F5B"},
    {"CRC-12/GSM", "0B34"},
    {"CRC-12/3GPP CRC-12/UMTS", "0DAF"},
    {"CRC-13/BBC", "04FA"},
    {"CRC-14/DARC", "082D"},
    {"CRC-14/GSM", "30AE"},
    {"CRC-15/CAN CRC-15", "059E"},
    {"CRC-15/MPT1327", "2566"},
    {"CRC-16/ARC ARC CRC-16 CRC-16/LHA CRC-IBM", "BB3D"},
    {"CRC-16/CDMA2000", "4C06"},
    {"CRC-16/CMS", "AEE7"},
    {"CRC-16/DDS-110", "9ECF"},
    {"CRC-16/DECT-R R-CRC-16", "007E"},
    {"CRC-16/DECT-X X-CRC-16", "007F"},
    {"CRC-16/DNP", "EA82"},
    {"CRC-16/EN-13757", "C2B7"},
    {"CRC-16/GENIBUS CRC-16/DARC CRC-16/EPC CRC-16/EPC-C1G2 CRC-16/I-CODE", "D64E"},
    {"CRC-16/GSM", "CE3C"},
    {"CRC-16/IBM-3740 CRC-16/AUTOSAR CRC-16/CCITT-FALSE", "29B1"},
    {"CRC-16/IBM-SDLC CRC-16/ISO-HDLC CRC-16/ISO-IEC-14443-3-B CRC-16/X-25 CRC-B X-25", "906E"},
    {"CRC-16/ISO-IEC-14443-3-A CRC-A", "BF05"},
    {"CRC-16/KERMIT CRC-16/BLUETOOTH CRC-16/CCITT CRC-16/CCITT-TRUE CRC-16/V-41-LSB CRC-CCITT KERMIT",
     "2189"},
    {"CRC-16/LJ1200", "BDF4"},
    {"CRC-16/M17", "772B"},
    {"CRC-16/MAXIM_DOW CRC-16/MAXIM", "44C2"},
    {"CRC-16/MCRF4XX", "6F91"},
    {"CRC-16/MODBUS MODBUS", "4B37"},
    {"CRC-16/NRSC-5", "A066"},
    {"CRC-16/OPENSAFETY-A", "5D38"},
    {"CRC-16/OPENSAFETY-B", "20FE"},
    {"CRC-16/PROFIBUS CRC-16/IEC-61158-2", "A819"},
    {"CRC-16/RIELLO", "63D0"},
    {"CRC-16/SPI-FUJITSU CRC-16/AUG-CCITT", "E5CC"},
    {"CRC-16/T10-DIF", "D0DB"},
    {"CRC-16/TELEDISK", "0FB3"},
    {"CRC-16/TMS37157", "26B1"},
    {"CRC-16/UMTS CRC-16/BUYPASS CRC-16/VERIFONE", "FEE8"},
    {"CRC-16/USB", "B4C8"},
    {"CRC-16/XMODEM CRC-16/ACORN CRC-16/LTE CRC-16/V-41-MSB XMODEM ZMODEM", "31C3"},
    {"CRC-17/CAN-FD", "004F03"},
    {"CRC-21/CAN-FD", "0ED841"},
    {"CRC-24/BLE", "C25A56"},
    {"CRC-24/FLEXRAY-A", "7979BD"},
    {"CRC-24/FLEXRAY-B", "1F23B8"},
    {"CRC-24/INTERLAKEN", "B4F3E6"},
    {"CRC-24/LTE-A", "CDE703"},
    {"CRC-24/LTE-B", "23EF52"},
    {"CRC-24 CRC-24/OPENPGP", "21CF02"},
    {"CRC-24/OS-9", "200FA5"},
    {"CRC-30/CDMA", "04C34ABF"},
    {"CRC-31/PHILIPS", "0CE9E46C"},
    {"CRC-32/AIXM CRC-32Q", "3010BF7F"},
    {"CRC-32/AUTOSAR", "1697D06A"},
    {"CRC-32/BASE91-D CRC-32D", "87315576"},
    {"CRC-32/BZIP2 CRC-32/AAL5 CRC-32/DECT-B B-CRC-32", "FC891918"},
    {"CRC-32/CD-ROM-EDC", "6EC2EDC4"},
    {"CRC-32/CKSUM CKSUM CRC-32/POSIX", "765E7680"},
    {"CRC-32/ISCSI CRC-32/BASE91-C CRC-32/CASTAGNOLI CRC-32/INTERLAKEN CRC-32C", "E3069283"},
    {"CRC-32/ISO-HDLC CRC-32 CRC-32/ADCCP CRC-32/V-42 CRC-32/XZ PKZIP", "CBF43926"},
    {"CRC-32/JAMCRC JAMCRC", "340BC6D9"},
    {"CRC-32/MEF", "D2C22F51"},
    {"CRC-32/MPEG-2", "0376E6E7"},
    {"CRC-32/SATA", "CF72AFE8"},
    {"CRC-32/XFER XFER", "BD0BE338"},
    {"CRC-40/GSM", "D4164FC646"},
    {"CRC-64 CRC-64/ECMA-182", "6C40DF5F0B497347"},
    {"CRC-64/GO-ISO", "B90956C775A41001"},
    {"CRC-64/MS", "75D4B74F024ECEEA"},
    {"CRC-64/REDIS", "E9C6D914C4B8D9CA"},
    {"CRC-64/WE", "62EC59E3F1A4F00A"},
    {"CRC-64/GO-ECMA CRC-64/XZ", "995DC9BBDF1939FA"},
    {"CRC-82/DARC", "009EA83F625023801FD612"},
    {"CHKSUM-8/HEX CHKSUM-8/MODBUS", "23"},
};

struct TRow
{
    const char* name;
    TCrcParams params;
};

const TRow rows[] = {
#define FIRST(name, ...) name
#define CRC_ALGORITHM(Class, width, poly, init, refIn, refOut, xorOut, ...)                                  \
    {FIRST(__VA_ARGS__, ), {width, poly, init, refIn, refOut, xorOut}},
#include "formats/crcAlgorithms.def"
};

QByteArray crcOf(const QString& name, const QByteArray& data)
{
    const std::unique_ptr<ICRC> crc(createCRC(name));
    if (!crc)
        return "no such name";
    crc->update(data.constData(), data.size());
    return crc->result().toHex().toUpper();
}

/// The definition of a checksum, bit by bit: the division of the message by the polynomial.
QByteArray byDefinition(const TCrcParams& params, const QByteArray& data)
{
    const quint64 top = quint64(1) << (params.width - 1);
    quint64 remainder = params.init;
    for (const char c : data) {
        for (int i = 0; i < 8; ++i) {
            const bool bit = uchar(c) >> (params.refIn ? i : 7 - i) & 1;
            const bool divide = bit != ((remainder & top) != 0);
            remainder = (remainder << 1) ^ (divide ? params.poly : 0);
        }
    }
    QByteArray bits;
    for (int i = 0; i < params.width; ++i)
        bits.append(remainder >> i & 1 ? '1' : '0'); // lowest first
    if (!params.refOut)
        std::reverse(bits.begin(), bits.end());
    const quint64 value = bits.toULongLong(nullptr, 2) ^ params.xorOut;
    return QByteArray::number(value, 16).toUpper().rightJustified((params.width + 7) / 8 * 2, '0');
}

QByteArray randomBytes(int size)
{
    static QRandomGenerator random(5);
    QByteArray bytes(size, '\0');
    for (char& c : bytes)
        c = char(random.bounded(256));
    return bytes;
}

QStringList namesOfChecks()
{
    QStringList names;
    for (const TCheck& row : checks)
        names += QString(row.names).split(' ');
    return names;
}

} // namespace

class TestCrc : public QObject
{
    Q_OBJECT

private slots:
    void catalogue();
    void checkValues();
    void emptyInput_data();
    void emptyInput();
    void definition();
    void splits();
    void unknownNames();
    void offeredNames();
    void shippedNames();

private:
    static void offer(const QByteArray& content);
};

void TestCrc::catalogue()
{
    QCOMPARE(int(std::size(checks)), 113 + 1);
    QCOMPARE(namesOfChecks().size(), 188);
    QCOMPARE(int(std::size(rows)), 112); // all but the one of 82 bits
}

void TestCrc::checkValues()
{
    for (const TCheck& row : checks) {
        for (const QString& name : QString(row.names).split(' '))
            QVERIFY2(crcOf(name, "123456789") == row.check,
                     qPrintable(name + ": " + crcOf(name, "123456789")));
    }
}

void TestCrc::emptyInput_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("CRC-3/GSM") << QByteArray("07");
    QTest::newRow("CRC-5/USB") << QByteArray("00");
    QTest::newRow("CRC-5/EPC") << QByteArray("09");
    QTest::newRow("CRC-12/UMTS") << QByteArray("0000");
    QTest::newRow("CRC-16/RIELLO") << QByteArray("554D");
    QTest::newRow("CRC-24/BLE") << QByteArray("AAAAAA");
    QTest::newRow("CRC-32") << QByteArray("00000000");
    QTest::newRow("CRC-32/SATA") << QByteArray("52325032");
    QTest::newRow("CRC-82/DARC") << QByteArray(22, '0');
    QTest::newRow("CHKSUM-8/HEX") << QByteArray("00");
}

void TestCrc::emptyInput()
{
    QTEST(crcOf(QTest::currentDataTag(), ""), "value");
}

void TestCrc::definition()
{
    for (const TRow& row : rows) {
        for (const int size : {0, 1, 2, 300}) {
            const QByteArray data = randomBytes(size);
            QVERIFY2(crcOf(row.name, data) == byDefinition(row.params, data), row.name);
        }
    }
}

void TestCrc::splits()
{
    const QByteArray data = randomBytes(40);
    for (const TCheck& row : checks) {
        const QString name = QString(row.names).section(' ', 0, 0);
        for (int at = 0; at <= data.size(); ++at) {
            const std::unique_ptr<ICRC> crc(createCRC(name));
            const quint64 state = crc->update(data.constData(), at);
            QVERIFY(crc->update(nullptr, 0) == state);
            crc->update(data.constData() + at, data.size() - at);
            QVERIFY2(crc->result().toHex().toUpper() == crcOf(name, data), row.names);
        }
    }
}

void TestCrc::unknownNames()
{
    for (const char* name : {"", "CRC32", "crc-32", "CRC-32 ", " CRC-32", "CRC-16/MAXIM-DOW", "TCRC_3_GSM"})
        QVERIFY2(!createCRC(name), name);
}

void TestCrc::offer(const QByteArray& content)
{
    QFile file(QCoreApplication::applicationDirPath() + "/crc.lst");
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

void TestCrc::offeredNames()
{
    QFile::remove(QCoreApplication::applicationDirPath() + "/crc.lst");
    QCOMPARE(crcNames(), QStringList());
    offer("#CRC-8=1\r\n\r\n  CRC-32= 1 \r\nCRC-16=0\r\nCRC-24\nCRC-64 =1\n=1\nCRC-A=11\nCRC-B=1=1\nX-25=1");
    QCOMPARE(crcNames(), QStringList({"CRC-32", "CRC-64 ", "X-25"}));
}

void TestCrc::shippedNames()
{
    QFile file(VM_DATA_DIR "/crc.lst");
    QVERIFY(file.open(QIODevice::ReadOnly));
    offer(file.readAll());
    QCOMPARE(crcNames(), namesOfChecks());
}

QTEST_GUILESS_MAIN(TestCrc)
#include "test_crc.moc"
