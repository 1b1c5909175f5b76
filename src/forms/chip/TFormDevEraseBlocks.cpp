#include "forms/chip/TFormDevEraseBlocks.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/chip/rw_region.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtEditDecDef.h"

#include <QFormLayout>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

TFormDevEraseBlocks::TFormDevEraseBlocks(const TData& params, const QList<int>& sizes, qint64 total)
    : TFormCommand(params, {key::size, key::begin, key::count})
    , m_sizes(sizes)
    , m_total(total)
    , m_size(new TComboBox(this))
    , m_begin(new TWgtEditDecDef(0))
    , m_count(new TWgtEditDecDef(0))
{
    m_size->setMaxVisibleItems(10);
    // Another block than the one that stands there must not be erased in its place.
    m_begin->keepTyped();
    for (const int size : m_sizes)
        m_size->addItem(textSize(size), textSize(size));
    TFormDevEraseBlocks::showParams();
    QFormLayout* rows = formRows(this);
    rows->addRow(langText(Text::LabelBlockSize), m_size);
    rows->addRow(langText(Text::LabelBlockFirst), m_begin);
    rows->addRow(langText(Text::LabelBlockCount), m_count);
    connect(m_size, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &TFormDevEraseBlocks::slotChanged);
    connect(m_begin, &TWgtEditDecDef::valueChanged, this, &TFormDevEraseBlocks::slotChanged);
    connect(m_count, &TWgtEditDecDef::valueChanged, this, &TFormDevEraseBlocks::send);
}

void TFormDevEraseBlocks::selectSize()
{
    const QSignalBlocker blocker(m_size);
    m_size->setCurrentIndex(m_size->findData(textSize(param(key::size).toLongLong())));
    m_size->slotChanged();
}

void TFormDevEraseBlocks::setRanges()
{
    const int size = m_sizes.value(m_size->currentIndex());
    const qint64 most = std::numeric_limits<int>::max();
    const int blocks = size > 0 ? int(std::clamp<qint64>(m_total / size, 0, most)) : 0;
    m_begin->setRange(0, blocks - 1); // without a block there is only 0
    const int begin = m_begin->value();
    const int rest = begin >= 0 && begin < blocks ? blocks - begin : blocks;
    m_count->setRange(qMin(1, blocks), rest);
    m_count->setDefaultValue(blocks);
    m_count->setDefaultText(QStringLiteral("Default: %1").arg(rest));
    m_begin->setEnabled(blocks > 0);
    m_count->setEnabled(blocks > 0);
}

void TFormDevEraseBlocks::slotChanged()
{
    setRanges();
    m_count->refit();
    send();
}

void TFormDevEraseBlocks::send()
{
    const int size = m_sizes.value(m_size->currentIndex());
    if (size <= 0)
        return;
    setParam(key::size, size);
    setParam(key::begin, m_begin->stored());
    setParam(key::count, m_count->stored());
    report();
}

void TFormDevEraseBlocks::showParams()
{
    selectSize();
    showStored(m_begin, key::begin);
    showStored(m_count, key::count);
    setRanges();
}

QVariant TFormDevEraseBlocks::kept() const
{
    return keptCount(m_count->value(), m_count->wish());
}

void TFormDevEraseBlocks::takeKept(const QVariant& kept)
{
    m_count->setWish(static_cast<int>(wishOfKept(kept, m_count->value())));
}
