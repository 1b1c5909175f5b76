#include "chips/families.h"

#include "chips/TAvrFamily.h"
#include "chips/TI2cFamily.h"
#include "chips/TSpiFlashFamily.h"

#include <algorithm>

namespace {

template <class Family> std::unique_ptr<IChipFamily> make(const TSocket* socket)
{
    return std::make_unique<Family>(socket);
}

struct TRow
{
    const char* word;
    const char* sizeKey; ///< key of the main memory's size
    std::unique_ptr<IChipFamily> (*make)(const TSocket*);
};

const TRow rows[] = {{"Dev25", "size", make<TSpiFlashFamily>},
                     {"Dev24", "size", make<TI2cFamily>},
                     {"DevAVR8_SPI", "flash_size", make<TAvrFamily>}};

} // namespace

std::unique_ptr<IChipFamily> makeFamily(const std::string& word, const TSocket* socket, std::string& error)
{
    const auto* const row = std::find_if(std::begin(rows), std::end(rows),
                                         [&word](const TRow& known) { return word == known.word; });
    if (row == std::end(rows)) {
        error = "there is no model of the family \"" + word + "\"";
        return nullptr;
    }
    if (socket != nullptr) {
        const std::uint64_t size = socket->description.number(row->sizeKey);
        if (size == 0 || size > greatestMemory) {
            error = "the description of " + socket->name + " gives no memory size that can be modelled";
            return nullptr;
        }
    }
    return row->make(socket);
}
