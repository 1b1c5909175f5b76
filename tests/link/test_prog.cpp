#include "core/helpers.h"
#include "link/TProg.h"
#include "link/TProgName.h"
#include "link/TProgType.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QDirIterator>
#include <QSettings>
#include <QtTest>

namespace {

struct Clocks
{
    bool isList = true;
    int min = -1;
    int max = -1;
    QVector<int> values;

    Clocks(const TProg& prog, const QString& section) { prog.clockParams(section, isList, min, max, values); }
};

struct Frequencies
{
    bool list = true, dutyShow = true, dutyList = true;
    int min = -1, max = -1, dutyMin = -1, dutyMax = -1;
    QVector<int> values, duties;

    explicit Frequencies(const TProg& prog)
    {
        prog.freqParams(list, min, max, values, dutyShow, dutyList, dutyMin, dutyMax, duties);
    }
};

struct Port
{
    int baudRate = -1, dataBits = -1, stopBits = -1, timeout = -1;
    QString parity = QStringLiteral("?"), flowControl = QStringLiteral("?");

    explicit Port(const TProg& prog)
    {
        prog.portParams(baudRate, dataBits, parity, stopBits, flowControl, timeout);
    }
};

quint16 maxDataOf(const TProg& prog)
{
    quint16 bytes = 1;
    prog.maxData(bytes);
    return bytes;
}

const QString spi = QStringLiteral("SPI_FLASH");

} // namespace

class TestProg : public QObject
{
    Q_OBJECT

private slots:
    void missingKeysGiveDefaults();
    void valuesOfAFile();
    void interfaceId_data();
    void interfaceId();
    void garbageReadsAsZero();
    void pinTypes();
    void pinLists();
    void clockCodes();
    void followsTheFile();
    void shippedFiles_data();
    void shippedFiles();
    void listsKeepOrderAndReplace();

private:
    TProg* progOf(const QByteArray& text)
    {
        const QString name = QStringLiteral("%1.cfg").arg(++m_files);
        m_prog.reset(new TProg(m_dir.write(name, text)));
        return m_prog.data();
    }

    TestDir m_dir{TestDir::Empty};
    QScopedPointer<TProg> m_prog;
    int m_files = 0;
};

void TestProg::missingKeysGiveDefaults()
{
    const TProg& prog = *progOf("[Other]\nx=1\n");
    QCOMPARE(prog.interfaceId(), 0);
    const Port port(prog);
    QVERIFY(port.baudRate == 115200 && port.dataBits == 8 && port.stopBits == 1 && port.timeout == 1000);
    QVERIFY(port.parity.isEmpty() && port.flowControl.isEmpty());
    QCOMPARE(maxDataOf(prog), quint16(64));
    QCOMPARE(prog.pinLetters(), QStringLiteral("-"));
    QCOMPARE(prog.pinTexts(), QStringList{"- (not change)"});
    int first = 0;
    int second = 0;
    prog.freqDefaults(first, second);
    QCOMPARE(first, 100000);
    QCOMPARE(second, 50);
    prog.resetLimits(first, second);
    QCOMPARE(first, 10);
    QCOMPARE(second, 1000);
    QCOMPARE(prog.resetDefault(), -400);
    const Frequencies freq(prog);
    QVERIFY(!freq.list && !freq.dutyShow && !freq.dutyList && freq.values.isEmpty() && freq.duties.isEmpty());
    QCOMPARE(freq.min + freq.max + freq.dutyMin + freq.dutyMax, 0);
    const Clocks clocks(prog, spi);
    QVERIFY(!clocks.isList && clocks.min == 0 && clocks.max == 0 && clocks.values.isEmpty());
    QCOMPARE(prog.vccDefault() + prog.vppDefault() + prog.iccDefault() + prog.ippDefault(), 0.0);
    QVERIFY(!prog.supportsCommand(QStringLiteral("reset")));
    QVERIFY(prog.pinList(spi, false).isEmpty());
}

