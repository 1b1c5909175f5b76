#include "devices/IDeviceExec.h"

namespace {

TData detached(TData data)
{
    data.detach();
    return data;
}

} // namespace

IDeviceExec::IDeviceExec(const TData& data)
    : m_cmdData(detached(data))
{
}

IDeviceExec::~IDeviceExec() = default;

bool IDeviceExec::readChipId(TSerialPort*, QString&)
{
    return true;
}

QString IDeviceExec::errorText() const
{
    return m_errorText;
}

void IDeviceExec::slotStop()
{
    m_stopRequested = true;
}
