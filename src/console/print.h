#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <initializer_list>
#include <utility>

// What the console face writes. Everything is UTF-8 and leaves at once, so that a reader of a pipe sees
// each line when it happens. A reader that is gone is no failure: a run goes on to its orderly end.

/// Writes to standard output as it is.
void printOut(const QByteArray& bytes);
/// One line "velmarkion: text" on standard error.
void printError(const QString& text);

/// The text with a blank in place of every control character but those in kept: names and parameters
/// come from files and must neither break lines nor steer a terminal.
QString printable(const QString& text, const char* kept = "");

/// One JSON object as a line, its keys in the order given.
QByteArray jsonLine(std::initializer_list<std::pair<const char*, QJsonValue>> members);
