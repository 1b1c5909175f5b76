#pragma once

#include "core/model/IDevice.h"

/// A class of commands that is no chip: the flow tools or the programmer's own. What such commands have in
/// common, over a table with a row for each; the chip's part of a command is the default of IDevice.
class TPseudoDevice : public IDevice
{
    Q_OBJECT

public:
    QStringList commandKeys() const override;
    bool hasCommand(const QString& key) const override;
    void setDefaultParams(TData& data) const override;
    QString commandTitle(const TData& data) const override;
    QString paramsText(const TData& data, QWidget* openForm) const override;
    QWidget* createForm(const TData& data) const override;
    TData normalizeParams(const TData& data) const override;
    bool refreshParams(TData& data) const override;
    bool checkParams(const TData& data) const override;
    bool checkDeviceParams(const TData& data) const override;
    bool setDeviceDefaults(TData& data) const override;
    QWidget* createDeviceForm(const TData& data) const override;
    QByteArray deviceParamBlock(const TData& data) const override;

protected:
    /// What the catalogue knows of one command.
    struct Row
    {
        QLatin1String word;
        void (*setDefaults)(TData&);
        bool (*check)(const TData&);
        QString (*text)(const TData&);
    };

    /// rows must outlive the object; keys is the list of the class, separators included.
    template <size_t N>
    TPseudoDevice(const QString& name, const TData& data, const Row (&rows)[N], const QStringList& keys)
        : TPseudoDevice(name, data, rows, N, keys)
    {
    }

private:
    TPseudoDevice(const QString& name, const TData& data, const Row* rows, size_t count,
                  const QStringList& keys);
    const Row* rowOf(const TData& data) const;

    const Row* const m_rows;
    const size_t m_count;
    const QStringList m_keys;
};
