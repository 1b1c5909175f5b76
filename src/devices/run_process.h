#pragma once

#include <QString>

class QObject;

/// Starts a command line (program and arguments, double quotes around blanks, no shell) in the folder of
/// the executable, with its channels closed, and waits at most ms milliseconds for its end. A program
/// that runs longer goes on beside the caller, watched from the main thread. Neither a program that
/// cannot be started nor its exit code is a failure.
void runCommandLine(const QString& line, int ms, QObject* owner);
