#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// A table of tab-separated text. Lines that begin with "#" are remarks, the first other line names the
/// columns; "-" stands for an empty cell.
class TTable
{
public:
    class Row
    {
    public:
        QString text(const char* column) const { return m_cells.value(QLatin1String(column)); }
        qint64 number(const char* column) const { return text(column).toLongLong(); }
        /// A cell of several words.
        QStringList words(const char* column) const;
        /// The value of hexadecimal digits.
        uint hex(const char* column) const { return text(column).toUInt(nullptr, 16); }

    private:
        friend class TTable;
        QHash<QString, QString> m_cells;
    };

    /// Reads the file; a fault makes the table empty and is told in error, with file and line.
    static TTable read(const QString& path, QString& error);

    const QList<Row>& rows() const { return m_rows; }
    /// The rows whose cell has this text, in their order.
    QList<Row> rowsWith(const char* column, const QString& text) const;

private:
    QList<Row> m_rows;
};
