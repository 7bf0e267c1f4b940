#include "platform/image_header.hpp"

#include <cstdlib>
#include <fstream>

namespace aerix::platform {

namespace {

std::uint32_t Le(const unsigned char* b, int n) {
    std::uint32_t v = 0;
    for (int i = n - 1; i >= 0; --i)
        v = (v << 8) | b[i];
    return v;
}

std::optional<ImageHeader> BmpHeader(std::ifstream& in, unsigned char (&h)[54]) {
    if (!in.read(reinterpret_cast<char*>(h) + 4, 22))
        return std::nullopt;
    ImageHeader header;
    const std::uint32_t infoSize = Le(h + 14, 4);
    if (infoSize == 12) {  // the old OS/2 header: 16-bit sizes
        header.width = Le(h + 18, 2);
        header.height = Le(h + 20, 2);
        return header;
    }
    // Rows run top-down when the height is negative.
    header.width = static_cast<std::int32_t>(Le(h + 18, 4));
    header.height = std::llabs(static_cast<std::int32_t>(Le(h + 22, 4)));
    if (infoSize >= 40 && in.read(reinterpret_cast<char*>(h) + 26, 28) && Le(h + 30, 4) == 0) {
        const std::int64_t bits = Le(h + 28, 2);
        const std::int64_t rowBytes = (header.width * bits + 31) / 32 * 4;
        if (header.width > 0 && bits > 0)
            header.bytesNeeded =
                Le(h + 10, 4) + static_cast<std::uint64_t>(rowBytes * header.height);
    }
    return header;
}

std::optional<ImageHeader> JpegHeader(std::ifstream& in) {
    // Walk the segments to the frame header.
    in.seekg(2);
    unsigned char m[5];
    while (in.read(reinterpret_cast<char*>(m), 4)) {
        if (m[0] != 0xFF)
            return std::nullopt;
        const unsigned marker = m[1];
        const unsigned length = (static_cast<unsigned>(m[2]) << 8) | m[3];
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 &&
            marker != 0xCC) {
            if (!in.read(reinterpret_cast<char*>(m), 5))
                return std::nullopt;
            ImageHeader header;
            header.height = (m[1] << 8) | m[2];
            header.width = (m[3] << 8) | m[4];
            return header;
        }
        if (length < 2)
            return std::nullopt;
        in.seekg(length - 2, std::ios::cur);
    }
    return std::nullopt;
}

}  // namespace

std::optional<ImageHeader> ReadImageHeader(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    unsigned char h[54] = {};
    if (!in.read(reinterpret_cast<char*>(h), 4))
        return std::nullopt;
    if (h[0] == 'B' && h[1] == 'M')
        return BmpHeader(in, h);
    if (h[0] == 0xFF && h[1] == 0xD8)
        return JpegHeader(in);
    return std::nullopt;
}

}  // namespace aerix::platform
