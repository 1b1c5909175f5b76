#include "formats/ICRC.h"
#include "formats/crcTable.h"
#include "formats/createCRC.h"
#include "hexkit.h"

#include <QRandomGenerator>

#include <memory>

namespace {

/// One row of the published catalogue.
struct TRow
{
    TCrcParams params;
    quint64 check;
    QStringList names;
};

QVector<TRow> catalogue()
{
    return {
#define CRC_ALGORITHM(Class, width, poly, init, refIn, refOut, xorOut, check, ...)                           \
    {{width, poly, init, refIn, refOut, xorOut}, check, {__VA_ARGS__}},
#include "formats/crcAlgorithms.def"
    };
}

/// Of the data handed over in two pieces.
QByteArray crcOf(const QString& name, const QByteArray& data, int cut = 0)
{
    const std::unique_ptr<ICRC> crc(createCRC(name));
    if (!crc)
        return "no such name";
    const quint64 state = crc->update(data.constData(), cut);
    if (crc->update(nullptr, 0) != state)
        return "nothing is not nothing";
    crc->update(data.constData() + cut, data.size() - cut);
    return crc->result().toHex();
}

QByteArray hexOf(quint64 value, int width)
{
    return QByteArray::number(value, 16).rightJustified((width + 7) / 8 * 2, '0');
}

/// The definition of a checksum, bit by bit: the division of the message by the polynomial.
QByteArray byDefinition(const TCrcParams& params, const QByteArray& data)
{
    quint64 remainder = params.init;
    for (const char c : data) {
        for (int i = 0; i < 8; ++i) {
            const quint64 bit = uchar(c) >> (params.refIn ? i : 7 - i) & 1;
            const bool divide = bit != (remainder >> (params.width - 1) & 1);
            remainder = (remainder << 1) ^ (divide ? params.poly : 0);
        }
    }
    QByteArray bits;
    for (int i = params.width - 1; i >= 0; --i)
        bits.append(remainder >> i & 1 ? '1' : '0');
    if (params.refOut)
        std::reverse(bits.begin(), bits.end());
    return hexOf(bits.toULongLong(nullptr, 2) ^ params.xorOut, params.width);
}

} // namespace

class TestCrc : public QObject
{
    Q_OBJECT

private slots:
    void checkValues();
    void definition();
    void names();

private:
    static QStringList offered(const QByteArray& content)
    {
        QFile file(QCoreApplication::applicationDirPath() + "/crc.lst");
        file.remove();
        return file.open(QIODevice::WriteOnly) && file.write(content) >= 0 && file.flush() ? crcNames()
                                                                                           : QStringList("?");
    }
};

void TestCrc::checkValues()
{
    QCOMPARE(catalogue().size(), 112); // and one of 82 bits
    for (const TRow& row : catalogue()) {
        for (const QString& name : row.names)
            compareRow(name, crcOf(name, "123456789"), hexOf(row.check, row.params.width));
    }
    // The one outside the table, the sum, and names that stand behind the first of their row.
    const QMap<QString, QByteArray> others = {{"CRC-82/DARC", "009ea83f625023801fd612"},
                                              {"CHKSUM-8/HEX", "23"},
                                              {"CHKSUM-8/MODBUS", "23"},
                                              {"CRC-32", "cbf43926"},
                                              {"X-25", "906e"},
                                              {"XMODEM", "31c3"},
                                              {"CRC-64/GO-ECMA", "995dc9bbdf1939fa"},
                                              {"CRC-16/MAXIM_DOW", "44c2"},
                                              {"CRC-12/3GPP", "0daf"}};
    for (auto it = others.cbegin(); it != others.cend(); ++it) {
        for (int cut = 0; cut <= 9; ++cut)
            compareRow(it.key(), crcOf(it.key(), "123456789", cut), it.value());
    }
}

void TestCrc::definition()
{
    QRandomGenerator random(5);
    for (const TRow& row : catalogue()) {
        for (const int size : {0, 1, 2, 300}) {
            QByteArray data(size, '\0');
            for (char& c : data)
                c = char(random.bounded(256));
            compareRow(row.names[0], crcOf(row.names[0], data, random.bounded(size + 1)),
                       byDefinition(row.params, data));
        }
    }
}

void TestCrc::names()
{
    for (const char* name : {"", "CRC32", "crc-32", "CRC-32 ", " CRC-32", "CRC-16/MAXIM-DOW", "TCRC_3_GSM"})
        QVERIFY2(!createCRC(name), name);
    QCOMPARE(offered("#CRC-8=1\r\n\r\n  CRC-32= 1 \r\nCRC-16=0\r\nCRC-24\nCRC-64 =1\n=1\nCRC-A=11\nX-25=1"),
             QStringList({"CRC-32", "CRC-64 ", "X-25"}));
    // The shipped list offers all there are.
    QStringList all;
    for (const TRow& row : catalogue())
        all += row.names;
    all += QStringList({"CRC-82/DARC", "CHKSUM-8/HEX", "CHKSUM-8/MODBUS"});
    QFile file(VM_DATA_DIR "/crc.lst");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(all.size(), 188);
    QCOMPARE(offered(file.readAll()), all);
    QVERIFY(QFile::remove(QCoreApplication::applicationDirPath() + "/crc.lst"));
    QCOMPARE(crcNames(), QStringList());
}

QTEST_GUILESS_MAIN(TestCrc)
#include "test_crc.moc"
