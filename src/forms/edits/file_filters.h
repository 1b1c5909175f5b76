#pragma once

#include <QString>

/// The pattern for every file in the filter of a file dialog. The usual "*.*" hides names without a dot
/// where the dialog takes it at its word, and programs and dumps have such names there.
QString allFilesPattern();
/// The filter for files of data: those of the formats, and all.
QString dataFileFilter();
