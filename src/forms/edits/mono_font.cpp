#include "forms/edits/mono_font.h"

#include "settings/TAppData.h"

#include <QApplication>

QFont monoFont()
{
    QFont font = QApplication::font();
    if (!appData().FontMonoName.isEmpty())
        font.setFamily(appData().FontMonoName);
    if (appData().FontMonoSize > 0)
        font.setPointSize(appData().FontMonoSize);
    return font;
}
