#include "chips/TAvrFamily.h"

namespace {

constexpr std::uint8_t polling = 0xFF;

/// A pacing byte is a time in milliseconds, or says that the firmware polls; a poll ends at once here.
unsigned waitOf(std::uint8_t pace)
{
    return pace == polling ? 0 : pace;
}

} // namespace

TAvrFamily::TAvrFamily(const TSocket* socket)
{
    if (socket != nullptr)
        chip.emplace(socket->description);
}

void TAvrFamily::select(const Bytes& block)
{
    flashWait = waitOf(block[7]);
    eepromWait = waitOf(block[8]);
    if (chip)
        chip->enterProgramming();
}

TAnswer TAvrFamily::answer(std::uint8_t opcode, const Bytes& payload)
{
    switch (opcode) {
    case 3:
        return readFlash(payload);
    case 4:
        return writeFlash(payload);
    case 5:
        return readEeprom(payload);
    case 6:
        return writeEeprom(payload);
    case 7:
        return instruction(payload);
    default:
        return TAnswer::refuse(ErrorCode::unknownCommand);
    }
}

TAnswer TAvrFamily::readFlash(const Bytes& payload)
{
    if (payload.size() != 4)
        return TAnswer::refuse(ErrorCode::wrongLength);
    const std::size_t count = le16(payload, 2);
    if (!chip)
        return TAnswer::data(Bytes(count, 0xFF));
    return TAnswer::data(chip->readFlash(chip->fullAddress(le16(payload, 0)), count));
}

TAnswer TAvrFamily::writeFlash(const Bytes& payload)
{
    if (payload.size() < 2)
        return TAnswer::refuse(ErrorCode::wrongLength);
    const bool isBuffered = chip && chip->hasPages();
    const std::uint32_t address = chip ? chip->fullAddress(le16(payload, 0)) : 0;
    for (std::size_t i = 2; i < payload.size() && chip; i++)
        chip->loadFlash(address + std::uint32_t(i - 2), payload[i]);
    return TAnswer::done(isBuffered ? 0 : flashWait * unsigned(payload.size() - 2));
}

TAnswer TAvrFamily::readEeprom(const Bytes& payload)
{
    if (payload.size() != 4)
        return TAnswer::refuse(ErrorCode::wrongLength);
    const std::size_t count = le16(payload, 2);
    return TAnswer::data(chip ? chip->readEeprom(le16(payload, 0), count) : Bytes(count, 0xFF));
}

TAnswer TAvrFamily::writeEeprom(const Bytes& payload)
{
    if (payload.size() < 2)
        return TAnswer::refuse(ErrorCode::wrongLength);
    for (std::size_t i = 2; i < payload.size() && chip; i++)
        chip->writeEeprom(le16(payload, 0) + std::uint32_t(i - 2), payload[i]);
    return TAnswer::done(eepromWait * unsigned(payload.size() - 2));
}

TAnswer TAvrFamily::instruction(const Bytes& payload)
{
    if (payload.size() != 5)
        return TAnswer::refuse(ErrorCode::wrongLength);
    TAnswer answer = TAnswer::data(Bytes(4, 0xFF));
    answer.waitMs = waitOf(payload[0]);
    if (chip) {
        const TAvrChip::Instruction reply = chip->instruct({payload[1], payload[2], payload[3], payload[4]});
        answer.payload.assign(reply.begin(), reply.end());
    }
    return answer;
}
