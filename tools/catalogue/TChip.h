#pragma once

#include "TTable.h"
#include "devices/shared/TFamily.h"

#include <QByteArray>
#include <QMap>
#include <QPair>

/// A chip on its way from a row of a table to its description.
struct TChip
{
    QString name;
    QString signature; ///< empty where the family has none
    QString group;     ///< heading in the list of chips
    TTable::Row row;
    /// What tells two chips of one signature apart: a word for the user and the value.
    QList<QPair<QString, QString>> traits;
};

/// The lines of a description, one after the other.
class TChipText
{
public:
    /// The title line, and the mark by which the generator knows its own files.
    explicit TChipText(const QString& title);

    /// An empty line and a remark.
    void heading(const QString& text);
    void remark(const QString& text) { m_text += QStringLiteral("# %1\n").arg(text); }
    void line(const char* key, char type, const QString& value);
    void line(const char* key, char type, qint64 value) { line(key, type, QString::number(value)); }
    /// Where the row names it, what the facts were taken from.
    void source(const TTable::Row& row);
    /// The keys that every description of a family begins with.
    void family(const TFamily& family);
    void info(const QString& text) { line("info", 'l', text); }
    void comment(const QString& text) { line("comment", 'l', text); }
    /// One comment for each sentence.
    void comments(const QString& sentences);
    /// Who answers with the same signature, and in what they are not alike, as remarks shown with the chip.
    /// Before the comments, since a list that is taken up again loses its first lines.
    void sharedSignature(const TChip& chip, const QList<TChip>& sameSignature);

    QByteArray bytes() const { return m_text.toUtf8(); }

    static QByteArray mark();

private:
    QString m_text;
};

/// "512 bytes", "64 KiB", "8 MiB".
QString sizeText(qint64 bytes);
/// "supply 1.7..3.6 V" from the cells min_mv and max_mv; empty when they are.
QString supplyText(const TTable::Row& row);
/// A byte string of this length with one byte set, as hexadecimal digits.
QString registerHex(uint byte, int position, int length);
