#include "base/TCmdCode.h"
#include "base/helpers.h"
#include "support/TestDir.h"
#include "support/namedTexts.h"
#include "support/tables.h"

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// The highest N of %N in a text when all of %1 to %N stand in it, -1 when one is missing.
int placeholders(QString text)
{
    int highest = 0;
    while (text.contains('%' + QString::number(highest + 1)))
        text.remove('%' + QString::number(++highest));
    return text.contains(QRegularExpression("%[0-9]")) ? -1 : highest;
}

void allow(const QString& file, int rights)
{
    QFile::setPermissions(file, QFile::Permissions(QFlag(rights)));
}

/// Calls fn in a child process of a user without rights, whose disk takes no file of more than 4096 bytes.
bool inNarrowChild(const std::function<bool()>& fn)
{
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &limit);
        constexpr uid_t nobody = 65534;
        _exit((geteuid() == 0 && setuid(nobody) != 0) || !fn());
    }
    int status = -1;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

class TestFrame : public QObject
{
    Q_OBJECT

private slots:
    void languageRules()
    {
        const auto row = [this](const QByteArray& content, const QStringList& texts) {
            TLang lang;
            lang.load(m_dir.write("a.lng", "left over"));
            lang.load(m_dir.write("a.lng", content));
            QCOMPARE(lang.size(), texts.size());
            for (int i = 0; i < texts.size(); ++i)
                compareRow(content, lang.text(Text(i)), texts.at(i));
            for (int outside : {int(texts.size()), -1, INT_MIN, INT_MAX})
                compareRow(content, lang.text(Text(outside)), QString("?????"));
        };
        row("# comments take no number\na\n#\nb\n", {"a", "b"});
        row("a\n\nb\n", {"a", "", "b"});
        row("a\n\n", {"a", ""});
        row("a\nb", {"a", "b"});
        row(" # blank\n", {" # blank"});
        row("line\\nbreaks\\n\n", {"line\nbreaks\n"});
        row("\xEF\xBB\xBF# CR LF and BOM\r\na\r\n", {"a"});
        row("\xC3\xA4\n", {"\u00e4"});
        row("", {});
    }

    // Numbers are the only tie between the program and the files: a line too many or too few would shift
    // every text behind it, and a lost %1 would drop a name.
    void shippedLanguages()
    {
        TLang english;
        TLang russian;
        english.load(VM_DATA_DIR "/language/eng.lng");
        russian.load(VM_DATA_DIR "/language/rus.lng");
        QCOMPARE(english.text(Text::TitleLists), QString("Project lists"));
        QCOMPARE(english.text(Text::HexWrongLine), QString("Wrong line in the HEX file"));
        const auto shape = [](const QString& text) {
            return QList<int>{text.isEmpty(),       placeholders(text),   int(text.count('\n')),
                              int(text.count('&')), text.endsWith("..."), text.endsWith(':')};
        };
        int least = 0;
        for (const NamedText& row : namedTexts) {
            compareRow(row.name, int(row.text) >= least, true);
            least = int(row.text) + 1;
            compareRow(row.name, english.text(row.text).isEmpty(), false);
            compareRow(row.name, placeholders(english.text(row.text)), row.places);
            compareRow(row.name, shape(russian.text(row.text)), shape(english.text(row.text)));
        }
        QCOMPARE(english.size(), least);
        QCOMPARE(russian.size(), least);
    }

    void paths()
    {
        m_dir.write("same", "x");
        QFile::link("same", m_dir.file("link"));
        QVERIFY(isSameFile(m_dir.file("link"), m_dir.file("./same")) && isSameFile("/no/a", "/no/x/../a"));
        QVERIFY(!isSameFile("/no/a", "/no/b") && !isSameFile(m_dir.file("same"), m_dir.file("other")));
        QCOMPARE(absFile("/base", "/x/y.prj"), QString("/x/y.prj"));
        QCOMPARE(absFile("base", "sub/y.prj"), QDir::currentPath() + "/base/sub/y.prj");
        QCOMPARE(dirOf("/base", "sub/y.prj"), QString("/base/sub"));
        QCOMPARE(dirOf("/a/b", QString()), QString("/a/b"));
        QCOMPARE(relToDir("/a/b", "/a/b/c/d.prj"), QString("c/d.prj"));
        QCOMPARE(relToDir("/a/b", "/a/bc/d.prj"), QString("../bc/d.prj"));
        QCOMPARE(relToDir("/a/b", "c/d.prj"), QString("c/d.prj"));
        // The way through the root holds the absolute form, which is then the shorter name.
        QCOMPARE(relToDir("/a/b", "/x/d.prj"), QString("/x/d.prj"));
        const QString text("one\n\"two\"\n\n|");
        QCOMPARE(encodeText(text), QString("one|n|wtwo|w|n|n|"));
        QCOMPARE(decodeText(encodeText(text)), text);
    }

