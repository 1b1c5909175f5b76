#include "base/helpers.h"
#include "base/keys.h"
#include "core/files/TCtrlProject.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "devices/lint/TLintFolder.h"
#include "devices/shared/description.h"
#include "link/lists/TProg.h"
#include "settings/TAppData.h"

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
    void initTestCase()
    {
        appData().PathDevices = devicesDir;
        appData().PathProgs = dataDir + "/progs";
        appData().progTypes.append("Simulator", "simulator.cfg");
        appData().progNames.append("Simulator", true, "sim", "Simulator");
    }

    void shipped()
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
    void followsTables()
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

    void handWrittenStays()
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
        for (const QString& file : filesUnder(dataDir + "/chips", "*"))
            write(dir.filePath(file), bytesOf(dataDir + "/chips/" + file).replace("\tn25q\t", "\tn52q\t"));
        QVERIFY(!generate(dir.path(), dir.path() + "/new")); // no form of this name
    }

    // What the rules must not overlook: a line of a good description is replaced, or one is put behind it.
    void brokenOnes()
    {
        const char* nor = "spi-flash/W25Q64FV.dev";
        breaks(nor, "gui_type = s| Dev25", "gui_type: no key of this family");
        breaks(nor, "cfg_hw = u|256", "cfg_hw: one byte");
        breaks(nor, "fuse_def = s|00", "cfg_hw: is missing", "cfg_hw = u|0");
        breaks(nor, "cfg_hw = s|0", "cfg_hw: type s");
        breaks(nor, "size = D|33554432", "three address bytes");
        breaks(nor, "addr_begin = D|4096", "addr_begin: ends behind the chip");
        breaks(nor, "page_size = u|512", "page_size: more than 256 bytes");
        breaks(nor, "page_size = u|384", "page_size: does not divide");
        breaks(nor, "page_size = u|256\npage_size = u|64", "given twice", "page_size = u|256");
        breaks(nor, "erase = s|C7|65536", "chip erase has no address");
        breaks(nor, "erase = s|20|4096", "a larger block is offered");
        breaks(nor, "erase_blocks = l|52|24576", "blocks do not fill the chip", "erase_blocks = l|52|32768");
        breaks(nor, "alg_erase = d|1", "alg_erase: no such algorithm");
        breaks(nor, "alg_flash_write = d|1", "switches off");
        breaks(nor, "alg_unique_id_read = d|2", "alg_unique_id_read: no such algorithm");
        breaks(nor, "status_reg_def = s|0000", "as many bytes as registers");
        breaks(nor, "reset = b|0\nreset_pol = b|1\nstatus_reg_count = u|4", "1 to 3",
               "status_reg_count = u|3");
        breaks(nor, "cfg_hw = u|0\nwarning = l|", "warning: the value");
        breaks(nor, "security_reg_size = D|0", "alg_security_reg_read: does not fit");
        breaks(nor, "sfdp_reg_size = D|512", "one address byte");
        breaks(nor, "signature = s|EF4019", "not in signature.lst");
        const char* mega = "avr/ATmega328P.dev";
        breaks(mega, "flash_polling = b|true", "flash_polling: the value");
        for (const QString word : {"alg_ident", "alg_erase", "alg_eeprom_read", "alg_eeprom_write",
                                   "alg_osccal_read", "alg_lock_write"})
            breaks(mega, word + " = d|2", word + ": no such algorithm");
        breaks(mega, "alg_ident = d|1", "alg_ident: no such algorithm");
        breaks(mega, "eeprom_addr_begin = D|16", "eeprom_addr_begin: ends behind the chip");
        breaks(mega, "erase_delay = u|255", "255 means polling");
        breaks(mega, "fuse_delay = u|0", "255 means polling");
        breaks(mega, "eeprom_size = D|131072", "no power of two in reach");
        breaks(mega, "cfg_cmd_list = d|3", "0, 1 or 2");
        breaks(mega, "osccal_def = s|0", "no whole bytes");
        breaks("avr/ATmega1284P.dev", "alg_flash_read = d|0", "does not fit");
        breaks("i2c-eeprom/24C16.dev", "addr_mask = b|001", "share a place");
        breaks("i2c-eeprom/24C16.dev", "alg_read = d|1", "alg_read: no such algorithm");
        breaks("i2c-eeprom/24C16.dev", "addr_begin = D|16", "addr_begin: ends behind the chip");
        breaks("i2c-eeprom/24LC1026.dev", "read_block = D|131072", "read_block: does not divide");
        breaks("i2c-eeprom/24C16.dev", "page_size = u|4096", "page_size: does not divide");
        breaks("avr/auto.dev", "", "alg_ident: is missing", "alg_ident = d|0");
        const QString button = "fuse_cfg = l|    btn|62D9FF|21|Factory value|As the chip is shipped";
        const auto item = [&](const QString& text, const char* fault) {
            breaks(mega, "fuse_cfg = l|" + text, fault, button);
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
        item("edr|FF0000|rw|-1|text", "field 2 is not ro");
        item("btn|62D9FF|all|text|tip", "no size in pixels");
        item("tab+|text\nfuse_cfg = l|tab-", "the form ends here");
        breaks(mega, "ckl|002000|i|e|-|", "mark of danger", "ckl|002000|i|e|a|");
        breaks(mega, "fuse_def = s|6FD9F0", "not among the choices");
        breaks(mega, "cbit|000008|1.8 V", "outside its mask", "cbit|000006|06 - 1.8 V");
    }

    void brokenLists()
    {
        breaksList("devices.lst", "B=avr/none.dev", "devices.lst:2: B: there is no file avr/none.dev");
        breaksList("devices.lst", "A=avr/ATmega8.dev", "devices.lst:2: A stands twice");
        breaksList("devices.lst", "Prog=avr/ATmega8.dev", "devices.lst:2: Prog is no name");
        breaksList("devices.lst", "B = avr/ATmega8.dev", "devices.lst:2: a blank");
        breaksList("devices.lst", "ATmega8", "devices.lst:2: neither");
        breaksList("types.lst", "avr=", "types.lst:2: nothing on one side");
        breaksList("types.lst", "i2c_eeprom=x", "types.lst:2: i2c_eeprom: no number");
        breaksList("types.lst", "avr=2", "types.lst:2: avr: another family");
        breaksList("auto.lst", "AVR=avr/ATmega8.dev", "auto.lst:2: not \"name=");
        breaksList("avr/signature.lst", "1E9307=ATmega9", "t:2: 1E9307 stands twice, as ATmega8 and ATmega9");
        breaksList("avr/signature.lst", "1e9308=ATmega9", "signature.lst:2: 1e9308: not bytes");
        breaksList("avr/other.dev", "", "other.dev:1: stands neither in devices.lst");
        breaksList("types.lst", nullptr, "types.lst:1: is missing");
    }

    // The word of the console: what it prints is what the checker found, and its exit code tells the kind.
    void consoleWord()
    {
        QTemporaryDir dir;
        const auto lint = [&dir](const QString& folder, int code) {
            QProcess process;
            process.start(QStringLiteral(VM_BUILD_DIR "/velmarkion"), {"lint", dir.filePath(folder)});
            process.waitForFinished();
            QCOMPARE(process.exitCode(), code);
            const QString fault = dir.filePath("devices.lst:2: B: there is no file none.dev\n");
            QCOMPARE(QString::fromUtf8(process.readAllStandardOutput()), code == 1 ? fault : QString());
            QCOMPARE(process.readAllStandardError().isEmpty(), code != 2);
        };
        writeFolder(dir, "devices.lst", "# a remark");
        lint(".", 0);
        writeFolder(dir, "devices.lst", "B=none.dev");
        lint(QString(), 1);
        lint("none", 2);
    }

    // Every programmer serves every family, and its frames cut no page in the middle.
    void programmers()
    {
        const QStringList models = filesUnder(dataDir + "/progs", "*.cfg");
        QVERIFY(!models.isEmpty());
        for (const QString& model : models) {
            const TProg prog(dataDir + "/progs/" + model);
            quint16 maxData = 0;
            prog.maxData(maxData);
            QVERIFY2(maxData > 0 && maxData % 16 == 0, qPrintable(model));
            for (const QString& file : filesUnder(devicesDir, "*.dev")) {
                const TData data = readDescription(devicesDir + file);
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
                const bool isInRange = clock > 0 && clock >= min && clock <= max;
                QVERIFY2(isInRange && (!isList || values.contains(clock)),
                         qPrintable(model + ": " + section));
            }
        }
    }

    void projects_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString& file : filesUnder(dataDir + "/projects", "*.prj"))
            QTest::newRow(qPrintable(file)) << dataDir + "/projects/" + file;
    }

    // A sample is written as the program writes it, every command of it fits its chip and the simulator, and
    // its chips and files are there.
    void projects()
    {
        QFETCH(QString, file);
        TCtrlProject control;
        QCOMPARE(control.open(file, project()), 0);
        const QHash<QString, QString> chips = TDeviceList::deviceFiles();
        QList<int> invalid;
        for (int index = 0; project().cmdIdAt(index) >= 0; ++index) {
            const TDataCmd* command = project().cmdAt(index);
            const QString word = command->cmd();
            const auto value = [command](const QLatin1String& key) { return command->param(key).toString(); };
            if (!command->validDev() || !command->validParam())
                invalid << index;
            if (word == cmd::set_device)
                QCOMPARE(value(key::file), chips.value(value(key::device)));
            if (word.endsWith("file_write") || word.endsWith("file_verify") || word == cmd::calc_crc)
                QVERIFY2(QFile::exists(absFile(QFileInfo(file).path(), value(key::file))),
                         qPrintable(value(key::file)));
        }
        QTemporaryDir dir;
        const QString copy = dir.filePath("copy.prj");
        QVERIFY2(control.save(copy, project()), qPrintable(control.errorText()));
        QCOMPARE(bytesOf(copy), bytesOf(file));
        QCOMPARE(invalid, QList<int>());
    }

