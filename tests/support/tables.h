#pragma once

#include <QtTest>

/// The columns of a test's table, by type: tableColumns<QString, int>("word", "code").
template <class... Types, class... Names> void tableColumns(Names... names)
{
    (QTest::addColumn<Types>(names), ...);
}

/// One row of it, a value for each column.
template <class... Values> void tableRow(const char* name, const Values&... values)
{
    (QTest::newRow(name) << ... << values);
}

/// Reports a row of a table that came out wrong, and lets the others go on.
template <class Value> void compareRow(const QString& name, const Value& is, const Value& wanted)
{
    if (is == wanted)
        return;
    QString text;
    QDebug(&text) << name << "gives" << is << "instead of" << wanted;
    QTest::qFail(qPrintable(text), __FILE__, __LINE__);
}

/// Rows out of a text: a line is a row and its name, the cells stand between " | ", and all columns are
/// QString. A line that begins with blanks goes on with the row before it.
inline void textRows(const char* table, std::initializer_list<const char*> columns)
{
    for (const char* column : columns)
        QTest::addColumn<QString>(column);
    const QString text = QString::fromUtf8(table).replace(QRegularExpression("\n +"), " ");
    for (const QString& line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QStringList cells = line.split(QStringLiteral(" |"));
        QTestData& row = QTest::newRow(qPrintable(line));
        for (int i = 0; i < int(columns.size()); ++i)
            row << cells.value(i).trimmed();
    }
}
