#include "devices/prog/prog_link.h"

#include "link/wire/TSerialPort.h"
#include "link/wire/opcodes.h"
#include "misc/TNormCmdParam.h"

#include <QByteArray>

namespace {

bool send(TSerialPort* port, quint8 command, QByteArray payload)
{
    return port->isOpen() && port->exchange(command, payload);
}

} // namespace

bool progSetStatus(TSerialPort* port, TProgState state)
{
    return send(port, opcode::setStatus, QByteArray(1, static_cast<char>(state)));
}

bool progCloseLink(TSerialPort* port)
{
    return send(port, opcode::closeLink, {});
}

bool progResetPulse(TSerialPort* port, int duration)
{
    return send(port, opcode::resetPulse, durationBytes(duration));
}
