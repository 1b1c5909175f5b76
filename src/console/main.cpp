#include "console/console.h"
#include "ui/main/start_window.h"

#include <cstring>

namespace {

/// An option for the window system, as desktops give them: one "-" and more than a letter.
bool isWindowOption(const char* argument)
{
    return argument[0] == '-' && argument[1] != '-' && strlen(argument) > 2;
}

} // namespace

int main(int argc, char** argv)
{
    const bool isWindow = argc < 2 || isWindowOption(argv[1]);
    return isWindow ? runWindow(argc, argv) : runConsole(argc, argv);
}
