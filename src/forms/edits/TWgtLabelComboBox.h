#pragma once

#include <QBoxLayout>
#include <QWidget>

class TComboBox;
class TWgtLabelBtn;

/// A list of choices with its label; a click on the label goes to the list.
class TWgtLabelComboBox : public QWidget
{
    Q_OBJECT

public:
    /// direction: the way from the label to the list.
    TWgtLabelComboBox(const QString& text, QBoxLayout::Direction direction, QWidget* parent = nullptr);

    TWgtLabelBtn* label() const { return m_label; }
    TComboBox* box() const { return m_box; }
    QBoxLayout* rowLayout() const { return m_layout; }

signals:
    /// Another choice; -1 for none.
    void signalChange(int index);

public slots:
    void slotChange(int index);

private:
    TWgtLabelBtn* m_label;
    TComboBox* m_box;
    QBoxLayout* m_layout;
};
