#include "ui/TButtonAction.h"

#include <QAction>

TButtonAction::TButtonAction(QWidget* parent)
    : QPushButton(parent)
{
    setFocusPolicy(Qt::NoFocus);
}

void TButtonAction::setAction(QAction* action)
{
    m_action = action;
    // The button has no text that a screen reader could read.
    setAccessibleName(action->iconText());
    connect(this, &QPushButton::clicked, this, [this] {
        m_action->trigger();
        // The click has turned the button's own mark, whether or not the action agreed.
        follow();
    });
    connect(action, &QAction::changed, this, &TButtonAction::follow);
    follow();
}

void TButtonAction::follow()
{
    setToolTip(m_action->toolTip());
    setEnabled(m_action->isEnabled());
    setChecked(m_action->isChecked());
    setVisible(m_action->isVisible());
}
