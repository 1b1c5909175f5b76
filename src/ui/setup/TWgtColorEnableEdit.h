#pragma once

#include <QColor>
#include <QWidget>

class QCheckBox;
class QLabel;
class QMouseEvent;

/// A colour that can be chosen, and whether it is used.
class TWgtColorEnableEdit : public QWidget
{
    Q_OBJECT

public:
    /// Without a check mark the colour is always used, and the text is a mere label.
    TWgtColorEnableEdit(const QString& text, bool hasCheck, QWidget* parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    /// True without a check mark.
    bool isEnabledColor() const;
    void setEnabledColor(bool enabled);

    /// A click, or the space bar, on the coloured field opens the choice.
    bool eventFilter(QObject* object, QEvent* event) override;

public slots:
    void slotSelectColor();

private:
    bool isClick(const QMouseEvent& event) const;

    QColor m_color;
    QCheckBox* m_check = nullptr;
    QLabel* m_field;
};
