#include "forms/chip/TFormDevRWVData.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/chip/rw_region.h"
#include "forms/edits/TTextKeys.h"
#include "forms/edits/TWgtEditHexDec64.h"
#include "forms/edits/TWgtEditStrHex.h"
#include "forms/edits/colors.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace {

constexpr int bytesInLine = 8;

/// The digits of a text; a stored one may hold white space of any kind.
QString withoutBlanks(const QString& text)
{
    QString digits;
    digits.reserve(text.size());
    for (const QChar c : text) {
        if (!c.isSpace())
            digits.append(c.toUpper());
    }
    return digits;
}

/// Digits in pairs, so that a person can count the bytes.
QString inPairs(const QString& digits)
{
    QString text;
    text.reserve(digits.size() / 2 * 3 + 1);
    for (int i = 0; i < digits.size(); i += 2) {
        if (i > 0)
            text.append(QLatin1Char(' '));
        text.append(digits.mid(i, 2));
    }
    return text;
}

/// One line of the dump for each bytesInLine bytes, with its address in front.
QString dump(qint64 addr, const QString& digits)
{
    const qint64 last = lastAddress(addr, qMax(1, digits.size() / 2));
    const int width = hex(qlonglong(last)).size();
    QStringList lines;
    for (int i = 0; i < digits.size(); i += 2 * bytesInLine) {
        const qint64 lineAddr = qint64(quint64(addr) + quint64(i / 2));
        lines.append(QStringLiteral("0x%1: %2")
                         .arg(hex(qlonglong(lineAddr)).rightJustified(width, QLatin1Char('0')),
                              inPairs(digits.mid(i, 2 * bytesInLine))));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

TFormDevRWVData::TFormDevRWVData(const TData& params)
    : TFormCommand(params, {key::addr_device, key::data})
    , m_addr(new TWgtEditHexDec64(0))
    , m_bytes(new TWgtEditStrHex(QString()))
{
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    m_bytes->lineEdit()->setFont(fixed);
    // What is stored must come back whole from the line, however long it is.
    m_bytes->lineEdit()->setMaxLength(std::numeric_limits<int>::max());
    QFormLayout* rows = formRows(this);
    rows->addRow(langText(Text::LabelDataAddr), m_addr);
    rows->addRow(langText(Text::LabelDataBytes), m_bytes);
    if (params.value(key::cmd).toString().contains(QLatin1String("read"))) {
        m_result = new QPlainTextEdit;
        m_result->setReadOnly(true);
        new TTextKeys(m_result);
        m_result->setLineWrapMode(QPlainTextEdit::NoWrap);
        m_result->setFont(fixed);
        rows->addRow(langText(Text::LabelDataRead), m_result);
    }
    TFormDevRWVData::showParams();
    connect(m_addr, &TWgtEditHexDec64::valueChanged, this, &TFormDevRWVData::slotChanged);
    connect(m_bytes->lineEdit(), &QLineEdit::textChanged, this, &TFormDevRWVData::slotEditing);
    connect(m_bytes, &TWgtEditStrHex::valueChanged, this, &TFormDevRWVData::editingFinished);
}

void TFormDevRWVData::setRegion(const TRegion& region)
{
    m_region = region;
    setAddressRange(m_addr, region);
    slotEditing();
}

void TFormDevRWVData::setDefault(qint64 addr)
{
    m_addr->setDefaultValue(addr);
}

QString TFormDevRWVData::text() const
{
    return textParam(key::data);
}

void TFormDevRWVData::slotEditing()
{
    const int digits = withoutBlanks(m_bytes->lineEdit()->text()).size();
    // An address outside is marked itself; the bytes may be as many as the memory has then.
    const qint64 last = lastAddress(m_region.begin, m_region.size);
    const qint64 room = m_addr->fits() ? last - m_addr->value() + 1 : m_region.size;
    m_bytes->setFault(digits % 2 != 0 || digits / 2 > room);
    m_bytes->setRangeText(
        QStringLiteral("%1..%2").arg(QString::number(qMin<qint64>(1, room)), QString::number(room)));
}

void TFormDevRWVData::editingFinished()
{
    setParam(key::data, withoutBlanks(m_bytes->value()));
    showBytes();
    slotChanged();
}

void TFormDevRWVData::slotChanged()
{
    setParam(key::addr_device, m_addr->stored());
    slotEditing();
    showResult();
    report();
}

void TFormDevRWVData::showBytes()
{
    const QSignalBlocker blocker(m_bytes);
    m_bytes->setValue(inPairs(withoutBlanks(text())));
    slotEditing();
}

void TFormDevRWVData::showResult()
{
    if (m_result)
        m_result->setPlainText(dump(m_addr->value(), withoutBlanks(text())));
}

void TFormDevRWVData::showParams()
{
    showStored(m_addr, key::addr_device);
    if (!m_bytes->isEditing())
        showBytes();
    showResult();
}
