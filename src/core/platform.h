#pragma once

#include <QString>

// What differs between operating systems.
namespace platform {

/// Makes the plug-ins beside the executable findable. Call before the application object exists.
void setPluginPath(const char* argv0);
/// Full path of the running executable; also before the application object exists.
QString executablePath(const char* argv0);
/// Shows a folder in the file manager. False when the folder does not exist or nothing was started.
bool showFolder(const QString& folder);

/// The path names a pipe or socket: opening it may wait for its other end without a limit.
bool isPipe(const QString& path);

} // namespace platform
