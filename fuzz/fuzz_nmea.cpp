// libFuzzer target: arbitrary bytes through NextNmeaField and the sentence table's parsers, as
// the reader hands them a line. Any crash, overrun (AddressSanitizer) or over-long field is a
// defect.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "gps/gps_fix.hpp"
#include "gps/nmea_field.hpp"
#include "gps/nmea_sentence.hpp"
#include "gps/rmc_parser.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view sentence(reinterpret_cast<const char*>(data), size);

    const char* end = sentence.data() + sentence.size();
    const char* cursor = sentence.data();
    aerix::NmeaField field;
    while (cursor) {
        if (cursor > end)
            std::abort();
        cursor = aerix::NextNmeaField(cursor, end, field);
        if (field.last - field.first >= static_cast<std::ptrdiff_t>(aerix::kNmeaFieldSize) ||
            field.first > field.last || (field.last != nullptr && field.last > end))
            std::abort();
    }

    aerix::GpsFix fix;
    aerix::ParseNmeaSentence(sentence, fix);
    aerix::ParseRmc(sentence, fix);
    if (fix.FixVoid > 1)
        std::abort();
    return 0;
}
