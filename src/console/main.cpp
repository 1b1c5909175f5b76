#include "console/console.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc > 1)
        return runConsole(argc, argv);
    fputs("velmarkion: the window is not built in\nTry \"velmarkion --help\".\n", stderr);
    return 2;
}
