#include "core/FakeDevices.h"
#include "core/TAppData.h"
#include "core/TCtrlProject.h"
#include "core/TDataCfg.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/TPrjListFile.h"
#include "core/TPrjLists.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/references.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char head[] = "{\n    \"version\": 1,\n    \"configurations\":\n    [\n";
const char tail[] = "\n    ]\n}\n";

QByteArray configuration(const QByteArray& name, const QByteArray& description,
                         const QByteArrayList& commands)
{
    QByteArrayList lines;
    for (const QByteArray& command : commands)
        lines.append("                " + command);
    return "        {\n            \"name\": \"" + name + "\",\n            \"description\": \"" +
           description + "\",\n            \"commands\":\n            [\n" + lines.join(",\n") +
           "\n            ]\n        }";
}

/// Runs fn in a child process that no file of more than bytes can be written by: a full disk. Gives the
/// exit code, -1 if it crashed.
int withFileSizeLimit(qint64 bytes, const std::function<int()>& fn)
{
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{static_cast<rlim_t>(bytes), static_cast<rlim_t>(bytes)};
        setrlimit(RLIMIT_FSIZE, &limit);
        _exit(fn());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

class TestProjectFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void savesByteForByte_data();
    void savesByteForByte();
    void loadedAndSavedIsTheSameFile_data();
    void loadedAndSavedIsTheSameFile();
    void writtenTextComesBack_data();
    void writtenTextComesBack();
    void handEditedValues();
    void referencesBecomePositions();
    void brokenProjects_data();
    void brokenProjects();
    void emptyProject();
    void template_();

    void savingKeepsLinksAndPermissions();
    void fullDiskLeavesOldFile();
    void unwritableTargets_data();
    void unwritableTargets();

    void listByteForByte();
    void listReading_data();
    void listReading();
    void listIsWrittenOnlyWhenItDiffers();
    void listPath();
    void joiningAList_data();
    void joiningAList();
    void shippedLists();

private:
    std::unique_ptr<TestDir> m_dir;
    TDataPrj m_project;
    TCtrlProject m_ctrl;
};

void TestProjectFiles::initTestCase()
{
    registerMetaTypes();
}

void TestProjectFiles::init()
{
    m_dir = std::make_unique<TestDir>(TestDir::Empty);
    m_project.reset();
}

void TestProjectFiles::savesByteForByte_data()
{
    tableColumns<QByteArray, QByteArray>("loaded", "saved");

    tableRow("no configuration", QByteArray("{}"), QByteArray(head) + tail);
    tableRow("sorted parameters, checks as digits, unknown keys stay, reserved ones go",
             QByteArray("{\"version\": 7, \"name\": \"x\", \"configurations\":[{\"name\":\"A\",\"more\":1,"
                        "\"description\":\"D\",\"commands\":["
                        "{\"zeta\":\"1\",\"cmd\":\"delay\",\"value\":\"5\",\"status\":\"7\",\"alpha\":\"\"},"
                        "{\"cmd\":\"stop\",\"id_cmd\":\"9\",\"id_cfg\":\"9\",\"valid_dev\":\"1\"}]}]}"),
             head +
                 configuration("A", "D",
                               {R"({"status": "1", "cmd": "delay", "alpha": "", "value": "5", "zeta": "1"})",
                                R"({"status": "0", "cmd": "stop"})"}) +
                 tail);
    tableRow("only what must be escaped is",
             QByteArray(R"({"configurations":[{"name":"\u00e4/\"\\","description":"1\n\"2\"\r\t3",)"
                        R"("commands":[{"cmd":"process","file":"C:\\new \"x\" /\u0007\u007f&<%1"}]}]})"),
             head +
                 configuration("\xC3\xA4/\\\"\\\\", R"(1|n|w2|w\r\t3)",
                               {R"({"status": "0", "cmd": "process", "file": "C:\\new \"x\" /\u0007)"
                                "\x7F"
                                R"(&<%1"})"}) +
                 tail);
}

