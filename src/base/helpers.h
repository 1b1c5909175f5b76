#pragma once

#include <QIcon>
#include <QString>

class QSaveFile;

// Paths, texts and the diagnostic log. Any thread, but iconPath: main thread.

/// Folder of the executable + "/" + its base name + "." + suffix.
QString fileInAppDir(const QString& suffix);
/// Icon of that name in the icon set 0 or 1.
QIcon iconPath(int set, const QString& name);

/// path itself if absolute, else the absolute path of path inside base.
QString absFile(const QString& base, const QString& path);
/// Both names lead to one file, through links too; of files that are not there the paths count.
bool isSameFile(const QString& a, const QString& b);
/// The absolute folder of a file path.
QString absDir(const QString& path);
/// As absDir, a relative path taken inside base; an empty path gives base made absolute.
QString dirOf(const QString& base, const QString& path);
/// path relative to the folder of the executable, if it can be made relative.
QString relToApp(const QString& path);
/// path relative to base, if it can be made relative.
QString relToDir(const QString& base, const QString& path);

/// Line feeds become "|n", double quotes "|w". A text that holds these pairs does not come back the
/// same, so it serves descriptions only.
QString encodeText(const QString& s);
QString decodeText(const QString& s);

/// Appends one line to the diagnostic log: time, text1, text2. Nothing happens if it cannot.
void logError(const QString& text1, const QString& text2);

/// The desktop folder with "/" behind it.
QString desktopDir();

/// Writes a user file whole or not at all: a crash, a power cut or a full disk leaves the old file. A
/// symbolic link stays one and its target is written; permissions stay. Where the folder takes no second
/// file it is written in place. False with the reason in error.
[[nodiscard]] bool writeFileSafely(const QString& file, const QByteArray& bytes, QString& error);
/// The last step of a file written beside its target: what was written goes to the disk and then takes the
/// target's place. False with the reason in error; the target is then as it was.
[[nodiscard]] bool putInPlace(QSaveFile& device, QString& error);
