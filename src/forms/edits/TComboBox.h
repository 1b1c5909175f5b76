#pragma once

#include "forms/edits/TSteadyBox.h"

/// A choice among fixed entries. Without a current entry it shows the colour of faults.
class TComboBox : public TSteadyBox
{
    Q_OBJECT

public:
    explicit TComboBox(QWidget* parent = nullptr);

    /// The longest of the entries may be cut on screen down to so many letters, rather than making the form
    /// wider than its page.
    void allowNarrow(int letters = 8);
    QSize minimumSizeHint() const override;
    /// The list is as wide as its entries need.
    void showPopup() override;

public slots:
    /// Colours the box by its current entry.
    void slotChanged();

private:
    int m_leastLetters = 0; ///< that have to be seen; 0 for the whole of each entry
};
