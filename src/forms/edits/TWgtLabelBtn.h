#pragma once

#include <QLabel>

/// A plain text that can be clicked.
class TWgtLabelBtn : public QLabel
{
    Q_OBJECT

public:
    explicit TWgtLabelBtn(const QString& text, QWidget* parent = nullptr);

signals:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};
