#pragma once

#include "ui/TDialogBase.h"

class QLineEdit;

/// Edits the name of a configuration. An empty name cannot be accepted.
class TDialogCfgEdit : public TDialogBase
{
    Q_OBJECT

public:
    TDialogCfgEdit(const QString& title, const QString& name, QWidget* parent = nullptr);

    QString name() const;

private:
    QLineEdit* m_name = nullptr;
};
