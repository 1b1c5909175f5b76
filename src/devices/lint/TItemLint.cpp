#include "devices/lint/TItemLint.h"

#include <QRegularExpression>

namespace {

/// The tag without the sign that opens or closes.
QString containerOf(const QString& tag)
{
    return tag.left(tag.size() - 1);
}

bool isCombo(const QString& container)
{
    return container.startsWith("cb");
}

// Bits after which the chip no longer answers a serial programmer, or that can never be cleared again.
bool isDangerous(const QString& text)
{
    static const QRegularExpression names("^(SPIEN|RSTDISBL|DWEN|LB\\d?|SRP1)\\b");
    return names.match(text).hasMatch();
}

QByteArray masked(const QByteArray& bytes, const QByteArray& mask)
{
    QByteArray out(bytes);
    for (int i = 0; i < out.size(); ++i)
        out[i] = char(uchar(out[i]) & uchar(i < mask.size() ? mask[i] : 0));
    return out;
}

bool isZero(const QByteArray& bytes)
{
    return bytes.count('\0') == bytes.size();
}

} // namespace

void TItemLint::check(TLintFile& file, const QString& cfgKey, const QString& defKey)
{
    const QList<TLintFile::Line> lines = file.lines(cfgKey);
    if (lines.isEmpty())
        return;
    TItemLint checker(file, QByteArray::fromHex(file.text(defKey).toLatin1()));
    for (const TLintFile::Line& line : lines)
        checker.line(line);
    checker.finish(lines.last().number);
    checker.build(lines);
}

TItemLint::TItemLint(TLintFile& file, const QByteArray& def)
    : m_file(file)
    , m_default(def)
    , m_claimed(def.size(), '\0')
{
}

void TItemLint::line(const TLintFile::Line& line)
{
    m_number = line.number;
    const TFormLine read = readFormLine(line.value);
    if (!read.isKnown)
        return bad("unknown tag " + read.tag);
    if (read.tag.endsWith('-'))
        return read.fields.isEmpty() ? close(containerOf(read.tag)) : bad("fields behind " + read.tag);
    if (!read.isGood || read.hasSurplus)
        return bad("wrong number of fields");
    if (read.fields.contains(QString()))
        return bad("empty field");
    const TFormItem& item = read.item;
    if (m_stack.isEmpty() && item.kind != TFormItem::Frame && item.kind != TFormItem::Tabs)
        return bad("stands in no container");
    const bool isInCombo = !m_stack.isEmpty() && isCombo(m_stack.last());
    if (isInCombo != (item.kind == TFormItem::Choice))
        return bad("a combo box holds choices, and nothing else does");
    if (read.tag.endsWith('+'))
        open(containerOf(read.tag), read.fields);
    else if (item.kind == TFormItem::Choice)
        choice(read.fields);
    else if (item.kind == TFormItem::CheckBox)
        checkBox(item, read.fields);
    else if (item.kind == TFormItem::Display || item.kind == TFormItem::Preset)
        shown(item, read.fields);
}

// The builder takes a size that does not read as none, and shows whatever stands in place of "ro".
void TItemLint::shown(const TFormItem& item, const QStringList& parts)
{
    registerBytes(parts.first());
    const bool isDisplay = item.kind == TFormItem::Display;
    bool isNumber = false;
    const int size = parts[isDisplay ? 2 : 1].toInt(&isNumber);
    if (isDisplay && parts[1] != "ro")
        bad("field 2 is not ro");
    if (!isNumber || size < (isDisplay ? -1 : 1))
        bad("no size in pixels");
}

void TItemLint::finish(int line)
{
    m_number = line;
    if (!m_stack.isEmpty())
        bad(m_stack.last() + "+ is never closed");
}

// What the strict rules let pass must build as well.
void TItemLint::build(const QList<TLintFile::Line>& lines)
{
    QStringList values;
    for (const TLintFile::Line& line : lines)
        values << line.value;
    const TFormItems form = parseFormItems(values);
    if (form.badLine < 0 || m_badLines.contains(lines[form.badLine].number))
        return;
    m_number = lines[form.badLine].number;
    bad("the form ends here");
}

void TItemLint::open(const QString& tag, const QStringList& parts)
{
    m_stack << tag;
    if (isCombo(tag)) {
        m_comboMask = registerBytes(parts.first());
        m_choices.clear();
        claim(m_comboMask);
    }
}

void TItemLint::close(const QString& tag)
{
    if (m_stack.isEmpty() || m_stack.last() != tag)
        return bad(tag + "- closes what is not open");
    m_stack.removeLast();
    if (isCombo(tag) && !m_choices.contains(masked(m_default, m_comboMask)))
        bad("the default is not among the choices");
}

void TItemLint::checkBox(const TFormItem& item, const QStringList& parts)
{
    const auto flag = [this, &parts](int field, const char* letter) {
        if (parts[field] != "-" && parts[field] != QLatin1String(letter))
            bad(QString("field %1 is neither %2 nor -").arg(QString::number(field + 1), letter));
    };
    flag(1, "i");
    flag(2, "e");
    flag(3, "a");
    claim(registerBytes(parts[0]));
    if (isDangerous(item.text) && !item.isDanger)
        bad("without the mark of danger");
}

void TItemLint::choice(const QStringList& parts)
{
    const QByteArray data = registerBytes(parts.first());
    if (masked(data, m_comboMask) != data)
        bad("choice outside its mask");
    if (m_choices.contains(data))
        bad("choice given twice");
    m_choices << data;
}

void TItemLint::claim(const QByteArray& mask)
{
    if (isZero(mask))
        bad("empty mask");
    if (!isZero(masked(m_claimed, mask)))
        bad("a bit that another control edits");
    for (int i = 0; i < qMin(mask.size(), m_claimed.size()); ++i)
        m_claimed[i] = char(uchar(m_claimed[i]) | uchar(mask[i]));
}

QByteArray TItemLint::registerBytes(const QString& text)
{
    QByteArray bytes = QByteArray::fromHex(text.toLatin1());
    if (QString::fromLatin1(bytes.toHex().toUpper()) != text || bytes.size() != m_default.size())
        bad(text + " is not as long as the register");
    return bytes;
}

void TItemLint::bad(const QString& text)
{
    m_badLines.insert(m_number);
    m_file.fault(m_number, QStringLiteral("item: ") + text);
}