void TestProjectFiles::savesByteForByte()
{
    QFETCH(QByteArray, loaded);
    QFETCH(QByteArray, saved);
    QCOMPARE(m_ctrl.load(m_dir->write(QStringLiteral("a.prj"), loaded), m_project), 0);
    QVERIFY(m_ctrl.save(m_dir->file(QStringLiteral("b.prj")), m_project));
    QCOMPARE(m_dir->read(QStringLiteral("b.prj")), saved);
    // What was written reads and writes the same once more.
    QCOMPARE(m_ctrl.load(m_dir->file(QStringLiteral("b.prj")), m_project), 0);
    QVERIFY(m_ctrl.save(m_dir->file(QStringLiteral("c.prj")), m_project));
    QCOMPARE(m_dir->read(QStringLiteral("c.prj")), saved);
}

void TestProjectFiles::loadedAndSavedIsTheSameFile_data()
{
    tableColumns<QString>("file");
    QDirIterator it(QStringLiteral(VM_DATA_DIR "/projects"), {QStringLiteral("*.prj")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        tableRow(qPrintable(it.fileName()), file);
    }
}

void TestProjectFiles::loadedAndSavedIsTheSameFile()
{
    QFETCH(QString, file);
    QFile shipped(file);
    QVERIFY(shipped.open(QIODevice::ReadOnly));
    const QByteArray before = shipped.readAll();
    QCOMPARE(m_ctrl.open(file, m_project), 0);
    QVERIFY(!m_project.isChanged());
    QCOMPARE(m_project.file(), QFileInfo(file).absoluteFilePath());
    QCOMPARE(m_project.workPath(), QFileInfo(file).absolutePath());
    for (int i = 0; i < m_project.cmdCount(); ++i)
        QCOMPARE(m_project.cmdIdAt(i), i);
    QVERIFY(m_ctrl.save(m_dir->file(QStringLiteral("out.prj")), m_project));
    QCOMPARE(m_dir->read(QStringLiteral("out.prj")), before);
}

void TestProjectFiles::writtenTextComesBack_data()
{
    tableColumns<QString>("text");
    tableRow("windows path", "C:\\data\\new\\u0041.bin");
    tableRow("white space", " \t\r\n\f\b x ");
    tableRow("NUL and other controls", QString::fromLatin1("a\0b\x1f\x01", 5));
    tableRow("other alphabets", QString::fromUtf8("äß Ω 中 🙂 \u2028"));
    tableRow("json", R"(", "cmd": "erase"}, {")");
}

void TestProjectFiles::writtenTextComesBack()
{
    QFETCH(QString, text);
    const int cfg = m_project.addCfg(text, QStringLiteral("d"), -1);
    m_project.addCmd({{key::id_cfg, cfg}, {key::cmd, text}, {text, text}}, -1);
    const QString file = m_dir->file(QStringLiteral("a.prj"));
    QVERIFY(m_ctrl.save(file, m_project));
    QCOMPARE(m_ctrl.load(file, m_project), 0);
    QCOMPARE(m_project.cfgName(0), text);
    QCOMPARE(m_project.cmdAt(0)->cmd(), text);
    QCOMPARE(m_project.cmdAt(0)->param(text).toString(), text);

    TPrjListFile list;
    list.setItems({{0, true, text, text}});
    QVERIFY(list.write(file));
    QCOMPARE(list.read(file), TPrjListFile::Ok);
    QCOMPARE(list.items().at(0).name, text);
    TPrjLists lists;
    lists.setEntries({{text, text}});
    QVERIFY(lists.write(file));
    QVERIFY(lists.read(file));
    QCOMPARE(lists.entries().at(0).file, text);
}

void TestProjectFiles::handEditedValues()
{
    const QString file = m_dir->write(
        QStringLiteral("a.prj"),
        "\xEF\xBB\xBF{\"configurations\":[{\"name\":5,\"commands\":[{\"status\":1,\"cmd\":\"counter\","
        "\"value\":12,\"big\":4294967296,\"part\":1.5,\"flag\":true,\"none\":null,\"raw\":\"a\tb\"},"
        "7,{}]},8]}");
    QCOMPARE(m_ctrl.load(file, m_project), 0);
    QCOMPARE(m_project.cfgNames(), QStringList({"5", ""}));
    QCOMPARE(m_project.cmdCount(), 3);
    const TDataCmd* command = m_project.cmdAt(0);
    QVERIFY(command->status());
    const QList<QPair<QString, QString>> expected{{"value", "12"},  {"big", "4294967296"}, {"part", "1.5"},
                                                  {"flag", "true"}, {"none", ""},          {"raw", "a\tb"}};
    for (const auto& pair : expected)
        QCOMPARE(command->param(pair.first), QVariant(pair.second));
}

void TestProjectFiles::referencesBecomePositions()
{
    const auto add = [this](int cfg, const QLatin1String& word, const QString& key, const QVariant& value) {
        return m_project.addCmd({{key::id_cfg, cfg}, {key::cmd, QString(word)}, {key, value}}, -1);
    };
    const int gone = m_project.addCfg(QStringLiteral("gone"), QString(), -1);
    const int second = m_project.addCfg(QStringLiteral("second"), QString(), -1);
    const int first = m_project.addCfg(QStringLiteral("first"), QString(), 0);
    const int lost = add(gone, cmd::stop, key::value, 0);
    const int target = add(second, cmd::delay, key::value, 3);
    add(first, cmd::jamp, key::to_cmd, target);
    add(first, cmd::jamp, key::to_cmd, QString::number(lost));
    add(first, cmd::execute, key::cfg, second);
    add(first, cmd::execute, key::cfg, gone);
    add(first, cmd::auto_detect, key::route,
        QStringLiteral("EF4017=%1| C2=x=%2||#no=1|EF=%3").arg(second).arg(gone).arg(first));
    add(first, cmd::counter, key::to_cmd, target);
    m_project.removeCfg(gone);
    const QString file = m_dir->file(QStringLiteral("a.prj"));
    QVERIFY(m_ctrl.save(file, m_project));
    QCOMPARE(m_ctrl.load(file, m_project), 0);

    const QStringList expected{"6", "-1", "1", "-1", "EF4017=1|C2=-1|EF=0", QString::number(target), "3"};
    const QList<QString> keys{key::to_cmd, key::to_cmd, key::cfg,  key::cfg,
                              key::route,  key::to_cmd, key::value};
    for (int i = 0; i < expected.size(); ++i)
        QCOMPARE(m_project.cmdAt(i)->param(keys.at(i)).toString(), expected.at(i));
    // A position is the id of the loaded object.
    QCOMPARE(m_project.cmdById(6)->cmd(), QString(cmd::delay));
    QCOMPARE(m_project.cfgName(1), QStringLiteral("second"));
}

void TestProjectFiles::brokenProjects_data()
{
    tableColumns<QByteArray>("bytes");
    tableRow("garbage", QByteArray("\x7F"
                                   "ELF\x02\x01\0\0\xFF\xFE",
                                   10));
    tableRow("unescaped quote", head + configuration("A\"B", "", {}) + tail);
    tableRow("NUL outside a text", QByteArray("{\0}", 3));
    tableRow("not UTF-8", head + configuration("\xE4\xF6", "", {}) + tail);
    tableRow("deep", QByteArray("{\"configurations\":") + QByteArray(1000 * 1000, '['));
    tableRow("100 MB of nothing", QByteArray(100 * 1000 * 1000, '\0'));
    tableRow("100 MB of values",
             "{\"configurations\":[0" + QByteArray(",0").repeated(50 * 1000 * 1000) + "]}");
    tableRow("100 MB of one text cut off",
             "{\"configurations\":[{\"name\":\"" + QByteArray(100 * 1000 * 1000, 'x'));
}

void TestProjectFiles::brokenProjects()
{
    QFETCH(QByteArray, bytes);
    const QString file = m_dir->write(QStringLiteral("a.prj"), bytes);
    m_project.addCfg(QStringLiteral("left over"), QString(), -1);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const long before = usage.ru_maxrss;
    QCOMPARE(m_ctrl.open(file, m_project), 2);
    QVERIFY(!m_ctrl.errorText().isEmpty());
    QVERIFY(!m_project.isOpen());
    QVERIFY(!m_project.isChanged());
    QCOMPARE(m_project.cfgList().size(), 0);
    QCOMPARE(m_project.addCfg(QStringLiteral("next"), QString(), -1), 0);
    getrusage(RUSAGE_SELF, &usage);
    QVERIFY2(usage.ru_maxrss - before < 600 * 1024, "kilobytes");
    if (bytes.size() > 10 * 1000 * 1000)
        return; // the lists go through the same reader
    TPrjListFile list;
    QCOMPARE(list.read(file), TPrjListFile::Failed);
    QVERIFY(!list.errorText().isEmpty());
    TPrjLists lists;
    QVERIFY(!lists.read(file));
}

void TestProjectFiles::emptyProject()
{
    QCOMPARE(m_ctrl.load(m_dir->write(QStringLiteral("a.prj"), ""), m_project), 0);
    QCOMPARE(m_project.cfgNames(), QStringList("Config"));
    QVERIFY(m_project.isOpen());
    QCOMPARE(m_ctrl.load(m_dir->file(QStringLiteral("absent.prj")), m_project), 1);
    QCOMPARE(m_ctrl.errorText(), QStringLiteral("No such file or directory"));
    QVERIFY(!m_project.isOpen());
    QCOMPARE(m_ctrl.load(m_dir->path(), m_project), 1);
}

void TestProjectFiles::template_()
{
    const QString file = m_dir->file(QStringLiteral("a.prj"));
    QVERIFY(writeNewProject(file));
    QCOMPARE(m_dir->read(QStringLiteral("a.prj")),
             QByteArray("{\n    \"version\": 1,\n    \"name\": \"\",\n    \"description\": \"\",\n"
                        "    \"configurations\":\n    [\n        {\n            \"name\": \"Config\",\n"
                        "            \"description\": \"\",\n            \"commands\":\n            [\n"
                        "            ]\n        }\n    ]\n}\n"));
    QCOMPARE(m_ctrl.open(file, m_project), 0);
    QCOMPARE(m_project.cfgNames(), QStringList("Config"));
    QVERIFY(writeEmptyList(file));
    QCOMPARE(m_dir->read(QStringLiteral("a.prj")),
             QByteArray("{\n    \"version\": 1,\n    \"list\":\n    [\n    ]\n}\n"));
}

void TestProjectFiles::savingKeepsLinksAndPermissions()
{
    const QString real = m_dir->write(QStringLiteral("real/a.prj"), "old");
    const auto mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    QVERIFY(QFile::setPermissions(real, mode));
    QVERIFY(QFile::link(QStringLiteral("real/a.prj"), m_dir->file(QStringLiteral("one"))));
    QVERIFY(QFile::link(QStringLiteral("one"), m_dir->file(QStringLiteral("two"))));
    QVERIFY(QFile::link(QStringLiteral("real/new.prj"), m_dir->file(QStringLiteral("open"))));
    QString error;
    QVERIFY(writeFileSafely(m_dir->file(QStringLiteral("two")), "new", error));
    QCOMPARE(m_dir->read(QStringLiteral("real/a.prj")), QByteArray("new"));
    QVERIFY(QFileInfo(m_dir->file(QStringLiteral("two"))).isSymLink());
    QVERIFY(QFileInfo(m_dir->file(QStringLiteral("one"))).isSymLink());
    QCOMPARE(QFile::permissions(real) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser), mode);
    QVERIFY(writeFileSafely(m_dir->file(QStringLiteral("open")), "made", error));
    QCOMPARE(m_dir->read(QStringLiteral("real/new.prj")), QByteArray("made"));
    QCOMPARE(QDir(m_dir->file(QStringLiteral("real"))).entryList(QDir::Files).size(), 2);
}

