#include "core/TAppData.h"
#include "core/TCtrlProject.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "devices/lint/TLintFolder.h"
#include "link/TProg.h"

#include <QDirIterator>
#include <QProcess>
#include <QtTest>

namespace {

const QString dataDir = QStringLiteral(VM_DATA_DIR);
const QString devicesDir = dataDir + "/devices/";
const QByteArray mark = "# Made by velmarkion-catalogue";

QStringList filesUnder(const QString& folder, const QString& pattern)
{
    QStringList files;
    QDirIterator it(folder, {pattern}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << QDir(folder).relativeFilePath(it.next());
    files.sort();
    return files;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// A folder of one chip, with a line more in a list; without the list where the line is null.
void writeFolder(const QTemporaryDir& dir, const QString& list, const QByteArray& line)
{
    QMap<QString, QByteArray> files{{"devices.lst", "A=avr/ATmega8.dev\n"},
                                    {"types.lst", "avr_spi=2\n"},
                                    {"auto.lst", "# none\n"},
                                    {"avr/signature.lst", "1E9307=ATmega8\n"},
                                    {"avr/ATmega8.dev", bytesOf(devicesDir + "avr/ATmega8.dev")}};
    files[list] += line;
    for (auto it = files.begin(); it != files.end(); ++it) {
        if (it.key() != list || !line.isNull())
            write(dir.filePath(it.key()), it.value());
    }
}

bool generate(const QString& tables, const QString& devices)
{
    return QProcess::execute(QStringLiteral(VM_BUILD_DIR "/velmarkion-catalogue"), {tables, devices}) == 0;
}

} // namespace

/// The checker of descriptions, the shipped catalogue by its rules and by the tables it is made from, and the
/// sample projects, which must agree with it.
class TestDescriptions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shipped();
    void followsTables();
    void handWrittenStays();
    void brokenOnes_data();
    void brokenOnes();
    void brokenLists_data();
    void brokenLists();
    void consoleWord();
    void programmers();
    void projects_data();
    void projects();
};

void TestDescriptions::initTestCase()
{
    appData().PathDevices = devicesDir;
    appData().PathProgs = dataDir + "/progs";
    appData().progTypes.append("Simulator", "simulator.cfg");
    appData().progNames.append("Simulator", true, "sim", "Simulator");
}

void TestDescriptions::shipped()
{
    TLintFolder lint(devicesDir);
    QVERIFY(lint.run());
    QVERIFY2(lint.faults().isEmpty(), qPrintable("\n" + lint.faults().mid(0, 20).join('\n')));
    QCOMPARE(lint.descriptionCount(), filesUnder(devicesDir, "*.dev").size());
    QVERIFY(filesUnder(devicesDir + "spi-flash", "*.dev").size() > 400);
    QVERIFY(filesUnder(devicesDir + "avr", "*.dev").size() > 150);
    QVERIFY(filesUnder(devicesDir + "i2c-eeprom", "*.dev").size() > 40);
}

// The files that are shipped are those that the tables give, no more and no fewer.
void TestDescriptions::followsTables()
{
    QTemporaryDir dir;
    QVERIFY(generate(dataDir + "/chips", dir.path()));
    const QStringList made = filesUnder(dir.path(), "*");
    for (const QString& file : made)
        QVERIFY2(bytesOf(dir.filePath(file)) == bytesOf(devicesDir + file), qPrintable(file));
    for (const QString& file : filesUnder(devicesDir, "*")) {
        if (bytesOf(devicesDir + file).contains(mark))
            QVERIFY2(made.contains(file), qPrintable(file));
    }
}

void TestDescriptions::handWrittenStays()
{
    QTemporaryDir dir;
    write(dir.filePath("avr/mine.dev"), "mine");
    write(dir.filePath("avr/stale.dev"), mark + " from the tables in data/chips: change it there.\n");
    QVERIFY(generate(dataDir + "/chips", dir.path()));
    QCOMPARE(bytesOf(dir.filePath("avr/mine.dev")), QByteArray("mine"));
    QVERIFY(!QFile::exists(dir.filePath("avr/stale.dev")));
    write(dir.filePath("avr/ATmega8.dev"), "mine");
    QVERIFY(!generate(dataDir + "/chips", dir.path()));
    QCOMPARE(bytesOf(dir.filePath("avr/ATmega8.dev")), QByteArray("mine"));
    QVERIFY(!generate(dir.path(), dir.path()));
}

// What the rules must not overlook: a line of a good description is replaced, or one is put behind it.
void TestDescriptions::brokenOnes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char* file, const char* line, const char* replacement, const char* fault) {
        QTest::newRow(replacement) << QString(file) << QString(line) << QString(replacement)
                                   << QString(fault);
    };
    const char* nor = "spi-flash/W25Q64FV.dev";
    row(nor, "gui_type = s|Dev25", "gui_type = s| Dev25", "gui_type: no key of this family");
    row(nor, "cfg_hw = u|0", "cfg_hw = u|256", "cfg_hw: one byte");
    row(nor, "cfg_hw = u|0", "fuse_def = s|00", "cfg_hw: is missing");
    row(nor, "cfg_hw = u|0", "cfg_hw = s|0", "cfg_hw: type s");
    row(nor, "size = D|8388608", "size = D|33554432", "three address bytes");
    row(nor, "addr_begin = D|0", "addr_begin = D|8388609", "behind three address bytes");
    row(nor, "page_size = u|256", "page_size = u|384", "page_size: does not divide");
    row(nor, "page_size = u|256", "page_size = u|256\npage_size = u|64", "given twice");
    row(nor, "erase = s|D8|65536", "erase = s|C7|65536", "chip erase has no address");
    row(nor, "erase = s|D8|65536", "erase = s|20|4096", "a larger block is offered");
    row(nor, "erase_blocks = l|52|32768", "erase_blocks = l|52|24576", "blocks do not fill the chip");
    row(nor, "alg_erase = d|0", "alg_erase = d|1", "switches off");
    row(nor, "status_reg_def = s|000000", "status_reg_def = s|0000", "three bytes");
    row(nor, "security_reg_size = D|768", "security_reg_size = D|0", "alg_security_reg_read: does not fit");
    row(nor, "sfdp_reg_size = D|256", "sfdp_reg_size = D|512", "one address byte");
    row(nor, "signature = s|EF4017", "signature = s|EF4019", "not in signature.lst");
    const char* mega = "avr/ATmega328P.dev";
    row(mega, "flash_polling = b|1", "flash_polling = b|true", "flash_polling: the value");
    row(mega, "erase_delay = u|9", "erase_delay = u|255", "255 means polling");
    row(mega, "fuse_delay = u|5", "fuse_delay = u|0", "255 means polling");
    row(mega, "eeprom_size = D|1024", "eeprom_size = D|131072", "no power of two in reach");
    row(mega, "cfg_cmd_list = d|2", "cfg_cmd_list = d|3", "0, 1 or 2");
    row(mega, "osccal_def = s|00", "osccal_def = s|0", "no whole bytes");
    row("avr/ATmega1284P.dev", "alg_flash_read = d|1", "alg_flash_read = d|0", "does not fit");
    row("i2c-eeprom/24C16.dev", "addr_mask = b|000", "addr_mask = b|001", "share a place");
    row("i2c-eeprom/24C16.dev", "page_size = u|16", "page_size = u|4096", "page_size: does not divide");
    row("avr/auto.dev", "alg_ident = d|0", "", "alg_ident: is missing");
    const QString button = "fuse_cfg = l|    btn|62D9FF|21|Factory value|As the chip is shipped";
    const auto item = [&](const char* text, const char* fault) {
        row(mega, qPrintable(button), qPrintable(QString("fuse_cfg = l|") + text), fault);
    };
    item("chk|000001|-|e|-|text", "unknown tag chk");
    item("frm-", "frm- closes what is not open");
    item("hor+", "closes what is not open");
    item("tab+|text", "closes what is not open");
    item("tabs-", "tabs- closes what is not open");
    item("grp-|text", "fields behind grp-");
    item("lb|", "empty field");
    item("ckl|00000001|-|e|-|text", "not as long as the register");
    item("ckl|000001|-|e|-|text", "another control edits");
    item("ckl|000000|-|e|-|text", "empty mask");
    item("ckl|000001|-|x|-|text", "field 3 is neither e nor -");
    item("cbit|000000|text", "combo box holds choices");
    item("btn|62D9FF|21|text", "wrong number of fields");
    item("lb|text|more", "wrong number of fields");
    row(mega, "fuse_cfg = l|  grp-\n", "fuse_cfg = l|tab+|t\nfuse_cfg = l|tab-\nfuse_cfg = l|  grp-\n",
        "the form ends here");
    row(mega, "ckl|002000|i|e|a|", "ckl|002000|i|e|-|", "mark of danger");
    row(mega, "fuse_def = s|62D9FF", "fuse_def = s|6FD9F0", "not among the choices");
    row(mega, "cbit|000006|06 - 1.8 V", "cbit|000008|1.8 V", "outside its mask");
}

