#include "devices/shared/form_items.h"

#include <QLatin1String>
#include <QVector>

namespace {

/// Deeper than any form; beyond it the layouts would eat up the stack.
constexpr int deepest = 100;
/// A form that asks for more pixels has a slip of the pen.
constexpr uint largestExtent = 4000;

/// What the parser has to know of a tag.
struct TTagRule
{
    const char* tag;
    TFormItem::Kind kind;
    TFormItem::Side side;
    int least; ///< fields behind the tag
    int most;  ///< that are read
    bool needsContainer;
    bool opens;
};

using I = TFormItem;

constexpr TTagRule rules[] = {
    {"frm+", I::Frame, I::Hidden, 0, 0, false, true},
    {"frm-", I::Close, I::Hidden, 0, 0, true, false},
    {"tabs+", I::Tabs, I::Hidden, 0, 0, false, false},
    {"tabs-", I::CloseTabs, I::Hidden, 0, 0, false, false},
    {"tab+", I::Tab, I::Hidden, 1, 1, false, true},
    {"tab-", I::Close, I::Hidden, 0, 0, true, false},
    {"hor+", I::Row, I::Hidden, 0, 0, true, true},
    {"hor-", I::Close, I::Hidden, 0, 0, true, false},
    {"pnl+", I::Panel, I::Hidden, 0, 0, true, true},
    {"pnl-", I::Close, I::Hidden, 0, 0, true, false},
    {"grp+", I::Group, I::Hidden, 1, 1, true, true},
    {"grp-", I::Close, I::Hidden, 0, 0, true, false},
    {"lb", I::Label, I::Hidden, 1, 1, true, false},
    {"edl", I::Display, I::Right, 4, 4, true, false},
    {"edr", I::Display, I::Left, 4, 4, true, false},
    {"ckl", I::CheckBox, I::Left, 5, 6, true, false},
    {"ckr", I::CheckBox, I::Right, 5, 6, true, false},
    {"cbh+", I::ComboBox, I::Hidden, 2, 2, true, true},
    {"cbh-", I::Close, I::Hidden, 0, 0, true, false},
    {"cbtl+", I::ComboBox, I::AboveLeft, 2, 2, true, true},
    {"cbtl-", I::Close, I::Hidden, 0, 0, true, false},
    {"cbtc+", I::ComboBox, I::AboveCentre, 2, 2, true, true},
    {"cbtc-", I::Close, I::Hidden, 0, 0, true, false},
    {"cbtr+", I::ComboBox, I::AboveRight, 2, 2, true, true},
    {"cbtr-", I::Close, I::Hidden, 0, 0, true, false},
    {"cbl+", I::ComboBox, I::Left, 2, 2, true, true},
    {"cbl-", I::Close, I::Hidden, 0, 0, true, false},
    {"cbr+", I::ComboBox, I::Right, 2, 2, true, true},
    {"cbr-", I::Close, I::Hidden, 0, 0, true, false},
    {"cbit", I::Choice, I::Hidden, 2, 2, true, false},
    {"btn", I::Preset, I::Hidden, 4, 4, true, false},
};

const TTagRule* ruleOf(const QString& tag)
{
    for (const TTagRule& rule : rules) {
        if (tag == QLatin1String(rule.tag))
            return &rule;
    }
    return nullptr;
}

QStringList fieldsOf(const QString& line)
{
    QStringList fields = line.split(QLatin1Char('|'));
    for (QString& field : fields)
        field = field.trimmed();
    return fields;
}

QByteArray bytes(const QString& field)
{
    return QByteArray::fromHex(field.toLatin1());
}

int pixels(const QString& field)
{
    return int(qMin(field.toUInt(), largestExtent));
}

/// The fields of the line, the tag taken off, as the item's values.
TFormItem itemOf(const TTagRule& rule, const QStringList& fields)
{
    TFormItem item;
    item.kind = rule.kind;
    item.side = rule.side;
    switch (rule.kind) {
    case TFormItem::Tab:
    case TFormItem::Group:
    case TFormItem::Label:
        item.text = fields.at(0);
        break;
    case TFormItem::Display:
        item.bits = bytes(fields.at(0));
        item.extent = pixels(fields.at(2));
        item.text = fields.at(3);
        break;
    case TFormItem::CheckBox:
        item.bits = bytes(fields.at(0));
        item.isInverse = fields.at(1) == QLatin1String("i");
        item.isEnabled = fields.at(2) == QLatin1String("e");
        item.isDanger = fields.at(3) == QLatin1String("a");
        item.text = fields.at(4);
        item.tip = fields.value(5);
        break;
    case TFormItem::ComboBox:
    case TFormItem::Choice:
        item.bits = bytes(fields.at(0));
        item.text = fields.at(1);
        break;
    case TFormItem::Preset:
        item.bits = bytes(fields.at(0));
        item.extent = pixels(fields.at(1));
        item.text = fields.at(2);
        item.tip = fields.at(3);
        break;
    case TFormItem::Frame:
    case TFormItem::Tabs:
    case TFormItem::Row:
    case TFormItem::Panel:
    case TFormItem::Close:
    case TFormItem::CloseTabs:
        break;
    }
    return item;
}

/// Which containers are open, as the lines open and close them.
class Nesting
{
public:
    /// False if the item cannot stand here.
    bool take(const TTagRule& rule)
    {
        if ((rule.needsContainer && m_open.isEmpty()) || (rule.opens && m_open.size() >= deepest))
            return false;
        if (rule.kind == TFormItem::Choice && m_open.last() != TFormItem::ComboBox)
            return false;
        if ((rule.kind == TFormItem::Tab || rule.kind == TFormItem::CloseTabs) && m_tabs == 0)
            return false;
        if (rule.opens)
            m_open.append(rule.kind);
        else if (rule.kind == TFormItem::Close)
            m_open.removeLast();
        else if (rule.kind == TFormItem::Tabs)
            ++m_tabs;
        else if (rule.kind == TFormItem::CloseTabs)
            --m_tabs;
        return true;
    }

private:
    QVector<TFormItem::Kind> m_open;
    int m_tabs = 0;
};

} // namespace

TFormLine readFormLine(const QString& line)
{
    TFormLine read;
    read.fields = fieldsOf(line);
    read.tag = read.fields.takeFirst();
    const TTagRule* rule = ruleOf(read.tag);
    if (!rule)
        return read;
    read.isKnown = true;
    read.hasSurplus = read.fields.size() > rule->most;
    const bool isExact = rule->kind == TFormItem::Preset;
    read.isGood = read.fields.size() >= rule->least && !(isExact && read.hasSurplus);
    if (read.isGood)
        read.item = itemOf(*rule, read.fields);
    return read;
}

TFormItems parseFormItems(const QStringList& lines)
{
    TFormItems result;
    Nesting nesting;
    for (int i = 0; i < lines.size(); ++i) {
        const TFormLine line = readFormLine(lines.at(i));
        if (line.isGood && nesting.take(*ruleOf(line.tag))) {
            result.items.append(line.item);
            continue;
        }
        result.badLine = i;
        result.badText = lines.at(i);
        return result;
    }
    result.isGood = !lines.isEmpty();
    return result;
}
