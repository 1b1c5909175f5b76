#pragma once

#include "devices/shared/TLintFile.h"
#include "devices/shared/form_items.h"

#include <QByteArray>
#include <QSet>

/// Checks a register form in the item language more strictly than the form's builder does: fields,
/// nesting, masks inside the register, no bit that two controls edit, choices inside their mask, the
/// default among the choices, and the mark of danger on bits with no way back. Faults go to the file.
class TItemLint
{
public:
    /// cfgKey holds the items, defKey the default, which gives the register's length.
    static void check(TLintFile& file, const QString& cfgKey, const QString& defKey);

private:
    TItemLint(TLintFile& file, const QByteArray& def);

    void line(const TLintFile::Line& line);
    void finish(int line);
    void build(const QList<TLintFile::Line>& lines);
    void open(const QString& tag, const QStringList& parts);
    void close(const QString& tag);
    void checkBox(const TFormItem& item, const QStringList& parts);
    void shown(const TFormItem& item, const QStringList& parts);
    void choice(const QStringList& parts);
    void claim(const QByteArray& mask);
    QByteArray registerBytes(const QString& text);
    void bad(const QString& text);

    TLintFile& m_file;
    QByteArray m_default;
    QByteArray m_claimed;
    QStringList m_stack;
    QByteArray m_comboMask;
    QList<QByteArray> m_choices;
    QSet<int> m_badLines;
    int m_number = 0;
};
