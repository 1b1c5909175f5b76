#include "base/helpers.h"
#include "link/lists/TProg.h"
#include "support/TestDir.h"
#include "support/tables.h"

namespace {

const QString spi = "SPI_FLASH";

template <class... Values> QString line(const Values&... values)
{
    QString text;
    (QDebug(&text) << ... << values);
    return text.remove("QVector").remove("QList").remove('"').trimmed();
}

/// All numbers that a description gives, group by group.
QString told(const TProg& prog)
{
    bool isList = true;
    bool isDuty = true;
    bool isDutyList = true;
    int numbers[4];
    quint16 maxData = 1;
    double limits[8];
    QString parity;
    QString flow;
    QVector<int> values;
    QVector<int> duties;
    QStringList all;
    prog.portParams(numbers[0], numbers[1], parity, numbers[2], flow, numbers[3]);
    prog.maxData(maxData);
    all += line(prog.interfaceId(), maxData, numbers[0], numbers[1], numbers[2], numbers[3], parity, flow);
    prog.vccLimits(limits[0], limits[1]);
    prog.vppLimits(limits[2], limits[3]);
    all += line(limits[0], limits[1], prog.vccDefault(), limits[2], limits[3], prog.vppDefault());
    prog.iccLimits(limits[4], limits[5]);
    prog.ippLimits(limits[6], limits[7]);
    all += line(limits[4], limits[5], prog.iccDefault(), limits[6], limits[7], prog.ippDefault());
    prog.freqParams(isList, numbers[0], numbers[1], values, isDuty, isDutyList, numbers[2], numbers[3],
                    duties);
    all += line(isList, numbers[0], numbers[1], values);
    all += line(isDuty, isDutyList, numbers[2], numbers[3], duties);
    prog.freqDefaults(numbers[0], numbers[1]);
    prog.resetLimits(numbers[2], numbers[3]);
    all += line(numbers[0], numbers[1], numbers[2], numbers[3], prog.resetDefault());
    prog.clockParams(spi, isList, numbers[0], numbers[1], values);
    all += line(isList, numbers[0], numbers[1], values, prog.clockDefault(spi), prog.clockCode(spi, 400),
                prog.clockCode(spi, 401), prog.clockCode(spi, 50));
    all += line(prog.supportsCommand("reset"), prog.supportsCommand("set_io"));
    return all.join("; ");
}

} // namespace

class TestProg : public QObject
{
    Q_OBJECT

private slots:
    void numbers()
    {
        QCOMPARE(told(progOf("[Other]\nx=1\n")),
                 QString("0 64 115200 8 1 1000; 0 0 0 0 0 0; 0 0 0 0 0 0; false 0 0 (); false false 0 0 (); "
                         "100000 50 10 1000 -400; false 0 0 () 0 400 401 50; false false"));
        QCOMPARE(
            told(progOf("[Main]\nInterface=770\n[Protocol]\nMAX_DATA=65535\n"
                        "[Port]\nBaudRate=9600\nDataBits=2\nParity=Odd\nStopBits=2\nFlowControl=Hardware\n"
                        "TimeOut=70\n"
                        "[Vcc]\nMIN=1.1\nMAX=1.2\nDEF=1.3\n[Vpp]\nMIN=2.1\nMAX=2.2\nDEF=2.3\n"
                        "[Icc]\nMIN=3.1\nMAX=3.2\nDEF=3.3\n[Ipp]\nMIN=4.1\nMAX=4.2\nDEF=4.3\n"
                        "[Frequency]\nFQ_DEF=7\nDT_DEF=8\nFQ_MIN=9\nFQ_MAX=10\nFQ_LIST=true\n"
                        "FQLV_100000=1\nFQLV_1000=\nFQLV_20000=x\nFQLV_01000=1\nFQLV_=1\nFQLV_ab=1\n"
                        "DT_SHOW=1\nDT_MIN=11\nDT_MAX=12\nDT_LIST=true\nDTLV_9=0\nDTLV_50=0\n"
                        "[Reset]\nMIN=5\nMAX=6\nDEF=7\n[Commands]\nreset=true\nset_io=false\n"
                        "[SPI_FLASH]\nCLK_LIST=true\nCLK_MIN=10\nCLK_MAX=4000\nCLK_DEF=400\n"
                        "CLKLV_4000=1\nCLKLV_400=2\nCLKLV_50=\n[AVR_SPI]\nCLKLV_401=9\n")),
            QString("770 65535 9600 2 2 70 Odd Hardware; 1.1 1.2 1.3 2.1 2.2 2.3; 3.1 3.2 3.3 4.1 4.2 4.3; "
                    "true 9 10 (1000, 1000, 20000, 100000); true true 11 12 (9, 50); 7 8 5 6 7; "
                    "true 10 4000 (50, 400, 4000) 400 2 401 0; true false"));
        QCOMPARE(told(progOf(QByteArray(100000, '\0') +
                             "\n[Main]\nInterface=5\n[Port]\nBaudRate=fast\nDataBits=0x3\nTimeOut=\n"
                             "[Protocol]\nMAX_DATA=70000\n[Vcc]\nMIN=nan\nMAX=3,3\nDEF=inf\n"
                             "[SPI_FLASH]\nCLK_MIN=1e3\nCLKLV_400=2\n")),
                 QString("5 0 0 0 1 0; 0 0 0 0 0 0; 0 0 0 0 0 0; false 0 0 (); false false 0 0 (); "
                         "100000 50 10 1000 -400; false 0 0 (400) 0 400 401 50; false false"));
    }

