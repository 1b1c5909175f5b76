#pragma once

#include "core/model/IDevice.h"
#include "devices/shared/TCommandTable.h"
#include "devices/shared/TFormSpec.h"

/// The catalogue side that all chip families share: everything that follows from a family's table of
/// commands and the chip's description. A family adds its table and what is its own.
class TFamilyDevice : public IDevice
{
    Q_OBJECT

public:
    bool hasCommand(const QString& key) const override;
    QStringList commandKeys() const override;
    void setDefaultParams(TData& data) const override;
    QString commandTitle(const TData& data) const override;
    QString paramsText(const TData& data, QWidget* openForm) const override;
    QString beginText(const TData& data) const override;
    QWidget* createForm(const TData& data) const override;
    TData normalizeParams(const TData& data) const override;
    bool refreshParams(TData& data) const override;
    bool checkParams(const TData& data) const override;
    bool checkDeviceParams(const TData& data) const override;
    bool setDeviceDefaults(TData& data) const override;
    QWidget* createDeviceForm(const TData& data) const override;

    /// What createForm has to build for the command.
    virtual TFormSpec formSpec(const TData& data) const;
    /// What createDeviceForm has to build below the clock: Items with a numberKey. The body given here has
    /// none.
    virtual TFormSpec deviceSpec(const TData& data) const;

protected:
    /// reset is written over the description's: whether the family has a reset line.
    TFamilyDevice(const QString& name, const TData& description, const TCommandTable& table, bool reset);

    /// The command's row; null when this chip does not have the command.
    const TCommandRow* row(const TData& data) const;
    /// The row of the command that an edit from a form belongs to: an edit carries no key word.
    const TCommandRow* editedRow(const TData& edit) const;
    /// Takes commands off this chip's list. Only for constructors.
    void removeCommands(std::initializer_list<QLatin1String> keys);

    /// Type code, u16 little-endian, and cfg_hw: what every block of opcode 0x84 begins with.
    QByteArray typeBlock() const;
    /// The level of the data's clock, u32 little-endian.
    static QByteArray clockBlock(const TData& data);

private:
    void defaultBlocks(TData& data) const;
    QString registerText(const TCommandRow& row, const TData& data, QWidget* openForm) const;
    TFormSpec registerSpec(const TCommandRow& row, const TData& data) const;
    /// The stored value has as many bytes as the register.
    bool validRegister(Area area, const TData& data) const;

    const TCommandTable m_table;
    QStringList m_keys;
};
