#include "TChip.h"

TChipText::TChipText(const QString& title)
    : m_text(QStringLiteral("# %1\n%2\n").arg(title, QString::fromLatin1(mark())))
{
}

QByteArray TChipText::mark()
{
    return "# Made by velmarkion-catalogue from the tables in data/chips: change it there.";
}

void TChipText::heading(const QString& text)
{
    m_text += QLatin1Char('\n');
    remark(text);
}

void TChipText::line(const char* key, char type, const QString& value)
{
    m_text += QLatin1String(key) + QStringLiteral(" = ") + QLatin1Char(type) + QLatin1Char('|') + value +
              QLatin1Char('\n');
}

void TChipText::source(const TTable::Row& row)
{
    if (!row.text("source").isEmpty())
        remark("Source: " + row.text("source"));
}

void TChipText::family(const TFamily& family)
{
    heading(QStringLiteral("Family and programmer"));
    line("gui_type", 's', family.word);
    line("prg_type", 's', family.type);
    line("prg_section", 's', family.section);
    line("cfg_hw", 'u', 0);
    heading(QStringLiteral("Remarks shown with the chip"));
}

void TChipText::comments(const QString& sentences)
{
    if (sentences.isEmpty())
        return;
    QString rest = sentences;
    for (int end = rest.indexOf(QLatin1String(". ")); end >= 0; end = rest.indexOf(QLatin1String(". "))) {
        comment(rest.left(end + 1));
        rest = rest.mid(end + 2);
    }
    comment(rest);
}

void TChipText::sharedSignature(const TChip& chip, const QList<TChip>& sameSignature)
{
    QStringList names;
    QStringList unlike;
    for (const TChip& other : sameSignature) {
        if (other.name == chip.name)
            continue;
        names.append(other.name);
        QStringList traits;
        for (int i = 0; i < chip.traits.size(); ++i) {
            if (chip.traits[i].second != other.traits[i].second)
                traits.append(chip.traits[i].first);
        }
        if (!traits.isEmpty())
            unlike.append(QStringLiteral("%1 (%2)").arg(other.name, traits.join(QStringLiteral(", "))));
    }
    if (!names.isEmpty())
        info(QStringLiteral("The same signature: %1").arg(names.join(QStringLiteral(", "))));
    if (!unlike.isEmpty())
        info(QStringLiteral("Not alike: %1; read the name on the chip.")
                 .arg(unlike.join(QStringLiteral(", "))));
}

QString sizeText(qint64 bytes)
{
    constexpr qint64 kibi = 1024;
    if (bytes >= kibi * kibi && bytes % (kibi * kibi) == 0)
        return QStringLiteral("%1 MiB").arg(bytes / kibi / kibi);
    if (bytes >= kibi && bytes % kibi == 0)
        return QStringLiteral("%1 KiB").arg(bytes / kibi);
    return bytes == 1 ? QStringLiteral("1 byte") : QStringLiteral("%1 bytes").arg(bytes);
}

QString supplyText(const TTable::Row& row)
{
    constexpr double milli = 1000;
    if (row.text("min_mv").isEmpty())
        return {};
    return QStringLiteral("supply %1..%2 V")
        .arg(QString::number(double(row.number("min_mv")) / milli),
             QString::number(double(row.number("max_mv")) / milli));
}

QString registerHex(uint byte, int position, int length)
{
    QByteArray bytes(length, '\0');
    bytes[position] = char(byte);
    return QString::fromLatin1(bytes.toHex().toUpper());
}