    void badInterfaceIsLogged()
    {
        const QHash<QByteArray, bool> rows{
            {"", false}, {"Interface=0x1234", true}, {"Interface=", true}, {"Interface=4294967297", true}};
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            QFile log(fileInAppDir("log"));
            log.remove();
            compareRow(row.key(), progOf("[Main]\n" + row.key() + "\n").interfaceId(), 0);
            const bool logged = log.open(QIODevice::ReadOnly) && log.readAll().contains("/Main/Interface");
            compareRow(row.key(), logged, row.value());
        }
    }

    void pins()
    {
        const TProg& prog =
            progOf("[PinType]\nZ=true\nl=true\nL=false\nI=1\nX=true\n"
                   "[Pins]\n02=1, B\n10=1, C\n01=1,A\n03=0, GND\n04=1\n05=1, X, Y\n06=yes, Ä\n"
                   "[SPI_FLASH]\nPIN_A=CS\nPIN_B=\"SO, IO1\"\nPIN_C=SI, IO0\nPIN_GND=VSS\n");
        QCOMPARE(prog.pinLetters(), QString("-IlZ"));
        QCOMPARE(prog.pinTexts(),
                 (QStringList{"- (not change)", "I (input)", "l (input - pull-down)", "Z (tri-stated)"}));
        QCOMPARE(prog.pinList(spi, true), (QStringList{"CS - A", "SO, IO1 - B", "SI, IO0 - C"}));
        QCOMPARE(prog.pinList(spi, false),
                 (QStringList{"A - CS", "B - SO, IO1", "GND - VSS", QString::fromUtf8("Ä"), "C - SI, IO0"}));
        QCOMPARE(prog.pinList(QString(), true), (QStringList{"A", "B", "C"}));
    }

    void followsTheFile()
    {
        const TProg& prog = progOf("[Main]\nInterface=1\n[Vcc]\nDEF=1.0\n");
        QCOMPARE(prog.vccDefault(), 1.0);
        // Of another size: a change within the same time stamp is not seen otherwise.
        m_dir.write(QFileInfo(prog.file()).fileName(), "[Main]\nInterface=2\n[Vcc]\nDEF=2.5000\n");
        QCOMPARE(prog.vccDefault(), 2.5);
        QCOMPARE(prog.interfaceId(), 1);
    }

    void shippedFiles_data()
    {
        tableColumns<QString>("file");
        const QDir folder(VM_DATA_DIR "/progs");
        for (const QString& name : folder.entryList({"*.cfg"}))
            tableRow(qPrintable(name), folder.filePath(name));
    }

    void shippedFiles()
    {
        QFETCH(QString, file);
        QSettings ini(file, QSettings::IniFormat);
        for (const QString& key : ini.allKeys()) {
            const QStringList entry = ini.value(key).toStringList();
            const bool pin = key.startsWith("Pins/");
            QVERIFY2(entry.size() == (pin ? 2 : 1) && !entry.last().isEmpty(), qPrintable(key));
            QVERIFY2(!key.contains('#'), qPrintable(key));
        }
        QCOMPARE(ini.status(), QSettings::NoError);

        const QStringList sections{"SPI_FLASH/CLK_", "AVR_SPI/CLK_", "I2C_EEPROM/CLK_", "MICROWIRE/CLK_"};
        const QStringList supplies{"Vcc/", "Vpp/", "Icc/", "Ipp/"};
        for (const QString& prefix : sections + supplies + QStringList{"Frequency/FQ_", "Frequency/DT_"}) {
            const QString min = ini.value(prefix + "MIN").toString();
            const QString def = ini.value(prefix + "DEF").toString();
            const QString max = ini.value(prefix + "MAX").toString();
            const bool isOrdered = min.toDouble() <= def.toDouble() && def.toDouble() <= max.toDouble();
            QVERIFY2(isOrdered && max.toDouble() > 0, qPrintable(prefix));
            const QString listed = prefix.chopped(1) + "LV_";
            const bool isList = ini.value(prefix + "LIST", false).toBool();
            QCOMPARE(ini.allKeys().filter(listed).isEmpty(), !isList);
            for (const QString& value : {min, def, max})
                QVERIFY2(!isList || ini.contains(listed + value), qPrintable(prefix + value));
        }
        const TProg prog(file);
        const QStringList numbers = told(prog).section(';', 0, 0).split(' ');
        QVERIFY(numbers[0].toInt() > 0 && numbers[2].toInt() > 0 && numbers[5].toInt() >= 10000);
        QVERIFY2(numbers[1] == "64" || numbers[1] == "256", "it has to divide the pages of all chips");
        QCOMPARE(QStringList({numbers[3], numbers[4], numbers[6], numbers[7]}).join(' '), "3 0 None None");
        for (const QString& section : sections)
            QVERIFY(!prog.pinList(section.section('/', 0, 0), true).filter(" - ").isEmpty());
    }

private:
    TProg& progOf(const QByteArray& text)
    {
        m_prog.reset(new TProg(m_dir.write(QString("%1.cfg").arg(++m_files), text)));
        return *m_prog;
    }

    TestDir m_dir{TestDir::Empty};
    QScopedPointer<TProg> m_prog;
    int m_files = 0;
};

QTEST_GUILESS_MAIN(TestProg)
#include "test_prog.moc"
