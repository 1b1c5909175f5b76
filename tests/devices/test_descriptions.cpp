#include "DescriptionFile.h"
#include "ItemChecker.h"
#include "core/TAppData.h"
#include "core/TCtrlProject.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "link/AutoList.h"
#include "link/TPairStringList.h"
#include "link/TProg.h"
#include "link/line_rules.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QtTest>

namespace {

constexpr int flash = 1;
constexpr int avr = 2;
constexpr int i2c = 4;
constexpr int all = flash | avr | i2c;

const QString dataDir = QStringLiteral(VM_DATA_DIR);
const QString devicesDir = dataDir + "/devices/";

struct FamilyRule
{
    QLatin1String word; ///< gui_type
    int family;
    const char* type;
    const char* section;
};

const FamilyRule familyRules[] = {
    {dev_class::dev25, flash, "spi_flash", "SPI_FLASH"},
    {dev_class::avr8_spi, avr, "avr_spi", "AVR_SPI"},
    {dev_class::dev24, i2c, "i2c_eeprom", "I2C_EEPROM"},
};

struct KeyRule
{
    QLatin1String key;
    const char* types; ///< letters that its value may have
    int families;      ///< which know the key
    int needed;        ///< for which a chip is not complete without it
};

const KeyRule keyRules[] = {
    {key::gui_type, "s", all, all},
    {key::prg_type, "s", all, all},
    {key::prg_section, "s", all, all},
    {key::cfg_hw, "u", all, all},
    {key::info, "l", all, all},
    {key::comment, "l", all, 0},
    {key::signature, "s", flash | avr, flash | avr},
    {key::alg_ident, "d", flash | avr, flash | avr},
    {key::alg_erase, "d", flash | avr, flash | avr},
    {key::alg_flash_read, "d", flash | avr, flash | avr},
    {key::alg_flash_write, "d", flash | avr, flash | avr},
    {key::addr_begin, "D", flash | i2c, flash | i2c},
    {key::size, "D", flash | i2c, flash | i2c},
    {key::page_size, "u", flash | i2c, flash | i2c},
    {key::erase, "s", flash, flash},
    {key::erase_blocks, "l", flash, flash},
    {key::status_reg_def, "s", flash, flash},
    {key::status_reg_cfg, "l", flash, 0},
    {key::security_reg_size, "D", flash, flash},
    {key::sfdp_reg_size, "D", flash, flash},
    {key::alg_status_reg_read, "d", flash, flash},
    {key::alg_status_reg_write, "d", flash, flash},
    {key::alg_security_reg_erase, "d", flash, flash},
    {key::alg_security_reg_read, "d", flash, flash},
    {key::alg_security_reg_write, "d", flash, flash},
    {key::alg_fsdp_read, "d", flash, flash},
    {key::alg_unique_id_read, "d", flash, flash},
    {key::flash_addr_begin, "D", avr, avr},
    {key::flash_size, "D", avr, avr},
    {key::flash_page_size, "u", avr, avr},
    {key::flash_polling, "b", avr, avr},
    {key::flash_delay, "u", avr, avr},
    {key::eeprom_addr_begin, "D", avr, avr},
    {key::eeprom_size, "D", avr, avr},
    {key::eeprom_page_size, "u", avr, 0},
    {key::eeprom_polling, "b", avr, avr},
    {key::eeprom_delay, "u", avr, avr},
    {key::alg_eeprom_read, "d", avr, avr},
    {key::alg_eeprom_write, "d", avr, avr},
    {key::erase_polling, "b", avr, avr},
    {key::erase_delay, "u", avr, avr},
    {key::cfg_cmd_list, "d", avr, avr},
    {key::fuse_def, "s", avr, 0},
    {key::fuse_cfg, "l", avr, 0},
    {key::fuse_polling, "b", avr, 0},
    {key::fuse_delay, "u", avr, 0},
    {key::alg_fuse_read, "d", avr, 0},
    {key::alg_fuse_write, "d", avr, 0},
    {key::lock_def, "s", avr, avr},
    {key::lock_cfg, "l", avr, avr},
    {key::lock_polling, "b", avr, avr},
    {key::lock_delay, "u", avr, avr},
    {key::alg_lock_read, "d", avr, 0},
    {key::alg_lock_write, "d", avr, avr},
    {key::osccal_def, "s", avr, 0},
    {key::osccal_cfg, "l", avr, 0},
    {key::alg_osccal_read, "d", avr, 0},
    {key::alg_read, "d", i2c, i2c},
    {key::alg_write, "d", i2c, i2c},
    {key::addr_size, "u", i2c, i2c},
    {key::addr_mask, "b", i2c, i2c},
    {key::delay, "u", i2c, i2c},
};

const KeyRule* ruleOf(const QString& key)
{
    for (const KeyRule& rule : keyRules) {
        if (key == rule.key)
            return &rule;
    }
    return nullptr;
}

int familyOf(const DescriptionFile& file)
{
    for (const FamilyRule& rule : familyRules) {
        if (file.text(key::gui_type) == rule.word)
            return rule.family;
    }
    return 0;
}

bool isPowerOfTwo(qint64 n)
{
    return n > 0 && (n & (n - 1)) == 0;
}

bool isHex(const QString& text, int digits)
{
    static const QRegularExpression pattern("^[0-9A-F]+$");
    return text.size() == digits && pattern.match(text).hasMatch();
}

QString valuePattern(const QString& type)
{
    if (type == "s" || type == "l")
        return "^(\\S.*\\S|\\S)$";
    return type == "b" ? "^[01]+$" : "^\\d+$";
}

void checkLine(DescriptionFile& file, const DescriptionFile::Line& line)
{
    const KeyRule* rule = ruleOf(line.key);
    if (!rule || !(rule->families & familyOf(file)))
        return file.fault(line.number, line.key + ": no key of this family");
    if (line.type.size() != 1 || !QString(rule->types).contains(line.type))
        return file.fault(line.number, line.key + ": type " + line.type);
    // Items of a form may be indented; the builder trims them.
    const QString value = line.type == "l" ? line.value.trimmed() : line.value;
    if (!QRegularExpression(valuePattern(line.type)).match(value).hasMatch())
        file.fault(line.number, line.key + ": the value does not read as its type");
}

void checkKeys(DescriptionFile& file, bool wholeChip)
{
    for (const DescriptionFile::Line& line : file.lines())
        checkLine(file, line);
    const int family = familyOf(file);
    for (const KeyRule& rule : keyRules) {
        if (wholeChip && (rule.needed & family))
            file.expect(file.has(rule.key), rule.key, "is missing");
        if (QString(rule.key).startsWith("alg_"))
            file.expect(file.number(rule.key) <= 2, rule.key, "no such algorithm");
    }
}

void checkFamily(DescriptionFile& file)
{
    for (const FamilyRule& rule : familyRules) {
        if (file.text(key::gui_type) != rule.word)
            continue;
        file.expect(file.text(key::prg_type) == rule.type, key::prg_type, "another family");
        file.expect(file.text(key::prg_section) == rule.section, key::prg_section, "another family");
        file.expect(TDeviceList::typeNumber(rule.type) > 0, key::prg_type, "has no number in types.lst");
        return;
    }
    file.fault(key::gui_type, "no class");
}

void checkEraseItem(DescriptionFile& file, const QLatin1String& key, const QString& item)
{
    const QStringList fields = item.split('|');
    const qint64 bytes = fields.value(1).toLongLong();
    file.expect(fields.size() == 2 && isHex(fields[0], 2), key, "not \"op|bytes\": " + item);
    // Chips ignore these when address bytes follow, and the primitive always sends them.
    file.expect(!QStringList({"C7", "60", "62"}).contains(fields[0]), key, "chip erase has no address");
    file.expect(bytes > 0 && file.number(key::size) % bytes == 0, key, "blocks do not fill the chip");
}

void checkFlash(DescriptionFile& file)
{
    const qint64 size = file.number(key::size);
    const qint64 page = file.number(key::page_size);
    file.expect(size > 0 && size <= 0x1000000, key::size, "not reached by three address bytes");
    file.expect(page > 0 && size % page == 0, key::page_size, "does not divide the chip");
    file.expect(isPowerOfTwo(page), key::page_size, "no power of two");
    checkEraseItem(file, key::erase, file.text(key::erase));
    const QStringList blocks = file.list(key::erase_blocks);
    QSet<QString> sizes;
    for (const QString& item : blocks) {
        checkEraseItem(file, key::erase_blocks, item);
        sizes << item.section('|', 1);
    }
    file.expect(sizes.size() == blocks.size(), key::erase_blocks, "one size twice");
    file.expect(blocks.contains(file.text(key::erase)), key::erase, "is not offered as a block");
    file.expect(isHex(file.text(key::status_reg_def), 6), key::status_reg_def,
                "three bytes are read and written");
    const qint64 security = file.number(key::security_reg_size);
    file.expect(security <= 2048 && security % 256 == 0, key::security_reg_size,
                "registers of 256 bytes, up to 8");
    const qint64 sfdp = file.number(key::sfdp_reg_size);
    file.expect(sfdp == 0 || sfdp == 256, key::sfdp_reg_size, "one address byte reaches 256 bytes");
}

void checkFuses(DescriptionFile& file)
{
    const int bytes = file.text(key::fuse_def).size() / 2;
    file.expect(bytes > 0 && bytes < 4 && isHex(file.text(key::fuse_def), bytes * 2), key::fuse_def,
                "1 to 3 bytes");
    file.expect(file.number(key::alg_fuse_read) != 0 || bytes == 1, key::alg_fuse_read,
                "reads one byte only");
    file.expect(file.number(key::alg_fuse_write) == 2 || bytes == 1, key::alg_fuse_write,
                "writes one byte only");
    file.expect(file.list(key::fuse_cfg).join(' ').contains("SPIEN"), key::fuse_cfg, "without SPIEN");
    for (const QLatin1String& key : {key::fuse_cfg, key::osccal_cfg, key::osccal_def, key::alg_lock_read})
        file.expect(file.has(key), key, "is missing");
}

void checkAvr(DescriptionFile& file)
{
    const qint64 size = file.number(key::flash_size);
    const qint64 page = file.number(key::flash_page_size);
    file.expect(isPowerOfTwo(size), key::flash_size, "no power of two");
    file.expect(page == 0 || (isPowerOfTwo(page) && page >= 2 && size % page == 0), key::flash_page_size,
                "impossible");
    // Frames carry 16 bits of the address: only the extended address reaches above 64 KiB.
    const bool large = size > 0x10000;
    file.expect(file.number(key::alg_flash_read) == (large ? 1 : 0), key::alg_flash_read,
                "does not fit the size");
    file.expect(file.number(key::alg_flash_write) == (large  ? 2
                                                      : page ? 1
                                                             : 0),
                key::alg_flash_write, "does not fit");
    file.expect(isPowerOfTwo(file.number(key::eeprom_size)), key::eeprom_size, "no power of two");
    for (const QLatin1String& key : {key::flash_delay, key::eeprom_delay, key::erase_delay, key::lock_delay})
        file.expect(file.number(key) > 0 && file.number(key) < 255, key,
                    "1 to 254 ms fit the byte; 255 means polling");
    file.expect(isHex(file.text(key::lock_def), 2), key::lock_def, "one byte");
    if (file.number(key::cfg_cmd_list) != 0)
        checkFuses(file);
    else
        file.expect(!file.has(key::fuse_def), key::fuse_def, "the chip has no fuse commands");
}

void checkEeprom(DescriptionFile& file)
{
    const qint64 size = file.number(key::size);
    const qint64 addrBytes = file.number(key::addr_size);
    file.expect(isPowerOfTwo(size), key::size, "no power of two");
    file.expect(isPowerOfTwo(file.number(key::page_size)), key::page_size, "no power of two");
    file.expect(addrBytes == 1 || addrBytes == 2, key::addr_size, "1 or 2 address bytes");
    file.expect(file.number(key::delay) > 0 && file.number(key::delay) < 256, key::delay, "1 to 255 ms");
    // The address bits above the sent bytes take the places of the lowest pins in the control byte.
    const qint64 blocks = size >> (8 * addrBytes);
    file.expect(blocks <= 8, key::size, "more blocks than the control byte can tell");
    file.expect(file.number(key::addr_mask) < 8, key::addr_mask, "three pins");
    file.expect(blocks < 2 || (file.number(key::addr_mask) & (blocks - 1)) == 0, key::addr_mask,
                "a pin and an address bit share a place");
}

void checkSignature(DescriptionFile& file, const QString& path)
{
    const TPairStringList names = TPairStringList::fromFile(QFileInfo(path).path() + "/signature.lst");
    file.expect(isHex(file.text(key::signature), 6), key::signature, "three bytes in upper case");
    file.expect(names.contains(file.text(key::signature)), key::signature, "is not in signature.lst");
}

void checkForms(DescriptionFile& file)
{
    ItemChecker::check(file, key::status_reg_cfg, key::status_reg_def);
    ItemChecker::check(file, key::fuse_cfg, key::fuse_def);
    ItemChecker::check(file, key::lock_cfg, key::lock_def);
    ItemChecker::check(file, key::osccal_cfg, key::osccal_def);
}

// Everything that can be said about one file; wholeChip is false for a description of a family.
QString faultsOf(const QString& path, bool wholeChip)
{
    DescriptionFile file(path);
    checkKeys(file, wholeChip);
    checkFamily(file);
    if (!wholeChip)
        return file.faults();
    const int family = familyOf(file);
    if (family == flash)
        checkFlash(file);
    if (family == avr)
        checkAvr(file);
    if (family == i2c)
        checkEeprom(file);
    if (family & (flash | avr))
        checkSignature(file, path);
    checkForms(file);
    return file.faults();
}

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

QStringList familyFiles()
{
    QStringList files;
    for (const TAutoEntry& entry : autoEntries())
        files << entry.device;
    return files;
}

} // namespace

