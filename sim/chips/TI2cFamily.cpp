#include "chips/TI2cFamily.h"

#include <algorithm>

namespace {

constexpr std::uint8_t controlPins = 0x0E;

} // namespace

TI2cFamily::TI2cFamily(const TSocket* socket)
{
    if (socket != nullptr)
        chip.emplace(socket->description, socket->address);
}

void TI2cFamily::select(const Bytes& block)
{
    controlBits = std::uint8_t(block[3] << 1) & controlPins;
    writeWait = block[8];
}

TAnswer TI2cFamily::answer(std::uint8_t opcode, const Bytes& payload)
{
    switch (opcode) {
    case 3:
        return setControlBits(payload);
    case 4:
        return write(payload);
    case 5:
        return read(payload);
    default:
        return TAnswer::refuse(ErrorCode::unknownCommand);
    }
}

TAnswer TI2cFamily::setControlBits(const Bytes& payload)
{
    if (payload.size() != 1)
        return TAnswer::refuse(ErrorCode::wrongLength);
    if ((payload[0] & ~controlPins) != 0)
        return TAnswer::refuse(ErrorCode::wrongParameter);
    controlBits = payload[0];
    return TAnswer::done();
}

std::uint8_t TI2cFamily::withPins(std::uint8_t control) const
{
    return control | controlBits;
}

TAnswer TI2cFamily::write(const Bytes& payload)
{
    if (payload.empty())
        return TAnswer::refuse(ErrorCode::wrongLength);
    const std::uint8_t control = withPins(payload[0]);
    if (!chip || !chip->acknowledges(control))
        return TAnswer::refuse(ErrorCode::deviceSilent);
    return TAnswer::done(chip->write(control, payload, 1) > 0 ? writeWait : 0);
}

TAnswer TI2cFamily::read(const Bytes& payload)
{
    if (payload.size() < 3)
        return TAnswer::refuse(ErrorCode::wrongLength);
    const std::uint8_t control = withPins(payload[2]);
    if (!chip || !chip->acknowledges(control))
        return TAnswer::refuse(ErrorCode::deviceSilent);
    // The bytes behind the control byte are the address; further ones would be data of a write, which a
    // repeated start cuts off.
    const auto begin = payload.begin() + 3;
    const std::size_t size = std::min(payload.size() - 3, chip->addressSize());
    const Bytes address(begin, begin + std::ptrdiff_t(size));
    chip->write(control, address, 0);
    return TAnswer::data(chip->read(le16(payload, 0)));
}