void TestDescriptions::brokenOnes()
{
    QFETCH(QString, file);
    QFETCH(QString, line);
    QFETCH(QString, replacement);
    QFETCH(QString, fault);
    QString text = QString::fromUtf8(bytesOf(devicesDir + file));
    const int at = text.indexOf(line);
    QVERIFY2(at >= 0, "the good description no longer has this line");
    QTemporaryDir dir;
    write(dir.filePath("broken.dev"), text.replace(at, line.size(), replacement).toUtf8());
    const TLintLists lists{{{"spi_flash", 1}, {"avr_spi", 2}, {"i2c_eeprom", 3}},
                           {"EF4017", "1E950F", "1E9705"}};
    const QStringList faults = lintDescription(dir.filePath("broken.dev"), !file.endsWith("auto.dev"), lists);
    const QStringList found = faults.filter(fault);
    QVERIFY2(!found.isEmpty(), qPrintable("\n" + faults.join('\n')));
    const int number = found.first().section(':', 1, 1).toInt();
    QVERIFY2(number >= 1 && number <= text.count('\n') + 1, qPrintable(found.first()));
}

void TestDescriptions::brokenLists_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char* name, const char* list, const char* line, const char* fault) {
        QTest::newRow(name) << QString(list) << QByteArray(line) << QString(fault);
    };
    row("nothing wrong", "devices.lst", "# a remark", "");
    row("entry without a file", "devices.lst", "B=avr/none.dev",
        "devices.lst:2: B: there is no file avr/none.dev");
    row("name twice", "devices.lst", "A=avr/ATmega8.dev", "devices.lst:2: A stands twice");
    row("name of a class", "devices.lst", "Prog=avr/ATmega8.dev", "devices.lst:2: Prog is no name");
    row("blank beside the sign", "devices.lst", "B = avr/ATmega8.dev", "devices.lst:2: a blank");
    row("no pair", "devices.lst", "ATmega8", "devices.lst:2: neither");
    row("family without a number", "types.lst", "avr=", "types.lst:2: nothing on one side");
    row("type without a number", "types.lst", "i2c_eeprom=x", "types.lst:2: i2c_eeprom: no number");
    row("number of another family", "types.lst", "avr=2", "types.lst:2: avr: another family");
    row("detection without a list", "auto.lst", "AVR=avr/ATmega8.dev", "auto.lst:2: not \"name=");
    row("signature twice", "avr/signature.lst", "1E9307=ATmega9",
        "signature.lst:2: 1E9307 stands twice, as ATmega8 and ATmega9");
    row("signature in lower case", "avr/signature.lst", "1e9308=ATmega9",
        "signature.lst:2: 1e9308: not bytes");
    row("file without an entry", "avr/other.dev", "", "other.dev:1: stands neither in devices.lst");
    row("list missing", "types.lst", nullptr, "types.lst:1: is missing");
}