void TestProg::valuesOfAFile()
{
    const TProg& prog =
        *progOf("[Main]\nInterface=770\n"
                "[Port]\nBaudRate=9600\nDataBits=2\nParity=Odd\nStopBits=2\nFlowControl=Hardware\n"
                "TimeOut=70\n[Protocol]\nMAX_DATA=65535\n"
                "[Vcc]\nMIN=1.1\nMAX=1.2\nDEF=1.3\n[Vpp]\nMIN=2.1\nMAX=2.2\nDEF=2.3\n"
                "[Icc]\nMIN=3.1\nMAX=3.2\nDEF=3.3\n[Ipp]\nMIN=4.1\nMAX=4.2\nDEF=4.3\n"
                "[Frequency]\nFQ_DEF=7\nDT_DEF=8\nFQ_MIN=9\nFQ_MAX=10\nFQ_LIST=true\n"
                "FQLV_100000=1\nFQLV_1000=\nFQLV_20000=x\nFQLV_01000=1\nFQLV_=1\nFQLV_ab=1\n"
                "DT_SHOW=1\nDT_MIN=11\nDT_MAX=12\nDT_LIST=true\nDTLV_9=0\nDTLV_50=0\n"
                "[Reset]\nMIN=5\nMAX=6\nDEF=7\n[Commands]\nreset=true\nset_io=false\n");
    QCOMPARE(prog.interfaceId(), 770);
    const Port port(prog);
    QVERIFY(port.baudRate == 9600 && port.dataBits == 2 && port.stopBits == 2 && port.timeout == 70);
    QCOMPARE(port.parity + port.flowControl, QStringLiteral("OddHardware"));
    QCOMPARE(maxDataOf(prog), quint16(65535));
    double volts[12];
    prog.vccLimits(volts[0], volts[1]);
    prog.vppLimits(volts[3], volts[4]);
    prog.iccLimits(volts[6], volts[7]);
    prog.ippLimits(volts[9], volts[10]);
    volts[2] = prog.vccDefault();
    volts[5] = prog.vppDefault();
    volts[8] = prog.iccDefault();
    volts[11] = prog.ippDefault();
    for (int i = 0; i < 12; ++i)
        QCOMPARE(volts[i], i / 3 + 1 + (i % 3 + 1) / 10.0);
    int first = 0;
    int second = 0;
    prog.freqDefaults(first, second);
    QCOMPARE(first * 100 + second, 708);
    prog.resetLimits(first, second);
    QCOMPARE(first * 100 + second, 506);
    QCOMPARE(prog.resetDefault(), 7);
    const Frequencies freq(prog);
    QVERIFY(freq.list && freq.dutyShow && freq.dutyList);
    QCOMPARE((QVector<int>{freq.min, freq.max, freq.dutyMin, freq.dutyMax}), (QVector<int>{9, 10, 11, 12}));
    QCOMPARE(freq.values, (QVector<int>{1000, 1000, 20000, 100000}));
    QCOMPARE(freq.duties, (QVector<int>{9, 50}));
    QVERIFY(prog.supportsCommand(QStringLiteral("reset")));
    QVERIFY(!prog.supportsCommand(QStringLiteral("set_io")));
}

void TestProg::interfaceId_data()
{
    tableColumns<QByteArray, int, bool>("line", "id", "logged");
    tableRow("missing", QByteArray(), 0, false);
    tableRow("hexadecimal", QByteArray("Interface=0x1234"), 0, true);
    tableRow("empty", QByteArray("Interface="), 0, true);
    tableRow("beyond 32 bits", QByteArray("Interface=4294967297"), 0, true);
}

void TestProg::interfaceId()
{
    QFETCH(QByteArray, line);
    QFile log(fileInAppDir(QStringLiteral("log")));
    log.remove();
    QTEST(progOf("[Main]\n" + line + "\n")->interfaceId(), "id");
    const bool logged = log.open(QIODevice::ReadOnly) && log.readAll().contains("/Main/Interface");
    QTEST(logged, "logged");
}

