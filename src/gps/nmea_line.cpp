#include "gps/nmea_line.hpp"

#include "gps/line_assembler.hpp"
#include "gps/rmc_parser.hpp"
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
    // 8-bit text to wide characters byte for byte, at most a buffer's worth.
    char16_t wide[kNmeaLineBufferSize + 1];
    std::size_t n = line.size() < kNmeaLineBufferSize ? line.size() : kNmeaLineBufferSize;
    for (std::size_t i = 0; i < n; ++i)
        wide[i] = static_cast<char16_t>(static_cast<unsigned char>(line[i]));
    wide[n] = u'\0';
    if (!(wide[3] == u'R' && wide[4] == u'M' && wide[5] == u'C'))
        return false;
    if (drawingRunning)
        return false;
    RmcParser(wide, fix);
    return true;
}

}  // namespace aerix
