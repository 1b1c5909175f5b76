#include "formats/crc/ICRC.h"
#include "formats/crc/crcTable.h"
#include "formats/crc/createCRC.h"
#include "support/tables.h"

#include <memory>
#include <numeric>

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
#include "formats/crc/crcAlgorithms.def"
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

} // namespace

class TestCrc : public QObject
{
    Q_OBJECT

private slots:
    void checkValues()
    {
        QCOMPARE(catalogue().size(), 112); // and one of 82 bits
        for (const TRow& row : catalogue()) {
            for (const QString& name : row.names)
                compareRow(name, crcOf(name, "123456789"), hexOf(row.check, row.params.width));
        }
    }

    // The one outside the table, the sum, names behind the first of their row; bytes of all values, and none.
    void otherValues()
    {
        QByteArray all(256, '\0');
        std::iota(all.begin(), all.end(), '\0');
        const auto row = [](const QString& name, const QByteArray& data, const QByteArray& value) {
            for (int cut = 0; cut <= qMin(data.size(), 9); ++cut)
                compareRow(name, crcOf(name, data, cut), value);
        };
        row("CRC-82/DARC", "123456789", "009ea83f625023801fd612");
        row("CHKSUM-8/MODBUS", "123456789", "23");
        row("X-25", "123456789", "906e");
        row("CRC-64/GO-ECMA", "123456789", "995dc9bbdf1939fa");
        row("CRC-16/MAXIM_DOW", "123456789", "44c2");
        row("CRC-3/GSM", all, "02");
        row("CRC-8/MAXIM-DOW", all, "18");
        row("CRC-12/3GPP", all, "001e");
        row("CRC-16/ARC", all, "bad3");
        row("CRC-24", all, "5bbd34");
        row("CRC-32", all, "29058c73");
        row("CRC-32/BZIP2", all, "b6b5ee95");
        row("CRC-40/GSM", all, "399898a875");
        row("CRC-64", all, "62b0da1c1b130a91");
        row("CRC-82/DARC", all, "0064cee379617deaabac37");
        row("CHKSUM-8/HEX", all, "80");
        row("CRC-3/GSM", "", "07");
        row("CRC-5/USB", "", "00");
        row("CRC-11", "", "001a");
    }

    void names()
    {
        for (const char* name :
             {"", "CRC32", "crc-32", "CRC-32 ", " CRC-32", "CRC-16/MAXIM-DOW", "TCRC_3_GSM"})
            QVERIFY2(!createCRC(name), name);
        QCOMPARE(
            offered("#CRC-8=1\r\n\r\n  CRC-32= 1 \r\nCRC-16=0\r\nCRC-24\nCRC-64 =1\n=1\nCRC-A=11\nX-25=1"),
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

private:
    /// What a crc.lst with this content offers.
    static QStringList offered(const QByteArray& content)
    {
        QFile file(QCoreApplication::applicationDirPath() + "/crc.lst");
        if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0)
            return {"cannot write"};
        file.close();
        return crcNames();
    }
};

QTEST_GUILESS_MAIN(TestCrc)
#include "test_crc.moc"