void TestProjectFiles::fullDiskLeavesOldFile()
{
    const QString file = m_dir->write(QStringLiteral("a.prj"), "old");
    m_project.addCfg(QString(9000, QLatin1Char('x')), QString(), -1);
    const int code = withFileSizeLimit(4096, [&] {
        return m_ctrl.save(file, m_project) ? 1 : m_ctrl.errorText().isEmpty() ? 2 : 0;
    });
    QCOMPARE(code, 0);
    QCOMPARE(m_dir->read(QStringLiteral("a.prj")), QByteArray("old"));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList("a.prj"));
    QVERIFY(m_project.isChanged());
}

void TestProjectFiles::unwritableTargets_data()
{
    tableColumns<QString>("file");
    tableRow("no such folder", QStringLiteral("/no such folder/a.prj"));
    tableRow("a folder", QDir::tempPath());
    tableRow("a device without room", QStringLiteral("/dev/full"));
}

void TestProjectFiles::unwritableTargets()
{
    QFETCH(QString, file);
    QVERIFY(!m_ctrl.save(file, m_project));
    QVERIFY(!m_ctrl.errorText().isEmpty());
    QVERIFY(!writeBytes(file, "x"));
    QVERIFY(!writeBytes(m_dir->file(QStringLiteral("nothing")), ""));
    QVERIFY(QFileInfo(QStringLiteral("/dev/full")).exists());
}

