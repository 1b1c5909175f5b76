#pragma once

#include "base/types.h"

#include <QColor>
#include <QVector>
#include <QWidget>

class QProgressBar;
class QTextEdit;

/// The log of one configuration's runs, with the progress of the current command below it.
class TWgtLogExec : public QWidget
{
    Q_OBJECT

public:
    /// The oldest lines of a longer log go: a run that never ends must not fill the memory.
    static constexpr int maxLines = 100000;

    explicit TWgtLogExec(QWidget* parent = nullptr);
    ~TWgtLogExec() override;

    /// A line by its kind; unknown kinds are ignored.
    void addEvent(TCodeExec code, const QString& text1, const QString& text2);
    /// Held inside 0 to 100.
    void setPercent(int percent);
    void clear();
    /// Locked: no selection, the view follows the end.
    void lock(bool on);
    /// The run in hand ends because the user asked for it: its closing line and the progress, which stays
    /// where it was, are not those of a success. Until the next command begins.
    void setStopped(bool on);
    /// Background and text colours from the settings and the desktop, also of the lines there are.
    void reloadColors();
    QTextEdit* edit() const { return m_edit; }
    QProgressBar* bar() const { return m_bar; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void begin();
    void recolor();
    void showBarColor();
    void dropOldLines();
    void showEnd();

    QTextEdit* m_edit = nullptr;
    QProgressBar* m_bar = nullptr;
    QVector<QColor> m_colors; ///< by TLogText::Color
    bool m_hasLine = false;   ///< also when that line is empty
    bool m_isStopped = false;
    int m_reached = 0; ///< last progress of the current command but 0, which only tells that it has ended
};
