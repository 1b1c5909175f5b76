#pragma once

#include "base/types.h"

#include <QObject>
#include <QStringList>

class IDeviceExec;
class QWidget;

/// A chip family, the programmer's own commands or the flow tools: tells the project model and the
/// forms what a command is. Constant after construction, so it is shared by all threads.
class IDevice : public QObject
{
    Q_OBJECT

public:
    explicit IDevice(const QString& name);
    ~IDevice() override;

    /// The chip's name, or "Prog" or "Tools".
    QString name() const;
    /// All keys of the chip's description, as the family's constructor left them.
    TData deviceData() const;
    /// One value of deviceData, invalid when the key is missing. Does not log.
    QVariant deviceValue(const QString& key) const;
    /// The lines shown to the user.
    QStringList info() const;
    /// The chip's section in the programmer's description; empty when the key is missing.
    QString section() const;
    /// The chip has a reset line.
    bool hasReset() const;

    /// The key is a command of this class.
    virtual bool hasCommand(const QString& key) const = 0;
    /// Command keys in list order; "separator" may stand between them.
    virtual QStringList commandKeys() const = 0;
    /// Writes the default parameters of the command data["cmd"] at data["id_cmd"] into data.
    virtual void setDefaultParams(TData& data) const = 0;
    /// Display name of the command data["cmd"].
    virtual QString commandTitle(const TData& data) const = 0;
    /// One line with the parameters. openForm is the command's form while it is on screen, else null;
    /// a worker always passes null.
    virtual QString paramsText(const TData& data, QWidget* openForm) const = 0;
    /// The parameters as the log shows them when the command begins. The body given here is paramsText; a
    /// command that is about to read a value leaves the stored one out, which is that of an earlier run.
    virtual QString beginText(const TData& data) const;
    /// A new form of the command, owned by the caller; null when there is none. Main thread.
    virtual QWidget* createForm(const TData& data) const = 0;
    /// What is stored after an edit. The body given here returns a detached copy.
    virtual TData normalizeParams(const TData& data) const = 0;
    /// Brings stored parameters up to date with the description; true when they changed.
    /// The body given here changes nothing.
    virtual bool refreshParams(TData& data) const = 0;
    /// The parameters are valid.
    virtual bool checkParams(const TData& data) const = 0;
    /// The family's part of the check of set_device and auto_detect. The body given here says true.
    virtual bool checkDeviceParams(const TData& data) const = 0;
    /// Writes the family's part of the defaults of set_device and auto_detect; true when it wrote.
    /// The body given here says false.
    virtual bool setDeviceDefaults(TData& data) const = 0;
    /// The family's form inside that of set_device, owned by the caller. The body given here says null.
    virtual QWidget* createDeviceForm(const TData& data) const = 0;
    /// Payload of the programmer's opcode 0x84. The body given here is empty.
    virtual QByteArray deviceParamBlock(const TData& data) const = 0;
    /// A new executor of the command, owned by the caller, living on the calling thread.
    virtual IDeviceExec* createExec(const TData& data) const = 0;

protected:
    /// Only for constructors: afterwards other threads may read.
    void setDeviceData(const TData& data);
    void setInfo(const QStringList& info);

private:
    QString m_name;
    TData m_deviceData;
    QStringList m_info;
};
