#include "base/helpers.h"
#include "base/keys.h"
#include "core/files/TCtrlProject.h"
#include "core/files/TPrjListFile.h"
#include "core/files/TPrjLists.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QDir>
#include <QDirIterator>

#include <sys/stat.h>

namespace {

const char head[] = "{\n    \"version\": 1,\n    \"configurations\":\n    [\n";
const char tail[] = "\n    ]\n}\n";

/// Easier to read: an apostrophe stands for a quotation mark.
QByteArray quoted(QByteArray text)
{
    return text.replace('\'', '"');
}

QByteArray configuration(const QByteArray& name, const QByteArray& description,
                         const QByteArrayList& commands)
{
    QByteArrayList lines;
    for (const QByteArray& command : commands)
        lines.append("                {" + command + "}");
    return quoted("        {\n            'name': '" + name + "',\n            'description': '" +
                  description + "',\n            'commands':\n            [\n" + lines.join(",\n") +
                  "\n            ]\n        }");
}

} // namespace

class TestProjectFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { registerMetaTypes(); }
    void init() { m_project.reset(); }

    void savesByteForByte()
    {
        const auto row = [this](const QByteArray& loaded, const QByteArray& configurations) {
            QCOMPARE(m_ctrl.load(m_dir.write("a.prj", quoted(loaded)), m_project), 0);
            QCOMPARE(saved(), head + configurations + tail);
            // What was written reads and writes the same once more.
            QCOMPARE(m_ctrl.load(m_dir.file("saved.prj"), m_project), 0);
            QCOMPARE(saved(), head + configurations + tail);
        };
        row("{}", "");
        // Sorted parameters, checks as digits; unknown keys stay, reserved ones go.
        row("{'version': 7, 'name': 'x', "
            "'configurations':[{'name':'A','more':1,'description':'D','commands':["
            "{'zeta':'1','cmd':'delay','value':'5','status':'7','alpha':''},"
            "{'cmd':'stop','id_cmd':'9','id_cfg':'9','valid_dev':'1'}]}]}",
            configuration("A", "D",
                          {"'status': '1', 'cmd': 'delay', 'alpha': '', 'value': '5', 'zeta': '1'",
                           "'status': '0', 'cmd': 'stop'"}));
        // Values that somebody has typed by hand.
        row("\xEF\xBB\xBF{'configurations':[{'name':5,'commands':[{'status':true,'cmd':'counter','value':12,"
            "'big':4294967296,'part':1.5,'flag':true,'none':null,'raw':'a\tb'},7]},8]}",
            configuration("5", "",
                          {"'status': '1', 'cmd': 'counter', 'big': '4294967296', 'flag': 'true', "
                           "'none': '', 'part': '1.5', 'raw': 'a\\tb', 'value': '12'",
                           "'status': '0', 'cmd': ''"}) +
                ",\n" + configuration("", "", {}));
        // Only what must be escaped is.
        row("{'configurations':[{'name':'\\u00e4/\\'\\\\','description':'1\\n\\'2\\'\\r\\t3','commands':["
            "{'cmd':'process','file':'C:\\\\new \\'x\\' /\\u0007\\u007f&<%1'}]}]}",
            configuration("\xC3\xA4/\\'\\\\", "1|n|w2|w\\r\\t3",
                          {"'status': '0', 'cmd': 'process', 'file': 'C:\\\\new \\'x\\' /\\u0007\x7F&<%1'"}));
    }

    void shippedProjectsStayTheSame()
    {
        QDirIterator it(VM_DATA_DIR "/projects", {"*.prj"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile shipped(it.next());
            QVERIFY(shipped.open(QIODevice::ReadOnly));
            compareRow(it.fileName(), m_ctrl.open(it.filePath(), m_project), 0);
            QVERIFY(!m_project.isChanged());
            QCOMPARE(m_project.file(), it.fileInfo().absoluteFilePath());
            QCOMPARE(m_project.workPath(), it.fileInfo().absolutePath());
            for (int i = 0; i < m_project.cmdCount(); ++i)
                QCOMPARE(m_project.cmdIdAt(i), i);
            compareRow(it.fileName(), saved(), shipped.readAll());
        }
    }

    void writtenTextComesBack()
    {
        const QString texts[] = {"C:\\data\\new\\u0041.bin", " \t\r\n\f\b x ",
                                 QString::fromLatin1("a\0b\x1f\x01", 5),
                                 QString::fromUtf8("äß Ω 中 🙂 \u2028"), "\", \"cmd\": \"erase\"}, {"};
        for (const QString& text : texts) {
            m_project.reset();
            const int cfg = m_project.addCfg(text, "d", -1);
            m_project.addCmd({{key::id_cfg, cfg}, {key::cmd, text}, {text, text}}, -1);
            const QString file = m_dir.file("a.prj");
            QVERIFY(m_ctrl.save(file, m_project));
            QCOMPARE(m_ctrl.load(file, m_project), 0);
            QCOMPARE(m_project.cfgName(0), text);
            QCOMPARE(m_project.cmdAt(0)->cmd(), text);
            QCOMPARE(m_project.cmdAt(0)->param(text).toString(), text);
        }
    }

    void referencesBecomePositions()
    {
        const char* text = "{'configurations':[{'name':'second','commands':[{'cmd':'delay'}]},"
                           "{'name':'gone','commands':[{'cmd':'stop'}]},"
                           "{'name':'first','commands':[{'cmd':'jamp','to_cmd':'0'},"
                           "{'cmd':'jamp','to_cmd':'1'},{'cmd':'jamp','to_cmd':'x'},"
                           "{'cmd':'execute','cfg':'0'},{'cmd':'execute','cfg':'1'},"
                           "{'cmd':'counter','to_cmd':'1'},"
                           "{'cmd':'auto_detect','route':'EF4017=0| C2=x=1||#no=1|EF=2'}]}]}";
        QCOMPARE(m_ctrl.load(m_dir.write("a.prj", quoted(text)), m_project), 0);
        m_project.removeCfg(1);
        m_project.moveCfg(1, 0);
        const QByteArray cmd = "'status': '0', 'cmd': ";
        const QByteArray first = configuration(
            "first", "",
            {cmd + "'jamp', 'to_cmd': '7'", cmd + "'jamp', 'to_cmd': '-1'", cmd + "'jamp', 'to_cmd': '-1'",
             cmd + "'execute', 'cfg': '1'", cmd + "'execute', 'cfg': '-1'", cmd + "'counter', 'to_cmd': '1'",
             cmd + "'auto_detect', 'route': 'EF4017=1|C2=x=1|EF=0'"});
        QCOMPARE(saved(), head + first + ",\n" + configuration("second", "", {cmd + "'delay'"}) + tail);
    }

    void brokenProjects()
    {
        const auto row = [this](const QByteArray& bytes, qint64 size = 0) {
            const QString file = m_dir.write("a.prj", bytes);
            QVERIFY(size == 0 || QFile::resize(file, size));
            m_project.addCfg("left over", QString(), -1);
            QVERIFY2(m_ctrl.open(file, m_project) > 0, bytes.left(100).constData());
            QVERIFY(!m_ctrl.errorText().isEmpty() && !m_project.isOpen() && !m_project.isChanged());
            QCOMPARE(m_project.cfgList().size(), 0);
            QCOMPARE(m_project.addCfg("next", QString(), -1), 0);
            TPrjListFile list;
            QCOMPARE(list.read(file), TPrjListFile::Failed);
            QVERIFY(!list.errorText().isEmpty() && !TPrjLists().read(file));
        };
        row(QByteArray("ELF\x7F\x02\x01\0\0\xFF\xFE", 10));
        row(head + configuration("A'B", "", {}) + tail);
        row(QByteArray("{\0}", 3));
        row(head + configuration("\xE4\xF6", "", {}) + tail);
        row("[1]");
        row(quoted("{'configurations':") + QByteArray(1000 * 1000, '['));
        // More values than fit into memory, a text that does not end, a file larger than any project.
        row(quoted("{'configurations':[0") + QByteArray(",0").repeated(5 * 1000 * 1000) + "]}");
        row(quoted("{'configurations':[{'name':'") + QByteArray(20 * 1000 * 1000, 'x'));
        row("{}", 300 * 1000 * 1000);
    }

    void emptyAndNewProjects()
    {
        const QString file = m_dir.write("a.prj", "");
        QCOMPARE(m_ctrl.load(file, m_project), 0);
        QCOMPARE(m_project.cfgNames(), QStringList("Config"));
        QVERIFY(m_project.isOpen());
        QCOMPARE(m_ctrl.load(m_dir.file("absent.prj"), m_project), 1);
        QCOMPARE(m_ctrl.errorText(), QString("No such file or directory"));
        QVERIFY(!m_project.isOpen());
        QCOMPARE(m_ctrl.load(m_dir.path(), m_project), 1);

        QVERIFY(writeNewProject(file));
        QCOMPARE(
            m_dir.read("a.prj"),
            quoted("{\n    'version': 1,\n    'name': '',\n    'description': '',\n    'configurations':\n"
                   "    [\n        {\n            'name': 'Config',\n            'description': '',\n"
                   "            'commands':\n            [\n            ]\n        }\n    ]\n}\n"));
        QCOMPARE(m_ctrl.open(file, m_project), 0);
        QCOMPARE(m_project.cfgNames(), QStringList("Config"));
        QVERIFY(writeEmptyList(file));
        QCOMPARE(m_dir.read("a.prj"), quoted("{\n    'version': 1,\n    'list':\n    [\n    ]\n}\n"));
    }

    void unwritableTargets()
    {
        m_project.setChanged();
        for (const QString& file : {m_dir.file("absent/a.prj"), m_dir.path()}) {
            QVERIFY(!m_ctrl.save(file, m_project) && !m_ctrl.errorText().isEmpty());
            QVERIFY(!writeBytes(file, "x"));
        }
        QVERIFY(m_project.isChanged() && !writeBytes(m_dir.file("nothing"), ""));
    }

    void listByteForByte()
    {
        TPrjListFile list;
        QCOMPARE(list.toBytes(), QByteArray("{\r    \"version\": 1,\r    \"list\":\r    [\r    ]\r}\r"));
        list.setItems({{0, true, "Flash", ""}, {1, false, "a \"b\"", "../x\\a.prj"}});
        QCOMPARE(list.toBytes(),
                 quoted("{\r    'version': 1,\r    'list':\r    [\r"
                        "        {'parent': 0, 'expand': 1, 'name': 'Flash', 'file': ''},\r"
                        "        {'parent': 1, 'expand': 0, 'name': 'a \\'b\\'', 'file': '../x\\\\a.prj'}\r"
                        "    ]\r}\r"));
    }

    void listReading()
    {
        const auto row = [this](const QByteArray& bytes, int result, const QString& items) {
            TPrjListFile list;
            QCOMPARE(int(list.read(m_dir.write("a.lst", quoted(bytes)))), result);
            QStringList read;
            for (const TPrjListItem& item : list.items())
                read += QString::number(item.parent) + (item.expand ? '+' : '-') + item.name + item.file;
            QCOMPARE(read.join(','), items);
            QCOMPARE(int(list.read(m_dir.file("absent"))), int(TPrjListFile::Failed));
            QVERIFY(list.items().isEmpty());
        };
        row("", TPrjListFile::Empty, "");
        // Nothing that a list may be written over.
        row(newProjectBytes(), TPrjListFile::Failed, "");
        row("{'version':1,'list':{}}", TPrjListFile::Failed, "");
        row("{\n'list':\n[\n{'parent':0,'expand':2,'name':'A','file':'f'}]}", TPrjListFile::Ok, "0+Af");
        // Parents that are no earlier item go to the top.
        row("{'list':[{'parent':1,'name':'A'},{'parent':1,'name':'B'},{'parent':-1,'name':'C'},"
            "{'parent':99,'name':'D'},{'parent':'2','name':'E'},7]}",
            TPrjListFile::Ok, "0-A,1-B,0-C,0-D,2-E,0-");
    }

    // What the program does not know, and the versions of others.
    void listsKeepOtherKeys()
    {
        const QByteArray others = "'a': [1,'\xC3\xA4',{'b':null}], 'z': 1.5";
        const QByteArray top = "{\n    'version': 2,\n    'made by': 'x',\n    'list':\n    [\n";
        const QByteArray first = quoted(
            top + "        {'parent': 0, 'expand': 0, 'name': 'A', 'file': 'f', " + others + "}\n    ]\n}\n");
        const QString file = m_dir.write("a.lst", first);
        TPrjListFile list;
        QCOMPARE(list.read(file), TPrjListFile::Ok);
        QCOMPARE(list.toBytes().replace('\r', '\n'), first);
        const QByteArray second =
            quoted(top + "        {'name': 'A', 'file': 'f', " + others + "}\n    ]\n}\n");
        TPrjLists lists;
        QVERIFY(lists.read(m_dir.write("a.lpl", second)));
        QCOMPARE(lists.toBytes(), second);
        // Its relative names, from another folder.
        list.changeFolder(m_dir.path(), m_dir.file("sub"));
        QCOMPARE(list.items().first().file, QString("../f"));
    }

    void foreignWrites()
    {
        const QString file = m_dir.write("a.prj", newProjectBytes());
        TPrjListFile list;
        QVERIFY(!m_project.isFileOutdated() && !list.isOutdated());
        const auto write = [&] { return m_ctrl.save(file, m_project) && list.write(m_dir.file("b.lst")); };
        QVERIFY(m_ctrl.open(file, m_project) == 0 && write());
        for (const QByteArray& theirs : {QByteArray("{}"), m_dir.read("a.prj").replace("Config", "confiG")}) {
            QVERIFY(!m_project.isFileOutdated() && !list.isOutdated());
            m_dir.write("a.prj", theirs);
            m_dir.write("b.lst", theirs);
            QVERIFY(m_project.isFileOutdated() && list.isOutdated());
            QVERIFY(write());
        }
        // Touched, or gone, is nothing to lose.
        m_dir.write("a.prj", m_dir.read("a.prj"));
        QVERIFY(!m_project.isFileOutdated() && QFile::remove(file) && !m_project.isFileOutdated());
        m_dir.write("a.prj", "{}");
        m_project.clear();
        QVERIFY(!m_project.isFileOutdated());
    }

    // Only a change that is in the file is no change any more.
    void changesDuringASave()
    {
        QCOMPARE(m_ctrl.open(m_dir.write("a.prj", ""), m_project), 0);
        m_project.setChanged();
        const quint64 snapshot = m_project.revision();
        m_project.setCfgName(0, "later");
        m_project.setStored(snapshot, {});
        QVERIFY(m_project.isChanged());
        QVERIFY(m_ctrl.save(m_dir.file("other.prj"), m_project) && m_project.isChanged());
        QVERIFY(m_ctrl.saveCopy(m_dir.file("a.prj"), m_project) && m_project.isChanged());
        QVERIFY(m_ctrl.save(m_dir.file("a.prj"), m_project) && !m_project.isChanged());
    }

    // Data files are looked for from the project's folder; what else is named file is not.
    void copyLeadsToTheSameData()
    {
        const QByteArray commands = "{'configurations':[{'commands':[{'cmd':'file_read','file':'%1x.hex'},"
                                    "{'cmd':'calc_crc','file':'%1d/x'},{'cmd':'file_write','file':''},"
                                    "{'cmd':'file_write','file':'/x'},{'cmd':'process','file':'x y'},"
                                    "{'cmd':'set_device','file':'x.dev'}]}]}";
        const auto project = [&](const char* up) { return quoted(QByteArray(commands).replace("%1", up)); };
        QDir(m_dir.path()).mkdir("far");
        QCOMPARE(m_ctrl.load(m_dir.write("a.prj", project("")), m_project), 0);
        QVERIFY(m_ctrl.saveCopy(m_dir.file("far/a.prj"), m_project));
        QCOMPARE(m_ctrl.load(m_dir.write("a.prj", project("../")), m_project), 0);
        QCOMPARE(m_dir.read("far/a.prj"), saved());
    }

    void listIsWrittenOnlyWhenItDiffers()
    {
        const QString file = m_dir.file("a.lst");
        const auto writtenTo = [&](bool expand) {
            TPrjListFile list;
            list.setItems({{0, expand, "A", "a.prj"}});
            struct stat info = {};
            return list.write(file) && stat(QFile::encodeName(file).constData(), &info) == 0 ? info.st_ino
                                                                                             : 0;
        };
        const ino_t first = writtenTo(true);
        QCOMPARE(writtenTo(true), first);
        QVERIFY(writtenTo(false) != first);
    }

    void listPath()
    {
        appData().PathProjects = m_dir.file("projects");
        const QString name = "only-a-test.lst";
        const QString inProjects = m_dir.file("projects/" + name);
        const QString beside = QCoreApplication::applicationDirPath() + '/' + name;
        QCOMPARE(TPrjListFile::path(name), inProjects);
        QVERIFY(writeEmptyList(beside));
        QCOMPARE(TPrjListFile::path(name), beside);
        m_dir.write("projects/" + name, "{}");
        QCOMPARE(TPrjListFile::path(name), inProjects);
        QVERIFY(QFile::remove(beside));
    }

    void joiningAList()
    {
        const QString folder = m_dir.file("list");
        m_dir.write("list/there.prj", "kept");
        const auto row = [&](TPrjFileMode mode, QString file, bool result, const QString& stored,
                             const QString& onDisk, const QByteArray& content) {
            QString error;
            compareRow(onDisk, joinPrjList(folder, mode, "pasted", file, error), result);
            compareRow(onDisk, error.isEmpty(), result);
            compareRow(onDisk, file, stored);
            compareRow(onDisk, m_dir.read(onDisk), content);
        };
        row(TPrjFileMode::Create, "", true, "", "list/.prj", "");
        row(TPrjFileMode::Create, "a", true, "a.prj", "list/a.prj", newProjectBytes());
        row(TPrjFileMode::Paste, "b.prj", true, "b.prj", "list/b.prj", "pasted");
        // An existing project is neither emptied nor overwritten.
        row(TPrjFileMode::Create, "there", true, "there.prj", "list/there.prj", "kept");
        row(TPrjFileMode::Paste, "there", false, "there", "list/there.prj", "kept");
        row(TPrjFileMode::Add, "absent", true, "absent.prj", "list/absent.prj", "");
        row(TPrjFileMode::Create, "x/a", false, "x/a", "list/x/a.prj", "");
    }

    void shippedLists()
    {
        TPrjLists lists;
        QVERIFY(lists.read(VM_DATA_DIR "/vm.lpl") && !lists.entries().isEmpty());
        const QDir projects(QStringLiteral(VM_DATA_DIR "/projects"));
        QSet<QString> listed;
        for (const TPrjListEntry& entry : lists.entries()) {
            TPrjListFile list;
            QVERIFY(!entry.name.isEmpty() && list.read(projects.filePath(entry.file)) == TPrjListFile::Ok);
            for (const TPrjListItem& item : list.items()) {
                QVERIFY2(item.file.isEmpty() || projects.exists(item.file), qPrintable(item.file));
                listed.insert(item.file);
            }
        }
        for (const QString& file : projects.entryList({"*.prj"}, QDir::Files))
            QVERIFY2(listed.contains(file), qPrintable(file));
    }

private:
    QByteArray saved()
    {
        return m_ctrl.save(m_dir.file("saved.prj"), m_project) ? m_dir.read("saved.prj")
                                                               : m_ctrl.errorText().toUtf8();
    }

    const TestDir m_dir{TestDir::Empty};
    TDataPrj m_project;
    TCtrlProject m_ctrl;
};

QTEST_GUILESS_MAIN(TestProjectFiles)
#include "test_project_files.moc"
