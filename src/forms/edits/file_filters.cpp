#include "forms/edits/file_filters.h"

#include "formats/data/TFormat.h"

QString allFilesPattern()
{
#ifdef Q_OS_WIN
    return QStringLiteral("*.*");
#else
    return QStringLiteral("*");
#endif
}

QString dataFileFilter()
{
    return QStringLiteral("Files (%1);;All Files (%2)").arg(TFormat::fileFilter(), allFilesPattern());
}
