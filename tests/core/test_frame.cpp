#include "core/TCmdCode.h"
#include "core/TLang.h"
#include "core/helpers.h"
#include "core/keys.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void writeFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray readFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The highest N of %N in a text when all of %1 to %N stand in it, -1 when one is missing.
int placeholders(const QString& text)
{
    QSet<int> found;
    QRegularExpressionMatchIterator it = QRegularExpression(QStringLiteral("%([0-9]+)")).globalMatch(text);
    while (it.hasNext())
        found.insert(it.next().captured(1).toInt());
    for (int i = 1; i <= found.size(); ++i) {
        if (!found.contains(i))
            return -1;
    }
    return found.size();
}

} // namespace

class TestFrame : public QObject
{
    Q_OBJECT

private slots:
    void languageRules_data();
    void languageRules();
    void languageLoadedAgain();
    void shippedLanguage();
    void paths_data();
    void paths();
    void folders();
    void relativePaths_data();
    void relativePaths();
    void encodedText();
    void diagnosticLog();
    void safeWriting();
    void safeWritingToPipe();
    void catalogue();
    void commandClass();

private:
    QTemporaryDir m_folder;
};

void TestFrame::languageRules_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("comments take no number") << QByteArray("# c\na\n#\nb\n") << QStringList{"a", "b"};
    QTest::newRow("empty lines do") << QByteArray("a\n\nb\n") << QStringList{"a", "", "b"};
    QTest::newRow("empty line at the end") << QByteArray("a\n\n") << QStringList{"a", ""};
    QTest::newRow("no line feed at the end") << QByteArray("a\nb") << QStringList{"a", "b"};
    QTest::newRow("blank before #") << QByteArray(" # a\n") << QStringList{" # a"};
    QTest::newRow("line breaks") << QByteArray("a\\nb\\n\n") << QStringList{"a\nb\n"};
    QTest::newRow("CR LF and BOM") << QByteArray("\xEF\xBB\xBF# c\r\na\r\n") << QStringList{"a"};
    QTest::newRow("UTF-8") << QByteArray("\xC3\xA4\n") << QStringList{QStringLiteral("\u00e4")};
    QTest::newRow("nothing") << QByteArray() << QStringList();
}

void TestFrame::languageRules()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, texts);
    const QString file = m_folder.filePath(QStringLiteral("a.lng"));
    writeFile(file, content);
    TLang lang;
    lang.load(file);
    QCOMPARE(lang.size(), texts.size());
    for (int i = 0; i < texts.size(); ++i)
        QCOMPARE(lang.text(i), texts.at(i));
    for (int outside : {texts.size(), -1, INT_MIN, INT_MAX})
        QCOMPARE(lang.text(outside), QStringLiteral("?????"));
}

void TestFrame::languageLoadedAgain()
{
    const QString file = m_folder.filePath(QStringLiteral("b.lng"));
    writeFile(file, "a\nb\n");
    TLang lang;
    lang.load(file);
    lang.load(file);
    QCOMPARE(lang.size(), 2);
    lang.load(m_folder.filePath(QStringLiteral("absent.lng")));
    QCOMPARE(lang.text(0), QStringLiteral("?????"));
}

// A line too many or too few would shift every text behind it, and a lost %1 would drop a name.
void TestFrame::shippedLanguage()
{
    TLang lang;
    lang.load(QStringLiteral(VM_DATA_DIR "/language/eng.lng"));
    QCOMPARE(lang.size(), 428);
    const QHash<int, QString> anchors{{0, "English"},
                                      {1, "International"},
                                      {56, "Quit"},
                                      {61, ""},
                                      {77, "Yes"},
                                      {78, "No"},
                                      {93, ""},
                                      {153, "Project lists"},
                                      {176, "Settings"},
                                      {211, "Default programmer"},
                                      {226, ""},
                                      {288, "Quit"},
                                      {289, ""},
                                      {316, "Programmer:"},
                                      {342, "Checksum"},
                                      {349, "Select family"},
                                      {382, "Clock, Hz:"},
                                      {386, "FAILED"},
                                      {391, "Done"},
                                      {420, "Wrong line in the HEX file"}};
    for (auto it = anchors.begin(); it != anchors.end(); ++it)
        QCOMPARE(lang.text(it.key()), it.value());

    const QSet<int> oneName{34,  84,  85,  97,  98,  108, 111, 112, 113, 114, 115, 116, 118, 121, 124,
                            125, 127, 128, 130, 132, 134, 135, 140, 142, 144, 145, 146, 147, 148, 150,
                            152, 165, 171, 199, 200, 385, 387, 388, 401, 402, 403, 417, 419, 423, 427};
    const QSet<int> twoNames{33, 99, 126};
    for (int id = 0; id < lang.size(); ++id) {
        const int expected = twoNames.contains(id) ? 2 : oneName.contains(id) ? 1 : 0;
        QVERIFY2(placeholders(lang.text(id)) == expected, qPrintable(QString::number(id)));
    }
}

void TestFrame::paths_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("folder");
    const QString here = QDir::currentPath();
    QTest::newRow("absolute") << "/base"
                              << "/x/y.prj"
                              << "/x/y.prj"
                              << "/x";
    QTest::newRow("relative") << "/base"
                              << "sub/y.prj"
                              << "/base/sub/y.prj"
                              << "/base/sub";
    QTest::newRow("relative base") << "base"
                                   << "y.prj" << here + "/base/y.prj" << here + "/base";
}

void TestFrame::paths()
{
    QFETCH(QString, base);
    QFETCH(QString, path);
    QTEST(absFile(base, path), "file");
    QTEST(dirOf(base, path), "folder");
}

