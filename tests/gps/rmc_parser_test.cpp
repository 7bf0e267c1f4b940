#include <gtest/gtest.h>

#include <string>

#include "gps/nmea_field.hpp"
#include "gps/rmc_parser.hpp"

namespace aerix {
namespace {

const std::u16string kExample =
    u"$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A";

TEST(NextNmeaField, SplitsFieldsAndChecksum) {
    std::u16string s = u"$GPRMC,,A*6A";
    char16_t field[kNmeaFieldSize];
    const char16_t* c = NextNmeaField(s.c_str(), field);
    EXPECT_EQ(std::u16string(field), u"$GPRMC");
    c = NextNmeaField(c, field);
    EXPECT_EQ(std::u16string(field), u"");
    c = NextNmeaField(c, field);
    EXPECT_EQ(std::u16string(field), u"A");
    c = NextNmeaField(c, field);
    EXPECT_EQ(std::u16string(field), u"6A");  // the checksum reads as a field
    EXPECT_EQ(*c, u'\0');
    EXPECT_EQ(NextNmeaField(c, field), nullptr);
    EXPECT_EQ(NextNmeaField(nullptr, field), nullptr);
}

TEST(NextNmeaField, CutsOverlongFieldAndMovesPastIt) {
    std::u16string s = std::u16string(50, u'9') + u",X";
    char16_t field[kNmeaFieldSize + 4];
    std::fill(std::begin(field), std::end(field), u'#');
    const char16_t* c = NextNmeaField(s.c_str(), field);
    EXPECT_EQ(std::u16string(field), std::u16string(kNmeaFieldSize - 1, u'9'));
    EXPECT_EQ(field[kNmeaFieldSize], u'#');  // nothing written past the buffer
    NextNmeaField(c, field);
    EXPECT_EQ(std::u16string(field), u"X");
}

TEST(NmeaNumber, ConvertsLikeADecimalStrtod) {
    struct Case {
        std::u16string text;
        double value;
    } cases[] = {{u"", 0.0},         {u"abc", 0.0},
                 {u"22.4", 22.4},    {u"-3.5", -3.5},
                 {u"+7", 7.0},       {u".5", 0.5},
                 {u"5.", 5.0},       {u"12x3", 12.0},
                 {u"1e2", 100.0},    {u"1e", 1.0},
                 {u"nan", 0.0},      {u"inf", 0.0},
                 {u"07.038", 7.038}, {u"0.1234567890123456789", 0.1234567890123456789}};
    for (const auto& c : cases)
        EXPECT_EQ(NmeaNumber(c.text.c_str()), c.value) << std::string(c.text.begin(), c.text.end());
}

GpsFix Parse(const std::u16string& sentence, GpsFix fix = {}) {
    RmcParser(sentence.c_str(), fix);
    return fix;
}

TEST(RmcParser, ReferenceSentence) {
    GpsFix fix = Parse(kExample);
    EXPECT_DOUBLE_EQ(fix.latitude, 288703.8);
    EXPECT_DOUBLE_EQ(fix.longitude, 69100.0);
    EXPECT_DOUBLE_EQ(fix.groundSpeed, 22.4);
    EXPECT_DOUBLE_EQ(fix.trueTrack, 84.4);
    EXPECT_DOUBLE_EQ(fix.magneticVariation, 3.1);
    EXPECT_DOUBLE_EQ(fix.magneticTrack, 87.5);
    EXPECT_EQ(fix.FixVoid, 0);
    EXPECT_EQ(fix.positionText.view(), u"  N48\u00B007.038 E011\u00B031.000");
}

TEST(RmcParser, StatusVoidOrUnknownKeepsTheFix) {
    GpsFix before = Parse(kExample);
    before.FixVoid = 1;
    struct Case {
        std::u16string sentence;
        int fixVoid;
    } cases[] = {
        {u"$GPRMC,1,V,0000.000,N,00000.000,E,1,1,1,1,E*00", 1},
        {u"$GPRMC,1,,0000.000,N,00000.000,E,1,1,1,1,E*00", 0},
        {u"$GPRMC,1,X,0000.000,N,00000.000,E,1,1,1,1,E*00", 0},
    };
    for (const auto& c : cases) {
        GpsFix after = Parse(c.sentence, before);
        EXPECT_EQ(after.FixVoid, c.fixVoid);
        EXPECT_EQ(after.latitude, before.latitude);
        EXPECT_EQ(after.magneticTrack, before.magneticTrack);
        EXPECT_EQ(after.positionText.view(), before.positionText.view());
    }
}

TEST(RmcParser, IndicatorsAndVariation) {
    struct Case {
        std::u16string sentence;
        double latitude, longitude, variation, magneticTrack;
    } cases[] = {
        // wrong checksum is used as it comes
        {u"$GPRMC,1,A,4807.038,S,01131.000,W,1,1.0,1,3.1,E*FF", -288703.8, -69100.0, -3.1, 357.9},
        // indicators are whole texts: "s", "S " and "w" do not match
        {u"$GPRMC,1,A,4807.038,s,01131.000,w,1,1.0,1,3.1,e", 288703.8, 69100.0, 3.1, 4.1},
        {u"$GPRMC,1,A,4807.038,S ,01131.000,W,1,1.0,1,,", 288703.8, -69100.0, 0.0, 1.0},
        // empty position fields move the fix to 0,0; a short line leaves later fields empty
        {u"$GPRMC,1,A,,,,,", 0.0, 0.0, 0.0, 0.0},
        {u"$GPRMC,1,A,5", 5 * 6000.0, 0.0, 0.0, 0.0},
        {u"$GNRMC,1,A,0030.5,N,00030.5,E,0,359,1,2,W", 3050.0, 3050.0, 2.0, 1.0},
    };
    for (const auto& c : cases) {
        GpsFix fix = Parse(c.sentence);
        EXPECT_NEAR(fix.latitude, c.latitude, 1e-9);
        EXPECT_NEAR(fix.longitude, c.longitude, 1e-9);
        EXPECT_NEAR(fix.magneticVariation, c.variation, 1e-12);
        EXPECT_NEAR(fix.magneticTrack, c.magneticTrack, 1e-9);
    }
}

}  // namespace
}  // namespace aerix
