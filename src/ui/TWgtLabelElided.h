#pragma once

#include <QLabel>

/// A label of one line that loses the beginning of its text where the room does not suffice.
class TWgtLabelElided : public QLabel
{
    Q_OBJECT

public:
    explicit TWgtLabelElided(QWidget* parent = nullptr);

    /// Plain text; text() is what is left of it on the screen.
    void setFullText(const QString& text);

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void elide();

    QString m_fullText;
};
