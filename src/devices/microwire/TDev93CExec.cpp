#include "devices/microwire/TDev93CExec.h"

#include "base/keys.h"
#include "link/wire/bytes.h"
#include "misc/TNormCmdParam.h"
#include "misc/TParamReader.h"

namespace {

constexpr TParamReader param("devices/TDev93CExec");
constexpr quint8 opSetClock = 2;
constexpr quint8 opErase = 3;

} // namespace

TDev93CExec::TDev93CExec(const TData& data)
    : IDeviceExec(data)
{
}

bool TDev93CExec::execute(TSerialPort* port, bool&, int&, int&)
{
    const QString command = m_cmdData.value(key::cmd).toString();
    QByteArray payload;
    if (command == cmd::erase)
        return portGuard(port) && sendChecked(port, opErase, payload);
    if (command != cmd::set_clk)
        return fail();
    // The clock itself, not the level that the programmer's description may have for it.
    payload = doubleWordBytes(param(m_cmdData, key::clk).toInt());
    return portGuard(port) && sendChecked(port, opSetClock, payload);
}
