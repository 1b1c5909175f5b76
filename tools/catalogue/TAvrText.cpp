#include "TAvrText.h"

#include "base/keys.h"

#include <QRegularExpression>
#include <QtAlgorithms>

namespace {

constexpr qint64 largeFlash = 0x10000;

struct Way
{
    const char* word;
    const char* text;
};

const Way ways[] = {{"HVPP", "high voltage parallel programming"},
                    {"HVSP", "high voltage serial programming"}};

QString wayBack(const TTable::Row& chip)
{
    for (const Way& way : ways) {
        if (chip.words("ways_back").contains(way.word))
            return way.text;
    }
    return QStringLiteral("the debug interface");
}

void item(TChipText& text, const char* key, int depth, const QString& line)
{
    text.line(key, 'l', QString(2 * depth, QLatin1Char(' ')) + line);
}

/// What the box of a fuse says when the pointer rests on it. Names the way back where there is hardly one.
QString tipOf(const TTable::Row& field, const QString& unprogrammed, const TTable::Row& chip)
{
    if (field.text("danger") != "isp")
        return QStringLiteral("Programmed when checked. Unchecked: %1").arg(unprogrammed);
    const QString back = wayBack(chip);
    if (field.hex("danger_value") != 0)
        return QStringLiteral("Unchecking ends serial programming; only %1 leads back").arg(back);
    if (field.text("field") == "DWEN")
        return QStringLiteral("Checking ends serial programming until the debug interface or %1 switches it "
                              "off. Unchecked: %2")
            .arg(back, unprogrammed);
    return QStringLiteral("Checking ends serial programming; only %1 leads back. Unchecked: %2")
        .arg(back, unprogrammed);
}

/// A meaning that is a bare level says nothing without the name of what it is a level of.
QString withSubject(const TTable::Row& field, const QString& meaning)
{
    const bool isBare = !meaning.isEmpty() && meaning.at(0).isDigit();
    return isBare ? field.text("about") + QLatin1Char(' ') + meaning : meaning;
}

void pacing(TChipText& text, const char* what, bool polls, qint64 delay)
{
    const QByteArray name(what);
    text.line((name + "_polling").constData(), 'b', polls ? 1 : 0);
    text.line((name + "_delay").constData(), 'u', delay);
}

void memories(TChipText& text, const TTable::Row& chip)
{
    const qint64 page = chip.number("flash_page");
    // Frames carry 16 bits of the byte address; above that the chip is told the rest.
    const bool isLarge = chip.number("flash") > largeFlash;
    text.heading("Identification");
    text.line("signature", 's', chip.text("signature"));
    text.line("alg_ident", 'd', 0);
    text.heading("Chip erase; waiting times in milliseconds");
    pacing(text, "erase", chip.text("erase_wait") == "ready", chip.number("erase_delay"));
    text.line("alg_erase", 'd', 0);
    text.heading(isLarge ? "Flash, bytes; above 64 KiB with the extended address" : "Flash, bytes");
    text.line("flash_addr_begin", 'D', 0);
    text.line("flash_size", 'D', chip.number("flash"));
    text.line("flash_page_size", 'u', page);
    pacing(text, "flash", chip.text("flash_wait") == "ready", chip.number("flash_delay"));
    text.line("alg_flash_read", 'd', isLarge ? 1 : 0);
    text.line("alg_flash_write", 'd', isLarge ? 2 : page > 0 ? 1 : 0);
    text.heading("EEPROM, bytes");
    text.line("eeprom_addr_begin", 'D', 0);
    text.line("eeprom_size", 'D', chip.number("eeprom"));
    if (chip.number("eeprom_page") > 0)
        text.line("eeprom_page_size", 'u', chip.number("eeprom_page"));
    pacing(text, "eeprom", chip.text("eeprom_wait") == "ready", chip.number("eeprom_delay"));
    text.line("alg_eeprom_read", 'd', 0);
    text.line("alg_eeprom_write", 'd', 0);
    static const char* const lists[] = {"no fuses, of the lock bits only writing", "all but the calibration",
                                        "all"};
    const int list = int(chip.number("commands"));
    text.heading(QStringLiteral("Which commands the chip has: %1").arg(QLatin1String(lists[list])));
    text.line("cfg_cmd_list", 'd', list);
}

void calibration(TChipText& text, const TTable::Row& chip)
{
    const QStringList labels = chip.text("calibration").split(QLatin1Char(';'), Qt::SkipEmptyParts);
    if (chip.number("commands") == 0)
        return;
    text.heading("Calibration of the internal oscillator, read only");
    const int bytes = qMax(1, labels.size());
    text.line("osccal_def", 's', QString(2 * bytes, QLatin1Char('0')));
    text.line("alg_osccal_read", 'd', 0);
    item(text, "osccal_cfg", 0, "frm+");
    for (int i = 0; i < labels.size(); ++i)
        item(text, "osccal_cfg", 1,
             QStringLiteral("edr|%1|ro|40|%2:").arg(registerHex(0xFF, i, bytes), labels[i]));
    item(text, "osccal_cfg", 0, "frm-");
}

void remarks(TChipText& text, const TChip& chip, const QList<TChip>& sameSignature)
{
    const TTable::Row& row = chip.row;
    const qint64 page = row.number("flash_page");
    text.info(chip.name);
    text.info(QStringLiteral("Flash %1 %2, EEPROM %3")
                  .arg(sizeText(row.number("flash")),
                       page > 0 ? QStringLiteral("in pages of %1 bytes").arg(page)
                                : QStringLiteral("without pages"),
                       sizeText(row.number("eeprom"))));
    QString supply = supplyText(row);
    if (!supply.isEmpty())
        supply[0] = supply[0].toUpper();
    if (row.number("max_khz") > 0)
        supply += QStringLiteral(", clock up to %1 MHz").arg(double(row.number("max_khz")) / 1000);
    text.info(supply);
    if (!row.text("remark").isEmpty())
        text.info(row.text("remark"));
    text.sharedSignature(chip, sameSignature);
    text.comment("The programming clock must stay below a quarter of the clock that the chip runs on.");
}

} // namespace

