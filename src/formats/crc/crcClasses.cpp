#include "formats/crc/crcClasses.h"

// The parameters and tables are constants that the compiler has worked out: nothing runs at start.

#define CRC_ALGORITHM(Class, width, poly, init, refIn, refOut, xorOut, check, ...)                           \
    namespace Class##_data                                                                                   \
    {                                                                                                        \
        constexpr TCrcParams params = {width, poly, init, refIn, refOut, xorOut};                            \
        constexpr auto table = makeCrcTable<CrcState<width>>(params);                                        \
    }                                                                                                        \
    Class::Class()                                                                                           \
        : TCRC(Class##_data::params, Class##_data::table.data())                                             \
    {                                                                                                        \
    }
#include "formats/crc/crcAlgorithms.def"
#undef CRC_ALGORITHM
