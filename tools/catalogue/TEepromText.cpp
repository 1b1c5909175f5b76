#include "TEepromText.h"

#include "base/keys.h"

namespace {

/// Bits of the address that do not fit the bytes sent behind the control byte.
int upperBits(const TTable::Row& row)
{
    int bits = 0;
    for (qint64 rest = row.number("size") >> (8 * row.number("addr_bytes")); rest > 1; rest >>= 1)
        ++bits;
    return bits;
}

QString upperText(int bits)
{
    const QString which = bits == 1 ? QStringLiteral("upper address bit travels")
                                    : QStringLiteral("upper %1 address bits travel").arg(bits);
    return QStringLiteral("The %1 in the control byte, where smaller chips have address pins.").arg(which);
}

void remarks(TChipText& text, const TChip& chip)
{
    const TTable::Row& row = chip.row;
    const bool isAny = row.text("maker") == "any";
    text.info(isAny ? QStringLiteral("%1 of any maker").arg(chip.name)
                    : QStringLiteral("%1 %2").arg(row.text("maker"), chip.name));
    QString facts =
        QStringLiteral("%1, pages of %2 bytes").arg(sizeText(row.number("size")), row.text("page"));
    if (!supplyText(row).isEmpty())
        facts += QStringLiteral(", ") + supplyText(row);
    text.info(facts);
    text.info(QStringLiteral("Bus clock up to %1 kHz; lower at low supply on most versions")
                  .arg(row.text("max_khz")));
    text.comments(row.text("remark"));
    if (row.number("read_block") > 0)
        text.comment(
            QStringLiteral("Reads are cut at each %1, where the address counter of the chip turns back.")
                .arg(sizeText(row.number("read_block"))));
    if (upperBits(row) > 0)
        text.comment(upperText(upperBits(row)));
}

} // namespace

TEepromText::TEepromText(const TTable& chips)
    : m_chips(chips)
{
}

QList<TChip> TEepromText::chips() const
{
    QList<TChip> list;
    for (const TTable::Row& row : m_chips.rows()) {
        const QString maker = row.text("maker");
        list.append({row.text("chip"), {}, "I2C EEPROM, " + (maker == "any" ? "any maker" : maker), row, {}});
    }
    return list;
}

QByteArray TEepromText::description(const TChip& chip)
{
    const TTable::Row& row = chip.row;
    const qint64 bits = row.number("size") * 8;
    const QString bitText = bits >= 1LL << 20 ? QStringLiteral("%1 Mbit").arg(bits / 1024 / 1024)
                                              : QStringLiteral("%1 Kbit").arg(bits / 1024);
    const QString name = row.text("maker") == "any" ? chip.name : row.text("maker") + ' ' + chip.name;
    TChipText text(
        QStringLiteral("%1: I2C EEPROM, %2 (%3)").arg(name, bitText, sizeText(row.number("size"))));
    if (row.text("maker") == "any")
        text.remark(
            "What all makers share: the smallest page, the longest write time, every address pin that one "
            "of them has.");
    text.source(row);
    text.family(*familyOfClass(dev_class::dev24));
    remarks(text, chip);
    text.heading("Memory, bytes");
    text.line("addr_begin", 'D', 0);
    text.line("size", 'D', row.number("size"));
    text.line("page_size", 'u', row.number("page"));
    if (row.number("read_block") > 0)
        text.line("read_block", 'D', row.number("read_block"));
    text.line("alg_read", 'd', 0);
    text.line("alg_write", 'd', 0);
    text.heading("Addressing: address bytes behind the control byte; pins A2, A1, A0 that the chip has");
    text.line("addr_size", 'u', row.number("addr_bytes"));
    text.line("addr_mask", 'b', row.text("pins"));
    text.heading("Longest time of a write, milliseconds");
    text.line("delay", 'u', row.number("write_ms"));
    return text.bytes();
}
