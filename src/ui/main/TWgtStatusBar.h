#pragma once

#include <QStatusBar>

/// The line at the bottom of the main window: one message that stays until it is replaced. A long
/// one has a tool tip.
class TWgtStatusBar : public QStatusBar
{
    Q_OBJECT

public:
    /// How a message is coloured.
    enum Code {
        Plain = 0, ///< the palette's window text
        Red = 1,
        Green = 2 ///< dark green
    };

    explicit TWgtStatusBar(QWidget* parent = nullptr);

    void showText(const QString& text, Code code);
    QString text() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showTip();
};