void TestProg::garbageReadsAsZero()
{
    const TProg& prog =
        *progOf("[Port]\nBaudRate=fast\nDataBits=0x3\nTimeOut=\n[Protocol]\nMAX_DATA=70000\n"
                "[Vcc]\nMIN=nan\nMAX=3,3\nDEF=inf\n[SPI_FLASH]\nCLK_MIN=1e3\nCLK_LIST=true\nCLKLV_5=\n");
    const Port port(prog);
    QCOMPARE(port.baudRate + port.dataBits + port.timeout, 0);
    QCOMPARE(maxDataOf(prog), quint16(0));
    double min = -1;
    double max = -1;
    prog.vccLimits(min, max);
    QVERIFY(min == 0.0 && max == 0.0 && prog.vccDefault() == 0.0);
    QCOMPARE(Clocks(prog, spi).min, 0);
    QCOMPARE(prog.clockCode(spi, 5), 0);
    QCOMPARE(progOf(QByteArray(100000, '\0') + "\n[Main]\nInterface=5\n")->interfaceId(), 5);
}

void TestProg::pinTypes()
{
    const TProg& prog = *progOf("[PinType]\nZ=true\nl=true\nL=false\nI=1\nX=true\n");
    QCOMPARE(prog.pinLetters(), QStringLiteral("-IlZ"));
    QCOMPARE(prog.pinTexts(),
             (QStringList{"- (not change)", "I (input)", "l (input - pull-down)", "Z (tri-stated)"}));
}

void TestProg::pinLists()
{
    const TProg& prog = *progOf("[Pins]\n02=1, B\n10=1, C\n01=1,A\n03=0, GND\n04=1\n05=1, X, Y\n06=yes, Ä\n"
                                "[SPI_FLASH]\nPIN_A=CS\nPIN_B=\"SO, IO1\"\nPIN_C=SI, IO0\nPIN_GND=VSS\n");
    QCOMPARE(prog.pinList(spi, true), (QStringList{"CS - A", "SO, IO1 - B", "C"}));
    QCOMPARE(prog.pinList(spi, false),
             (QStringList{"A - CS", "B - SO, IO1", "GND - VSS", QString::fromUtf8("Ä"), "C"}));
    QCOMPARE(prog.pinList(QString(), true), (QStringList{"A", "B", "C"}));
}

void TestProg::clockCodes()
{
    const TProg& prog = *progOf("[SPI_FLASH]\nCLK_LIST=true\nCLK_MIN=10\nCLK_MAX=4000\nCLK_DEF=400\n"
                                "CLKLV_4000=1\nCLKLV_400=2\nCLKLV_50=3\n"
                                "[AVR_SPI]\nCLKLV_400=9\n");
    const Clocks clocks(prog, spi);
    QVERIFY(clocks.isList && clocks.min == 10 && clocks.max == 4000);
    QCOMPARE(clocks.values, (QVector<int>{50, 400, 4000}));
    QCOMPARE(prog.clockDefault(spi), 400);
    QCOMPARE(prog.clockCode(spi, 400), 2);
    QCOMPARE(prog.clockCode(spi, 401), 401);
    QCOMPARE(prog.clockCode(QStringLiteral("AVR_SPI"), 400), 400);
}

void TestProg::followsTheFile()
{
    TProg& prog = *progOf("[Main]\nInterface=1\n[Vcc]\nDEF=1.0\n");
    QCOMPARE(prog.vccDefault(), 1.0);
    // Of another size: a change within the same time stamp is not seen otherwise.
    m_dir.write(QFileInfo(prog.file()).fileName(), "[Main]\nInterface=2\n[Vcc]\nDEF=2.5000\n");
    QCOMPARE(prog.vccDefault(), 2.5);
    QCOMPARE(prog.interfaceId(), 1);
}

void TestProg::shippedFiles_data()
{
    tableColumns<QString>("file");
    QDirIterator it(QStringLiteral(VM_DATA_DIR "/progs"), {"*.cfg"}, QDir::Files);
    while (it.hasNext()) {
        const QString file = it.next();
        tableRow(qPrintable(it.fileName()), file);
    }
}

