#include "TOptions.h"

#include "text.h"

#include <algorithm>

namespace {

/// One option: where its value goes, and in which range a number lies.
struct TOption
{
    const char* word;
    std::string TOptions::*text;
    unsigned TOptions::*number;
    std::uint64_t least;
    std::uint64_t most;
};

const TOption table[] = {
    {"--chip", &TOptions::chip, nullptr, 0, 0},
    {"--devices", &TOptions::devices, nullptr, 0, 0},
    {"--port", &TOptions::port, nullptr, 0, 0},
    {"--name", &TOptions::name, nullptr, 0, 0},
    {"--interface", nullptr, &TOptions::interfaceId, 0, 0xFFFF},
    {"--image", &TOptions::image, nullptr, 0, 0},
    {"--baud", nullptr, &TOptions::baud, 1, 100000000},
    {"--max-data", nullptr, &TOptions::maxData, 0, 0xFFFF},
    {"--address", nullptr, &TOptions::address, 0, 7},
    {"--trace", &TOptions::trace, nullptr, 0, 0},
};

constexpr std::size_t longestName = 65535; ///< what one reply can carry
const char* const faultWord = "--fault";

} // namespace

bool TOptions::parse(const std::vector<std::string>& arguments, const std::string& home, std::string& error)
{
    devices = home + "/devices";
    port = home + "/sim";
    for (std::size_t i = 0; i < arguments.size(); i++) {
        const std::string& argument = arguments[i];
        if (argument == "--help" || argument == "-h") {
            help = true;
            continue;
        }
        const std::size_t equals = argument.find('=');
        const bool joined = argument.compare(0, 2, "--") == 0 && equals != std::string::npos;
        if (!joined && i + 1 == arguments.size()) {
            error = "unknown option, or an option without its value: " + argument;
            return false;
        }
        const std::string value = joined ? argument.substr(equals + 1) : arguments[++i];
        if (!take(joined ? argument.substr(0, equals) : argument, value, error))
            return false;
    }
    if (!image.empty() && chip.empty() && !help) {
        error = "--image needs --chip: an empty socket has no memory";
        return false;
    }
    return true;
}

bool TOptions::take(const std::string& option, const std::string& value, std::string& error)
{
    error = "wrong value of " + option + ": " + value;
    if (option == faultWord)
        return faults.add(value);
    const auto* const row = std::find_if(std::begin(table), std::end(table),
                                         [&option](const TOption& known) { return option == known.word; });
    if (row == std::end(table)) {
        error = "unknown option: " + option;
        return false;
    }
    if (row->text != nullptr) {
        this->*(row->text) = value;
        return row->text == &TOptions::name ? value.size() <= longestName : !value.empty();
    }
    const auto number = toNumber(value, 10, row->most);
    if (!number || *number < row->least)
        return false;
    this->*(row->number) = unsigned(*number);
    return true;
}

std::string TOptions::helpText()
{
    return R"(usage: velmarkion-sim [options]

Answers on a pseudo-terminal as a chip programmer does, with a chip in its socket.

  --chip NAME       the chip in the socket, a name of devices.lst; without it the socket is empty
  --devices DIR     folder of the description files (default: devices beside the program)
  --port PATH       link to the pseudo-terminal (default: sim beside the program)
  --name TEXT       name of the programmer
  --interface ID    interface id of the programmer, 0 to 65535 (default 1234)
  --image FILE      contents of the chip's main memory: read at the start, written at the end
  --address N       level of the address pins of an I2C chip, 0 to 7 (default 0)
  --baud N          holds the line to N baud; writes of AVR and I2C chips take their time too
  --max-data N      largest payload that is taken (default 65535)
  --fault KIND@N    the Nth frame goes wrong; may be repeated. KIND is one of silent, cut, checksum,
                    noise, error=CODE, short, echo, hangup, flip
  --trace FILE      writes every frame with its time
  --help            this text

It prints "ready PATH" when the port can be opened. SIGINT and SIGTERM end it.
)";
}
