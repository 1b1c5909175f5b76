#include "console/lint.h"

#include "console/print.h"
#include "devices/lint/TLintFolder.h"
#include "settings/TAppData.h"

int lintFolder(const QString& folder)
{
    const QString path = folder.isEmpty() ? appData().PathDevices : folder;
    TLintFolder lint(path);
    if (!lint.run()) {
        printError(QStringLiteral("%1: cannot be read").arg(path));
        return 2;
    }
    QByteArray lines;
    for (const QString& fault : lint.faults())
        lines += (printable(fault) + QLatin1Char('\n')).toUtf8();
    printOut(lines);
    return lint.faults().isEmpty() ? 0 : 1;
}