void TestDescriptions::brokenLists()
{
    QFETCH(QString, list);
    QFETCH(QByteArray, line);
    QFETCH(QString, fault);
    QTemporaryDir dir;
    writeFolder(dir, list, line);
    TLintFolder lint(dir.path());
    QVERIFY(lint.run());
    const QString faults = lint.faults().join('\n');
    QVERIFY2(fault.isEmpty() ? faults.isEmpty() : faults.contains(fault), qPrintable(faults));
}

// The word of the console: what it prints is what the checker found, and its exit code tells the kind.
void TestDescriptions::consoleWord()
{
    QTemporaryDir dir;
    const auto lint = [&dir](const QString& folder, int code) {
        QProcess process;
        process.start(QStringLiteral(VM_BUILD_DIR "/velmarkion"), {"lint", dir.filePath(folder)});
        process.waitForFinished();
        QCOMPARE(process.exitCode(), code);
        const QByteArray out = process.readAllStandardOutput();
        const QString fault = dir.filePath("devices.lst:2: B: there is no file none.dev\n");
        QCOMPARE(QString::fromUtf8(out), code == 1 ? fault : QString());
        QCOMPARE(process.readAllStandardError().isEmpty(), code != 2);
    };
    writeFolder(dir, "devices.lst", "# a remark");
    lint(".", 0);
    writeFolder(dir, "devices.lst", "B=none.dev");
    lint(QString(), 1);
    lint("none", 2);
    lint("devices.lst", 2);
}

