#include "core/TAppData.h"
#include "core/TSettings.h"
#include "core/helpers.h"
#include "core/settingsRows.h"
#include "support/tables.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QtTest>

namespace {

QString iniFile()
{
    return fileInAppDir(QStringLiteral("ini"));
}

/// A settings file with this content. The store keeps files that it has read, and notices a new
/// content by its size, so a comment of changing length stands in front.
void writeFile(const QString& name, const QByteArray& content)
{
    static int number = 0;
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("; " + QByteArray(100 * ++number, '-') + "\n" + content);
}

TAppData loaded(const QByteArray& content)
{
    writeFile(iniFile(), content);
    TAppData data;
    data.load();
    return data;
}

QSet<QString> keysInFile()
{
    const TSettings settings(iniFile());
    const QStringList keys = settings.allKeys();
    return QSet<QString>(keys.begin(), keys.end());
}

QSet<QString> keysOf(Written group)
{
    QSet<QString> keys;
    for (const SettingsRow& row : settingsRows()) {
        if (row.written == group)
            keys.insert(QLatin1String(row.key));
    }
    return keys;
}

// A value for each type of field that is not the default of any.
void change(bool& value)
{
    value = !value;
}
void change(int& value)
{
    value = -value - 7;
}
void change(QString& value)
{
    value += QStringLiteral(" \"a;b, c\\d\" \u00e4\n%1");
}
void change(QColor& value)
{
    value = QColor(value.red() ^ 0x5A, value.green() ^ 0x81, value.blue() ^ 0x3C);
}
void change(TSplitterPos& value)
{
    value = {value.size(), 0, 70000};
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void missingFileGivesDefaults();
    void roundTripOfEveryField();
    void eachSaveWritesItsOwnKeys();
    void colour_data();
    void colour();
    void sizeList_data();
    void sizeList();
    void programmerLists();
    void garbage();
    void hotKey_data();
    void hotKey();
    void shippedHotKeys();
    void shippedSettings();
    // The last one: what could not be written waits in the store for the next try.
    void unwritableFileIsReported();
};

void TestSettings::cleanup()
{
    QFile::remove(iniFile());
    QFile::remove(fileInAppDir(QStringLiteral("log")));
}

void TestSettings::missingFileGivesDefaults()
{
    TAppData data;
    data.Language = QStringLiteral("other.lng");
    data.LastPrj = 5;
    data.WindowMainPrjSplitter = {1, 2, 3};
    data.load();
    QCOMPARE(data.Language, QStringLiteral("eng.lng"));
    QCOMPARE(data.LastPrj, -1);
    QCOMPARE(data.WindowMainPrjSplitter, (TSplitterPos{100, 100}));
    QCOMPARE(data.ExecTabColorSuccess, QColor(Qt::darkGreen));
    QVERIFY(!QFile::exists(iniFile()));
}

void TestSettings::roundTripOfEveryField()
{
    TAppData data;
    for (const SettingsRow& row : settingsRows())
        std::visit([&](auto field) { change(data.*field); }, row.field);
    QVERIFY(data.saveApp());
    QVERIFY(data.saveWindow());

    TAppData back;
    back.load();
    const TAppData defaults;
    for (const SettingsRow& row : settingsRows()) {
        const bool kept = row.written != Written::ReadOnly;
        const auto same = [&](auto field) { return back.*field == (kept ? data : defaults).*field; };
        QVERIFY2(std::visit(same, row.field), row.key);
    }
}

void TestSettings::eachSaveWritesItsOwnKeys()
{
    TAppData data;
    QVERIFY(data.saveApp());
    QCOMPARE(keysInFile(), keysOf(Written::App));
    QCOMPARE(keysInFile().size(), 93);
    QFile::remove(iniFile());
    QVERIFY(data.saveWindow());
    QCOMPARE(keysInFile(), keysOf(Written::Window));
    QCOMPARE(keysInFile().size(), 56);
}

void TestSettings::colour_data()
{
    tableColumns<QByteArray, uint>("text", "rgba");
    tableRow("24 bits", QByteArray("16711935"), 0xFFFF00FFu);
    tableRow("zero is black, not the default", QByteArray("0"), 0xFF000000u);
    tableRow("bits above 32", QByteArray("1099511627777"), 0xFF000001u);
    tableRow("no number", QByteArray("red"), 0xFF000000u);
}

void TestSettings::colour()
{
    QFETCH(QByteArray, text);
    QFETCH(uint, rgba);
    const TAppData data = loaded("[Interface]\nExecLogColorCmd=" + text + "\n");
    QCOMPARE(data.ExecLogColorCmd.rgba(), rgba);
    QVERIFY(data.saveApp());
    const TSettings settings(iniFile());
    QCOMPARE(settings.value(QStringLiteral("Interface/ExecLogColorCmd")).toUInt(), rgba & 0xFFFFFF);
}

void TestSettings::sizeList_data()
{
    tableColumns<QByteArray, TSplitterPos>("text", "sizes");
    tableRow("three", QByteArray("1,2,3"), TSplitterPos{1, 2, 3});
    tableRow("one", QByteArray("10"), TSplitterPos{189, 192});
    tableRow("saved empty", QByteArray("@Invalid()"), TSplitterPos{189, 192});
}

void TestSettings::sizeList()
{
    QFETCH(QByteArray, text);
    QFETCH(TSplitterPos, sizes);
    QCOMPARE(loaded("[WindowMain]\nCfgSplitter=" + text + "\n").WindowMainCfgSplitter, sizes);
}

void TestSettings::unwritableFileIsReported()
{
    QVERIFY(QDir().mkdir(iniFile()));
    const bool saved = TAppData().saveApp();
    QVERIFY(QDir().rmdir(iniFile()));
    QVERIFY(!saved);
    QFile log(fileInAppDir(QStringLiteral("log")));
    QVERIFY(log.open(QIODevice::ReadOnly));
    QVERIFY(log.readAll().contains(" Settings "));
}

// What is read is written anew, without what was no entry; keys that nobody knows stay.
void TestSettings::programmerLists()
{
    TAppData data = loaded("[ProgTypeList]\n"
                           "Type10=Ten, ten.cfg\nType2=Two, two.cfg\nType0=Zero\nType3=a, b, c\n"
                           "Typex=Other, other.cfg\n"
                           "[ProgNameList]\n"
                           "Name11=1, Last, /dev/ttyS1, Ten\nName2=\"1\", \"My, prog\", \"\", Two\n"
                           "Name1=true, First, COM3, Two\nName4=1, Short, x\n[Mine]\nkey=value\n");
    for (const bool again : {false, true}) {
        QCOMPARE(data.progTypes.count(), 2);
        QCOMPARE(data.progTypes.name(0) + data.progTypes.file(1), QString("Twoten.cfg"));
        QCOMPARE(data.progNames.count(), again ? 4 : 3);
        QCOMPARE(data.progNames.name(0), QString("First"));
        QVERIFY(!data.progNames.record(0).enabled && data.progNames.record(1).enabled);
        QCOMPARE(data.progNames.name(1) + data.progNames.record(1).port, QString("My, prog"));
        QCOMPARE(data.progNames.record("Last").port, QString("/dev/ttyS1"));
        data.progNames.append("A, \u00df", false, "C:\\new", QString());
        QVERIFY(data.saveApp());
        data = TAppData();
        data.load();
    }
    QCOMPARE(data.progNames.record("A, \u00df").port, QString("C:\\new"));
    const TSettings settings(iniFile());
    QVERIFY(settings.contains("Mine/key") && !settings.contains("ProgNameList/Name11"));
}

void TestSettings::garbage()
{
    QByteArray noise("[Main]\nLastCfg=12\n# no comment\n=\n[\n");
    noise += '\0';
    noise += QByteArray(1 << 20, 'x') + "\n[ProgNameList]\nName99999999999=1, A, b, c\nName-1=1, B, b, c\n";
    const TAppData data = loaded(noise);
    QCOMPARE(data.LastCfg, 12);
    QCOMPARE(data.progNames.count(), 0);
    QVERIFY(data.saveApp());
}

void TestSettings::hotKey_data()
{
    tableColumns<QByteArray, QKeySequence>("text", "keys");
    tableRow("comma, unquoted", QByteArray("Ctrl+,"), QKeySequence(Qt::CTRL + Qt::Key_Comma));
    tableRow("comma, quoted", QByteArray("\"Ctrl+,\""), QKeySequence(Qt::CTRL + Qt::Key_Comma));
    tableRow("semicolon, quoted", QByteArray("\"Ctrl+;\""), QKeySequence(Qt::CTRL + Qt::Key_Semicolon));
    tableRow("empty", QByteArray(""), QKeySequence());
}

void TestSettings::hotKey()
{
    QFETCH(QByteArray, text);
    QFETCH(QKeySequence, keys);
    writeFile(iniFile(), "[HotKeyMain]\nSetup=" + text + "\n");
    const TSettings settings(iniFile());
    QCOMPARE(settings.readKeySequence(QStringLiteral("HotKeyMain/Setup")), keys);
    QCOMPARE(settings.readKeySequence(QStringLiteral("HotKeyMain/Absent")), QKeySequence());
}

// Every shipped key is a sequence that Qt understands, and no group has two actions on one.
void TestSettings::shippedHotKeys()
{
    TSettings settings(QStringLiteral(VM_DATA_DIR "/velmarkion.hk"));
    QCOMPARE(settings.status(), QSettings::NoError);
    QCOMPARE(settings.allKeys().size(), 54 + 9 + 3 * 5);
    const QStringList groups = settings.childGroups();
    QCOMPARE(groups.size(), 5);
    for (const QString& group : groups) {
        settings.beginGroup(group);
        QSet<QString> used;
        const QStringList keys = settings.childKeys();
        for (const QString& key : keys) {
            const QKeySequence sequence = settings.readKeySequence(key);
            const QString text = sequence.toString(QKeySequence::PortableText);
            QVERIFY2(sequence.count() > 0 && sequence[0] != Qt::Key_unknown, qPrintable(key));
            QVERIFY2(!used.contains(text), qPrintable(key));
            QCOMPARE(settings.readList(key).join(QString()), text);
            used.insert(text);
        }
        settings.endGroup();
    }
}

void TestSettings::shippedSettings()
{
    QVERIFY(QFile::copy(QStringLiteral(VM_DATA_DIR "/velmarkion.ini"), iniFile()));
    TAppData data;
    data.load();
    const QString alias = data.progNames.name(data.ProgDefault);
    QVERIFY(data.progNames.record(alias).enabled);
    QCOMPARE(data.progNames.record(alias).port, QStringLiteral("./sim"));
    const QString description = data.progTypes.file(data.progNames.record(alias).type);
    QVERIFY(QFile::exists(absFile(QStringLiteral(VM_DATA_DIR "/progs"), description)));
    QVERIFY(QFile::exists(absFile(QStringLiteral(VM_DATA_DIR "/projects"), data.PrjListFile)));
    QVERIFY(!data.PrjListName.isEmpty());
}

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
