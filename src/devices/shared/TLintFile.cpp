#include "devices/shared/TLintFile.h"

#include "devices/shared/description.h"
#include "link/lists/line_rules.h"

#include <algorithm>

TLintFile::TLintFile(const QString& path)
    : m_path(path)
    , m_data(readDescription(path))
{
    int number = 0;
    for (const QString& line : readLines(path))
        takeLine(++number, line);
    checkOnce();
}

void TLintFile::takeLine(int number, const QString& line)
{
    if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
        return;
    const int equals = line.indexOf(QLatin1Char('='));
    const int bar = line.indexOf(QLatin1Char('|'), equals + 1);
    if (equals < 0 || bar < 0)
        return fault(number, QStringLiteral("neither empty nor a comment nor \"key = type|value\""));
    const Line taken{number, line.left(equals).trimmed(), line.mid(equals + 1, bar - equals - 1).trimmed(),
                     line.mid(bar + 1)};
    m_lines.append(taken);
    m_byKey[taken.key].append(taken);
}

void TLintFile::checkOnce()
{
    for (auto it = m_byKey.cbegin(); it != m_byKey.cend(); ++it) {
        const bool isList = it.value().first().type == QLatin1String("l");
        const bool isWhole =
            isList ? list(it.key()).size() == it.value().size() : has(it.key()) && it.value().size() == 1;
        if (!isWhole)
            fault(it.value().last().number,
                  QStringLiteral("%1: given twice, or lost when the file is read").arg(it.key()));
    }
}

void TLintFile::fault(int line, const QString& text)
{
    m_faults.append({line, text});
}

void TLintFile::fault(const QString& key, const QString& text)
{
    const QList<Line> found = lines(key);
    fault(found.isEmpty() ? 1 : found.first().number, QStringLiteral("%1: %2").arg(key, text));
}

void TLintFile::expect(bool good, const QString& key, const QString& text)
{
    if (!good)
        fault(key, text);
}

QStringList TLintFile::faults() const
{
    QList<QPair<int, QString>> sorted = m_faults;
    std::sort(sorted.begin(), sorted.end());
    QStringList lines;
    for (const auto& [line, text] : qAsConst(sorted))
        lines.append(QStringLiteral("%1:%2: %3").arg(m_path, QString::number(line), text));
    return lines;
}
