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
/// The path names something that is written where it stands, since no new file can take its place: a
/// device, a pipe, a folder, or what a process has open, by the system's link to it.
bool isWrittenInPlace(const QString& path);
/// Opens a pipe for writing without waiting for a reader; one that goes away later is an error of the
/// write. A descriptor that the caller closes, or -1 with the reason in reason.
int openPipe(const QString& path, QString& reason);
/// Waits, at most that many milliseconds, until the pipe takes 4096 bytes without waiting, or has an error to
/// tell. False when the time is over, or a signal came before that.
bool awaitPipe(int descriptor, int ms);

/// Lets the disk begin with what an open file has been given so far, without waiting for it.
void startToDisk(int descriptor);

} // namespace platform
