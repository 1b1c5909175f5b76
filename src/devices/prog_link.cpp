#include "devices/prog_link.h"

#include "link/TSerialPort.h"

#include <QByteArray>

namespace {

bool send(TSerialPort* port, quint8 opcode, QByteArray payload)
{
    return port->isOpen() && port->exchange(opcode, payload);
}

} // namespace

bool progSetStatus(TSerialPort* port, TProgState state)
{
    return send(port, 0x83, QByteArray(1, static_cast<char>(state)));
}

bool progCloseLink(TSerialPort* port)
{
    return send(port, 0x85, {});
}

bool progResetPulse(TSerialPort* port, int duration)
{
    QByteArray payload;
    payload.append(static_cast<char>(duration & 0xFF));
    payload.append(static_cast<char>((duration >> 8) & 0xFF));
    return send(port, 0x86, payload);
}
