// What a BMP or JPEG file's header says about the picture, read without decoding it: the size a
// loader must refuse before allocating, and whether an uncompressed BMP holds all its rows.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace aerix::platform {

struct ImageHeader {
    std::int64_t width = 0;
    std::int64_t height = 0;
    // For an uncompressed BMP the file size its rows need; 0 when the header cannot say.
    std::uint64_t bytesNeeded = 0;
};

// Nothing for other formats and for a header that is cut short.
std::optional<ImageHeader> ReadImageHeader(const std::filesystem::path& file);

}  // namespace aerix::platform
