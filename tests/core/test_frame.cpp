#include "core/TCmdCode.h"
#include "core/TLang.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

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
    void shippedLanguage();
    void translatedLanguage();
    void paths();
    void diagnosticLog();
    void safeWriting();
    void safeWritingToPipe();
    void catalogue();

private:
    const TestDir m_dir{TestDir::Empty};
};

void TestFrame::languageRules_data()
{
    tableColumns<QByteArray, QStringList>("content", "texts");
    tableRow("comments take no number", QByteArray("# c\na\n#\nb\n"), QStringList{"a", "b"});
    tableRow("empty lines do", QByteArray("a\n\nb\n"), QStringList{"a", "", "b"});
    tableRow("empty line at the end", QByteArray("a\n\n"), QStringList{"a", ""});
    tableRow("no line feed at the end", QByteArray("a\nb"), QStringList{"a", "b"});
    tableRow("blank before #", QByteArray(" # a\n"), QStringList{" # a"});
    tableRow("line breaks", QByteArray("a\\nb\\n\n"), QStringList{"a\nb\n"});
    tableRow("CR LF and BOM", QByteArray("\xEF\xBB\xBF# c\r\na\r\n"), QStringList{"a"});
    tableRow("UTF-8", QByteArray("\xC3\xA4\n"), QStringList{QStringLiteral("\u00e4")});
    tableRow("nothing", QByteArray(), QStringList());
}

void TestFrame::languageRules()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, texts);
    TLang lang;
    lang.load(m_dir.write("a.lng", "left over"));
    lang.load(m_dir.write("a.lng", content));
    QCOMPARE(lang.size(), texts.size());
    for (int i = 0; i < texts.size(); ++i)
        QCOMPARE(lang.text(i), texts.at(i));
    for (int outside : {texts.size(), -1, INT_MIN, INT_MAX})
        QCOMPARE(lang.text(outside), QStringLiteral("?????"));
}

// A line too many or too few would shift every text behind it, and a lost %1 would drop a name.
void TestFrame::shippedLanguage()
{
    TLang lang;
    lang.load(QStringLiteral(VM_DATA_DIR "/language/eng.lng"));
    QCOMPARE(lang.size(), 428);
    const QHash<int, QString> anchors{
        {0, "English"},         {61, ""},        {93, ""},
        {153, "Project lists"}, {226, ""},       {289, ""},
        {316, "Programmer:"},   {386, "FAILED"}, {420, "Wrong line in the HEX file"}};
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

// Numbers are the only tie between the files: a line too many shifts all texts behind it.
void TestFrame::translatedLanguage()
{
    TLang english;
    TLang russian;
    english.load(QStringLiteral(VM_DATA_DIR "/language/eng.lng"));
    russian.load(QStringLiteral(VM_DATA_DIR "/language/rus.lng"));
    QCOMPARE(russian.size(), english.size());
    const auto shape = [](const QString& text) {
        const int last = text.endsWith(QLatin1String("...")) ? 1 : text.endsWith(QLatin1Char(':')) ? 2 : 0;
        return QList<int>{text.isEmpty(), placeholders(text), int(text.count(QLatin1Char('\n'))),
                          int(text.count(QLatin1Char('&'))), last};
    };
    for (int id = 0; id < english.size(); ++id)
        QVERIFY2(shape(russian.text(id)) == shape(english.text(id)), qPrintable(QString::number(id)));
}

void TestFrame::paths()
{
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

void TestFrame::diagnosticLog()
{
    const QString log = fileInAppDir(QStringLiteral("log"));
    QFile::remove(log);
    logError(QStringLiteral("tag"), QStringLiteral("%1 \u00e4"));
    logError(QStringLiteral("tag"), QString());
    QFile file(log);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 3);
    const QRegularExpression stamp(
        QStringLiteral("^[0-9]{2}\\.[0-9]{2}\\.[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2} tag %1 \u00e4$"));
    QVERIFY(stamp.match(QString::fromUtf8(lines.at(0))).hasMatch());
    QVERIFY(lines.at(1).endsWith(" tag "));
    QFile::remove(log);
}

void TestFrame::safeWriting()
{
    const QString file = m_dir.file("user.prj");
    const QByteArray content("a\r\nb\n\0c", 7);
    QString error;
    QVERIFY(writeFileSafely(file, "longer than the next content", error));
    QVERIFY(writeFileSafely(file, content, error));
    QCOMPARE(m_dir.read("user.prj"), content);
    QCOMPARE(QDir(m_dir.path()).entryList({QStringLiteral("user*")}), QStringList{"user.prj"});

    QVERIFY(!writeFileSafely(m_dir.file("absent/user.prj"), content, error));
    QVERIFY(!error.isEmpty());
    QVERIFY(!writeFileSafely(m_dir.path(), content, error));
}

// A pipe or a device is written to and not replaced by a file of that name.
void TestFrame::safeWritingToPipe()
{
    const QByteArray pipe = QFile::encodeName(m_dir.file("pipe"));
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
}

QTEST_GUILESS_MAIN(TestFrame)
#include "test_frame.moc"
