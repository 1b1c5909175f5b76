#include "ui/dialogs/TFormProgAutoDetectEdit.h"

#include "base/TLang.h"
#include "forms/edits/TComboBox.h"
#include "forms/tools/project_entries.h"
#include "link/lists/TPairStringList.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"

#include <QFormLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr int leastWidth = 300;
constexpr int listLines = 20;

/// Shows the entry with what is stored, or none.
void showStored(TComboBox* box, const QString& stored)
{
    box->setCurrentIndex(stored.isEmpty() ? -1 : box->findData(stored));
    box->slotChanged();
}

} // namespace

TFormProgAutoDetectEdit::TFormProgAutoDetectEdit(const QString& title, const TRoute& route,
                                                 const TPairStringList& chips, QWidget* parent)
    : TDialogBase(
          {&appData().WindowRouteEditLeft, &appData().WindowRouteEditTop, &appData().WindowRouteEditWidth},
          parent)
    , m_route(route)
{
    setWindowTitle(title);
    setMinimumWidth(leastWidth);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    rows->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addLayout(rows);
    fillChips(addBox(rows, Text::LabelRouteDevice, m_route.chip), chips);
    fillCfgs(addBox(rows, Text::LabelRouteCfg, m_route.cfg));
    m_accept = addDialogButtons(this, layout, Text::ButtonOk, Text::ButtonCancel);
    updateAccept();
}

TComboBox* TFormProgAutoDetectEdit::addBox(QFormLayout* layout, Text label, QString& target)
{
    auto* box = new TComboBox(this);
    box->setMaxVisibleItems(listLines);
    box->allowNarrow();
    layout->addRow(langText(label), box);
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, box, &target](int index) {
        target = box->itemData(index).toString();
        updateAccept();
    });
    return box;
}

void TFormProgAutoDetectEdit::fillChips(TComboBox* box, const TPairStringList& chips)
{
    const QSignalBlocker blocker(box);
    for (int row = 0; row < chips.count(); ++row)
        box->addItem(chips.value(row), chips.key(row));
    showStored(box, m_route.chip);
}

void TFormProgAutoDetectEdit::fillCfgs(TComboBox* box)
{
    const QSignalBlocker blocker(box);
    for (const auto& entry : cfgEntries())
        box->addItem(entry.second, QString::number(entry.first));
    showStored(box, m_route.cfg);
}

void TFormProgAutoDetectEdit::updateAccept()
{
    m_accept->setEnabled(!m_route.chip.isEmpty() && !m_route.cfg.isEmpty());
}