private:
    /// Without the line, or the first one of its key, and with the replacement the checker finds the fault.
    void breaks(const QString& file, const QString& replacement, const QString& fault,
                const QString& line = {})
    {
        QString text = QString::fromUtf8(bytesOf(devicesDir + file));
        const QString start = line.isEmpty() ? '\n' + replacement.section('=', 0, 0) + "= " : line;
        const int at = text.indexOf(start) + (line.isEmpty() ? 1 : 0);
        QVERIFY2(at > 0, "the good description no longer has this line");
        const int size = line.isEmpty() ? text.indexOf('\n', at) - at : line.size();
        QTemporaryDir dir;
        write(dir.filePath("broken.dev"), text.replace(at, size, replacement).toUtf8());
        const TLintLists lists{{{"spi_flash", 1}, {"avr_spi", 2}, {"i2c_eeprom", 3}},
                               {"EF4017", "1E950F", "1E9705"}};
        const bool isChip = !file.endsWith("auto.dev");
        const QStringList found = lintDescription(dir.filePath("broken.dev"), isChip, lists).filter(fault);
        const int number = found.value(0).section(':', 1, 1).toInt();
        QVERIFY2(number >= 1 && number <= text.count('\n') + 1, qPrintable(replacement + found.value(0)));
    }

    /// With the line at the end of the list, or without the list, it finds the fault in the folder.
    void breaksList(const QString& list, const QByteArray& line, const QString& fault)
    {
        QTemporaryDir dir;
        writeFolder(dir, list, line);
        TLintFolder lint(dir.path());
        QVERIFY(lint.run());
        const QString faults = lint.faults().join('\n');
        QVERIFY2(faults.contains(fault), qPrintable(line + '\n' + faults));
    }
};

QTEST_GUILESS_MAIN(TestDescriptions)
#include "test_descriptions.moc"
