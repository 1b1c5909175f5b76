#pragma once

#include "core/types.h"

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
    /// Background and, for lines to come, text colours from the settings.
    void reloadColors();
    QTextEdit* edit() const { return m_edit; }
    QProgressBar* bar() const { return m_bar; }

private:
    void dropOldLines();
    void showEnd();

    QTextEdit* m_edit = nullptr;
    QProgressBar* m_bar = nullptr;
    QVector<QColor> m_colors; ///< by TLogText::Color
    bool m_hasLine = false;   ///< also when that line is empty
};
