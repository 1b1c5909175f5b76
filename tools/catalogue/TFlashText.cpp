#include "TFlashText.h"

#include "base/keys.h"
#include "base/texts.h"

#include <QMap>
#include <QtAlgorithms>

#include <algorithm>

namespace {

constexpr int mostRegisters = 3;

struct Flag
{
    const char* word;
    const char* text;
    Text warning = Text::None; ///< what warns where the chip is chosen
};

const Flag flags[] = {
    {"quad35",
     "Status registers are not served: the read command of a second one, 35, switches this chip to four "
     "wires."},
    {"maybe35", "Status registers are not served: command 35, which reads a second one, may switch this chip "
                "to four wires."},
    {"locked",
     "Blocks are locked after power-up: write 00 to the status register before erasing or programming."},
    {"locked98",
     "Blocks are locked after power-up, and the program does not send the command that frees them, 98.",
     Text::LockedNeeds98},
    {"ewsr",
     "Blocks are locked after power-up, and the write of the status register that frees them needs command "
     "50 before it, in place of 06.",
     Text::LockedNeeds50},
};

/// Bytes of the status registers: what the table says, else all that the commands know.
int statusBytes(const TTable::Row& chip)
{
    const int registers = int(chip.number("registers"));
    return registers > 0 ? registers : mostRegisters;
}

/// Where one size has several commands, the first of these is taken: the one that most chips have.
int rankOf(const QString& op)
{
    static const QStringList order{"20", "D8", "52", "D7", "81", "DB", "50"};
    const int place = order.indexOf(op);
    return place < 0 ? order.size() : place;
}

/// Block erases that fill the chip, by size: bytes and command.
QMap<qint64, QString> erasesOf(const TTable::Row& row)
{
    QMap<qint64, QString> erases;
    for (const QString& item : row.text("erases").split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString op = item.section(QLatin1Char(':'), 0, 0);
        const qint64 bytes = item.section(QLatin1Char(':'), 1).toLongLong();
        if (bytes < 1 || row.number("size") % bytes != 0)
            continue;
        if (!erases.contains(bytes) || rankOf(op) < rankOf(erases[bytes]))
            erases[bytes] = op;
    }
    return erases;
}

/// The number's bits put at the places of the mask, the lowest first.
uint scattered(uint number, uint mask)
{
    uint out = 0;
    for (uint bit = 1; bit < 0x100; bit <<= 1) {
        if ((mask & bit) == 0)
            continue;
        if ((number & 1U) != 0)
            out |= bit;
        number >>= 1;
    }
    return out;
}

QString fraction(qint64 part, qint64 size)
{
    return QStringLiteral("%1 (1/%2)").arg(sizeText(part), QString::number(size / part));
}

/// Areas that double with each step, from 1/64 of the chip, but at least 64 KiB, up to all of it.
QString blocksText(uint number, uint last, qint64 size)
{
    constexpr qint64 leastBlock = 65536;
    const qint64 area = qMax(leastBlock, size / 64) << (number - 1);
    return number == last || area >= size ? QStringLiteral("whole chip") : fraction(area, size);
}

/// The upper part of the chip in the first half of the numbers, the lower part in the second.
QString halvesText(uint number, uint last, qint64 size)
{
    const uint middle = (last + 1) / 2;
    if (number == last || number == middle || number == middle - 1)
        return QStringLiteral("whole chip");
    if (number < middle)
        return QStringLiteral("upper ") + fraction((size / 64) << (number - 1), size);
    const uint parts = 1U << (number - middle);
    return QStringLiteral("lower %1/%2").arg(parts - 1).arg(parts);
}

QString levelsText(uint number, uint last, qint64 /*size*/)
{
    return number == last ? QStringLiteral("whole chip")
                          : QStringLiteral("level %1, see the data sheet").arg(number);
}

using AreaText = QString (*)(uint number, uint last, qint64 size);

AreaText areaText(const QString& kind)
{
    static const QHash<QString, AreaText> kinds{
        {"blocks", blocksText}, {"halves", halvesText}, {"levels", levelsText}};
    return kinds.value(kind);
}

struct Choice
{
    uint value;
    QString text;
};

QList<Choice> choices(const TTable::Row& field, qint64 size)
{
    const QString kind = field.text("kind");
    const uint mask = field.hex("mask");
    const int bits = int(qPopulationCount(mask));
    QList<Choice> list;
    if (const AreaText text = areaText(kind)) {
        const uint last = (1U << bits) - 1;
        for (uint number = 0; number <= last; ++number) {
            const QString area = number == 0 ? QStringLiteral("nothing protected") : text(number, last, size);
            list.append(
                {scattered(number, mask),
                 QStringLiteral("%1 - %2").arg(QString::number(number, 2).rightJustified(bits, '0'), area)});
        }
        return list;
    }
    for (const QString& item : kind.split(QLatin1Char(';'))) {
        const uint value = item.section(QLatin1Char('='), 0, 0).toUInt(nullptr, 16);
        uint number = 0;
        int place = 0;
        for (uint bit = 1; bit < 0x100; bit <<= 1) {
            if ((mask & bit) != 0)
                number |= ((value & bit) != 0 ? 1U : 0U) << place++;
        }
        list.append(
            {value, QStringLiteral("%1 - %2").arg(QString::number(number, 2).rightJustified(bits, '0'),
                                                  item.section(QLatin1Char('='), 1))});
    }
    return list;
}

bool isShown(const TTable::Row& field)
{
    return field.text("kind").startsWith("shown");
}

/// How a register is reached: a remark above its fields.
QString origin(const TTable::Row& field, const QList<TTable::Row>& fields)
{
    const QString number = field.text("register");
    const auto isAny = [&fields](const auto& holds) {
        return std::any_of(fields.begin(), fields.end(), holds);
    };
    if (number == "1")
        return isAny([](const TTable::Row& other) { return other.text("register") == "2"; })
                   ? QStringLiteral("First register, read by 05, written by 01.")
                   : QStringLiteral("The one status register, read by 05, written by 01.");
    const bool isSecond = number == "2";
    const QString place = isSecond ? QStringLiteral("Second register, read by 35")
                                   : QStringLiteral("Third register, read by 15");
    if (isAny([&](const TTable::Row& other) { return other.text("register") == number && isShown(other); }))
        return place + QStringLiteral(". Without a write command of its own it is only shown.");
    return place + (isSecond ? QStringLiteral(", written by 31.") : QStringLiteral(", written by 11."));
}

void item(TChipText& text, int depth, const QString& line)
{
    text.line("status_reg_cfg", 'l', QString(2 * depth, QLatin1Char(' ')) + line);
}

void statusField(TChipText& text, const TTable::Row& field, const TTable::Row& chip)
{
    const int position = int(field.number("register")) - 1;
    const int bytes = statusBytes(chip);
    const QString mask = registerHex(field.hex("mask"), position, bytes);
    const QString kind = field.text("kind");
    const QString label = QStringLiteral("%1 - %2").arg(field.text("name"), field.text("text"));
    static const QStringList boxes{"bit", "once", "read", "shown", "shown-once"};
    if (boxes.contains(kind)) {
        const bool isEnabled = kind == "bit" || kind == "once";
        const bool isFinal = kind.endsWith("once");
        QStringList parts{"ckl", mask, "-", isEnabled ? "e" : "-", isFinal ? "a" : "-", label};
        if (!field.text("tip").isEmpty())
            parts.append(field.text("tip"));
        item(text, 2, parts.join(QLatin1Char('|')));
        return;
    }
    item(text, 2, QStringLiteral("cbl+|%1|%2").arg(mask, label));
    for (const Choice& choice : choices(field, chip.number("size")))
        item(text, 3,
             QStringLiteral("cbit|%1|%2").arg(registerHex(choice.value, position, bytes), choice.text));
    item(text, 2, QStringLiteral("cbl-"));
}

void memory(TChipText& text, const TTable::Row& row)
{
    text.heading("Identification, read by 9F");
    text.line("signature", 's', row.text("id"));
    text.line("alg_ident", 'd', 0);
    text.heading("Memory, bytes");
    text.line("addr_begin", 'D', 0);
    text.line("size", 'D', row.number("size"));
    text.line("page_size", 'u', row.number("page"));
    text.line("alg_flash_read", 'd', 0);
    text.line("alg_flash_write", 'd', 0);
    text.heading("Erase: command in hexadecimal, bytes that one command erases.");
    text.remark("A chip erase goes block by block, since C7 and 60 take no address bytes.");
    const QMap<qint64, QString> erases = erasesOf(row);
    const auto line = [&text](const char* key, char type, qint64 bytes, const QString& op) {
        text.line(key, type, QStringLiteral("%1|%2").arg(op, QString::number(bytes)));
    };
    if (!erases.isEmpty())
        line("erase", 's', erases.lastKey(), erases.last());
    for (auto it = erases.begin(); it != erases.end(); ++it)
        line("erase_blocks", 'l', it.key(), it.value());
    text.line("alg_erase", 'd', 0);
}

/// What a chip may have, but the tables do not say that it does.
QStringList notServed(const TTable::Row& row)
{
    QStringList names;
    if (row.text("unique_id").isEmpty())
        names.append(QStringLiteral("unique ID (command 4B)"));
    if (row.number("security") == 0)
        names.append(QStringLiteral("security registers (42, 44, 48)"));
    if (row.number("sfdp") == 0)
        names.append(QStringLiteral("SFDP area (5A)"));
    return names;
}

void areas(TChipText& text, const TTable::Row& row)
{
    const qint64 security = row.number("security");
    text.heading(security > 0 ? "Security registers of 256 bytes each, bytes in all"
                              : "Security registers: none");
    text.line("security_reg_size", 'D', security);
    for (const char* key : {"alg_security_reg_erase", "alg_security_reg_read", "alg_security_reg_write"})
        text.line(key, 'd', security > 0 ? 0 : 1);
    text.heading("Unique ID and SFDP area, bytes");
    text.line("alg_unique_id_read", 'd', row.text("unique_id").isEmpty() ? 1 : 0);
    text.line("sfdp_reg_size", 'D', row.number("sfdp"));
    text.line("alg_fsdp_read", 'd', row.number("sfdp") > 0 ? 0 : 1);
}

} // namespace

