#pragma once

#include "ui/setup/IDialogSetupPage.h"

/// The settings of group Interface.
class TDialogSetupPageInterface : public IDialogSetupPage
{
    Q_OBJECT

public:
    explicit TDialogSetupPageInterface(QWidget* parent = nullptr);

public slots:
    /// Milliseconds can be chosen only with the time.
    void slotShowTime_ms();
};
