#include "forms/generated/TFormDevCfgButton.h"

#include "devices/shared/form_items.h"
#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"

#include <QHBoxLayout>
#include <QPushButton>

TFormDevCfgButton::TFormDevCfgButton(const TFormItem& item, QWidget* parent)
    : IFormDevCfgBase(QByteArray(item.bits.size(), '\xFF'), false, parent)
    , m_data(item.bits)
{
    auto* button = new QPushButton(literalLabel(item.text), this);
    button->setFixedHeight(item.extent > 0 ? item.extent : fieldHeight(button));
    button->setToolTip(item.tip);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(button);
    setFocusProxy(button);
    connect(button, &QPushButton::clicked, this, [this] { emit signalChanged(m_mask, m_data); });
}

QByteArray TFormDevCfgButton::data() const
{
    return m_data;
}

void TFormDevCfgButton::setData(const QByteArray&) {}
