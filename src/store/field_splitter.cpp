#include "store/field_splitter.hpp"

#include <cstring>

namespace aerix {

std::string_view FieldBuffer::Text() const {
    return {bytes.data(), ::strnlen(bytes.data(), kSize)};
}

int SplitField(std::string_view line, int index, FieldBuffer& buffer) {
    std::size_t pos = 0;
    for (int skipped = 0; skipped < index; ++skipped) {
        std::size_t sep = line.find(kFieldSeparator, pos);
        if (sep == std::string_view::npos)
            return 0;
        pos = sep + 1;
    }
    std::size_t end = line.find(kFieldSeparator, pos);
    bool separated = end != std::string_view::npos;
    std::string_view field = line.substr(pos, separated ? end - pos : std::string_view::npos);
    std::size_t n = std::min(field.size(), FieldBuffer::kSize - 1);
    std::memcpy(buffer.bytes.data(), field.data(), n);
    if (!separated)
        return 0;
    buffer.bytes[n] = '\0';
    return 1;
}

}  // namespace aerix
