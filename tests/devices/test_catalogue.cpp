#include "core/TAppData.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevProg.h"
#include "devices/TDevTools.h"
#include "devices/TDeviceList.h"
#include "link/AutoList.h"
#include "link/TPairStringList.h"
#include "support/TestDir.h"

#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(QMetaType::Type)

/// The text files that tell which chips there are.
class TestCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void values_data();
    void values();
    void lines_data();
    void lines();
    void listsInTurn();
    void bytesOfAnyKind();
    void hugeFiles();
    void classes_data();
    void classes();
    void pathsOfAnotherSystem();
    void chipsAndTypes();
    void detections();
    void pairs();

private:
    TData parse(const QByteArray& text) const
    {
        return TDeviceList::readDescription(m_dir->write("a.dev", text));
    }

    std::unique_ptr<TestDir> m_dir;
};

void TestCatalogue::init()
{
    m_dir = std::make_unique<TestDir>(TestDir::Empty);
    appData().PathDevices = m_dir->path();
}

void TestCatalogue::values_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QVariant>("result");
    const auto row = [](const char* value, const QVariant& result) {
        QTest::newRow(value) << QByteArray(value) << result;
    };
    row("s|plain|text ", QStringLiteral("plain|text "));
    row("s| Dev25", QStringLiteral(" Dev25"));
    row("s|", QString());
    row("d|-2147483648", -2147483647 - 1);
    row("d|2147483648", 0);
    row("D|-9223372036854775808", qlonglong(std::numeric_limits<qint64>::min()));
    row("u|4294967295", 0xFFFFFFFFU);
    row("u|4294967296", 0U);
    row("u|-1", 0U);
    row("U|18446744073709551615", qulonglong(Q_UINT64_C(18446744073709551615)));
    row("x|fFfFfFfF", 0xFFFFFFFFU);
    row("x|0x10", 0x10U);
    row("x|xyz", 0U);
    row("X|123456789A", qulonglong(Q_UINT64_C(0x123456789A)));
    row("b|1", 1U);
    row("b|true", 0U);
    row("B|100000000000000000000000000000000", qulonglong(Q_UINT64_C(1) << 32));
    row("o|17", 15U);
    row("O|777777777777", qulonglong(Q_UINT64_C(0777777777777)));
    row("f|1.5", QVariant::fromValue(1.5F));
    row("f|1e99", QVariant::fromValue(0.0F));
    row("F|1e99", 1e99);
    row("F|1,5", 0.0);
    row(" d | 12 ", 12);
    row("l|item", QStringList{QStringLiteral("item")});
}

void TestCatalogue::values()
{
    QFETCH(QByteArray, value);
    QFETCH(QVariant, result);
    const TData data = parse("key=" + value);
    QCOMPARE(data.size(), 1);
    QCOMPARE(data.value("key"), result);
    QCOMPARE(data.value("key").userType(), result.userType());
}

void TestCatalogue::lines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("value"); // of the key "a"; null when it must not be there
    QTest::newRow("blanks around key and type") << QByteArray("  a = s |v") << "v";
    QTest::newRow("later line wins") << QByteArray("a=s|v\na=s|w") << "w";
    QTest::newRow("comment") << QByteArray("#a=s|v") << QString();
    QTest::newRow("indented comment is data") << QByteArray("a=s|v\n #x=s|w") << "v";
    QTest::newRow("no equals") << QByteArray("a s|v") << QString();
    QTest::newRow("no bar") << QByteArray("a=s v") << QString();
    QTest::newRow("bar before equals") << QByteArray("a|s=v") << QString();
    QTest::newRow("unknown type") << QByteArray("a=q|v") << QString();
    QTest::newRow("type of two letters") << QByteArray("a=ss|v") << QString();
    QTest::newRow("no type") << QByteArray("a=|v") << QString();
    QTest::newRow("foreign letter as type") << QByteArray("a=\xC3\xA4|v") << QString();
    QTest::newRow("equals in the value") << QByteArray("a=s|b=c") << "b=c";
    QTest::newRow("line ends of Windows") << QByteArray("a=s|v\r\nb=s|w\r\n") << "v";
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF"
                                                   "a=s|v")
                                     << "v";
    QTest::newRow("umlauts") << QByteArray("a=s|\xC3\xA4") << QString::fromUtf8("\xC3\xA4");
    QTest::newRow("empty file") << QByteArray() << QString();
}

void TestCatalogue::lines()
{
    QFETCH(QByteArray, text);
    QTEST(parse(text).value("a").toString(), "value");
}

void TestCatalogue::listsInTurn()
{
    const TData data = parse("a=l|1\nb=l|2\na=l|3\nx=s|between\n#comment\na=l|4\nc=l|5\n\nc=l|");
    QCOMPARE(data.value("a").toStringList(), QStringList({"3", "4"}));
    QCOMPARE(data.value("b").toStringList(), QStringList({"2"}));
    QCOMPARE(data.value("c").toStringList(), QStringList({"5", ""}));
    QCOMPARE(data.value("x").toString(), QStringLiteral("between"));
}

void TestCatalogue::bytesOfAnyKind()
{
    QByteArray garbage;
    for (int i = 0; i < 200000; ++i)
        garbage.append(static_cast<char>(i * 7919 >> 3));
    const TData data =
        parse(garbage + "\na=s|" + QByteArray("x\0y", 3) + "\n" + QByteArray(1000, '\0') + "\nb=d|5");
    QCOMPARE(data.value("a").toString(), QString::fromLatin1("x\0y", 3));
    QCOMPARE(data.value("b").toInt(), 5);
    const QByteArray megabyte(1 << 20, 'x');
    QCOMPARE(parse("a=s|" + megabyte).value("a").toString().size(), megabyte.size());
    QVERIFY(TDeviceList::readDescription(m_dir->path()).isEmpty());
    QVERIFY(TDeviceList::readDescription(m_dir->file("missing")).isEmpty());
    QVERIFY(TDeviceList::readDescription("/dev/zero").isEmpty());
}

