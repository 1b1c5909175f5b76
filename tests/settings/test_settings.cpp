#include "base/TSettings.h"
#include "base/helpers.h"
#include "settings/TAppData.h"
#include "settings/settingsRows.h"
#include "support/tables.h"

#include <QDir>

namespace {

QString iniFile()
{
    return fileInAppDir(QStringLiteral("ini"));
}

/// A settings file with this content. The store keeps files that it has read, and notices a new
/// content by its size, so a comment of changing length stands in front.
void writeFile(const QByteArray& content)
{
    static int number = 0;
    QFile file(iniFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("; " + QByteArray(100 * ++number, '-') + "\n" + content);
}

TAppData loaded(const QByteArray& content)
{
    writeFile(content);
    TAppData data;
    data.load();
    return data;
}

/// Gives a field a value that is not the default of any.
template <class Value> void change(Value& value)
{
    if constexpr (std::is_same_v<Value, bool>)
        value = !value;
    else if constexpr (std::is_same_v<Value, int>)
        value = -value - 7;
    else if constexpr (std::is_same_v<Value, QString>)
        value += QStringLiteral(" \"a;b, c\\d\" \u00e4\n%1");
    else if constexpr (std::is_same_v<Value, QColor>)
        value = QColor(value.red() ^ 0x5A, value.green() ^ 0x81, value.blue() ^ 0x3C);
    else
        value = {int(value.size()), 0, 70000};
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QFile::remove(iniFile());
        QFile::remove(fileInAppDir(QStringLiteral("log")));
    }

    void roundTripOfEveryField()
    {
        TAppData data;
        const TAppData defaults;
        for (const SettingsRow& row : settingsRows())
            std::visit([&](auto field) { change(data.*field); }, row.field);
        // Each group of settings has a question of its own at the end of the program.
        QVERIFY(data.saveApp());
        QCOMPARE(TSettings(iniFile()).allKeys().size(), 96);
        QVERIFY(data.saveWindow());
        QCOMPARE(TSettings(iniFile()).allKeys().size(), 96 + 61);

        TAppData back;
        back.load();
        for (const SettingsRow& row : settingsRows()) {
            const bool kept = row.written != Written::ReadOnly;
            const auto same = [&](auto field) { return back.*field == (kept ? data : defaults).*field; };
            QVERIFY2(std::visit(same, row.field), row.key);
        }
        QFile::remove(iniFile());
        back.load();
        for (const SettingsRow& row : settingsRows())
            QVERIFY2(std::visit([&](auto field) { return back.*field == defaults.*field; }, row.field),
                     row.key);
        QVERIFY(!QFile::exists(iniFile()));
    }

    void values()
    {
        const TAppData data = loaded("[Interface]\nExecLogColorCmd=16711935\nExecLogColorText=0\n"
                                     "ExecLogColorResult=1099511627777\nExecTabColorSuccess=red\n"
                                     "[WindowMain]\nCfgSplitter=1,2,3\nPrjSplitter=10\n"
                                     "Width=wide\nHeight=\n[WindowSettings]\nProgSplitter=5,x\n"
                                     "[Main]\nAutoSavePrj=Yes\nOpenLastPrj=on\nSaveSettingsApp=no\n"
                                     "SaveSettingsWindow=OFF\nWindowMainCenter=maybe\nWindowOtherCenter=0\n"
                                     "PathProjects=/a,b , c\nPathDevices=a, \"b;\"\nStyle=Plain\n");
        QCOMPARE(data.ExecLogColorCmd.rgba(), 0xFFFF00FFu);
        QCOMPARE(data.ExecLogColorText.rgba(), 0xFF000000u); // black, not the default
        QCOMPARE(data.ExecLogColorResult.rgba(), 0xFF000001u);
        QCOMPARE(data.ExecTabColorSuccess, TAppData().ExecTabColorSuccess);
        QCOMPARE(data.ExecTabColorFailed, TAppData().ExecTabColorFailed);
        QCOMPARE(data.WindowMainCfgSplitter, (TSplitterPos{1, 2, 3}));
        QCOMPARE(data.WindowMainPrjSplitter, (TSplitterPos{100, 100}));
        QCOMPARE(data.WindowMainWidth + data.WindowMainHeight, 650 + 550);
        QCOMPARE(data.WindowSettingsProgSplitter, (TSplitterPos{100, 100}));
        QVERIFY(data.AutoSavePrj && data.OpenLastPrj && data.WindowMainCenter);
        QVERIFY(!data.SaveSettingsApp && !data.SaveSettingsWindow && !data.WindowOtherCenter);
        QCOMPARE(data.PathProjects + data.PathDevices + data.Style, QString("/a,b , ca, b;Plain"));
        QVERIFY(data.saveApp());
        QCOMPARE(TSettings(iniFile()).value(QStringLiteral("Interface/ExecLogColorCmd")).toUInt(), 0xFF00FFu);
    }

    // What is read is written anew beside what was no entry; that and keys that nobody knows stay.
    void programmerLists()
    {
        TAppData data = loaded("[ProgTypeList]\n"
                               "Type10=Ten, ten.cfg\nType2=Two, two.cfg\nType0=Zero\nType3=a, b, c\n"
                               "Typex=Other, other.cfg\n"
                               "[ProgNameList]\n"
                               "Name11=1, Last, /dev/ttyS1, Ten\nName2=\"1\", \"My, prog\", \"\", Two\n"
                               "Name1=true, First, COM3, Two\nName4=1, Short, x\n[Mine]\nkey=value\n");
        QFile log(fileInAppDir(QStringLiteral("log")));
        QVERIFY(log.open(QIODevice::ReadOnly) && log.readAll().contains("4 parts: ProgNameList/Name4\n"));
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
        // A name that is there is replaced; a row that is not there is not the entry without a name.
        data.progNames.append("First", true, "COM4", "Ten");
        data.progNames.append(QString(), true, "COM5", "Two");
        QCOMPARE(data.progNames.name(0) + data.progNames.record(0).port, QString("FirstCOM4"));
        QCOMPARE(data.progNames.count(), 5);
        QVERIFY(data.progNames.record(-1).port.isEmpty() && data.progNames.record(5).port.isEmpty());
        data.progTypes.append(QString(), "none.cfg");
        QVERIFY(data.progTypes.file(-1).isEmpty() && data.progTypes.file(3).isEmpty());
        const TSettings settings(iniFile());
        QVERIFY(settings.contains("Mine/key") && !settings.contains("ProgNameList/Name11"));
        QCOMPARE(settings.readList("ProgNameList/Name4").size(), 3);
        QCOMPARE(settings.readList("ProgTypeList/Type3").size(), 3);
        QCOMPARE(settings.readList("ProgTypeList/Type0") + settings.readList("ProgTypeList/Typex"),
                 (QStringList{"Zero", "Other", "other.cfg"}));
    }

    void otherLinesStay_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArrayList>("kept");
        QTest::addColumn<QByteArray>("broken"); // lines, of which the first is the comment in front
        const auto row = [](const char* name, const QByteArray& content, const QByteArrayList& kept,
                            const QByteArray& broken) { QTest::newRow(name) << content << kept << broken; };
        row("comments", "[Main]\n; mine\nStyle=Fusion ; why\n\n[WindowMain]\nLeft=5;\n[Main]\nDebug=1",
            {"; mine\nStyle=Fusion ; why\n", "[WindowMain]\nLeft=5 ;\n", "[Main]\nDebug=1\n"}, "");
        row("no settings", "alone\n[Main]\nno setting\n=x\n[Mine\nkey=1\n",
            {"alone\n[Main]\nno setting\n=x\n", "[Mine\nkey=1\n"}, "2, 4, 5, 6");
        row("open quote", "[Main]\nStyle=\"Fus\nLanguage=rus.lng\n[Mine]\nkey=1\n",
            {"Style=Fus\nLanguage=rus.lng\n", "[Mine]\nkey=1\n"}, "3");
        row("over lines", "[Main]\nOwn=\"a\n[Mine]\nx=1\"\n[Main]\nLastPrj=2\\\nLastCfg=1\r\n",
            {"Own=\"a\n[Mine]\nx=1\"\n[Main]\nLastPrj=-1\nLastCfg=1\r\n"}, "3, 5, 7");
    }
    void otherLinesStay()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArrayList, kept);
        QFETCH(QByteArray, broken);
        const TAppData data = loaded(content);
        QByteArray first;
        for (int i = 0; i < 2; ++i) {
            QVERIFY(data.saveApp() && data.saveWindow());
            QFile file(iniFile());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray text = file.readAll();
            for (const QByteArray& part : kept)
                QVERIFY2(text.contains(part), text.constData());
            QCOMPARE(text.count("\nStyle=") + text.count("\nLastCfg="), 2);
            QVERIFY(text.startsWith("; -"));
            if (i > 0)
                QCOMPARE(text, first); // nothing is put in twice
            first = text;
        }
        QFile log(fileInAppDir(QStringLiteral("log")));
        QCOMPARE(log.open(QIODevice::ReadOnly), !broken.isEmpty());
        QVERIFY(broken.isEmpty() || log.readAll().contains("stands: line " + broken + "\n"));
    }

    void garbage()
    {
        const QByteArray noise = QByteArray("[Main]\nLastCfg=12\n# no comment\n=\n[\n\0", 36) +
                                 QByteArray(1 << 20, 'x') +
                                 "\n[ProgNameList]\nName99999999999=1, A, b, c\nName-1=1, B, b, c\n";
        const TAppData data = loaded(noise);
        QCOMPARE(data.LastCfg, 12);
        QCOMPARE(data.progNames.count(), 0);
        QVERIFY(data.saveApp());
    }

    void hotKeys()
    {
        writeFile("[HotKeyMain]\nBare=Ctrl+,\nQuoted=\"Ctrl+,\"\nSemicolon=\"Ctrl+;\"\nEmpty=\n");
        const TSettings settings(iniFile());
        const QHash<QString, QKeySequence> keys{{"Bare", Qt::CTRL | Qt::Key_Comma},
                                                {"Quoted", Qt::CTRL | Qt::Key_Comma},
                                                {"Semicolon", Qt::CTRL | Qt::Key_Semicolon},
                                                {"Empty", QKeySequence()},
                                                {"Absent", QKeySequence()}};
        for (auto it = keys.begin(); it != keys.end(); ++it)
            QCOMPARE(settings.readKeySequence("HotKeyMain/" + it.key()), it.value());
    }

    // Every shipped key is a sequence that Qt understands, and no group has two actions on one.
    void shippedHotKeys()
    {
        const TSettings settings(QStringLiteral(VM_DATA_DIR "/velmarkion.hk"));
        QCOMPARE(settings.allKeys().size(), 56 + 9 + 3 * 5);
        QCOMPARE(settings.childGroups().size(), 5);
        QSet<QString> used;
        for (const QString& key : settings.allKeys()) {
            const QKeySequence sequence = settings.readKeySequence(key);
            const QString text = sequence.toString(QKeySequence::PortableText);
            QVERIFY2(sequence.count() > 0 && sequence != QKeySequence(Qt::Key_unknown), qPrintable(key));
            QCOMPARE(settings.readList(key).join(QString()), text);
            const QString once = key.section('/', 0, 0) + text;
            QVERIFY2(!used.contains(once), qPrintable(key));
            used.insert(once);
        }
    }

    void shippedSettings()
    {
        QVERIFY(QFile::copy(QStringLiteral(VM_DATA_DIR "/velmarkion.ini"), iniFile()));
        TAppData data;
        data.load();
        const TProgRecord prog = data.progNames.record(data.ProgDefault);
        QVERIFY(prog.enabled);
        QCOMPARE(prog.port, QStringLiteral("./sim"));
        QVERIFY(QFile::exists(absFile(QStringLiteral(VM_DATA_DIR "/progs"), data.progTypes.file(prog.type))));
        QVERIFY(QFile::exists(absFile(QStringLiteral(VM_DATA_DIR "/projects"), data.PrjListFile)));
        QVERIFY(!data.PrjListName.isEmpty());
    }

    void unwritableFileIsReported()
    {
        QVERIFY(QDir().mkdir(iniFile()));
        const bool saved = TAppData().saveApp();
        QVERIFY(QDir().rmdir(iniFile()));
        QVERIFY(!saved);
        QFile log(fileInAppDir(QStringLiteral("log")));
        QVERIFY(log.open(QIODevice::ReadOnly) && log.readAll().contains(" Settings "));
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "test_settings.moc"
