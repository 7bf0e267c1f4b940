#include "platform/memory_status.hpp"

#include <fstream>
#include <sstream>
#include <string>

namespace aerix::platform {

std::uint32_t MemoryLoadPercent(std::uint64_t total, std::uint64_t available) {
    if (total == 0)
        return 0;
    if (available > total)
        available = total;
    return static_cast<std::uint32_t>(100 * (total - available) / total);
}

bool ProcMemoryStatus::Query(MemoryStatusRecord* status) {
    std::ifstream in(file_);
    if (!in)
        return false;
    std::optional<std::uint64_t> total, available, free;
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string key;
        std::uint64_t kb = 0;
        if (!(fields >> key >> kb))
            continue;
        if (key == "MemTotal:")
            total = kb * 1024;
        else if (key == "MemAvailable:")
            available = kb * 1024;
        else if (key == "MemFree:")
            free = kb * 1024;
    }
    if (!total || (!available && !free))
        return false;
    status->totalPhys = *total;
    status->availPhys = available ? *available : *free;
    status->memoryLoad = MemoryLoadPercent(status->totalPhys, status->availPhys);
    return true;
}

bool FixedMemoryStatus::Query(MemoryStatusRecord* status) {
    status->memoryLoad = load_;
    status->totalPhys = 100;
    status->availPhys = 100 - (load_ > 100 ? 100 : load_);
    return true;
}

}  // namespace aerix::platform
