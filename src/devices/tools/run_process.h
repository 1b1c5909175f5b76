#pragma once

#include <QString>

#include <functional>

class QObject;

/// How a program that was started came to its end, as far as that was waited for.
struct TProcessEnd
{
    enum class Kind {
        Good,       ///< ended with code 0
        NotStarted, ///< reason tells why
        Code,       ///< ended with another code
        Crashed,    ///< ended by a signal
        GivenUp,    ///< still runs
        Stopped     ///< ended because stop said so
    };
    Kind kind = Kind::Good;
    int code = 0;
    QString reason;
};

/// Asked several times a second while the program runs; true ends it.
using TProcessStop = std::function<bool()>;

/// Starts a command line (program and arguments, double quotes around blanks, no shell) in the folder of
/// the executable, with its channels closed, and waits at most ms milliseconds for its end. A program
/// that runs longer goes on beside the caller, watched from the main thread. A stop asks the program to
/// end and kills it when it has not after two seconds; an empty stop never comes.
TProcessEnd runCommandLine(const QString& line, int ms, const TProcessStop& stop, QObject* owner);