TAvrText::TAvrText(const TTable& chips, const TTable& layouts, const TTable& values)
    : m_chips(chips)
{
    for (const TTable::Row& row : layouts.rows())
        m_layouts[row.text("layout")].append(row);
    for (const TTable::Row& row : values.rows())
        m_values[row.text("list")].append({row.hex("value"), row.text("meaning")});
}

QString TAvrText::fault() const
{
    constexpr int mostFuseBytes = 3;
    for (const TTable::Row& row : m_chips.rows()) {
        const QStringList fuses = row.words("fuse_layouts");
        if (row.number("commands") != 0 && (fuses.isEmpty() || fuses.size() > mostFuseBytes))
            return QStringLiteral("%1: 1 to 3 fuse_layouts").arg(row.text("name"));
        for (const QString& layout : fuses + QStringList(row.text("lock_layout"))) {
            if (!m_layouts.contains(layout))
                return QStringLiteral("%1: no layout %2").arg(row.text("name"), layout);
        }
    }
    for (const QList<TTable::Row>& fields : m_layouts) {
        for (const TTable::Row& field : fields) {
            if (!m_values.contains(field.text("values")))
                return QStringLiteral("%1: no values %2").arg(field.text("layout"), field.text("values"));
        }
    }
    return {};
}

QList<TChip> TAvrText::chips() const
{
    QList<TChip> list;
    for (const TTable::Row& row : m_chips.rows()) {
        const QString name = row.text("name");
        const int digits = name.indexOf(QRegularExpression(QStringLiteral("\\d")));
        const QString group = name.startsWith("AT90S")  ? "AT90S"
                              : name.startsWith("AT90") ? "AT90"
                                                        : name.left(digits);
        list.append({name,
                     row.text("signature"),
                     "AVR, " + group,
                     row,
                     {{"flash", row.text("flash") + '/' + row.text("flash_page")},
                      {"EEPROM", row.text("eeprom")},
                      {"fuses", row.text("fuse_layouts")},
                      {"factory fuses", row.text("fuse_def")},
                      {"lock bits", row.text("lock_layout")}}});
    }
    return list;
}

