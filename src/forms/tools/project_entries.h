#pragma once

#include "forms/edits/TIdBox.h"

/// The configurations of the project, in their order.
TIdBox::Entries cfgEntries();
/// The commands of a configuration with their display names, in their order; none for an unknown one.
TIdBox::Entries cmdEntries(int id_cfg);
