#pragma once

#include <QMutex>
#include <QString>

/// One configuration of the open project. Owned by TDataPrj; every method locks the object.
class TDataCfg
{
public:
    TDataCfg(const QString& name, const QString& description);
    virtual ~TDataCfg();
    TDataCfg(const TDataCfg&) = delete;
    TDataCfg& operator=(const TDataCfg&) = delete;

    int id() const;
    QString name() const;
    void setName(const QString& name);
    QString description() const;
    void setDescription(const QString& text);
    /// A TCfgStatus.
    int status() const;
    void setStatus(int status);

    /// The next configuration gets id 0. Only after all configurations are gone.
    static void resetCounter();

private:
    mutable QMutex m_mutex;
    const int m_idCfg;
    QString m_name;
    QString m_description;
    int m_status = 0;
};