QByteArray TAvrText::description(const TChip& chip, const QList<TChip>& sameSignature) const
{
    TChipText text(
        QStringLiteral("%1: 8-bit AVR, %2 flash, %3 EEPROM")
            .arg(chip.name, sizeText(chip.row.number("flash")), sizeText(chip.row.number("eeprom"))));
    text.source(chip.row);
    text.family(*familyOfClass(dev_class::avr8_spi));
    remarks(text, chip, sameSignature);
    memories(text, chip.row);
    fuses(text, chip.row);
    lock(text, chip.row);
    calibration(text, chip.row);
    return text.bytes();
}

void TAvrText::fuses(TChipText& text, const TTable::Row& chip) const
{
    static const QStringList titles{"Low fuse byte", "High fuse byte", "Extended fuse byte"};
    static const QStringList headings{"", "The fuse byte;", "Fuse bytes in the order low, high;",
                                      "Fuse bytes in the order low, high, extended;"};
    const QStringList layouts = chip.words("fuse_layouts");
    if (chip.number("commands") == 0 || layouts.isEmpty())
        return;
    QList<Byte> bytes;
    for (int i = 0; i < layouts.size(); ++i)
        bytes.append({layouts.size() == 1 ? "Fuse byte" : titles.value(i), layouts[i]});
    text.heading(
        QStringLiteral("%1 a fuse is programmed when its bit is 0").arg(headings.value(layouts.size())));
    text.line("fuse_def", 's', chip.text("fuse_def"));
    pacing(text, "fuse", false, chip.number("fuse_delay"));
    text.line("alg_fuse_read", 'd', chip.number("fuse_read"));
    text.line("alg_fuse_write", 'd', chip.number("fuse_write"));
    form(text, "fuse_cfg", bytes, chip.text("fuse_def"), chip);
}

void TAvrText::lock(TChipText& text, const TTable::Row& chip) const
{
    text.heading("Lock byte");
    text.line("lock_def", 's', chip.text("lock_def"));
    pacing(text, "lock", false, chip.number("lock_delay"));
    if (chip.number("commands") != 0)
        text.line("alg_lock_read", 'd', chip.number("lock_read"));
    text.line("alg_lock_write", 'd', chip.number("lock_write"));
    form(text, "lock_cfg", {{"Lock byte", chip.text("lock_layout")}}, chip.text("lock_def"), chip);
}

void TAvrText::form(TChipText& text, const char* key, const QList<Byte>& bytes, const QString& factory,
                    const TTable::Row& chip) const
{
    item(text, key, 0, "frm+");
    for (int i = 0; i < bytes.size(); ++i) {
        const auto hex = [&](uint byte) { return registerHex(byte, i, bytes.size()); };
        item(text, key, 1, "grp+|" + bytes[i].title);
        for (const TTable::Row& field : m_layouts.value(bytes[i].layout)) {
            const QList<QPair<uint, QString>> values = valuesOf(field.text("values"));
            const uint mask = field.hex("mask");
            const QString name = field.text("field");
            if (qPopulationCount(mask) == 1 && values.size() == 2 && field.text("danger") != "clock") {
                item(text, key, 2,
                     QStringList{"ckl", hex(mask), "i", "e", field.text("danger") == "isp" ? "a" : "-",
                                 QStringLiteral("%1 - %2").arg(name, withSubject(field, values[0].second)),
                                 tipOf(field, values[1].second, chip)}
                         .join('|'));
                continue;
            }
            item(text, key, 2, QStringLiteral("cbtl+|%1|%2 - %3").arg(hex(mask), name, field.text("about")));
            for (const auto& [value, meaning] : values)
                item(text, key, 3,
                     QStringLiteral("cbit|%1|%2 - %3").arg(hex(value), registerHex(value, 0, 1), meaning));
            item(text, key, 2, "cbtl-");
            if (field.text("danger") == "clock")
                item(text, key, 2,
                     "lb|A clock source that is not there makes the chip silent until one is supplied.");
            if (field.text("danger") == "erase")
                item(text, key, 2,
                     "lb|A lock can be tightened at any time and is undone only by a chip erase.");
        }
        item(text, key, 1, "grp-");
    }
    item(text, key, 1, "grp+|Preset");
    item(text, key, 2, QStringLiteral("btn|%1|21|Factory value|As the chip is shipped").arg(factory));
    item(text, key, 1, "grp-");
    item(text, key, 0, "frm-");
}
