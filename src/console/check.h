#pragma once

class QString;

/// The word "check": opens the project as the window would, changes nothing, and prints one line a
/// command, as text with tabs or as JSON. 0 when every checked command is valid, 1 when one is not, 2
/// when the file cannot be read.
int checkProject(const QString& file, bool json);