void TestCatalogue::hugeFiles()
{
    // Sparse: a hole of 100 MB reads as NUL bytes.
    const QString path = m_dir->write("huge.dev", "gui_type=s|Prog\n");
    QVERIFY(QFile(path).resize(100 * 1024 * 1024));
    QVERIFY(TDeviceList::readDescription(path).isEmpty());
    const std::unique_ptr<IDevice> device(deviceList().create("chip", "huge.dev"));
    QVERIFY(!device);
}

void TestCatalogue::classes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("description"); // null: no file is named
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("tools") << "Tools" << QByteArray() << QByteArray("TDevTools");
    QTest::newRow("programmer") << "Prog" << QByteArray() << QByteArray("TDevProg");
    QTest::newRow("unknown word") << "Dev99" << QByteArray() << QByteArray();
    QTest::newRow("by description") << "chip" << QByteArray("gui_type=s|Prog") << QByteArray("TDevProg");
    QTest::newRow("the name does not count") << "Tools" << QByteArray("a=s|b") << QByteArray();
    QTest::newRow("word with a blank") << "chip" << QByteArray("gui_type=s| Prog") << QByteArray();
    QTest::newRow("family without a word") << "chip" << QByteArray("gui_type=s|Dev93") << QByteArray();
}

void TestCatalogue::classes()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, description);
    QFETCH(QByteArray, className);
    const QString file = description.isNull() ? QString() : QStringLiteral("a.dev");
    m_dir->write("a.dev", description);
    const std::unique_ptr<IDevice> device(deviceList().create(name, file));
    QCOMPARE(QByteArray(device ? device->metaObject()->className() : ""), className);
    if (device) {
        QCOMPARE(device->name(), name);
        QCOMPARE(device->deviceValue(key::dev_file).toString(),
                 file.isEmpty() ? QString() : m_dir->file(file));
    }
}

void TestCatalogue::pathsOfAnotherSystem()
{
    m_dir->write("spi/a.dev", "gui_type=s|Tools\ndev_file=s|liar");
    const std::unique_ptr<IDevice> device(deviceList().create("chip", "spi\\a.dev"));
    QVERIFY(device);
    QCOMPARE(device->deviceValue(key::dev_file).toString(), m_dir->file("spi/a.dev"));
    const std::unique_ptr<IDevice> absolute(deviceList().create("chip", m_dir->file("spi/a.dev")));
    QVERIFY(absolute);
}

void TestCatalogue::chipsAndTypes()
{
    QVERIFY(TDeviceList::deviceFiles().isEmpty());
    QCOMPARE(TDeviceList::typeNumber("SPI"), 0);
    m_dir->write("devices.lst", "# chips\n\n  W25Q64=spi/w25q64.dev  \nnone\n #x=y\nA=first\nA=second=2\r\n");
    const QHash<QString, QString> files = TDeviceList::deviceFiles();
    QCOMPARE(files.size(), 2);
    QCOMPARE(files.value("W25Q64"), QStringLiteral("spi/w25q64.dev"));
    QCOMPARE(files.value("A"), QStringLiteral("second=2"));
    m_dir->write("types.lst", "I2C=x\nSPI=3\nSPI=4\nAVR=0x10\n");
    QCOMPARE(TDeviceList::typeNumber("SPI"), 3);
    QCOMPARE(TDeviceList::typeNumber("I2C"), 0);
    QCOMPARE(TDeviceList::typeNumber("AVR"), 0);
    QCOMPARE(TDeviceList::typeNumber("none"), 0);
}

void TestCatalogue::detections()
{
    QVERIFY(autoNames().isEmpty());
    m_dir->write("auto.lst",
                 "#c\nFlash=spi/all.dev|spi/all.sig\nbad=one\nworse=a|b|c\nAVR=||avr.dev||avr.sig|\n"
                 "Flash=second|x\n");
    QCOMPARE(autoNames(), QStringList({"Flash", "AVR", "Flash"}));
    QCOMPARE(autoDeviceFile("Flash"), QStringLiteral("spi/all.dev"));
    QCOMPARE(autoSignatureFile("AVR"), QStringLiteral("avr.sig"));
    QCOMPARE(autoDeviceFile("bad"), QString());
    QCOMPARE(autoSignatures("Flash").count(), 0);
    QCOMPARE(autoSignatures("none").count(), 0);
    m_dir->write("spi/all.sig", "EF4017=W25Q64\n# c\nC22017=MX=25\nEF4017=again\n");
    const TPairStringList chips = autoSignatures("Flash");
    QCOMPARE(chips.count(), 3);
    QCOMPARE(chips.value("EF4017"), QStringLiteral("W25Q64"));
    QCOMPARE(chips.value(1), QStringLiteral("MX=25"));
}

void TestCatalogue::pairs()
{
    const TPairStringList list = TPairStringList::fromText("| A=1 ||#B=2|C|D==|A=3|=4|");
    QCOMPARE(list.toText(), QStringLiteral("A=1|D==|A=3|=4"));
    QCOMPARE(list.find("A"), 0);
    QCOMPARE(list.value("D"), QStringLiteral("="));
    QCOMPARE(list.value(""), QStringLiteral("4"));
    QVERIFY(!list.contains("B"));
    QCOMPARE(list.value("B"), QString());
    QCOMPARE(list.key(7), QString());
    QCOMPARE(list.value(-1), QString());
}

QTEST_GUILESS_MAIN(TestCatalogue)
#include "test_catalogue.moc"
