#include "TProgrammer.h"

#include "chips/families.h"

#include <algorithm>

namespace {

constexpr std::uint8_t highestPinCode = 8;
constexpr std::uint8_t highestStatus = 3;
constexpr unsigned wholeDuty = 1000; ///< tenths of a percent
constexpr std::size_t anyLength = 65535;
constexpr std::uint8_t firstOwnOpcode = 0x80;

} // namespace

/// One opcode: the least and the greatest length of its payload, and the routine that carries it out.
struct TProgrammer::TCommand
{
    std::uint8_t opcode;
    std::size_t least;
    std::size_t most;
    TAnswer (TProgrammer::*run)(const Bytes&);
};

const TProgrammer::TCommand TProgrammer::commands[] = {
    {0x01, 2, anyLength, &TProgrammer::pins}, {0x02, 4, 4, &TProgrammer::accept},
    {0x80, 0, 0, &TProgrammer::interfaceId},  {0x81, 0, 0, &TProgrammer::name},
    {0x83, 1, 1, &TProgrammer::status},       {0x84, 0, anyLength, &TProgrammer::select},
    {0x85, 0, 0, &TProgrammer::closeLink},    {0x86, 2, 2, &TProgrammer::reset},
    {0x87, 6, 6, &TProgrammer::frequency},    {0x88, 2, anyLength, &TProgrammer::pins},
    {0x89, 1, 1, &TProgrammer::accept},       {0x8A, 1, 1, &TProgrammer::accept},
    {0x8B, 6, 6, &TProgrammer::limited},      {0x8C, 4, 4, &TProgrammer::limited},
};

TProgrammer::TProgrammer(const TOptions& given, TCatalogue& known)
    : options(given)
    , catalogue(known)
{
}

bool TProgrammer::insertChip(std::string& error)
{
    if (options.chip.empty())
        return true;
    const auto description = catalogue.chip(options.chip);
    if (!description) {
        error = "no description of the chip " + options.chip + " in " + options.devices;
        return false;
    }
    socketNumber = catalogue.typeNumber(*description);
    if (socketNumber == 0) {
        error = "types.lst has no number for the type of the chip " + options.chip;
        return false;
    }
    const TSocket contents{options.chip, *description, options.address};
    socket = makeFamily(description->text("gui_type"), &contents, error);
    return socket != nullptr;
}

Bytes* TProgrammer::mainMemory()
{
    return socket ? socket->mainMemory() : nullptr;
}

const TProgrammer::TCommand* TProgrammer::find(std::uint8_t opcode)
{
    const auto* const found = std::find_if(std::begin(commands), std::end(commands),
                                           [opcode](const TCommand& row) { return row.opcode == opcode; });
    return found == std::end(commands) ? nullptr : found;
}

TAnswer TProgrammer::answer(std::uint8_t opcode, const Bytes& payload)
{
    const TCommand* const command = find(opcode);
    if (command == nullptr && (opcode == 0 || opcode >= firstOwnOpcode))
        return TAnswer::refuse(ErrorCode::unknownCommand);
    if (opcode < firstOwnOpcode && selected == nullptr)
        return TAnswer::refuse(ErrorCode::noDevice);
    if (command == nullptr)
        return selected->answer(opcode, payload);
    if (payload.size() < command->least || payload.size() > command->most)
        return TAnswer::refuse(ErrorCode::wrongLength);
    return (this->*command->run)(payload);
}

TAnswer TProgrammer::accept(const Bytes& /*payload*/)
{
    return TAnswer::done();
}

TAnswer TProgrammer::interfaceId(const Bytes& /*payload*/)
{
    return TAnswer::data({std::uint8_t(options.interfaceId), std::uint8_t(options.interfaceId >> 8)});
}

TAnswer TProgrammer::name(const Bytes& /*payload*/)
{
    return TAnswer::data(Bytes(options.name.begin(), options.name.end()));
}

TAnswer TProgrammer::status(const Bytes& payload)
{
    return payload[0] > highestStatus ? TAnswer::refuse(ErrorCode::wrongParameter) : TAnswer::done();
}

TAnswer TProgrammer::closeLink(const Bytes& /*payload*/)
{
    selected = nullptr;
    return TAnswer::done();
}

TAnswer TProgrammer::reset(const Bytes& payload)
{
    return le16(payload, 0) == 0 ? TAnswer::refuse(ErrorCode::wrongParameter) : TAnswer::done();
}

TAnswer TProgrammer::frequency(const Bytes& payload)
{
    return le16(payload, 4) > wholeDuty ? TAnswer::refuse(ErrorCode::wrongParameter) : TAnswer::done();
}

TAnswer TProgrammer::pins(const Bytes& payload)
{
    const bool known = std::all_of(payload.begin() + 2, payload.end(),
                                   [](std::uint8_t code) { return code <= highestPinCode; });
    return known ? TAnswer::done() : TAnswer::refuse(ErrorCode::wrongParameter);
}

TAnswer TProgrammer::limited(const Bytes& payload)
{
    return payload.back() > 1 ? TAnswer::refuse(ErrorCode::wrongParameter) : TAnswer::done();
}

IChipFamily* TProgrammer::familyFor(unsigned number)
{
    if (socket && number == socketNumber)
        return socket.get();
    std::unique_ptr<IChipFamily>& other = others[number];
    std::string unused;
    if (!other)
        other = makeFamily(catalogue.familyOf(number), nullptr, unused);
    return other.get();
}

TAnswer TProgrammer::select(const Bytes& payload)
{
    selected = nullptr;
    if (payload.empty())
        return TAnswer::done();
    if (payload.size() < 3)
        return TAnswer::refuse(ErrorCode::wrongLength);
    IChipFamily* const family = familyFor(le16(payload, 0));
    if (family == nullptr)
        return TAnswer::refuse(ErrorCode::unsupportedDevice);
    if (payload.size() != family->blockSize())
        return TAnswer::refuse(ErrorCode::wrongLength);
    family->select(payload);
    selected = family;
    return TAnswer::done();
}
