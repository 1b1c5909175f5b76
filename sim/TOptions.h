#pragma once

#include "TFaults.h"

#include <string>

/// The command line of the simulator.
struct TOptions
{
    std::string chip;
    std::string devices;
    std::string port;
    std::string name = "Velmarkion simulator";
    unsigned interfaceId = 1234;
    std::string image;
    unsigned baud = 0; ///< 0: as fast as it goes
    unsigned maxData = 65535;
    unsigned address = 0; ///< level of the address pins of an I2C chip, 0 to 7, A2 in bit 2
    std::string trace;
    TFaults faults;
    bool help = false;

    /// Reads the arguments behind the program's name; `home` is the folder that the defaults lie in. False:
    /// wrong usage, `error` says what.
    [[nodiscard]] bool parse(const std::vector<std::string>& arguments, const std::string& home,
                             std::string& error);

    /// The text of `--help`.
    static std::string helpText();

private:
    [[nodiscard]] bool take(const std::string& option, const std::string& value, std::string& error);
};