/// Every shipped description, list and sample project, and the rules they must keep so that they agree
/// with the program, with each other and with the shipped programmers.
class TestDescriptions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void shipped_data();
    void shipped();
    void brokenOnes_data();
    void brokenOnes();
    void chipList();
    void signatureLists();
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

void TestDescriptions::shipped_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("wholeChip");
    const QStringList families = familyFiles();
    for (const QString& file : filesUnder(devicesDir, "*.dev"))
        QTest::newRow(qPrintable(file)) << devicesDir + file << !families.contains(file);
}

void TestDescriptions::shipped()
{
    QFETCH(QString, path);
    QFETCH(bool, wholeChip);
    const QString faults = faultsOf(path, wholeChip);
    QVERIFY2(faults.isEmpty(), qPrintable("\n" + faults));
}

// What the rules must not overlook: a line of a good description is replaced, or one is put behind it.
void TestDescriptions::brokenOnes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char* name, const char* file, const char* line, const char* replacement,
                        const char* fault) {
        QTest::newRow(name) << QString(file) << QString(line) << QString(replacement) << QString(fault);
    };
    const char* nor = "spi-flash/W25Q64FV.dev";
    const char* mega = "avr/ATmega328P.dev";
    const char* i2cChip = "i2c-eeprom/24C16.dev";
    row("blank behind the bar", nor, "gui_type = s|Dev25", "gui_type = s| Dev25",
        "gui_type: no key of this family");
    row("bool word", mega, "flash_polling = b|1", "flash_polling = b|true", "flash_polling: the value");
    row("chip erase op", nor, "erase = s|D8|65536", "erase = s|C7|65536", "chip erase has no address");
    row("repeated key", nor, "page_size = u|256", "page_size = u|256\npage_size = u|64", "given twice");
    row("two status bytes", nor, "status_reg_def = s|000000", "status_reg_def = s|0000", "three bytes");
    row("delay of the polling code", mega, "erase_delay = u|9", "erase_delay = u|255", "255 means polling");
    row("no extended address", "avr/ATmega1284P.dev", "alg_flash_read = d|1", "alg_flash_read = d|0",
        "does not fit");
    row("pin on a block bit", i2cChip, "addr_mask = b|000", "addr_mask = b|001", "share a place");
    row("unknown signature", nor, "signature = s|EF4017", "signature = s|EF4019", "not in signature.lst");
    const QString button = "fuse_cfg = l|    btn|62D9FF|21|Factory value|As the chip is shipped";
    const auto item = [&](const char* name, const char* text, const char* fault) {
        row(name, mega, qPrintable(button), qPrintable(QString("fuse_cfg = l|") + text), fault);
    };
    item("unknown tag", "chk|000001|-|e|-|text", "unknown tag");
    item("wrong nesting", "frm-", "closes what is not open");
    item("open to the end", "hor+", "closes what is not open");
    item("mask outside", "ckl|00000001|-|e|-|text", "not as long as the register");
    item("bit edited twice", "ckl|000001|-|e|-|text", "another control edits");
    item("choice without a box", "cbit|000000|text", "combo box holds choices");
    item("button of four parts", "btn|62D9FF|21|text", "wrong number of fields");
    row("hidden danger", mega, "ckl|002000|i|e|a|", "ckl|002000|i|e|-|", "mark of danger");
    row("default not offered", mega, "fuse_def = s|62D9FF", "fuse_def = s|6FD9F0", "not among the choices");
    row("choice outside its mask", mega, "cbit|000006|06 - 1.8 V", "cbit|000008|1.8 V", "outside its mask");
}

