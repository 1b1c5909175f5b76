#pragma once

#include <QFont>

/// The font of tables and logs, from the settings; what they leave open is that of the application.
QFont monoFont();
