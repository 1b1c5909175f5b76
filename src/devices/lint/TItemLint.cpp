#include "devices/lint/TItemLint.h"

#include <QRegularExpression>

namespace {

struct TagRule
{
    const char* tag;
    int least; ///< fields behind the tag
    int most;
    int firstText; ///< fields from here on must not be empty
};

const TagRule tagRules[] = {
    {"frm", 0, 0, 1},  {"hor", 0, 0, 1},  {"pnl", 0, 0, 1},  {"tabs", 0, 0, 1}, {"tab", 1, 1, 1},
    {"grp", 1, 1, 1},  {"lb", 1, 1, 1},   {"edl", 4, 4, 1},  {"edr", 4, 4, 1},  {"ckl", 5, 6, 1},
    {"ckr", 5, 6, 1},  {"cbh", 2, 2, 1},  {"cbl", 2, 2, 1},  {"cbr", 2, 2, 1},  {"cbtl", 2, 2, 1},
    {"cbtc", 2, 2, 1}, {"cbtr", 2, 2, 1}, {"cbit", 2, 2, 1}, {"btn", 4, 4, 1},
};

const QStringList& singleTags()
{
    static const QStringList tags{"lb", "edl", "edr", "ckl", "ckr", "cbit", "btn"};
    return tags;
}

const TagRule* ruleOf(const QString& tag)
{
    for (const TagRule& rule : tagRules) {
        if (tag == QLatin1String(rule.tag))
            return &rule;
    }
    return nullptr;
}

bool isCombo(const QString& tag)
{
    return tag.startsWith("cb") && tag != "cbit";
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
    QStringList parts = line.value.split('|');
    for (QString& part : parts)
        part = part.trimmed();
    QString tag = parts.takeFirst();
    const bool single = singleTags().contains(tag);
    const bool opens = tag.endsWith('+');
    if (!single && !opens && !tag.endsWith('-'))
        return bad("unknown tag " + tag);
    if (!single)
        tag.chop(1);
    const TagRule* rule = ruleOf(tag);
    if (!rule || (!single && singleTags().contains(tag)))
        return bad("unknown tag " + tag);
    if (!single && !opens)
        return parts.isEmpty() ? close(tag) : bad("fields behind " + tag + "-");
    if (parts.size() < rule->least || parts.size() > rule->most)
        return bad("wrong number of fields");
    if (parts.contains(QString()))
        return bad("empty field");
    if (m_stack.isEmpty() && tag != "frm" && tag != "tabs")
        return bad("stands in no container");
    if (!m_stack.isEmpty() && isCombo(m_stack.last()) != (tag == "cbit"))
        return bad("a combo box holds choices, and nothing else does");
    if (opens) {
        open(tag, parts);
    } else if (tag == "cbit") {
        choice(parts);
    } else if (tag.startsWith("ck")) {
        checkBox(parts);
    } else if (tag != "lb") {
        registerBytes(parts.first());
    }
}

void TItemLint::finish(int line)
{
    m_number = line;
    if (!m_stack.isEmpty())
        bad(m_stack.last() + "+ is never closed");
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

void TItemLint::checkBox(const QStringList& parts)
{
    const auto flag = [this, &parts](int field, const char* letter) {
        if (parts[field] != "-" && parts[field] != QLatin1String(letter))
            bad(QString("field %1 is neither %2 nor -").arg(QString::number(field + 1), letter));
    };
    flag(1, "i");
    flag(2, "e");
    flag(3, "a");
    claim(registerBytes(parts[0]));
    if (isDangerous(parts[4]) && parts[3] != "a")
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
    const QByteArray bytes = QByteArray::fromHex(text.toLatin1());
    if (QString::fromLatin1(bytes.toHex().toUpper()) != text || bytes.size() != m_default.size())
        bad(text + " is not as long as the register");
    return bytes;
}

void TItemLint::bad(const QString& text)
{
    m_file.fault(m_number, QStringLiteral("item: ") + text);
}