void TestFrame::folders()
{
    QCOMPARE(dirOf(QStringLiteral("/a/b"), QString()), QStringLiteral("/a/b"));
    QCOMPARE(dirOf(QStringLiteral("b"), QString()), QDir::current().filePath(QStringLiteral("b")));
    QCOMPARE(absDir(QStringLiteral("/a/b/c.d")), QStringLiteral("/a/b"));
    QCOMPARE(fileInAppDir(QStringLiteral("ini")), QCoreApplication::applicationDirPath() + "/test_frame.ini");
    QVERIFY(desktopDir().endsWith(QLatin1Char('/')));
}

void TestFrame::relativePaths_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("relative");
    QTest::newRow("below") << "/a/b"
                           << "/a/b/c/d.prj"
                           << "c/d.prj";
    QTest::newRow("beside") << "/a/b"
                            << "/a/bc/d.prj"
                            << "../bc/d.prj";
    QTest::newRow("already relative") << "/a/b"
                                      << "c/d.prj"
                                      << "c/d.prj";
    // The way through the root holds the absolute form, which is then the shorter name.
    QTest::newRow("nothing in common") << "/a/b"
                                       << "/x/d.prj"
                                       << "/x/d.prj";
}

void TestFrame::relativePaths()
{
    QFETCH(QString, base);
    QFETCH(QString, path);
    QTEST(relToDir(base, path), "relative");
}

void TestFrame::encodedText()
{
    const QString text = QStringLiteral("one\n\"two\"\n\n|");
    const QString line = encodeText(text);
    QCOMPARE(line, QStringLiteral("one|n|wtwo|w|n|n|"));
    QCOMPARE(decodeText(line), text);
}

void TestFrame::diagnosticLog()
{
    const QString log = fileInAppDir(QStringLiteral("log"));
    QFile::remove(log);
    logError(QStringLiteral("tag"), QStringLiteral("%1 \u00e4"));
    logError(QStringLiteral("tag"), QString());
    const QList<QByteArray> lines = readFile(log).split('\n');
    QCOMPARE(lines.size(), 3);
    const QRegularExpression stamp(
        QStringLiteral("^[0-9]{2}\\.[0-9]{2}\\.[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2} tag %1 \u00e4$"));
    QVERIFY(stamp.match(QString::fromUtf8(lines.at(0))).hasMatch());
    QVERIFY(lines.at(1).endsWith(" tag "));
    QFile::remove(log);
}

void TestFrame::safeWriting()
{
    const QString file = m_folder.filePath(QStringLiteral("user.prj"));
    const QByteArray content("a\r\nb\n\0c", 7);
    QString error;
    QVERIFY(writeFileSafely(file, "longer than the next content", error));
    QVERIFY(writeFileSafely(file, content, error));
    QCOMPARE(readFile(file), content);
    QCOMPARE(QDir(m_folder.path()).entryList({QStringLiteral("user*")}), QStringList{"user.prj"});

    QVERIFY(!writeFileSafely(m_folder.filePath(QStringLiteral("absent/user.prj")), content, error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!writeFileSafely(m_folder.path(), content, error));
}

// A pipe or a device is written to and not replaced by a file of that name.
void TestFrame::safeWritingToPipe()
{
    const QByteArray pipe = QFile::encodeName(m_folder.filePath(QStringLiteral("pipe")));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    const int reader = open(pipe.constData(), O_RDONLY | O_NONBLOCK);
    QVERIFY(reader >= 0);
    QString error;
    QVERIFY(writeFileSafely(QFile::decodeName(pipe), "text", error));
    char buffer[8];
    QCOMPARE(read(reader, buffer, sizeof buffer), ssize_t(4));
    close(reader);
}

void TestFrame::catalogue()
{
    const TCmdCode code;
    QCOMPARE(code.count(), 71);
    const QHash<QString, QString> names{{cmd::jamp, "Jamp"},
                                        {cmd::calc_crc, "Calc CRC"},
                                        {cmd::set_vicc, "Set VIcc"},
                                        {cmd::erase_blocks, "Erase (blocks)"},
                                        {cmd::char_write, "Write (char)"},
                                        {cmd::data_read, "Read (data)"},
                                        {cmd::flash_file_verify, "Flash Verify (file)"},
                                        {cmd::eeprom_char_verify, "EEPROM Verify (char)"},
                                        {cmd::sfdp_reg_read, "SFDP Reg Read"}};
    for (auto it = names.begin(); it != names.end(); ++it)
        QCOMPARE(code.name(it.key()), it.value());
    for (const char* unknown : {"separator", "char_read", "flash_char_read", "write", ""})
        QCOMPARE(code.name(QLatin1String(unknown)), QString());
    QCOMPARE(code.count(), 71);
}

void TestFrame::commandClass()
{
    QCOMPARE(TCmdCode::toolsKeys().join(' '),
             QStringLiteral("set_prog execute delay counter jamp pause stop separator calc_crc process"));
    QCOMPARE(
        TCmdCode::progKeys().join(' '),
        QStringLiteral("set_device auto_detect reset set_io set_freq set_vcc set_vpp set_vicc set_vipp"));
    QVERIFY(TCmdCode::isTools(cmd::set_prog) && !TCmdCode::isProg(cmd::set_prog));
    QVERIFY(TCmdCode::isProg(cmd::set_device) && !TCmdCode::isTools(cmd::set_device));
    QVERIFY(!TCmdCode::isTools(cmd::ident) && !TCmdCode::isProg(cmd::ident));
}

QTEST_GUILESS_MAIN(TestFrame)
#include "test_frame.moc"
