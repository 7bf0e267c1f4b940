#include "platform/prop_codec.hpp"

#include <gtest/gtest.h>

namespace aerix::platform {
namespace {

TEST(PropCodec, EveryTypeRoundTripsAndDamageIsDetected) {
    const std::vector<PropVal> props{
        PropVal::I2(1, -32768),
        PropVal::Ui2(2, 65535),
        PropVal::I4(3, -2147483647),
        PropVal::Ui4(4, 4294967295u),
        PropVal::R8(5, -80.946093528969),
        PropVal::Bool(6, true),
        PropVal::Text(7, u"G-CESS \u00e9"),
        PropVal::Text(8, u""),
        PropVal::Blob(9, {0, 1, 255}),
    };
    std::vector<std::uint8_t> blob;
    EncodeProps(props, blob);
    // Decoding into a vector that held other values reuses it.
    std::vector<PropVal> back{PropVal::Text(1, u"old"), PropVal::R8(2, 1.0)};
    ASSERT_TRUE(DecodeProps(blob, back));
    EXPECT_EQ(back, props);

    for (std::size_t cut : {blob.size() - 1, std::size_t(3), std::size_t(5)}) {
        SCOPED_TRACE(cut);
        std::vector<std::uint8_t> shorter(blob.begin(), blob.begin() + static_cast<long>(cut));
        EXPECT_FALSE(DecodeProps(shorter, back));
    }
    std::vector<std::uint8_t> unknown{0x63, 0, 1, 0};  // type 0x63 of property 1
    EXPECT_FALSE(DecodeProps(unknown, back));
    EXPECT_TRUE(back.empty());
}

}  // namespace
}  // namespace aerix::platform
