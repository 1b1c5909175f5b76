#include "base/ini_text.h"

#include <QHash>
#include <QSet>

#include <cctype>

namespace {

enum class Kind { Blank, Group, Setting, Broken };

/// A line of the file. QSettings lets a text in quotes, or one with a backslash at its end, run on into the
/// lines below, but never writes one that does: here a line ends for itself, so that a forgotten quote costs
/// no other setting.
struct Line
{
    Kind kind = Kind::Blank;
    bool isSound = true;
    QByteArray missing; ///< what QSettings wants behind the text to end it there
    int begin = 0;
    int textEnd = 0; ///< behind the setting, where a comment may follow
    int end = 0;     ///< behind the line feed
    QByteArray group;
    QByteArray key; ///< "Group/Key" of a setting
    int value = 0;  ///< where its value begins
};

bool isBreak(char c)
{
    return c == '\n' || c == '\r';
}

class Reader
{
public:
    explicit Reader(const QByteArray& text)
        : m_text(text)
        , m_pos(text.startsWith("\xEF\xBB\xBF") ? 3 : 0)
    {
    }

    bool next(Line& line)
    {
        if (m_pos >= m_text.size())
            return false;
        line = Line();
        line.begin = m_pos;
        int start = m_pos;
        while (start < m_text.size() && !isBreak(m_text.at(start)) && isspace(uchar(m_text.at(start))))
            ++start;
        const bool isBlank = start >= m_text.size() || isBreak(m_text.at(start)) || m_text.at(start) == ';';
        line.textEnd = start;
        if (!isBlank)
            take(line, start);
        line.group = m_group;
        line.end = behindBreak(line.textEnd);
        m_pos = line.end;
        return true;
    }

private:
    int behindBreak(int pos) const
    {
        while (pos < m_text.size() && !isBreak(m_text.at(pos)))
            ++pos;
        if (pos + 1 < m_text.size() && m_text.at(pos) == '\r' && m_text.at(pos + 1) == '\n')
            ++pos;
        return qMin(pos + 1, m_text.size());
    }

    void take(Line& line, int start)
    {
        int equals = -1;
        line.textEnd = endOfText(start, equals, line.missing);
        line.isSound = line.missing.isEmpty();
        if (m_text.at(start) == '[') {
            line.kind = Kind::Group;
            const QByteArray name = m_text.mid(start + 1, line.textEnd - start - 1);
            const int close = name.indexOf(']');
            line.isSound = line.isSound && close >= 0;
            m_group = name.left(close).trimmed();
        } else if (equals <= start) {
            line.kind = Kind::Broken;
            line.isSound = false;
        } else {
            line.kind = Kind::Setting;
            line.key = m_group + '/' + m_text.mid(start, equals - start).trimmed();
            line.value = equals + 1;
        }
    }

    /// Where the text that begins at pos ends: before a comment or the line's end.
    int endOfText(int pos, int& equals, QByteArray& missing) const
    {
        bool inQuotes = false;
        const auto isAtEnd = [this](int at) { return at >= m_text.size() || isBreak(m_text.at(at)); };
        for (; !isAtEnd(pos); ++pos) {
            const char c = m_text.at(pos);
            if (c == '"')
                inQuotes = !inQuotes;
            else if (c == '=' && equals < 0 && !inQuotes)
                equals = pos;
            else if (c == ';' && !inQuotes)
                return pos;
            else if (c == '\\' && isAtEnd(pos + 1))
                missing = "\\";
            else if (c == '\\')
                ++pos;
        }
        if (inQuotes)
            missing += '"';
        return pos;
    }

    const QByteArray& m_text;
    int m_pos;
    QByteArray m_group;
};

/// What has still to be written of one group.
struct Group
{
    QList<QByteArray> keys;
    QHash<QByteArray, QByteArray> lines; ///< by key, without the line feed
};

/// The settings of a file, group by group, in the order of the file.
class Settings
{
public:
    explicit Settings(const QByteArray& text)
    {
        Reader reader(text);
        Line line;
        while (reader.next(line)) {
            if (line.kind != Kind::Setting)
                continue;
            if (!m_groups.contains(line.group))
                m_names.append(line.group);
            Group& group = m_groups[line.group];
            group.keys.append(line.key);
            group.lines.insert(line.key, text.mid(line.begin, line.textEnd - line.begin).trimmed());
        }
    }

