// The stored form of a record's properties: one blob holding each property as its 32-bit id
// followed by its value (little-endian; texts and blobs with a 32-bit length first, texts in
// UTF-16 code units). Reading a record is then one column and one pass.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/prop_val.hpp"

namespace aerix::platform {

void EncodeProps(std::span<const PropVal> props, std::vector<std::uint8_t>& out);
// False (with out holding what was read so far) when the blob is damaged.
bool DecodeProps(std::span<const std::uint8_t> blob, std::vector<PropVal>& out);

}  // namespace aerix::platform
