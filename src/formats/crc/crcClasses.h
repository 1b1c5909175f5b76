#pragma once

#include "formats/crc/TCRC.h"

// One class for each row of the table of algorithms.

#define CRC_ALGORITHM(Class, width, ...)                                                                     \
    class Class final : public TCRC<CrcState<width>>                                                         \
    {                                                                                                        \
    public:                                                                                                  \
        Class();                                                                                             \
    };
#include "formats/crc/crcAlgorithms.def"
#undef CRC_ALGORITHM
