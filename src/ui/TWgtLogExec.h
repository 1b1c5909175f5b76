#pragma once

#include "core/types.h"

#include <QWidget>

class QProgressBar;
class QTextEdit;

/// The log of one configuration's runs, with the progress of the current command below it.
class TWgtLogExec : public QWidget
{
    Q_OBJECT

public:
    explicit TWgtLogExec(QWidget* parent = nullptr);
    ~TWgtLogExec() override;

    /// A line by its kind; unknown kinds are ignored.
    void addEvent(TCodeExec code, const QString& text1, const QString& text2);
    void setPercent(int percent);
    void clear();
    /// Locked: no selection, the view follows the end.
    void lock(bool on);
    QTextEdit* edit() const { return m_edit; }
    QProgressBar* bar() const { return m_bar; }

private:
    QTextEdit* m_edit = nullptr;
    QProgressBar* m_bar = nullptr;
};
