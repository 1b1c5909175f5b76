#include "TTrace.h"

#include <ctime>

bool TTrace::open(const std::string& path)
{
    file.reset(std::fopen(path.c_str(), "we"));
    return file != nullptr;
}

void TTrace::write(char direction, const Bytes& frame)
{
    if (!file)
        return;
    static const char digits[] = "0123456789ABCDEF";
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    char head[32];
    std::snprintf(head, sizeof(head), "%02d:%02d:%02d.%06ld %c", local.tm_hour, local.tm_min, local.tm_sec,
                  now.tv_nsec / 1000, direction);
    std::string line = head;
    line.reserve(line.size() + frame.size() * 3 + 1);
    for (const std::uint8_t byte : frame) {
        line += ' ';
        line += digits[byte >> 4];
        line += digits[byte & 15];
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), file.get());
    std::fflush(file.get());
}
