#include "forms/tools/TFormToolsCalcCRC.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "formats/crc/createCRC.h"
#include "formats/data/TFormat.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtEditFileName.h"
#include "forms/edits/TWgtEditHexDec.h"
#include "forms/edits/TWgtEditHexDec64.h"
#include "forms/edits/file_filters.h"

#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <limits>

namespace {

constexpr int listLines = 20;
constexpr int erased = 255; // what an empty place of a chip reads

void addTitle(QFormLayout* layout, const QString& text)
{
    auto* title = new QLabel(text);
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    layout->addRow(title);
}

} // namespace

TFormToolsCalcCRC::TFormToolsCalcCRC(const TData& params)
    : TFormCommand(params, {key::crc_name, key::format, key::file, key::addr, key::count, key::fill})
{
    QFormLayout* layout = formRows(this);
    addTitle(layout, langText(Text::TitleCrc));
    m_name = addBox(layout, Text::LabelCrcName, key::crc_name, crcNames());
    m_format = addBox(layout, Text::LabelCrcFormat, key::format, TFormat::formatList());
    m_file = addFile(layout);
    m_addr = addNumber(layout, Text::LabelCrcAddr, key::addr);
    m_count = addNumber(layout, Text::LabelCrcCount, key::count);
    m_fill = addFill(layout);
    TFormToolsCalcCRC::showParams();
}

TComboBox* TFormToolsCalcCRC::addBox(QFormLayout* layout, Text label, const QString& key,
                                     const QStringList& choice)
{
    auto* box = new TComboBox(this);
    box->setMaxVisibleItems(listLines);
    box->allowNarrow();
    box->addItems(choice);
    box->setCurrentIndex(-1);
    layout->addRow(langText(label), box);
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, key, box](int index) {
        if (index >= 0)
            enter(key, box->itemText(index));
    });
    return box;
}

TWgtEditFileName* TFormToolsCalcCRC::addFile(QFormLayout* layout)
{
    auto* edit = new TWgtEditFileName(QString(), this);
    edit->setBaseFolder(project().workPath());
    edit->setTitle(langText(Text::SelectDataFile));
    edit->setFilter(dataFileFilter());
    edit->setButtonTip(langText(Text::TipBrowseDataFile));
    layout->addRow(langText(Text::LabelCrcFile), edit);
    connect(edit, &TWgtEditFileName::signalChanged, this,
            [this](const QString& file) { enter(key::file, file); });
    return edit;
}

TWgtEditHexDec64* TFormToolsCalcCRC::addNumber(QFormLayout* layout, Text label, const QString& key)
{
    auto* edit = new TWgtEditHexDec64(0, this);
    edit->setRange(0, std::numeric_limits<qlonglong>::max());
    edit->setDefaultValue(0);
    layout->addRow(langText(label), edit);
    connect(edit, &TWgtEditHexDec64::valueChanged, this, [this, key](qlonglong value) { enter(key, value); });
    return edit;
}

TWgtEditHexDec* TFormToolsCalcCRC::addFill(QFormLayout* layout)
{
    auto* edit = new TWgtEditHexDec(0, this);
    edit->setRange(0, std::numeric_limits<quint8>::max());
    edit->setDefaultValue(erased);
    layout->addRow(langText(Text::LabelCrcFill), edit);
    connect(edit, &TWgtEditHexDec::valueChanged, this, [this](int value) { enter(key::fill, value); });
    return edit;
}

void TFormToolsCalcCRC::showParams()
{
    showText(m_name, key::crc_name);
    showText(m_format, key::format);
    if (m_file->value() != textParam(key::file))
        m_file->setValue(textParam(key::file));
    showStored(m_addr, key::addr);
    showStored(m_count, key::count);
    showStored(m_fill, key::fill);
}

/// The word of a format may have been written in small letters; names of checksums differ by case.
void TFormToolsCalcCRC::showText(TComboBox* box, const QString& key)
{
    const QSignalBlocker blocker(box);
    const QString text = key == QString(key::format) ? textParam(key).toUpper() : textParam(key);
    box->setCurrentIndex(box->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    box->slotChanged();
}

void TFormToolsCalcCRC::enter(const QString& key, const QVariant& value)
{
    setParam(key, value);
    slotChanged();
}

void TFormToolsCalcCRC::slotChanged()
{
    report();
}
