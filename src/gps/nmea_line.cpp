#include "gps/nmea_line.hpp"

#include "gps/line_assembler.hpp"
#include "gps/nmea_sentence.hpp"
#include "platform/services.hpp"

namespace aerix {

bool IsRmcLine(std::string_view line) noexcept {
    return line.size() >= 6 && line.substr(3, 3) == "RMC";
}

bool HandleNmeaLine(std::string_view line, GpsFix& fix, bool drawingRunning) noexcept {
    if (!line.empty())
        line.remove_suffix(1);
    if (line.size() < 6 || line.front() != '$')
        return false;
    if (auto* idle = platform::Sys().idleTimer)
        idle->Reset();
    // At most a buffer's worth, as the receiver's reader assembles it.
    if (line.size() > kNmeaLineBufferSize)
        line = line.substr(0, kNmeaLineBufferSize);
    NmeaSentenceParser parse = FindNmeaSentenceParser(line);
    if (!parse || drawingRunning)
        return false;
    parse(line, fix);
    return true;
}

}  // namespace aerix