void TestProjectFiles::listByteForByte()
{
    TPrjListFile list;
    QCOMPARE(list.toBytes(), QByteArray("{\r    \"version\": 1,\r    \"list\":\r    [\r    ]\r}\r"));
    list.setItems({{0, true, "Flash", ""}, {1, false, "a \"b\"", "../x\\a.prj"}});
    QCOMPARE(list.toBytes(),
             QByteArray("{\r    \"version\": 1,\r    \"list\":\r    [\r"
                        "        {\"parent\": 0, \"expand\": 1, \"name\": \"Flash\", \"file\": \"\"},\r"
                        "        {\"parent\": 1, \"expand\": 0, \"name\": \"a \\\"b\\\"\", "
                        "\"file\": \"../x\\\\a.prj\"}\r    ]\r}\r"));
}

void TestProjectFiles::listReading_data()
{
    tableColumns<QByteArray, int, QString>("bytes", "result", "items");
    tableRow("empty", QByteArray(), int(TPrjListFile::Empty), "");
    tableRow("line feeds as well",
             QByteArray("{\n\"list\":\n[\n{\"parent\":0,\"expand\":2,\"name\":\"A\",\"file\":\"f\"}]}"),
             int(TPrjListFile::Ok), "0+A:f");
    tableRow("parents that are no earlier item go to the top",
             QByteArray("{\"list\":[{\"parent\":1,\"name\":\"A\"},{\"parent\":1,\"name\":\"B\"},"
                        "{\"parent\":-1,\"name\":\"C\"},{\"parent\":99,\"name\":\"D\"},"
                        "{\"parent\":\"2\",\"name\":\"E\"},7]}"),
             int(TPrjListFile::Ok), "0-A:,1-B:,0-C:,0-D:,2-E:,0-:");
}

