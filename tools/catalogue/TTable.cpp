#include "TTable.h"

#include <QFile>

QStringList TTable::Row::words(const char* column) const
{
    return text(column).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

TTable TTable::read(const QString& path, QString& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return {};
    }
    TTable table;
    QStringList columns;
    int number = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        ++number;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList cells = line.split(QLatin1Char('\t'));
        if (columns.isEmpty()) {
            columns = cells;
            continue;
        }
        if (cells.size() != columns.size()) {
            error = QStringLiteral("%1:%2: %3 cells under %4 columns")
                        .arg(path, QString::number(number), QString::number(cells.size()),
                             QString::number(columns.size()));
            return {};
        }
        Row row;
        for (int i = 0; i < cells.size(); ++i)
            row.m_cells[columns[i]] = cells[i] == QLatin1String("-") ? QString() : cells[i];
        table.m_rows.append(row);
    }
    return table;
}

QList<TTable::Row> TTable::rowsWith(const char* column, const QString& text) const
{
    QList<Row> found;
    for (const Row& row : m_rows) {
        if (row.text(column) == text)
            found.append(row);
    }
    return found;
}
