#include "core/model/TDataCfg.h"

#include <QMutexLocker>

#include <atomic>

namespace {

std::atomic<int> nextId{0};

} // namespace

TDataCfg::TDataCfg(const QString& name, const QString& description)
    : m_idCfg(nextId++)
    , m_name(name)
    , m_description(description)
{
}

TDataCfg::~TDataCfg() = default;

void TDataCfg::resetCounter()
{
    nextId = 0;
}

int TDataCfg::id() const
{
    return m_idCfg;
}

QString TDataCfg::name() const
{
    const QMutexLocker lock(&m_mutex);
    return m_name;
}

void TDataCfg::setName(const QString& name)
{
    const QMutexLocker lock(&m_mutex);
    m_name = name;
}

QString TDataCfg::description() const
{
    const QMutexLocker lock(&m_mutex);
    return m_description;
}

void TDataCfg::setDescription(const QString& text)
{
    const QMutexLocker lock(&m_mutex);
    m_description = text;
}

int TDataCfg::status() const
{
    const QMutexLocker lock(&m_mutex);
    return m_status;
}

void TDataCfg::setStatus(int status)
{
    const QMutexLocker lock(&m_mutex);
    m_status = status;
}