void TestProg::shippedFiles()
{
    QFETCH(QString, file);
    QSettings ini(file, QSettings::IniFormat);
    for (const QString& key : ini.allKeys()) {
        QVERIFY2(!key.contains(QLatin1Char('#')), qPrintable(key));
        const bool pin = key.startsWith(QLatin1String("Pins/"));
        QVERIFY2(ini.value(key).toStringList().size() == (pin ? 2 : 1), qPrintable(key));
        QVERIFY2(!ini.value(key).toStringList().last().isEmpty(), qPrintable(key));
    }
    QCOMPARE(ini.status(), QSettings::NoError);

    const TProg prog(file);
    QVERIFY(prog.interfaceId() > 0);
    const Port port(prog);
    QVERIFY(port.dataBits == 3 && port.stopBits == 0 && port.timeout >= 5000 && port.baudRate > 0);
    QVERIFY(port.parity == QLatin1String("None") && port.flowControl == QLatin1String("None"));
    QVERIFY2(maxDataOf(prog) == 64 || maxDataOf(prog) == 256, "it has to divide the pages of all chips");
    QVERIFY(prog.pinList(spi, true).size() < prog.pinList(spi, false).size());
    for (const char* section : {"SPI_FLASH", "AVR_SPI", "I2C_EEPROM", "MICROWIRE"}) {
        const QString name = QLatin1String(section);
        const Clocks clocks(prog, name);
        const int def = prog.clockDefault(name);
        QVERIFY2(clocks.min > 0 && clocks.min <= def && def <= clocks.max, section);
        QVERIFY2(clocks.isList == !clocks.values.isEmpty(), section);
        if (clocks.isList) {
            QVERIFY2(clocks.values.contains(def), section);
            QVERIFY2(clocks.values.first() == clocks.min && clocks.values.last() == clocks.max, section);
        }
        QVERIFY2(!prog.pinList(name, true).filter(QStringLiteral(" - ")).isEmpty(), section);
    }
    double min = 0;
    double max = 0;
    prog.vccLimits(min, max);
    QVERIFY(min <= prog.vccDefault() && prog.vccDefault() <= max && max <= 25.5);
    prog.ippLimits(min, max);
    QVERIFY(min <= prog.ippDefault() && prog.ippDefault() <= max && max <= 65.5);
    const Frequencies freq(prog);
    int def = 0;
    int duty = 0;
    prog.freqDefaults(def, duty);
    QVERIFY(freq.min <= def && def <= freq.max && (!freq.list || freq.values.contains(def)));
    QVERIFY(freq.dutyMin <= duty && duty <= freq.dutyMax && (!freq.dutyList || freq.duties.contains(duty)));
}

void TestProg::listsKeepOrderAndReplace()
{
    TProgName names;
    names.append(QStringLiteral("b"), true, QStringLiteral("ttyUSB0"), QStringLiteral("T1"));
    names.append(QString(), true, QStringLiteral("p"), QStringLiteral("t"));
    names.append(QStringLiteral("b"), false, QStringLiteral("ttyUSB1"), QStringLiteral("T3"));
    QCOMPARE(names.count(), 2);
    QCOMPARE(names.name(0), QStringLiteral("b"));
    QCOMPARE(names.record(0).port + names.record(QStringLiteral("b")).type, QStringLiteral("ttyUSB1T3"));
    // A row that does not exist is not the alias without a name.
    for (const TProgRecord& none : {names.record(-1), names.record(2), names.record(QStringLiteral("c"))})
        QVERIFY(!none.enabled && none.port.isEmpty() && none.type.isEmpty());

    TProgType types;
    types.append(QStringLiteral("T2"), QStringLiteral("2.cfg"));
    types.append(QString(), QStringLiteral("1.cfg"));
    types.append(QStringLiteral("T2"), QStringLiteral("3.cfg"));
    QCOMPARE(types.count(), 2);
    QCOMPARE(types.name(0) + types.name(2), QStringLiteral("T2"));
    QCOMPARE(types.file(0) + types.file(QString()), QStringLiteral("3.cfg1.cfg"));
    QVERIFY(types.file(-1).isEmpty() && types.file(2).isEmpty() &&
            types.file(QStringLiteral("T3")).isEmpty());
    types.clear();
    QVERIFY(types.count() == 0 && !types.contains(QStringLiteral("T2")));
}

QTEST_GUILESS_MAIN(TestProg)
#include "test_prog.moc"