void TestDescriptions::brokenOnes()
{
    QFETCH(QString, file);
    QFETCH(QString, line);
    QFETCH(QString, replacement);
    QFETCH(QString, fault);
    QString text = QString::fromUtf8(bytesOf(devicesDir + file));
    QVERIFY2(text.contains(line), "the good description no longer has this line");
    QTemporaryDir dir;
    QVERIFY(
        QFile::copy(QFileInfo(devicesDir + file).path() + "/signature.lst", dir.filePath("signature.lst")) ||
        !QFile::exists(QFileInfo(devicesDir + file).path() + "/signature.lst"));
    QFile broken(dir.filePath("broken.dev"));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write(text.replace(text.indexOf(line), line.size(), replacement).toUtf8());
    broken.close();
    const QString faults = faultsOf(broken.fileName(), true);
    QVERIFY2(faults.contains(fault), qPrintable("\n" + faults));
}

void TestDescriptions::chipList()
{
    QStringList names;
    QStringList named;
    readPairs(devicesDir + "devices.lst", [&](const QString& name, const QString& file) {
        names << name;
        named << file;
        return true;
    });
    for (const TAutoEntry& entry : autoEntries()) {
        named << entry.device;
        QVERIFY2(QFile::exists(devicesDir + entry.signatures), qPrintable(entry.name));
        QVERIFY2(TDeviceList::readDescription(devicesDir + entry.device).contains(key::alg_ident),
                 qPrintable(entry.name));
    }
    QCOMPARE(autoNames().removeDuplicates(), 0);
    QCOMPARE(QStringList(names).removeDuplicates(), 0);
    for (const char* word : {"W25Q64", "ATmega328P", "24C16", "24C512"})
        QVERIFY2(names.contains(word), word);
    // Class words are looked up in the same place as chips.
    for (const QLatin1String& word : {dev_class::prog, dev_class::tools})
        QVERIFY(!names.contains(word));
    named.removeDuplicates();
    named.sort();
    QCOMPARE(named, filesUnder(devicesDir, "*.dev"));
    QCOMPARE(TDeviceList::deviceFiles().size(), names.size());
}

void TestDescriptions::signatureLists()
{
    for (const QString& file : filesUnder(devicesDir, "signature.lst")) {
        const TPairStringList list = TPairStringList::fromFile(devicesDir + file);
        QVERIFY(list.count() > 0);
        for (int row = 0; row < list.count(); ++row) {
            QVERIFY2(isHex(list.key(row), 6), qPrintable(file + ": " + list.key(row)));
            QVERIFY2(list.find(list.key(row)) == row, qPrintable(file + ": twice " + list.key(row)));
            QVERIFY2(!list.value(row).isEmpty(), qPrintable(file + ": " + list.key(row)));
        }
    }
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
        for (const FamilyRule& family : familyRules) {
            bool isList = false;
            int min = 0;
            int max = 0;
            QVector<int> values;
            prog.clockParams(family.section, isList, min, max, values);
            const int clock = prog.clockDefault(family.section);
            QVERIFY2(clock > 0 && clock >= min && clock <= max, qPrintable(model + ": " + family.section));
            QVERIFY2(!isList || values.contains(clock), qPrintable(model + ": " + family.section));
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
