#pragma once

#include <QMap>
#include <QString>

/// The languages of a folder: entry "title (sub-title)" to file name. A file that cannot be opened is
/// left out.
QMap<QString, QString> languageFiles(const QString& folder);
