#include "devices/shared/description.h"

#include "core/model/shared_settings.h"
#include "link/lists/line_rules.h"

namespace {

/// What does not convert, a number out of the type's range too, is 0. By reference, since the flag is set
/// while the value is made.
template <class T> QVariant checked(T value, const bool& ok)
{
    return QVariant::fromValue(ok ? value : T(0));
}

QVariant convert(QChar type, const QString& value)
{
    bool ok = false;
    switch (type.toLatin1()) {
    case 's':
        return value;
    case 'd':
        return checked(value.toInt(&ok, 10), ok);
    case 'D':
        return checked(value.toLongLong(&ok, 10), ok);
    case 'u':
        return checked(value.toUInt(&ok, 10), ok);
    case 'U':
        return checked(value.toULongLong(&ok, 10), ok);
    case 'x':
        return checked(value.toUInt(&ok, 16), ok);
    case 'X':
        return checked(value.toULongLong(&ok, 16), ok);
    case 'b':
        return checked(value.toUInt(&ok, 2), ok);
    case 'B':
        return checked(value.toULongLong(&ok, 2), ok);
    case 'o':
        return checked(value.toUInt(&ok, 8), ok);
    case 'O':
        return checked(value.toULongLong(&ok, 8), ok);
    case 'f':
        return checked(value.toFloat(&ok), ok);
    case 'F':
        return checked(value.toDouble(&ok), ok);
    default:
        return {};
    }
}

/// Reads the lines of a description one after the other.
class Parser
{
public:
    void line(const QString& text)
    {
        const int equals = text.indexOf(QLatin1Char('='));
        const int bar = text.indexOf(QLatin1Char('|'), equals + 1);
        if (text.startsWith(QLatin1Char('#')) || equals < 0 || bar < 0)
            return;
        const QString key = text.left(equals).trimmed();
        const QString type = text.mid(equals + 1, bar - equals - 1).trimmed();
        const QString value = text.mid(bar + 1);
        if (type.size() != 1)
            return;
        if (type.at(0) == QLatin1Char('l')) {
            item(key, value);
            return;
        }
        const QVariant converted = convert(type.at(0), value);
        if (converted.isValid())
            m_data[key] = converted;
    }

    TData result()
    {
        closeList();
        return m_data;
    }

private:
    void item(const QString& key, const QString& value)
    {
        if (m_isListOpen && key != m_listKey)
            closeList();
        m_listKey = key;
        m_isListOpen = true;
        m_list.append(value);
    }

    void closeList()
    {
        if (m_isListOpen)
            m_data[m_listKey] = m_list;
        m_list.clear();
        m_isListOpen = false;
    }

    TData m_data;
    bool m_isListOpen = false;
    QString m_listKey;
    QStringList m_list;
};

} // namespace

TData readDescription(const QString& path)
{
    Parser parser;
    for (const QString& line : readLines(path))
        parser.line(line);
    return parser.result();
}

int typeNumber(const QString& word)
{
    int number = 0;
    const auto take = [&](const QString& key, const QString& value) {
        if (key == word)
            number = value.toInt();
        return key != word;
    };
    readPairs(deviceFolderFile(devicesFolder(), QStringLiteral("types.lst")), take);
    return number;
}