    void diagnosticLog()
    {
        QFile file(fileInAppDir("log"));
        file.remove();
        logError("tag", "%1 \u00e4");
        logError("tag", {});
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString stamp("[0-9]{2}\\.[0-9]{2}\\.[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2}");
        const QRegularExpression lines('^' + stamp + " tag %1 \u00e4\n" + stamp + " tag \n$");
        QVERIFY(lines.match(QString::fromUtf8(file.readAll())).hasMatch());
    }

    void safeWriting()
    {
        const QString real = m_dir.write("real/a.prj", "longer than the next content");
        const auto mode = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        QVERIFY(QFile::setPermissions(real, mode));
        QVERIFY(QFile::link("real/a.prj", m_dir.file("one")));
        QVERIFY(QFile::link("one", m_dir.file("two")));
        QVERIFY(QFile::link("real/new.prj", m_dir.file("to new")));
        const QByteArray content("a\r\nb\n\0c", 7);
        QString error;
        QVERIFY(writeFileSafely(m_dir.file("two"), content, error));
        QCOMPARE(m_dir.read("real/a.prj"), content);
        for (const char* link : {"one", "two"})
            QVERIFY(QFileInfo(m_dir.file(link)).isSymLink());
        QCOMPARE(QFile::permissions(real) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser), mode);
        QVERIFY(writeFileSafely(m_dir.file("to new"), "made", error));
        QCOMPARE(m_dir.read("real/new.prj"), QByteArray("made"));
        QCOMPARE(QDir(m_dir.file("real")).entryList(QDir::Files), QStringList({"a.prj", "new.prj"}));
        for (const QString& wrong : {m_dir.file("absent/a.prj"), m_dir.path()}) {
            error.clear();
            QVERIFY2(!writeFileSafely(wrong, content, error) && !error.isEmpty(), qPrintable(wrong));
        }
    }

    void fullDiskLeavesOldFile()
    {
        allow(m_dir.path(), 0x7777);
        // A folder that takes a second file, and one that does not: there the old file is written to.
        for (const QString& folder : {QStringLiteral("open"), QStringLiteral("locked")}) {
            const QString name = folder + "/a.prj";
            allow(m_dir.write(name, "old"), 0x6666);
            allow(m_dir.file(folder), folder == "open" ? 0x7777 : 0x5555);
            // By its own name and by those of links, which say nothing about the folder.
            QVERIFY(QFile::link(name, m_dir.file("to " + folder)));
            QVERIFY(QFile::link("to " + folder, m_dir.file("on to " + folder)));
            for (const QString& way : {QString(), QString("to "), QString("on to ")}) {
                const QString file = m_dir.file(way.isEmpty() ? name : way + folder);
                QString error;
                QVERIFY(inNarrowChild([&] { return !writeFileSafely(file, QByteArray(9000, 'x'), error); }));
                QCOMPARE(m_dir.read(name), QByteArray("old"));
                QVERIFY(inNarrowChild([&] { return writeFileSafely(file, "other", error); }));
                QCOMPARE(m_dir.read(name), QByteArray("other"));
                QVERIFY(inNarrowChild([&] { return writeFileSafely(file, "old", error); }));
            }
            QCOMPARE(QDir(m_dir.file(folder)).entryList(QDir::Files), QStringList("a.prj"));
            allow(m_dir.file(folder), 0x7777);
        }
    }

    // A pipe or a device is written to and not replaced by a file of that name.
    void writesIntoPipe()
    {
        const QByteArray pipe = QFile::encodeName(m_dir.file("pipe"));
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        const int reader = open(pipe.constData(), O_RDONLY | O_NONBLOCK);
        QString error;
        QVERIFY(writeFileSafely(QFile::decodeName(pipe), "text", error));
        char buffer[8];
        QCOMPARE(read(reader, buffer, sizeof buffer), ssize_t(4));
        close(reader);
        // By a user who could not put a file in its place.
        QVERIFY(inNarrowChild([&] { return !writeFileSafely("/dev/full", "text", error); }));
    }

    void catalogue()
    {
        const TCmdCode code;
        QCOMPARE(code.count(), 71);
        QStringList names;
        for (const char* word : {"jamp", "calc_crc", "set_vicc", "erase_blocks", "data_read",
                                 "eeprom_file_verify", "separator", "flash_char_read"})
            names += code.name(word);
        QCOMPARE(names.join('|'),
                 QString("Jamp|Calc CRC|Set VIcc|Erase (blocks)|Read (data)|EEPROM Verify (file)||"));
    }

private:
    const TestDir m_dir{TestDir::Empty};
};

QTEST_GUILESS_MAIN(TestFrame)
#include "test_frame.moc"
