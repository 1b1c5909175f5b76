#pragma once

/// The console face: does the job of the first word of the command line, without a display, and gives
/// the exit code. Builds its own application object.
int runConsole(int argc, char** argv);
