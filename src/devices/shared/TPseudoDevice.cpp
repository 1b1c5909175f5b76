#include "devices/shared/TPseudoDevice.h"

#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/IFormFactory.h"
#include "misc/TParamReader.h"

#include <algorithm>

namespace {

constexpr TParamReader param("devices/TPseudoDevice");

} // namespace

TPseudoDevice::TPseudoDevice(const QString& name, const TData& data, const Row* rows, size_t count,
                             const QStringList& keys)
    : IDevice(name)
    , m_rows(rows)
    , m_count(count)
    , m_keys(keys)
{
    setDeviceData(data);
}

const TPseudoDevice::Row* TPseudoDevice::rowOf(const TData& data) const
{
    const QString word = param(data, key::cmd).toString();
    const Row* end = m_rows + m_count;
    const Row* row = std::find_if(m_rows, end, [&](const Row& r) { return word == r.word; });
    return row == end ? nullptr : row;
}

QStringList TPseudoDevice::commandKeys() const
{
    return m_keys;
}

bool TPseudoDevice::hasCommand(const QString& key) const
{
    return m_keys.contains(key);
}

void TPseudoDevice::setDefaultParams(TData& data) const
{
    if (const Row* row = rowOf(data))
        row->setDefaults(data);
}

QString TPseudoDevice::commandTitle(const TData& data) const
{
    return cmdCode().name(param(data, key::cmd).toString());
}

QString TPseudoDevice::paramsText(const TData& data, QWidget*) const
{
    const Row* row = rowOf(data);
    return row ? row->text(data) : QString();
}

QWidget* TPseudoDevice::createForm(const TData& data) const
{
    return formFactory() ? formFactory()->createForm(*this, data) : nullptr;
}

TData TPseudoDevice::normalizeParams(const TData& data) const
{
    return IDevice::normalizeParams(data);
}

bool TPseudoDevice::refreshParams(TData& data) const
{
    return IDevice::refreshParams(data);
}

bool TPseudoDevice::checkParams(const TData& data) const
{
    const Row* row = rowOf(data);
    return row && row->check(data);
}

bool TPseudoDevice::checkDeviceParams(const TData& data) const
{
    return IDevice::checkDeviceParams(data);
}

bool TPseudoDevice::setDeviceDefaults(TData& data) const
{
    return IDevice::setDeviceDefaults(data);
}

QWidget* TPseudoDevice::createDeviceForm(const TData& data) const
{
    return IDevice::createDeviceForm(data);
}

QByteArray TPseudoDevice::deviceParamBlock(const TData& data) const
{
    return IDevice::deviceParamBlock(data);
}
