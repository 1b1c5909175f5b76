#pragma once

#include "ui/setup/IDialogSetupPage.h"

/// The settings of group Confirmation: what is asked before it is done.
class TDialogSetupPageConfirm : public IDialogSetupPage
{
    Q_OBJECT

public:
    explicit TDialogSetupPageConfirm(QWidget* parent = nullptr);
};