// Every programmer serves every family, and its frames cut no page in the middle.
void TestDescriptions::programmers()
{
    const QStringList models = filesUnder(dataDir + "/progs", "*.cfg");
    QVERIFY(!models.isEmpty());
    for (const QString& model : models) {
        const TProg prog(dataDir + "/progs/" + model);
        quint16 maxData = 0;
        prog.maxData(maxData);
        QVERIFY2(maxData > 0 && maxData % 16 == 0, qPrintable(model));
        for (const QString& file : filesUnder(devicesDir, "*.dev")) {
            const TData data = TDeviceList::readDescription(devicesDir + file);
            for (const QLatin1String& key : {key::page_size, key::flash_page_size}) {
                const int page = data.value(key).toInt();
                QVERIFY2(page == 0 || page % maxData == 0 || maxData % page == 0,
                         qPrintable(model + ": " + file));
            }
        }
        for (const char* section : {"SPI_FLASH", "AVR_SPI", "I2C_EEPROM"}) {
            bool isList = false;
            int min = 0;
            int max = 0;
            QVector<int> values;
            prog.clockParams(section, isList, min, max, values);
            const int clock = prog.clockDefault(section);
            QVERIFY2(clock > 0 && clock >= min && clock <= max, qPrintable(model + ": " + section));
            QVERIFY2(!isList || values.contains(clock), qPrintable(model + ": " + section));
        }
    }
}

void TestDescriptions::projects_data()
{
    QTest::addColumn<QString>("file");
    for (const QString& file : filesUnder(dataDir + "/projects", "*.prj"))
        QTest::newRow(qPrintable(file)) << dataDir + "/projects/" + file;
}

// A sample is written as the program writes it, every command of it fits its chip and the simulator, and
// its chips and files are there.
void TestDescriptions::projects()
{
    QFETCH(QString, file);
    TCtrlProject control;
    QCOMPARE(control.open(file, project()), 0);
    const QHash<QString, QString> chips = TDeviceList::deviceFiles();
    QList<int> invalid;
    bool isServed = true; // the program has the class of every chip
    for (int index = 0; project().cmdIdAt(index) >= 0; ++index) {
        const TDataCmd* command = project().cmdAt(index);
        const QString word = command->cmd();
        const auto value = [command](const QLatin1String& key) { return command->param(key).toString(); };
        if (!command->validDev() || !command->validParam())
            invalid << index;
        if (word == cmd::set_device) {
            QCOMPARE(value(key::file), chips.value(value(key::device)));
            isServed = isServed && command->family();
        }
        if (word.endsWith("file_write") || word.endsWith("file_verify") || word == cmd::calc_crc)
            QVERIFY2(QFile::exists(absFile(QFileInfo(file).path(), value(key::file))),
                     qPrintable(value(key::file)));
    }
    QTemporaryDir dir;
    const QString copy = dir.filePath("copy.prj");
    QVERIFY2(control.save(copy, project()), qPrintable(control.errorText()));
    QCOMPARE(bytesOf(copy), bytesOf(file));
    if (isServed)
        QCOMPARE(invalid, QList<int>());
}

QTEST_GUILESS_MAIN(TestDescriptions)
#include "test_descriptions.moc"
