// libFuzzer target: arbitrary bytes through the line handling's wide conversion, NextNmeaField
// and RmcParser. Any crash, overrun (AddressSanitizer) or over-long field is a defect.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "gps/gps_fix.hpp"
#include "gps/nmea_field.hpp"
#include "gps/rmc_parser.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::u16string sentence;
    sentence.reserve(size);
    for (std::size_t i = 0; i < size; ++i)
        sentence.push_back(static_cast<char16_t>(data[i]));

    char16_t field[aerix::kNmeaFieldSize];
    const char16_t* cursor = sentence.c_str();
    const char16_t* end = sentence.c_str() + sentence.size();
    while (cursor) {
        if (cursor > end)
            std::abort();
        cursor = aerix::NextNmeaField(cursor, field);
        if (std::char_traits<char16_t>::length(field) >= aerix::kNmeaFieldSize)
            std::abort();
    }

    aerix::GpsFix fix;
    aerix::RmcParser(sentence.c_str(), fix);
    if (fix.FixVoid > 1)
        std::abort();
    return 0;
}
