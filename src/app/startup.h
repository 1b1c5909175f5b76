#pragma once

/// The steps of the start that the window and the console share, in their order: types of signals,
/// working directory, text codec, settings, language. Main thread, behind the application object and
/// before the first connection. From here on relative paths count from the folder of the executable.
void startEngine();

/// Reads the language file of the settings into the table; without the file the table is empty. Qt's own
/// words follow in the same language, from the folder of languages or that of Qt; where there are none they
/// stay English.
void loadLanguage();