TFlashText::TFlashText(const TTable& chips, const TTable& status)
    : m_chips(chips)
    , m_status(status)
{
}

QString TFlashText::fault() const
{
    for (const TTable::Row& row : m_chips.rows()) {
        const QString form = row.text("status");
        if (!form.isEmpty() && m_status.rowsWith("form", form).isEmpty())
            return QStringLiteral("%1: no form %2").arg(row.text("chips"), form);
        if (erasesOf(row).isEmpty())
            return QStringLiteral("%1: no erase that fills the chip").arg(row.text("chips"));
        int highest = row.text("factory").size() / 2;
        for (const TTable::Row& field : m_status.rowsWith("form", form))
            highest = qMax(highest, int(field.number("register")));
        if (highest > statusBytes(row) || statusBytes(row) > mostRegisters)
            return QStringLiteral("%1: not as many registers").arg(row.text("chips"));
    }
    return {};
}

QList<TChip> TFlashText::chips() const
{
    QList<TChip> list;
    for (const TTable::Row& row : m_chips.rows()) {
        const QList<QPair<QString, QString>> traits{{"size", row.text("size")},
                                                    {"page", row.text("page")},
                                                    {"erase", row.text("erases")},
                                                    {"status registers", row.text("status")},
                                                    {"security registers", row.text("security")},
                                                    {"supply", supplyText(row)}};
        for (const QString& name : row.words("chips"))
            list.append({name, row.text("id"), "Serial flash, " + row.text("maker"), row, traits});
    }
    return list;
}

