#pragma once

#include "ui/TDialogBase.h"

class QTextBrowser;

/// Shows a page of the manual. Not modal, so that it can be read beside the window that it tells of; it
/// deletes itself when it is closed.
class TDialogManual : public TDialogBase
{
    Q_OBJECT

public:
    explicit TDialogManual(QWidget* parent);

    /// Reads an HTML file; the colours are those of the desktop and not of the file. False when it cannot
    /// be read.
    [[nodiscard]] bool load(const QString& file);
    QTextBrowser* page() const { return m_page; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void showPage();

    QTextBrowser* m_page = nullptr;
    QString m_html; ///< without the style of the file
};
