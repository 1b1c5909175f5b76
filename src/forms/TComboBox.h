#pragma once

#include <QComboBox>

/// A combo box that changes only when the user means it: the wheel counts only with the focus. Without
/// a current entry it shows the colour of faults.
class TComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit TComboBox(QWidget* parent = nullptr);

    /// The longest of the entries may be cut on screen, rather than making the form wider than its page.
    void allowNarrow();

public slots:
    /// Colours the box by its current entry.
    void slotChanged();

protected:
    void wheelEvent(QWheelEvent* event) override;
};