void TestProjectFiles::listReading()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, result);
    QFETCH(QString, items);
    TPrjListFile list;
    QCOMPARE(int(list.read(m_dir->write(QStringLiteral("a.lst"), bytes))), result);
    QStringList read;
    for (const TPrjListItem& item : list.items()) {
        read.append(QStringLiteral("%1%2%3:%4")
                        .arg(QString::number(item.parent),
                             item.expand ? QStringLiteral("+") : QStringLiteral("-"), item.name, item.file));
    }
    QCOMPARE(read.join(QLatin1Char(',')), items);
    QCOMPARE(int(list.read(m_dir->file(QStringLiteral("absent")))), int(TPrjListFile::Failed));
    QVERIFY(list.items().isEmpty());
}

void TestProjectFiles::listIsWrittenOnlyWhenItDiffers()
{
    const QString file = m_dir->file(QStringLiteral("a.lst"));
    TPrjListFile list;
    list.setItems({{0, true, "A", "a.prj"}});
    QVERIFY(list.write(file));
    const QDateTime old = QDateTime::fromSecsSinceEpoch(1000000000);
    const auto age = [&] {
        QFile device(file);
        return device.open(QIODevice::ReadWrite) &&
               device.setFileTime(old, QFileDevice::FileModificationTime);
    };
    QVERIFY(age());
    QVERIFY(list.write(file));
    QCOMPARE(QFileInfo(file).lastModified(), old);
    list.setItems({{0, false, "A", "a.prj"}});
    QVERIFY(list.write(file));
    QVERIFY(QFileInfo(file).lastModified() > old);
}

