#include "devices/lint/lintDescription.h"

#include "base/keys.h"
#include "devices/lint/TItemLint.h"
#include "devices/shared/TFamily.h"
#include "devices/shared/lint_checks.h"

#include <algorithm>
#include <iterator>

namespace {

/// Keys of every family.
const TKeyRule commonKeys[] = {
    {key::gui_type, "s", TKeyRule::Always},
    {key::prg_type, "s", TKeyRule::Always},
    {key::prg_section, "s", TKeyRule::Always},
    {key::cfg_hw, "u", TKeyRule::Always},
    {key::info, "l", TKeyRule::Chip},
    {key::comment, "l"},
    {key::warning, "l"},
    {key::reset, "b"},
    {key::reset_pol, "b"},
};

/// The keys that a description may have; none without a family.
QList<TKeyRule> keysOf(const TFamily* family)
{
    if (!family)
        return {};
    QList<TKeyRule> keys = family->rules().keys;
    std::copy(std::begin(commonKeys), std::end(commonKeys), std::back_inserter(keys));
    return keys;
}

/// The value is one of its type. The largest of a type's digits may still be too much for it.
bool reads(const QString& type, const QString& value)
{
    if (type == QLatin1String("s") || type == QLatin1String("l"))
        return !value.isEmpty() && value == value.trimmed();
    if (type == QLatin1String("b"))
        return isMadeOf(value, "01") && value.size() <= 32;
    bool fits = false;
    if (type == QLatin1String("D"))
        value.toLongLong(&fits);
    else
        value.toInt(&fits);
    return fits && isMadeOf(value, "0123456789");
}

void checkLine(TLintFile& file, const QList<TKeyRule>& keys, const TLintFile::Line& line)
{
    const auto rule = std::find_if(keys.begin(), keys.end(),
                                   [&line](const TKeyRule& known) { return known.key == line.key; });
    if (rule == keys.end())
        return file.fault(line.number, line.key + ": no key of this family");
    if (line.type.size() != 1 || !QLatin1String(rule->types).contains(line.type.at(0)))
        return file.fault(line.number, line.key + ": type " + line.type);
    // Items of a form may be indented; the builder trims them.
    const QString value = line.type == "l" ? line.value.trimmed() : line.value;
    if (!reads(line.type, value))
        file.fault(line.number, line.key + ": the value does not read as its type");
}

void checkKeys(TLintFile& file, const QList<TKeyRule>& keys, bool wholeChip)
{
    for (const TLintFile::Line& line : file.lines())
        checkLine(file, keys, line);
    for (const TKeyRule& rule : keys) {
        if (rule.need == TKeyRule::Always || (wholeChip && rule.need == TKeyRule::Chip))
            file.expect(file.has(rule.key), rule.key, "is missing");
        const qint64 number = file.number(rule.key);
        if (QString(rule.key).startsWith("alg_"))
            file.expect(number >= 0 && number <= rule.ways, rule.key, "no such algorithm");
    }
}

void checkFamily(TLintFile& file, const TFamily* family, const TLintLists& lists)
{
    if (!family)
        return file.fault(key::gui_type, "no class");
    file.expect(file.text(key::prg_type) == family->type, key::prg_type, "another family");
    file.expect(file.text(key::prg_section) == family->section, key::prg_section, "another family");
    file.expect(lists.types.value(family->type) > 0, key::prg_type, "has no number in types.lst");
    file.expect(file.number(key::cfg_hw) <= 0xFF, key::cfg_hw, "one byte");
}

void checkForms(TLintFile& file)
{
    TItemLint::check(file, key::status_reg_cfg, key::status_reg_def);
    TItemLint::check(file, key::fuse_cfg, key::fuse_def);
    TItemLint::check(file, key::lock_cfg, key::lock_def);
    TItemLint::check(file, key::osccal_cfg, key::osccal_def);
}

} // namespace

QStringList lintDescription(const QString& path, bool wholeChip, const TLintLists& lists)
{
    TLintFile file(path);
    const TFamily* family = familyOfClass(file.text(key::gui_type));
    checkKeys(file, keysOf(family), wholeChip);
    checkFamily(file, family, lists);
    if (!wholeChip)
        return file.faults();
    if (family)
        family->rules().check(file, lists);
    checkForms(file);
    return file.faults();
}
