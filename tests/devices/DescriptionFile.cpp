#include "DescriptionFile.h"

#include "devices/TDeviceList.h"
#include "link/line_rules.h"

DescriptionFile::DescriptionFile(const QString& path)
    : m_path(path)
    , m_data(TDeviceList::readDescription(path))
{
    int number = 0;
    for (const QString& line : readLines(path)) {
        ++number;
        const int equals = line.indexOf('=');
        const int bar = line.indexOf('|', equals);
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (equals < 0 || bar < 0) {
            fault(number, "neither empty nor a comment nor \"key = type|value\"");
            continue;
        }
        m_lines << Line{number, line.left(equals).trimmed(), line.mid(equals + 1, bar - equals - 1).trimmed(),
                        line.mid(bar + 1)};
    }
    for (const Line& line : qAsConst(m_lines)) {
        const int count = lines(line.key).size();
        const bool whole = line.type == "l" ? list(line.key).size() == count : has(line.key) && count == 1;
        if (!whole)
            fault(line.number, line.key + ": given twice, or lost when the file is read");
    }
}

QList<DescriptionFile::Line> DescriptionFile::lines(const QString& key) const
{
    QList<Line> found;
    for (const Line& line : m_lines) {
        if (line.key == key)
            found << line;
    }
    return found;
}

void DescriptionFile::fault(int line, const QString& text)
{
    m_faults << QString("%1:%2: %3").arg(m_path, QString::number(line), text);
}

void DescriptionFile::fault(const QString& key, const QString& text)
{
    const QList<Line> found = lines(key);
    fault(found.isEmpty() ? 0 : found.first().number, key + ": " + text);
}

void DescriptionFile::expect(bool good, const QString& key, const QString& text)
{
    if (!good)
        fault(key, text);
}
