#include "ui/main/start_window.h"

#include "app/startup.h"
#include "base/platform.h"
#include "core/model/IFormFactory.h"
#include "forms/TFormFactory.h"
#include "ui/main/TFormHost.h"
#include "ui/main/TMainWindow.h"
#include "ui/window_helpers.h"

#include <QApplication>
#include <QIcon>

namespace {

void setAttributes()
{
    // Before the application object: the icons have a second size for dense screens.
#if QT_VERSION_MAJOR < 6 // later always so
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
}

QIcon programIcon()
{
    QIcon icon;
    for (int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/images/velmarkion-%1.png").arg(size));
    return icon;
}

} // namespace

int runWindow(int argc, char** argv)
{
    platform::setPluginPath(argv[0]);
    setAttributes();
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("velmarkion"));
    QApplication::setWindowIcon(programIcon());
    startEngine();
    applyStyleSettings();
    applyFontSettings();
    TFormFactory forms;
    setFormFactory(&forms);
    TFormHost formHost;
    setFormHost(&formHost);
    TMainWindow window;
    window.show();
    return QApplication::exec();
}
