// Global memory status, as the start-up check reads it: the load in percent of the memory in use.
// The Linux implementation reads /proc/meminfo; tests install a fixed value.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace aerix::platform {

struct MemoryStatusRecord {
    std::uint32_t length = sizeof(MemoryStatusRecord);
    std::uint32_t memoryLoad = 0;  // percent: 100 * (total - available) / total
    std::uint64_t totalPhys = 0;   // bytes
    std::uint64_t availPhys = 0;   // bytes
};

class MemoryStatus {
  public:
    virtual ~MemoryStatus() = default;
    // False when the status cannot be read.
    virtual bool Query(MemoryStatusRecord* status) = 0;
};

// /proc/meminfo: MemTotal and MemAvailable (MemFree when the kernel has no MemAvailable).
class ProcMemoryStatus : public MemoryStatus {
  public:
    explicit ProcMemoryStatus(std::filesystem::path file = "/proc/meminfo")
        : file_(std::move(file)) {}
    bool Query(MemoryStatusRecord* status) override;

  private:
    std::filesystem::path file_;
};

// A fixed load, for tests and demonstrations.
class FixedMemoryStatus : public MemoryStatus {
  public:
    explicit FixedMemoryStatus(std::uint32_t load) : load_(load) {}
    bool Query(MemoryStatusRecord* status) override;
    void SetLoad(std::uint32_t load) { load_ = load; }

  private:
    std::uint32_t load_;
};

// The load for a total and an available amount; 0 for a zero total.
std::uint32_t MemoryLoadPercent(std::uint64_t total, std::uint64_t available);

}  // namespace aerix::platform
