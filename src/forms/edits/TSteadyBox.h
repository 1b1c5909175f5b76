#pragma once

#include <QComboBox>

/// A combo box that a wheel on its way over the page does not change: it counts only with the focus.
class TSteadyBox : public QComboBox
{
    Q_OBJECT

public:
    explicit TSteadyBox(QWidget* parent = nullptr);

protected:
    void wheelEvent(QWheelEvent* event) override;
};
