#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/shared_settings.h"
#include "devices/TDeviceList.h"
#include "devices/shared/TCommandTable.h"
#include "devices/shared/TFamily.h"
#include "devices/shared/description.h"
#include "link/lists/AutoList.h"
#include "settings/TAppData.h"
#include "support/BenchProject.h"

#include <QtTest>

#include <memory>

/// The text files that tell which chips there are.
class TestCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<TestDir>(TestDir::Empty);
        appData().PathDevices = m_dir->path();
    }

    void values()
    {
        const QHash<QByteArray, QVariant> rows{
            {"s|plain|text ", QString("plain|text ")},
            {"d|-2147483648", -2147483647 - 1},
            {"D|-9223372036854775808", qlonglong(std::numeric_limits<qint64>::min())},
            {"u|4294967296", 0U},
            {"u|-1", 0U},
            {"U|18446744073709551615", qulonglong(Q_UINT64_C(18446744073709551615))},
            {"x|fFfFfFfF", 0xFFFFFFFFU},
            {"X|123456789A", qulonglong(Q_UINT64_C(0x123456789A))},
            {"b|101", 5U},
            {"B|100000000000000000000000000000000", qulonglong(Q_UINT64_C(1) << 32)},
            {"o|17", 15U},
            {"O|777777777777", qulonglong(Q_UINT64_C(0777777777777))},
            {"f|1.5", QVariant::fromValue(1.5F)},
            {"F|1e99", 1e99},
            {" d | 12 ", 12},
            {"l|item", QStringList{"item"}},
        };
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            const TData data = parse("key=" + row.key());
            QCOMPARE(data.value("key"), row.value());
            QCOMPARE(data.value("key").userType(), row.value().userType());
        }
    }

    void lines()
    {
        for (const char* good :
             {"  a = s |v", "a=s|w\na=s|v", "a=s|v\n #x=s|w", "a=s|v\r\nb=s|w\r\n", "\357\273\277a=s|v"})
            QCOMPARE(parse(good).value("a").toString(), QString("v"));
        for (const char* bad :
             {"#a=s|v", "a s|v", "a=s v", "a|s=v", "a=q|v", "a=ss|v", "a=|v", "a=\xC3\xA4|v", ""})
            QVERIFY2(parse(bad).isEmpty(), bad);
        QCOMPARE(parse("a=s|\xC3\xA4=b").value("a").toString(), QString::fromUtf8("\xC3\xA4=b"));
    }

    void listsInTurn()
    {
        const TData data = parse("a=l|1\nb=l|2\na=l|3\nx=s|between\n#comment\na=l|4\nc=l|5\n\nc=l|");
        QCOMPARE(data.value("a").toStringList(), QStringList({"3", "4"}));
        QCOMPARE(data.value("b").toStringList(), QStringList({"2"}));
        QCOMPARE(data.value("c").toStringList(), QStringList({"5", ""}));
    }

    void bytesOfAnyKind()
    {
        QByteArray garbage;
        for (int i = 0; i < 200000; ++i)
            garbage.append(static_cast<char>(i * 7919 >> 3));
        const TData data =
            parse(garbage + "\na=s|" + QByteArray("x\0y", 3) + "\nb=s|" + QByteArray(1 << 20, 'z'));
        QCOMPARE(data.value("a").toString().size(), 3);
        QCOMPARE(data.value("b").toString().size(), 1 << 20);
        QVERIFY(readDescription(m_dir->path()).isEmpty());
        QVERIFY(readDescription("/dev/zero").isEmpty());
        const QString huge = m_dir->write("huge.dev", "gui_type=s|Prog\n");
        QVERIFY(QFile(huge).resize(100 * 1024 * 1024));
        QCOMPARE(classOf("chip", huge), QByteArray());
    }

    void classes()
    {
        QCOMPARE(classOf("Tools", ""), QByteArray("TDevTools"));
        QCOMPARE(classOf("Prog", ""), QByteArray("TDevProg"));
        QCOMPARE(classOf("Dev99", ""), QByteArray());
        for (const QByteArray word : {"Prog=TDevProg", "Dev25=TDev25", "Dev24=TDev24",
                                      "DevAVR8_SPI=TDevAVR8_SPI", " Prog=", "Dev93=", "="}) {
            m_dir->write("a.dev", "gui_type=s|" + word.split('=')[0]);
            QCOMPARE(classOf("Tools", "a.dev"), word.split('=')[1]);
        }
        // A name from another system, and a key that only the reader may set.
        m_dir->write("spi/b.dev", "gui_type=s|Tools\ndev_file=s|liar");
        const std::unique_ptr<IDevice> device(deviceList().create("chip", "spi\\b.dev"));
        QVERIFY(device && device->name() == "chip");
        QCOMPARE(device->deviceValue(key::dev_file).toString(), m_dir->file("spi/b.dev"));
    }

    // What the compiler cannot miss in a family.
    void wholeFamilies()
    {
        appData().PathDevices = VM_DATA_DIR "/devices";
        QSet<QLatin1String> words;
        for (const TFamily& family : families()) {
            QVERIFY2(TDeviceList::typeNumber(family.type) > 0, family.type.data());
            words << family.word << family.type << family.section;
            for (const TCommandRow& row : family.commands())
                QVERIFY2(row.shape == Shape::Separator || !cmdCode().name(row.key).isEmpty(), row.key.data());
        }
        QCOMPARE(words.size(), 3 * families().size());
        QFile table(VM_SOURCE_DIR "/src/devices/families.cpp");
        QVERIFY(table.open(QIODevice::ReadOnly));
        const QByteArray rows = table.readAll();
        const QStringList others{"lint", "microwire", "prog", "shared", "tools"};
        for (const QString& room :
             QDir(VM_SOURCE_DIR "/src/devices").entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            QVERIFY2(others.contains(room) || rows.contains("\"devices/" + room.toUtf8() + '/'),
                     qPrintable(room));
    }

    void chipsAndTypes()
    {
        QVERIFY(TDeviceList::deviceFiles().isEmpty());
        QCOMPARE(TDeviceList::typeNumber("SPI"), 0);
        m_dir->write("devices.lst",
                     "# chips\n\n  W25Q64=spi/w25q64.dev  \nnone\n #x=y\nA=first\nA=second=2\r\n");
        const QHash<QString, QString> files{{"W25Q64", "spi/w25q64.dev"}, {"A", "second=2"}};
        QCOMPARE(TDeviceList::deviceFiles(), files);
        m_dir->write("types.lst", "I2C=x\nSPI=3\nSPI=4\nAVR=0x10\n");
        QCOMPARE(TDeviceList::typeNumber("SPI"), 3);
        for (const char* word : {"I2C", "AVR", "none"})
            QCOMPARE(TDeviceList::typeNumber(word), 0);
    }

    void detections()
    {
        QVERIFY(autoNames(devicesFolder()).isEmpty());
        m_dir->write("auto.lst",
                     "#c\nFlash=a.dev|s\\a.sig\nbad=one\nworse=a|b|c\nAVR=||b.dev||b.sig|\nFlash=c|d\n");
        QCOMPARE(autoNames(devicesFolder()), QStringList({"Flash", "AVR", "Flash"}));
        QCOMPARE(autoDeviceFile(devicesFolder(), "Flash"), QString("a.dev"));
        QCOMPARE(autoSignatureFile(devicesFolder(), "AVR"), QString("b.sig"));
        QVERIFY(autoDeviceFile(devicesFolder(), "bad").isEmpty() &&
                autoSignatures(devicesFolder(), "none").count() == 0);
        QCOMPARE(autoSignatures(devicesFolder(), "Flash").count(), 0);
        m_dir->write("s/a.sig", "EF4017=W25Q64\n# c\nC22017=MX=25\nEF4017=again\n");
        QCOMPARE(autoSignatures(devicesFolder(), "Flash").toText(),
                 QString("EF4017=W25Q64|C22017=MX=25|EF4017=again"));
        QCOMPARE(autoSignatures(devicesFolder(), "Flash").value("EF4017"), QString("W25Q64"));
    }

private:
    TData parse(const QByteArray& text) const { return readDescription(m_dir->write("a.dev", text)); }

    /// The class of a chip, empty when it has none.
    QByteArray classOf(const QString& name, const QString& file) const
    {
        const std::unique_ptr<IDevice> device(deviceList().create(name, file));
        return device ? device->metaObject()->className() : "";
    }

    std::unique_ptr<TestDir> m_dir;
};

QTEST_GUILESS_MAIN(TestCatalogue)
#include "test_catalogue.moc"
