#pragma once

#include "ui/IDialogSetupPage.h"

/// The settings of group Main.
class TDialogSetupPageMain : public IDialogSetupPage
{
    Q_OBJECT

public:
    explicit TDialogSetupPageMain(QWidget* parent = nullptr);
};
