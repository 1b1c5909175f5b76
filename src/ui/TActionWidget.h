#pragma once

#include <QAction>
#include <QKeySequence>

class QKeyEvent;

/// An action with a shortcut of its own on one widget. The shortcut is not the action's: with both the keys
/// would be ambiguous and neither would work. While the widget has the focus the keys are its own, also
/// where the main window has the same ones.
class TActionWidget : public QAction
{
    Q_OBJECT

public:
    TActionWidget(const QString& text, const QKeySequence& keys, QWidget* widget);
    ~TActionWidget() override;

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void fire();
    bool isMine(const QKeyEvent& event) const;

    const QKeySequence m_keys;
};
