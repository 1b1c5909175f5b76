#pragma once

#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "support/BenchProject.h"

/// A project with a chip of one of the families, and its commands run on a line of their own: the other end
/// is a script or a model of the chip. The texts are "@SizeMissing".
class DeviceBench : public BenchProject
{
public:
    /// Answers a request; false stands for an error reply with code 3.
    using Chip = std::function<bool(quint8 opcode, const QByteArray& payload, QByteArray& reply)>;

    /// A "dev25", "dev24", "dev93c" or "avr"; the words behind it change the chip's description, and
    /// MAX_DATA=n the programmer's.
    explicit DeviceBench(const QString& chip);

    IDevice& device() const { return *project().cmdById(m_chip)->family(); }
    /// A new command "word key=value ..." over its defaults.
    TData command(const QString& text);

    /// Runs the commands one behind the other against a script of PeerLines.
    BenchRun play(const QStringList& commands, const QString& script);
    /// Runs against a chip.
    BenchRun runWith(const QString& command, const Chip& chip);
    /// Parameter data of the last command.
    QString result() const { return project().cmdById(m_last)->param(key::data).toString(); }
    /// Called on every percent of the runs that follow.
    PercentHook onPercent;

protected:
    IDevice* create(const QString& name, const QString& file) override;

private:
    QString m_family;
    TData m_description;
    int m_chip = -1;
    int m_last = -1;
};
