#pragma once

#include "forms/TFormCommand.h"

class QLineEdit;
class TWgtDeviceView;

/// The chip, chosen from the list of devices.
class TFormProgSetDevice : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormProgSetDevice(const TData& params);

public slots:
    void slotBtnSelectDevice();

private:
    void showParams() override;

    QLineEdit* m_name;
    TWgtDeviceView* m_view;
};
