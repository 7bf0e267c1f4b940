// libFuzzer target: arbitrary text through the OpenAir conversion. Every line it writes must be
// one the airspace loader reads whole: seven separated fields, CR LF ended, no stray line feed,
// finite numbers and a position on the globe.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/text_numbers.hpp"
#include "store/field_splitter.hpp"
#include "store/openair_import.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    aerix::OpenAirConversion out = aerix::ConvertOpenAir(input);
    std::string_view text = out.text;
    int lines = 0;
    while (!text.empty()) {
        std::size_t end = text.find('\n');
        if (end == std::string_view::npos || end < 1 || text[end - 1] != '\r')
            std::abort();
        std::string_view line = text.substr(0, end - 1);
        std::size_t separators = 0;
        for (char c : line) {
            if (c == '\r')
                std::abort();
            separators += c == aerix::kFieldSeparator;
        }
        if (separators != 7 || line.back() != aerix::kFieldSeparator)
            std::abort();
        // Every number is a finite one and the position lies on the globe (an arc may run
        // past the date line).
        std::string_view numbers = line.substr(line.find(aerix::kFieldSeparator) + 1);
        if (numbers.find("nan") != std::string_view::npos ||
            numbers.find("inf") != std::string_view::npos)
            std::abort();
        double latitude = aerix::TextToDouble(numbers);
        double longitude =
            aerix::TextToDouble(numbers.substr(numbers.find(aerix::kFieldSeparator) + 1));
        if (!(std::fabs(latitude) <= 90.0 * 6000.0 && std::fabs(longitude) <= 360.0 * 6000.0))
            std::abort();
        text.remove_prefix(end + 1);
        ++lines;
    }
    if (lines != out.lines || out.outlines > out.lines)
        std::abort();
    return 0;
}
