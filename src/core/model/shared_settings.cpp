#include "core/model/shared_settings.h"

#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"

QString devicesFolder()
{
    QString folder;
    project().locked([&folder] { folder = appData().PathDevices; });
    return folder;
}

bool hexLinear()
{
    bool linear = false;
    project().locked([&linear] { linear = appData().HexLinear; });
    return linear;
}
