#include "forms/chip/TFormDevRWVFile.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "formats/data/TFormat.h"
#include "forms/chip/rw_region.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtEditFileName.h"
#include "forms/edits/TWgtEditHexDec64.h"
#include "forms/edits/file_filters.h"

#include <QFormLayout>
#include <QSignalBlocker>

TFormDevRWVFile::TFormDevRWVFile(const TData& params)
    : TFormCommand(params, {key::file, key::format, key::addr_file, key::addr_device, key::count})
    , m_file(new TWgtEditFileName(textParam(key::file)))
    , m_format(new TComboBox)
    , m_addrFile(new TWgtEditHexDec64(0))
    , m_addrDevice(new TWgtEditHexDec64(0))
    , m_count(new TWgtEditHexDec64(0))
{
    const bool isRead = params.value(key::cmd).toString().contains(QLatin1String("read"));
    m_file->setPurpose(isRead ? TWgtEditFileName::Save : TWgtEditFileName::Open);
    m_file->setFilter(dataFileFilter());
    m_file->setTitle(langText(Text::SelectDataFile));
    m_file->setButtonTip(langText(Text::TipBrowseDataFile));
    m_format->addItems(TFormat::formatList());
    addRows();
    TFormDevRWVFile::showParams();
    connect(m_file, &TWgtEditFileName::signalChanged, this, &TFormDevRWVFile::slotChanged);
    connect(m_format, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &TFormDevRWVFile::changedFormat);
    connect(m_addrFile, &TWgtEditHexDec64::valueChanged, this, &TFormDevRWVFile::slotChanged);
    connect(m_addrDevice, &TWgtEditHexDec64::valueChanged, this, &TFormDevRWVFile::changedAddr);
    connect(m_count, &TWgtEditHexDec64::valueChanged, this, &TFormDevRWVFile::slotChanged);
}

void TFormDevRWVFile::addRows()
{
    QFormLayout* rows = formRows(this);
    rows->addRow(langText(Text::LabelFile), m_file);
    rows->addRow(langText(Text::LabelFileFormat), m_format);
    rows->addRow(langText(Text::LabelAddrFile), m_addrFile);
    rows->addRow(langText(Text::LabelAddrDevice), m_addrDevice);
    rows->addRow(langText(Text::LabelFileCount), m_count);
}

void TFormDevRWVFile::setBaseFolder(const QString& folder)
{
    m_file->setBaseFolder(folder);
}

void TFormDevRWVFile::setRegion(const TRegion& region)
{
    m_region = region;
    setAddressRange(m_addrDevice, region);
    setCountRange(m_count, region, m_addrDevice->value());
    m_count->setDefaultValue(region.size);
}

void TFormDevRWVFile::showFileRange()
{
    const TFormat::Kind* known = TFormat::find(m_format->currentText());
    const TFormat::Kind& format = known ? *known : TFormat::kinds().front();
    m_addrFile->setRange(0, format.greatestAddr);
    // A file with addresses of its own has no use for an offset: it is kept, and cannot be edited.
    m_addrFile->setEnabled(!format.hasAddresses);
}

void TFormDevRWVFile::changedAddr()
{
    fitCount(m_count, m_region, m_addrDevice->value());
    slotChanged();
}

void TFormDevRWVFile::changedFormat()
{
    showFileRange();
    slotChanged();
}

void TFormDevRWVFile::slotChanged()
{
    setParam(key::file, m_file->value());
    if (m_format->currentIndex() >= 0)
        setParam(key::format, m_format->currentText());
    setParam(key::addr_file, m_addrFile->stored());
    setParam(key::addr_device, m_addrDevice->stored());
    setParam(key::count, m_count->stored());
    report();
}

void TFormDevRWVFile::showParams()
{
    if (m_file->value() != textParam(key::file))
        m_file->setValue(textParam(key::file));
    const QSignalBlocker blocker(m_format);
    m_format->setCurrentIndex(m_format->findText(textParam(key::format), Qt::MatchFixedString));
    m_format->slotChanged();
    showFileRange();
    showStored(m_addrFile, key::addr_file);
    showStored(m_addrDevice, key::addr_device);
    setCountRange(m_count, m_region, m_addrDevice->value());
    showStored(m_count, key::count);
}

QVariant TFormDevRWVFile::kept() const
{
    return keptCount(m_count->value(), m_count->wish());
}

void TFormDevRWVFile::takeKept(const QVariant& kept)
{
    m_count->setWish(wishOfKept(kept, m_count->value()));
}
