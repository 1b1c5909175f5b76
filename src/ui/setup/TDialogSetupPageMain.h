#pragma once

#include "ui/setup/IDialogSetupPage.h"

/// The settings of group Main.
class TDialogSetupPageMain : public IDialogSetupPage
{
    Q_OBJECT

public:
    explicit TDialogSetupPageMain(QWidget* parent = nullptr);
};
