#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "settings/TAppData.h"

// The five process-wide objects, whose accessors are declared beside their classes. Objects of one
// translation unit are built, before main, in the order in which they stand here, and destroyed in the
// reverse order after main has returned; across units there would be no order. Nothing with a window-system
// handle, a timer or a thread may be a member of them.

namespace {

TAppData theAppData;
TDataPrj theProject;
TLang theLang;
TCmdCode theCmdCode;
TDeviceList theDeviceList;

/// The model knows no chip family: this is the one place where the two meet.
[[maybe_unused]] const bool catalogueIsSet = [] {
    theProject.setCatalogue(&theDeviceList);
    return true;
}();

} // namespace

TAppData& appData()
{
    return theAppData;
}

TDataPrj& project()
{
    return theProject;
}

TLang& lang()
{
    return theLang;
}

TCmdCode& cmdCode()
{
    return theCmdCode;
}

TDeviceList& deviceList()
{
    return theDeviceList;
}

QString langText(Text id)
{
    return theLang.text(id);
}
