#include "chips/TSpiFlashFamily.h"

namespace {

constexpr std::uint8_t writeEnable = 0x06;

} // namespace

TSpiFlashFamily::TSpiFlashFamily(const TSocket* socket)
{
    if (socket != nullptr)
        chip.emplace(socket->name, socket->description);
}

TAnswer TSpiFlashFamily::answer(std::uint8_t opcode, const Bytes& payload)
{
    switch (opcode) {
    case 3:
        return read(payload);
    case 4:
        return write(payload);
    default:
        return TAnswer::refuse(ErrorCode::unknownCommand);
    }
}

TAnswer TSpiFlashFamily::read(const Bytes& payload)
{
    if (payload.size() < 3)
        return TAnswer::refuse(ErrorCode::wrongLength);
    const std::size_t count = le16(payload, 0);
    if (!chip)
        return TAnswer::data(Bytes(count, 0xFF));
    return TAnswer::data(chip->transfer(Bytes(payload.begin() + 2, payload.end()), count));
}

TAnswer TSpiFlashFamily::write(const Bytes& payload)
{
    if (payload.empty())
        return TAnswer::refuse(ErrorCode::wrongLength);
    if (chip) {
        chip->transfer({writeEnable}, 0);
        chip->transfer(payload, 0);
    }
    return TAnswer::done();
}
