#pragma once

#include "ui/TDialogBase.h"

class QListWidget;

/// Chooses a language by the text of its entry.
class TDialogSetLanguage : public TDialogBase
{
    Q_OBJECT

public:
    explicit TDialogSetLanguage(const QStringList& entries, QWidget* parent = nullptr);

    /// Text of the chosen entry; empty with none.
    QString selected() const;

private:
    QListWidget* m_list = nullptr;
};