QByteArray TFlashText::description(const TChip& chip, const QList<TChip>& sameSignature) const
{
    const qint64 size = chip.row.number("size");
    const qint64 kilobits = size * 8 / 1024;
    const QString bits = kilobits >= 1024 ? QStringLiteral("%1 Mbit").arg(kilobits / 1024)
                                          : QStringLiteral("%1 Kbit").arg(kilobits);
    TChipText text(QStringLiteral("%1 %2: serial NOR flash, %3 (%4)")
                       .arg(chip.row.text("maker"), chip.name, bits, sizeText(size)));
    text.source(chip.row);
    text.family(*familyOfClass(dev_class::dev25));
    remarks(text, chip, sameSignature);
    memory(text, chip.row);
    statusRegisters(text, chip.row);
    areas(text, chip.row);
    return text.bytes();
}

void TFlashText::remarks(TChipText& text, const TChip& chip, const QList<TChip>& sameSignature) const
{
    const TTable::Row& row = chip.row;
    const qint64 page = row.number("page");
    text.info(QStringLiteral("%1 %2").arg(row.text("maker"), chip.name));
    QStringList facts{sizeText(row.number("size")), page == 1
                                                        ? QStringLiteral("programmed byte by byte")
                                                        : QStringLiteral("pages of %1 bytes").arg(page)};
    if (!supplyText(row).isEmpty())
        facts.append(supplyText(row));
    text.info(facts.join(QStringLiteral(", ")));
    for (const Flag& flag : flags) {
        if (row.words("flags").contains(flag.word))
            text.info(flag.text);
    }
    for (const TTable::Row& field : m_status.rowsWith("form", row.text("status"))) {
        if (field.number("register") == 2 && isShown(field)) {
            text.info("Status register 2 has no write command of its own; writing register 1 may clear it.");
            break;
        }
    }
    text.sharedSignature(chip, sameSignature);
    const QStringList absent = notServed(row);
    if (!absent.isEmpty())
        text.info(QStringLiteral("Not served, as not known for certain: %1.")
                      .arg(absent.join(QStringLiteral(", "))));
    for (const Flag& flag : flags) {
        if (flag.warning != Text::None && row.words("flags").contains(flag.word))
            text.line("warning", 'l', int(flag.warning));
    }
    text.comments(row.text("remark"));
}

