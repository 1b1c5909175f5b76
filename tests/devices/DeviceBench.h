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

/// One command of a chip, run on a line of its own: the chip is given, the programmer's file is made
/// here, and the other end of the line is a script or a model of the chip.
class DeviceBench
{
public:
    /// What a run left behind.
    struct Result
    {
        bool ok = false;
        QString error;
        QStringList requests; ///< "OP PAYLOAD" in hexadecimal, one a frame
        QList<int> percents;
        QStringList works; ///< texts of the kind ceWork
        QString data;      ///< the command's parameter data after the run
    };
    /// Answers a request; false stands for an error reply with code 3.
    using Chip = std::function<bool(quint8 opcode, const QByteArray& payload, QByteArray& reply)>;

    /// The device is taken over. More lines of the programmer's file, for instance "[SPI]\nCLK_DEF=1".
    DeviceBench(IDevice* device, int maxData, const QByteArray& moreProg = {});
    ~DeviceBench();

    IDevice& device() const { return *m_device; }
    TestDir& dir() { return m_dir; }
    /// A new command with its defaults, changed by param; bound to chip and programmer.
    TData command(const QString& key, const TData& param = {});

    /// Runs against a script of lines "OP PAYLOAD > REPLY", hexadecimal, blanks free; a line without ">"
    /// gets no answer. A wrong or missing frame stands in error, before the run's own.
    Result play(const TData& command, const QStringList& script)
    {
        return play(QList<TData>{command}, script);
    }
    /// The same for several commands on one open port; they end at the first that fails.
    Result play(const QList<TData>& commands, const QStringList& script);
    /// Runs against a chip.
    Result runWith(const TData& command, const Chip& chip);
    /// Called on every percent that the next run reports; for a stop in the middle.
    std::function<void(IDeviceExec& exec, int percent)> onPercent;
    /// Runs executor.readChipId instead of the command.
    bool readsId = false;
    QString readId;

private:
    Result run(const QList<TData>& commands, ScriptedPeer& peer);
    bool runOne(const TData& command, TSerialPort& port, Result& result);

    TestDir m_dir;
    std::unique_ptr<IDevice> m_device;
    std::unique_ptr<TProg> m_prog;
    int m_cfg;
};

/// A language table that names every entry by its number, "@424"; three with a place for a text.
void loadNumberedTexts(const TestDir& dir);
