#pragma once

#include <QString>

/// Name of the chip with that signature, upper-case hexadecimal, from the signature list in the folder of
/// a chip's description; language text 400 when it is not known there. Any thread.
QString signatureName(const QString& folder, const QString& id);
