#include "TCatalogue.h"

#include "TAvrText.h"
#include "TEepromText.h"
#include "TFlashText.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace {

const QString flashFolder = QStringLiteral("spi-flash");
const QString avrFolder = QStringLiteral("avr");
const QString eepromFolder = QStringLiteral("i2c-eeprom");

QString fileOf(const QString& folder, const QString& name)
{
    return QStringLiteral("%1/%2.dev").arg(folder, name);
}

using BySignature = QHash<QString, QList<TChip>>;

BySignature bySignature(const QList<TChip>& chips)
{
    BySignature groups;
    for (const TChip& chip : chips)
        groups[chip.signature].append(chip);
    return groups;
}

bool isOurs(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(4096).contains(TChipText::mark());
}

} // namespace

bool TCatalogue::read(const QString& tables)
{
    const auto table = [&](const char* name) {
        return m_error.isEmpty() ? TTable::read(tables + QLatin1Char('/') + QLatin1String(name), m_error)
                                 : TTable();
    };
    const TTable flash = table("spi-flash.tsv");
    const TTable status = table("spi-status.tsv");
    const TTable avr = table("avr.tsv");
    const TTable layouts = table("avr-layouts.tsv");
    const TTable values = table("avr-values.tsv");
    const TTable eeproms = table("i2c-eeprom.tsv");
    const TTable aliases = table("aliases.tsv");
    const TTable extras = table("extras.tsv");
    if (!m_error.isEmpty())
        return false;

    m_list = "# The chips of the program: name=description file, relative to this folder.\n" +
             TChipText::mark() + '\n';
    for (const TTable::Row& row : extras.rows()) {
        if (!row.text("signature").isEmpty())
            m_extraSignatures[row.text("file").section('/', 0, 0)] +=
                QStringLiteral("%1=%2\n").arg(row.text("signature"), row.text("name"));
    }
    const TFlashText flashText(flash, status);
    const TAvrText avrText(avr, layouts, values);
    m_error = flashText.fault();
    if (m_error.isEmpty())
        m_error = avrText.fault();
    if (!m_error.isEmpty())
        return false;
    const QList<TChip> flashChips = flashText.chips();
    const BySignature flashGroups = bySignature(flashChips);
    for (const TChip& chip : flashChips)
        m_files[fileOf(flashFolder, chip.name)] = flashText.description(chip, flashGroups[chip.signature]);
    addFamily(flashFolder, flashChips);
    addSignatures(flashFolder, flashChips, "Signatures of serial flash, as command 9F reads them");

    const QList<TChip> avrChips = avrText.chips();
    const BySignature avrGroups = bySignature(avrChips);
    for (const TChip& chip : avrChips)
        m_files[fileOf(avrFolder, chip.name)] = avrText.description(chip, avrGroups[chip.signature]);
    addFamily(avrFolder, avrChips);
    addSignatures(avrFolder, avrChips, "Signatures of AVR microcontrollers");

    const QList<TChip> eepromChips = TEepromText(eeproms).chips();
    for (const TChip& chip : eepromChips)
        m_files[fileOf(eepromFolder, chip.name)] = TEepromText::description(chip);
    addFamily(eepromFolder, eepromChips);
    addExtras(aliases, extras);
    m_files["devices.lst"] = m_list;
    return m_error.isEmpty();
}

void TCatalogue::addFamily(const QString& folder, const QList<TChip>& chips)
{
    QMap<QString, QStringList> groups;
    for (const TChip& chip : chips)
        groups[chip.group].append(chip.name);
    for (auto it = groups.begin(); it != groups.end(); ++it) {
        m_list += "\n# " + it.key().toUtf8() + '\n';
        it.value().sort();
        for (const QString& name : qAsConst(it.value())) {
            if (addName(name, fileOf(folder, name)))
                ++m_chipCount;
        }
    }
}

bool TCatalogue::addName(const QString& name, const QString& file)
{
    if (m_names.contains(name)) {
        m_error = QStringLiteral("two chips with the name %1").arg(name);
        return false;
    }
    m_names[name] = file;
    m_list += QStringLiteral("%1=%2\n").arg(name, file).toUtf8();
    return true;
}

void TCatalogue::addExtras(const TTable& aliases, const TTable& extras)
{
    m_list += "\n# More names of chips above\n";
    for (const TTable::Row& row : aliases.rows()) {
        const QString file = m_names.value(row.text("chip"));
        if (file.isEmpty())
            m_error = QStringLiteral("aliases.tsv: no chip %1").arg(row.text("chip"));
        addName(row.text("name"), file);
    }
    if (!extras.rows().isEmpty())
        m_list += "\n# Descriptions written by hand\n";
    for (const TTable::Row& row : extras.rows())
        addName(row.text("name"), row.text("file"));
}

void TCatalogue::addSignatures(const QString& folder, const QList<TChip>& chips, const QString& title)
{
    QMap<QString, QStringList> names;
    for (const TChip& chip : chips)
        names[chip.signature].append(chip.name);
    for (const QString& line : m_extraSignatures[folder].split('\n', Qt::SkipEmptyParts))
        names[line.section('=', 0, 0)].append(line.section('=', 1));
    QByteArray text =
        "# " + title.toUtf8() + ": signature=chip name.\n" + TChipText::mark() +
        "\n# Chips that share a signature cannot be told apart by it: all their names stand there.\n\n";
    for (auto it = names.begin(); it != names.end(); ++it) {
        it.value().sort();
        text += QStringLiteral("%1=%2\n").arg(it.key(), it.value().join('/')).toUtf8();
    }
    m_files[folder + "/signature.lst"] = text;
}

bool TCatalogue::write(const QString& devices)
{
    for (auto it = m_files.begin(); it != m_files.end(); ++it) {
        if (!writeFile(devices + '/' + it.key(), it.value()))
            return false;
    }
    removeStale(devices);
    return true;
}

bool TCatalogue::writeFile(const QString& path, const QByteArray& bytes)
{
    QFile old(path);
    if (old.open(QIODevice::ReadOnly) && old.readAll() == bytes)
        return true;
    if (old.exists() && !isOurs(path)) {
        m_error = path + ": written by hand, and in the way";
        return false;
    }
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size() || !file.flush()) {
        m_error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

void TCatalogue::removeStale(const QString& devices)
{
    QDirIterator it(devices, {"*.dev"}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (!m_files.contains(path.mid(devices.size() + 1)) && isOurs(path))
            QFile::remove(path);
    }
}
