#pragma once

#include "core/types.h"
#include "support/ScriptedPeer.h"
#include "support/TestDir.h"

#include <QStringList>

#include <functional>
#include <memory>

class IDevice;
class IDeviceExec;
class TProg;
class TSerialPort;

/// Parameters from a text "key=value key=value", all of them strings as out of a project file: "~" is a
/// blank, a number in hexadecimal begins with 0x, and a key of a description that is a list takes commas.
TData benchParams(const QString& text);

/// A chip bound to a programmer in an open project, and its commands run on a line of their own: the
/// other end is a script or a model of the chip. One at a time; the language table names every text by
/// its number, "@424".
class DeviceBench
{
public:
    /// What a run left behind.
    struct Result
    {
        bool ok = false;
        QString error; ///< a frame that the script does not have, then the executor's text
        QList<int> percents;
        QStringList works; ///< texts of the kind ceWork
        QString data;      ///< the command's parameter data after the run
    };
    /// Answers a request; false stands for an error reply with code 3.
    using Chip = std::function<bool(quint8 opcode, const QByteArray& payload, QByteArray& reply)>;

    /// family is "dev25", "dev24", "dev93c" or "avr", each with a chip of its own; the words behind it change
    /// the chip's description, and MAX_DATA=n the programmer's.
    explicit DeviceBench(const QString& chip);
    ~DeviceBench();

    IDevice& device() const { return *m_device; }
    TestDir& dir() { return m_dir; }
    /// A new command "word key=value ..." over its defaults.
    TData command(const QString& text);

    /// Runs the commands one behind the other on one open port until one fails. The script is a list
    /// "OP PAYLOAD > REPLY, ..." in hexadecimal, FF*8 being eight of them; without ">" no answer comes.
    /// The word readChipId asks the executor for the chip's identification, which then is data.
    Result play(const QStringList& commands, const QString& script);
    /// Runs against a chip.
    Result runWith(const QString& command, const Chip& chip);
    /// Called on every percent of the runs that follow; for a stop in the middle.
    std::function<void(IDeviceExec& exec, int percent)> onPercent;

private:
    Result run(const QStringList& commands, ScriptedPeer& peer);
    bool runOne(const TData& command, TSerialPort& port, Result& result);

    TestDir m_dir;
    std::unique_ptr<IDevice> m_device;
    std::unique_ptr<TProg> m_prog;
    int m_cfg = -1;
};
