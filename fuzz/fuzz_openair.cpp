// libFuzzer target: arbitrary text through the OpenAir conversion. Every line it writes must be
// one the airspace loader reads whole: seven separated fields, CR LF ended, no stray line feed.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

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
        text.remove_prefix(end + 1);
        ++lines;
    }
    if (lines != out.lines || out.outlines > out.lines)
        std::abort();
    return 0;
}