void TestProjectFiles::listPath()
{
    appData().PathProjects = m_dir->file(QStringLiteral("projects"));
    const QString name = QStringLiteral("only-a-test.lst");
    const QString inProjects = m_dir->file(QStringLiteral("projects/") + name);
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
    QCOMPARE(TPrjListFile::path(name), inProjects);
    QVERIFY(writeEmptyList(beside));
    QCOMPARE(TPrjListFile::path(name), beside);
    m_dir->write(QStringLiteral("projects/") + name, "{}");
    QCOMPARE(TPrjListFile::path(name), inProjects);
    QCOMPARE(TPrjListFile::path(QStringLiteral("/x/y.lst")), QStringLiteral("/x/y.lst"));
    QVERIFY(QFile::remove(beside));
}

void TestProjectFiles::joiningAList_data()
{
    tableColumns<int, QString, bool, QString, QString, QByteArray>("mode", "file", "result", "stored",
                                                                   "onDisk", "content");
    const int add = int(TPrjFileMode::Add);
    const int create = int(TPrjFileMode::Create);
    const int paste = int(TPrjFileMode::Paste);
    tableRow("group", create, "", true, "", "", QByteArray());
    tableRow("new", create, "a", true, "a.prj", "list/a.prj", newProjectBytes());
    tableRow("paste", paste, "a.prj", true, "a.prj", "list/a.prj", QByteArray("pasted"));
    tableRow("an existing project is not emptied", create, "there", true, "there.prj", "list/there.prj",
             QByteArray("kept"));
    tableRow("nor overwritten", paste, "there", false, "there", "list/there.prj", QByteArray("kept"));
    tableRow("add makes nothing", add, "absent", true, "absent.prj", "list/absent.prj", QByteArray());
    tableRow("no such folder", create, "x/a", false, "x/a", "", QByteArray());
}

void TestProjectFiles::joiningAList()
{
    QFETCH(int, mode);
    QFETCH(QString, file);
    QFETCH(bool, result);
    m_dir->write(QStringLiteral("list/there.prj"), "kept");
    QString error;
    const QString folder = m_dir->file(QStringLiteral("list"));
    QCOMPARE(joinPrjList(folder, TPrjFileMode(mode), "pasted", file, error), result);
    QCOMPARE(error.isEmpty(), result);
    QTEST(file, "stored");
    QFETCH(QString, onDisk);
    QTEST(onDisk.isEmpty() ? QByteArray() : m_dir->read(onDisk), "content");
}

void TestProjectFiles::shippedLists()
{
    TPrjLists lists;
    QVERIFY(lists.read(QStringLiteral(VM_DATA_DIR "/vm.lpl")));
    QVERIFY(!lists.entries().isEmpty());
    const QDir projects(QStringLiteral(VM_DATA_DIR "/projects"));
    QSet<QString> listed;
    for (const TPrjListEntry& entry : lists.entries()) {
        TPrjListFile list;
        QVERIFY(!entry.name.isEmpty());
        QCOMPARE(list.read(projects.filePath(entry.file)), TPrjListFile::Ok);
        for (const TPrjListItem& item : list.items()) {
            QVERIFY2(item.file.isEmpty() || projects.exists(item.file), qPrintable(item.file));
            listed.insert(item.file);
        }
    }
    for (const QString& file : projects.entryList({QStringLiteral("*.prj")}, QDir::Files))
        QVERIFY2(listed.contains(file), qPrintable(file));
}

QTEST_GUILESS_MAIN(TestProjectFiles)
#include "test_project_files.moc"
