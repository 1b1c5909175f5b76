#pragma once

#include "core/model/IDeviceCatalogue.h"
#include "devices/tools/TDevTools.h"
#include "support/TestDir.h"

#include <functional>

class IDeviceExec;
class ScriptedPeer;
class TSerialPort;

/// Parameters from a text "key=value key=value", all of them strings as out of a project file: "~" is a
/// blank, a number in hexadecimal begins with 0x, and a key of a description that is a list takes commas.
TData textParams(const QString& text);

/// A chip that is nothing but its description. Its identification is the text that opcode 3 answers;
/// "?" is a chip that cannot be read. The key "good" is the answer of checkDeviceParams, "block" the
/// payload of the chip's selection as hexadecimal text. What it does not need it has from the tools.
class BenchChip : public TDevTools
{
public:
    using TDevTools::TDevTools;

    bool hasCommand(const QString&) const override { return true; }
    bool checkDeviceParams(const TData&) const override { return deviceValue("good").toBool(); }
    QByteArray deviceParamBlock(const TData& data) const override;
    IDeviceExec* createExec(const TData& data) const override;
};

/// The open project in a folder of its own, with one programmer model, the alias "bench" of it, and any
/// chip that the description given to setChip makes. Everything is gone with the object; one at a time.
/// Each text of the language table is its name, "@AddrOutsideDevice".
class BenchProject : protected IDeviceCatalogue
{
public:
    BenchProject();
    ~BenchProject() override;
    Q_DISABLE_COPY(BenchProject)

    /// Port of the alias.
    void setPort(const QString& port);
    /// Adds groups and keys to the description of the programmer model; before the first command.
    void setProg(const QByteArray& lines);
    /// The description of every chip that a command names; before the first command.
    void setChip(const TData& description) { m_chip = description; }
    const TestDir& dir() const { return m_dir; }

    int addCfg(const QString& name);
    /// Appends a checked command "word key=value ..." to the last configuration, binds all, gives its id.
    int add(const QString& text, const TData& params = {});
    int addProg() { return add("set_prog prog=bench"); }
    int addChip() { return add("set_device device=chip file=chip.dev"); }
    TData data(int id_cmd) const;

protected:
    IDevice* create(const QString& name, const QString& file) override;
    bool isClassWord(const QString& word) const override { return word == "Prog" || word == "Tools"; }

private:
    TestDir m_dir{TestDir::Empty};
    TData m_chip;
    int m_cfg = -1;
};

/// What came of one command.
struct BenchRun
{
    bool ok = false;
    bool exit = false;
    int cur_cfg = -1;
    int cur_cmd = -1;
    QString errorText;
    QStringList events; ///< "code:text"; "start:id" for a configuration that is to be started
    QList<int> percents;
    bool isOpen = false; ///< the port behind the command
};
/// Called on every percent; for a stop in the middle.
using PercentHook = std::function<void(IDeviceExec& exec, int percent)>;
/// Runs the command to its end on this thread with an executor of that device. The word readChipId stands for
/// the chip's identification, which then is its data.
BenchRun runCommand(const IDevice& device, int id_cmd, TSerialPort& port, const PercentHook& hook = {});
/// The same for commands one behind the other until one fails, on a port that is open to the peer, which is
/// started and finished. What the peer has to complain of stands in front of the error text.
BenchRun runCommands(const IDevice& device, const QList<int>& ids, ScriptedPeer& peer,
                     const PercentHook& hook = {});
