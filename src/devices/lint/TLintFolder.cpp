#include "devices/lint/TLintFolder.h"

#include "base/keys.h"
#include "link/lists/line_rules.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace {

const QString chipList = QStringLiteral("devices.lst");
const QString familyList = QStringLiteral("auto.lst");
const QString typeList = QStringLiteral("types.lst");
const QString signatureList = QStringLiteral("signature.lst");

QStringList filesUnder(const QString& folder, const QString& pattern)
{
    QStringList files;
    QDirIterator it(folder, {pattern}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next().mid(folder.size() + 1));
    files.sort();
    return files;
}

} // namespace

TLintFolder::TLintFolder(const QString& folder)
    : m_folder(QDir::cleanPath(folder))
{
}

bool TLintFolder::run()
{
    if (!QFileInfo(m_folder).isDir() || !QFileInfo(m_folder).isReadable())
        return false;
    m_descriptions = filesUnder(m_folder, QStringLiteral("*.dev"));
    readTypes();
    readChips();
    readFamilies();
    for (const QString& file : filesUnder(m_folder, signatureList))
        readSignatures(file);
    checkDescriptions();
    return true;
}

QString TLintFolder::path(const QString& file) const
{
    return m_folder + QLatin1Char('/') + file;
}

void TLintFolder::fault(const QString& file, int line, const QString& text)
{
    m_faults.append(QStringLiteral("%1:%2: %3").arg(path(file), QString::number(line), text));
}

QList<TLintFolder::Pair> TLintFolder::pairs(const QString& file)
{
    QList<Pair> found;
    if (!QFileInfo::exists(path(file)))
        fault(file, 1, QStringLiteral("is missing"));
    int number = 0;
    for (const QString& line : readLines(path(file))) {
        ++number;
        Pair pair{number, {}, {}};
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(QLatin1Char('#')))
            continue;
        if (!splitPair(line, pair.key, pair.value)) {
            fault(file, number, QStringLiteral("neither empty nor a comment nor \"key=value\""));
            continue;
        }
        if (pair.key.isEmpty() || pair.value.isEmpty())
            fault(file, number, QStringLiteral("nothing on one side of the \"=\""));
        if (pair.key != pair.key.trimmed() || pair.value != pair.value.trimmed())
            fault(file, number, QStringLiteral("a blank beside the \"=\" belongs to the text"));
        found.append(pair);
    }
    return found;
}

void TLintFolder::readTypes()
{
    for (const Pair& pair : pairs(typeList)) {
        constexpr int greatest = 0xFFFF; // two bytes on the line
        const int number = pair.value.toInt();
        if (number < 1 || number > greatest)
            fault(typeList, pair.line, QStringLiteral("%1: no number from 1 to 65535").arg(pair.key));
        if (m_types.contains(pair.key))
            fault(typeList, pair.line, QStringLiteral("%1 stands twice; the first counts").arg(pair.key));
        else if (m_types.values().contains(number))
            fault(typeList, pair.line, QStringLiteral("%1: another family has this number").arg(pair.key));
        if (!m_types.contains(pair.key))
            m_types[pair.key] = number;
    }
}

void TLintFolder::readChips()
{
    QSet<QString> names;
    for (const Pair& pair : pairs(chipList)) {
        if (names.contains(pair.key))
            fault(chipList, pair.line, QStringLiteral("%1 stands twice; the last counts").arg(pair.key));
        if (pair.key == dev_class::prog || pair.key == dev_class::tools)
            fault(chipList, pair.line, QStringLiteral("%1 is no name for a chip").arg(pair.key));
        if (!QFileInfo(path(pair.value)).isFile())
            fault(chipList, pair.line, QStringLiteral("%1: there is no file %2").arg(pair.key, pair.value));
        names.insert(pair.key);
        m_chips.insert(QDir::cleanPath(pair.value));
    }
}

void TLintFolder::readFamilies()
{
    QSet<QString> names;
    for (const Pair& pair : pairs(familyList)) {
        const QStringList files = pair.value.split(QLatin1Char('|'), Qt::SkipEmptyParts);
        if (files.size() != 2)
            fault(familyList, pair.line, QStringLiteral("not \"name=description|signatures\""));
        if (names.contains(pair.key))
            fault(familyList, pair.line, QStringLiteral("%1 stands twice").arg(pair.key));
        names.insert(pair.key);
        for (const QString& file : files) {
            if (!QFileInfo(path(file)).isFile())
                fault(familyList, pair.line, QStringLiteral("there is no file %1").arg(file));
        }
        m_families.insert(QDir::cleanPath(files.value(0)));
    }
}

void TLintFolder::readSignatures(const QString& file)
{
    QHash<QString, QString> names;
    for (const Pair& pair : pairs(file)) {
        const QByteArray bytes = QByteArray::fromHex(pair.key.toLatin1());
        if (QString::fromLatin1(bytes.toHex().toUpper()) != pair.key)
            fault(file, pair.line, QStringLiteral("%1: not bytes in upper-case hexadecimal").arg(pair.key));
        if (names.contains(pair.key))
            fault(file, pair.line,
                  QStringLiteral("%1 stands twice, as %2 and %3; the first counts")
                      .arg(pair.key, names[pair.key], pair.value));
        else
            names[pair.key] = pair.value;
    }
    m_signatures[QFileInfo(file).path()] = QSet<QString>(names.keyBegin(), names.keyEnd());
}

void TLintFolder::checkDescriptions()
{
    for (const QString& file : qAsConst(m_descriptions)) {
        const bool isChip = m_chips.contains(file);
        if (!isChip && !m_families.contains(file))
            fault(file, 1, QStringLiteral("stands neither in devices.lst nor in auto.lst"));
        const TLintLists lists{m_types, m_signatures.value(QFileInfo(file).path())};
        m_faults += lintDescription(path(file), isChip || !m_families.contains(file), lists);
    }
}
