#pragma once

/// The window: runs it until it is closed and gives the exit code. Builds its own application object.
int runWindow(int argc, char** argv);
