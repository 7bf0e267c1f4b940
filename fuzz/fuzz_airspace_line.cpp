// libFuzzer target: arbitrary bytes as one airspace file line through the 0xB8 field splitter and
// the number conversions the loader applies. Any crash, overrun (AddressSanitizer) or a buffer
// left without its terminator is a defect.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/text_numbers.hpp"
#include "store/field_splitter.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view line(reinterpret_cast<const char*>(data), size);
    aerix::FieldBuffer field;
    for (int index = 0; index < 9; ++index) {
        int result = aerix::SplitField(line, index, field);
        if (result != 0 && result != 1)
            std::abort();
        if (field.bytes[aerix::FieldBuffer::kSize - 1] != '\0' ||
            field.Text().size() >= aerix::FieldBuffer::kSize)
            std::abort();
        (void)aerix::TextToInt32(field.Text());
        (void)aerix::TextToDouble(field.Text());
    }
    return 0;
}
