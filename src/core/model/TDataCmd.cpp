#include "core/model/TDataCmd.h"

#include "base/keys.h"
#include "core/model/IDevice.h"

#include <QMutexLocker>

#include <atomic>

namespace {

std::atomic<int> nextId{0};

constexpr QLatin1String reserved[] = {key::id_cmd, key::id_cfg,    key::status,
                                      key::cmd,    key::valid_dev, key::valid_param};

} // namespace

TDataCmd::TDataCmd(const TData& data)
    : m_idCmd(nextId++)
{
    take(data);
}

TDataCmd::~TDataCmd() = default;

void TDataCmd::resetCounter()
{
    nextId = 0;
}

void TDataCmd::removeReserved(TData& data)
{
    for (const QLatin1String& word : reserved)
        data.remove(word);
}

TData TDataCmd::toData() const
{
    const QMutexLocker lock(&m_mutex);
    TData data = m_param;
    data.insert(key::id_cmd, m_idCmd);
    data.insert(key::id_cfg, m_idCfg);
    data.insert(key::status, m_status);
    data.insert(key::cmd, m_cmd);
    data.insert(key::valid_dev, m_validDev);
    data.insert(key::valid_param, m_validParam);
    return data;
}

void TDataCmd::fromData(const TData& data)
{
    const QMutexLocker lock(&m_mutex);
    take(data);
}

void TDataCmd::take(const TData& data)
{
    m_status = isFlagSet(data.value(key::status));
    m_idCfg = data.value(key::id_cfg, -1).toInt();
    m_cmd = data.value(key::cmd).toString();
    m_param = data;
    removeReserved(m_param);
}

void TDataCmd::setParam(const TData& data)
{
    TData param = data;
    removeReserved(param);
    const QMutexLocker lock(&m_mutex);
    for (auto it = param.cbegin(); it != param.cend(); ++it)
        m_param.insert(it.key(), it.value());
}

void TDataCmd::clearParam()
{
    const QMutexLocker lock(&m_mutex);
    m_param.clear();
}

QVariant TDataCmd::param(const QString& key) const
{
    const QMutexLocker lock(&m_mutex);
    return m_param.value(key);
}

// The device looks into the project, whose lock comes before that of a command: it gets a copy.
bool TDataCmd::normalize()
{
    const IDevice* owner = device();
    if (!owner)
        return false;
    TData data = toData();
    if (!owner->refreshParams(data))
        return false;
    fromData(data);
    return true;
}

bool TDataCmd::validate()
{
    const IDevice* owner = device();
    if (!owner)
        return false;
    const bool valid = owner->checkParams(toData());
    setValidParam(valid);
    return valid;
}

int TDataCmd::id() const
{
    return m_idCmd;
}

int TDataCmd::cfgId() const
{
    const QMutexLocker lock(&m_mutex);
    return m_idCfg;
}

QString TDataCmd::cmd() const
{
    const QMutexLocker lock(&m_mutex);
    return m_cmd;
}

bool TDataCmd::status() const
{
    const QMutexLocker lock(&m_mutex);
    return m_status;
}

void TDataCmd::setStatus(bool status)
{
    const QMutexLocker lock(&m_mutex);
    m_status = status;
}

bool TDataCmd::validDev() const
{
    const QMutexLocker lock(&m_mutex);
    return m_validDev;
}

bool TDataCmd::validParam() const
{
    const QMutexLocker lock(&m_mutex);
    return m_validParam;
}

void TDataCmd::setValidParam(bool valid)
{
    const QMutexLocker lock(&m_mutex);
    m_validParam = valid;
}

IDevice* TDataCmd::device() const
{
    const QMutexLocker lock(&m_mutex);
    return m_device;
}

IDevice* TDataCmd::family() const
{
    const QMutexLocker lock(&m_mutex);
    return m_family;
}

TProg* TDataCmd::prog() const
{
    const QMutexLocker lock(&m_mutex);
    return m_prog;
}

TBinding TDataCmd::binding()
{
    const QMutexLocker lock(&m_mutex);
    return {this, m_device, m_family, m_prog};
}

void TDataCmd::bind(IDevice* device, IDevice* family, TProg* prog, bool validDev)
{
    const QString chip = family ? family->name() : QString();
    const QMutexLocker lock(&m_mutex);
    m_device = device;
    m_family = family;
    m_prog = prog;
    m_validDev = validDev;
    if (!device)
        m_validParam = false;
    if (m_madeFor.isEmpty())
        m_madeFor = chip;
}

QString TDataCmd::madeFor() const
{
    const QMutexLocker lock(&m_mutex);
    return m_madeFor;
}

void TDataCmd::setMadeFor(const QString& family)
{
    const QMutexLocker lock(&m_mutex);
    m_madeFor = family;
}