    const QList<QByteArray>& names() const { return m_names; }
    bool contains(const Line& line) const { return m_groups.value(line.group).lines.contains(line.key); }
    QByteArray take(const Line& line)
    {
        Group& group = m_groups[line.group];
        group.keys.removeOne(line.key);
        return group.lines.value(line.key);
    }
    /// The lines of a group that nobody has taken.
    QByteArray takeRest(const QByteArray& name)
    {
        QByteArray text;
        Group& group = m_groups[name];
        for (const QByteArray& key : qAsConst(group.keys))
            text += group.lines.value(key) + '\n';
        group.keys.clear();
        return text;
    }

private:
    QList<QByteArray> m_names;
    QHash<QByteArray, Group> m_groups;
};

} // namespace

QList<int> brokenIniLines(const QByteArray& text, int limit)
{
    QList<int> numbers;
    Reader reader(text);
    Line line;
    int number = 1;
    while (numbers.size() < limit && reader.next(line)) {
        if (!line.isSound)
            numbers.append(number);
        number += text.mid(line.begin, line.end - line.begin).count('\n');
    }
    return numbers;
}

QByteArray closedIni(const QByteArray& text)
{
    QByteArray closed;
    int from = 0;
    Reader reader(text);
    Line line;
    while (reader.next(line)) {
        if (line.missing.isEmpty())
            continue;
        const bool isBroken = line.kind == Kind::Broken;
        closed += text.mid(from, (isBroken ? line.begin : line.textEnd) - from);
        closed += isBroken ? QByteArray() : line.missing;
        from = isBroken ? line.end : line.textEnd;
    }
    return closed + text.mid(from);
}

QByteArray rawIniValue(const QByteArray& text, const QByteArray& key)
{
    QByteArray value;
    Reader reader(text);
    Line line;
    while (reader.next(line)) {
        if (line.kind == Kind::Setting && line.key == key)
            value = text.mid(line.value, line.textEnd - line.value).trimmed();
    }
    return value;
}

QByteArray mergedIni(const QByteArray& old, const QByteArray& fresh,
                     const std::function<bool(const QByteArray& key)>& isDropped)
{
    Settings settings(fresh);
    // The last place of a group is where its new keys go.
    QHash<QByteArray, int> lastOfGroup;
    Reader first(old);
    Line line;
    while (first.next(line)) {
        if (line.kind != Kind::Blank)
            lastOfGroup.insert(line.group, line.begin);
    }

    QByteArray merged;
    QSet<QByteArray> replaced;
    Reader second(old);
    while (second.next(line)) {
        const bool isOurs = line.kind == Kind::Setting && settings.contains(line);
        if (isOurs && !replaced.contains(line.key)) {
            replaced.insert(line.key);
            const QByteArray rest = old.mid(line.textEnd, line.end - line.textEnd);
            merged += settings.take(line) + (rest.startsWith(';') ? " " : "") + rest;
        } else if (!isOurs && !(line.kind == Kind::Setting && isDropped(line.key))) {
            merged += old.mid(line.begin, line.end - line.begin);
        }
        if (line.begin != lastOfGroup.value(line.group, -1))
            continue;
        const QByteArray rest = settings.takeRest(line.group);
        if (!rest.isEmpty() && !merged.isEmpty() && !isBreak(merged.back()))
            merged += '\n';
        merged += rest;
    }
    for (const QByteArray& name : settings.names()) {
        const QByteArray rest = settings.takeRest(name);
        if (rest.isEmpty())
            continue;
        if (!merged.isEmpty())
            merged += isBreak(merged.back()) ? "\n" : "\n\n";
        merged += '[' + name + "]\n" + rest;
    }
    return merged;
}