void TFlashText::statusRegisters(TChipText& text, const TTable::Row& chip) const
{
    const QList<TTable::Row> fields = m_status.rowsWith("form", chip.text("status"));
    text.heading("Status registers");
    const QString factory = chip.text("factory").isEmpty() ? QString(2 * statusBytes(chip), QLatin1Char('0'))
                                                           : chip.text("factory");
    if (chip.number("registers") > 0)
        text.line("status_reg_count", 'u', chip.number("registers"));
    text.line("status_reg_def", 's', factory);
    text.line("alg_status_reg_read", 'd', fields.isEmpty() ? 1 : 0);
    text.line("alg_status_reg_write", 'd', fields.isEmpty() ? 1 : 0);
    if (fields.isEmpty())
        return;
    item(text, 0, "frm+");
    QString title;
    for (const TTable::Row& field : fields) {
        if (field.text("title") != title) {
            if (!title.isEmpty())
                item(text, 1, "grp-");
            title = field.text("title");
            text.remark(origin(field, fields));
            item(text, 1, "grp+|" + title);
        }
        statusField(text, field, chip);
    }
    item(text, 1, "grp-");
    item(text, 1, "grp+|Preset");
    // What most chips are shipped with; where the chip protects itself it is only a value to begin with.
    const QStringList flagWords = chip.words("flags");
    const bool isOther = std::any_of(flagWords.begin(), flagWords.end(), [](const QString& word) {
        return QStringList({"locked", "locked98", "ewsr", "unshipped"}).contains(word);
    });
    const bool isFactory = !isOther && chip.text("status") != "report";
    item(text, 2,
         QStringLiteral("btn|%1|21|%2|Nothing is protected")
             .arg(factory, QLatin1String(isFactory ? "Factory value" : "All open")));
    item(text, 1, "grp-");
    item(text, 0, "frm-");
}
