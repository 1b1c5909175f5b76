#pragma once

#include <QPushButton>

class QAction;

/// A tool button that never takes the keyboard focus and mirrors an action.
class TButtonAction : public QPushButton
{
    Q_OBJECT

public:
    explicit TButtonAction(QWidget* parent = nullptr);

    /// Takes over the tool tip, forwards clicks, follows enabled, checked and visible.
    void setAction(QAction* action);

private:
    void follow();

    QAction* m_action = nullptr;
};
