#include "core/model/IDevice.h"

#include "base/keys.h"

IDevice::IDevice(const QString& name)
    : m_name(name)
{
}

IDevice::~IDevice() = default;

QString IDevice::name() const
{
    return m_name;
}

TData IDevice::deviceData() const
{
    TData copy = m_deviceData;
    copy.detach();
    return copy;
}

QVariant IDevice::deviceValue(const QString& key) const
{
    return m_deviceData.value(key);
}

QStringList IDevice::info() const
{
    return m_info;
}

QString IDevice::section() const
{
    return m_deviceData.value(key::prg_section).toString();
}

bool IDevice::hasReset() const
{
    return m_deviceData.value(key::reset).toBool();
}

TData IDevice::normalizeParams(const TData& data) const
{
    TData copy = data;
    copy.detach();
    return copy;
}

bool IDevice::refreshParams(TData&) const
{
    return false;
}

bool IDevice::checkDeviceParams(const TData&) const
{
    return true;
}

QString IDevice::beginText(const TData& data) const
{
    return paramsText(data, nullptr);
}

bool IDevice::setDeviceDefaults(TData&) const
{
    return false;
}

QWidget* IDevice::createDeviceForm(const TData&) const
{
    return nullptr;
}

QByteArray IDevice::deviceParamBlock(const TData&) const
{
    return {};
}

void IDevice::setDeviceData(const TData& data)
{
    m_deviceData = data;
}

void IDevice::setInfo(const QStringList& info)
{
    m_info = info;
}
