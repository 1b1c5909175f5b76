#include "ui/TDialogBase.h"

#include "settings/TAppData.h"
#include "ui/window_helpers.h"

#include <QLayout>

TDialogBase::TDialogBase(const TWindowKeys& keys, QWidget* parent)
    : QDialog(parent)
    , m_keys(keys)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

TDialogBase::~TDialogBase()
{
    if (!m_isPlaced)
        return;
    *m_keys.left = geometry().left();
    *m_keys.top = geometry().top();
    *m_keys.width = width();
    if (m_keys.height)
        *m_keys.height = height();
}

void TDialogBase::setVisible(bool visible)
{
    if (visible && !m_isPlaced)
        place();
    QDialog::setVisible(visible);
}

// At the first showing, since the least size is known only when all is in the dialog.
void TDialogBase::place()
{
    m_isPlaced = true;
    ensurePolished();
    if (layout())
        layout()->activate();
    const QSize least = minimumSizeHint().expandedTo(minimumSize());
    const int width = qMax(*m_keys.width, least.width());
    const int height = m_keys.height ? qMax(*m_keys.height, least.height()) : sizeHint().height();
    placeOnWindow(this, appData().WindowOtherCenter, *m_keys.left, *m_keys.top, width, height);
    if (!m_keys.height)
        setFixedHeight(height);
}
