#pragma once

#include <QBoxLayout>
#include <QWidget>

class QLineEdit;
class TWgtLabelBtn;

/// A line with its label; a click on the label goes to the line.
class TWgtLabelEdit : public QWidget
{
    Q_OBJECT

public:
    /// direction: the way from the label to the line.
    TWgtLabelEdit(const QString& text, QBoxLayout::Direction direction, QWidget* parent = nullptr);

    TWgtLabelBtn* label() const { return m_label; }
    QLineEdit* edit() const { return m_edit; }
    QBoxLayout* rowLayout() const { return m_layout; }

private:
    TWgtLabelBtn* m_label;
    QLineEdit* m_edit;
    QBoxLayout* m_layout;
};
