#pragma once

class QString;

/// The word "lint": prints, file and line, what is wrong or doubtful in a folder of devices; an empty name
/// stands for the folder of the settings. 0 when there is nothing, 1 when there is, 2 when the folder cannot
/// be read.
int lintFolder(const QString& folder);
