#pragma once

#include <QList>
#include <QMetaType>
#include <QVariantHash>

/// Parameters of a command, and all exchange with the project model: key word to value.
/// Values that come from a project file are strings; read them by the type that the key has
/// (getParam(...).toInt() and so on), never by the variant's own type.
using TData = QVariantHash;

/// A flag out of a project file, where it is a number or, written by hand, the word true.
bool isFlagSet(const QVariant& value);

/// Kind of a log event. The numbers are fixed; a receiver ignores others.
enum TCodeExec {
    ceCmdBegin = 0, ///< a command begins: display name, parameter text
    ceTextTime = 1, ///< text with a time stamp
    ceText = 2,     ///< plain text
    ceWork = 3,     ///< what the run is doing
    ceResult = 4,   ///< a result that was read or computed
    ceSuccess = 5,  ///< closing line of a run that ended well
    ceFailed = 6    ///< closing line of a run that failed
};

/// What has changed in the project; the project page ignores other values.
enum TCodeView {
    cvCmdChanged = 12 ///< the parameters of one command
};

/// Run state of a configuration. Never stored in a file.
enum TCfgStatus {
    csIdle = 0,  ///< never run, or state cleared
    csRun = 1,   ///< a run is active
    csPause = 2, ///< a run waits in a pause command
    csDone = 3,  ///< the last run ended well
    csFailed = 4 ///< the last run failed
};

/// True for the states in which a run is active.
constexpr bool isActive(int cfgStatus)
{
    return cfgStatus == csRun || cfgStatus == csPause;
}

/// Sizes of a splitter, in pixels.
using TSplitterPos = QList<int>;

Q_DECLARE_METATYPE(TCodeExec)
Q_DECLARE_METATYPE(TCodeView)

/// Registers the types above under their names, so that they pass through queued connections.
/// Call once, before the first connection is made.
void registerMetaTypes();
