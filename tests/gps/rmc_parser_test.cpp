#include <gtest/gtest.h>

#include <string>

#include "gps/nmea_field.hpp"
#include "gps/nmea_sentence.hpp"
#include "gps/rmc_parser.hpp"

namespace aerix {
namespace {

const std::string kExample = "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A";

TEST(NextNmeaField, SplitsFieldsAndChecksum) {
    std::string s = "$GPRMC,,A*6A";
    const char* end = s.data() + s.size();
    NmeaField field;
    const char* c = NextNmeaField(s.data(), end, field);
    EXPECT_EQ(field.View(), "$GPRMC");
    c = NextNmeaField(c, end, field);
    EXPECT_EQ(field.View(), "");
    c = NextNmeaField(c, end, field);
    EXPECT_EQ(field.View(), "A");
    c = NextNmeaField(c, end, field);
    EXPECT_EQ(field.View(), "6A");  // the checksum reads as a field
    EXPECT_EQ(c, end);
    EXPECT_EQ(NextNmeaField(c, end, field), nullptr);
    EXPECT_EQ(NextNmeaField(nullptr, end, field), nullptr);
    // A NUL byte ends the sentence, as it ended the receiver's text before.
    std::string nul("$GPRMC,1\0,2", 12);
    end = nul.data() + nul.size();
    c = NextNmeaField(NextNmeaField(nul.data(), end, field), end, field);
    EXPECT_EQ(field.View(), "1");
    EXPECT_EQ(NextNmeaField(c, end, field), nullptr);
}

TEST(NextNmeaField, CutsOverlongFieldAndMovesPastIt) {
    std::string s = std::string(50, '9') + ",X";
    const char* end = s.data() + s.size();
    NmeaField field;
    const char* c = NextNmeaField(s.data(), end, field);
    EXPECT_EQ(field.View(), std::string(kNmeaFieldSize - 1, '9'));
    NextNmeaField(c, end, field);
    EXPECT_EQ(field.View(), "X");
}

TEST(NmeaNumber, ConvertsLikeADecimalStrtod) {
    struct Case {
        std::string text;
        double value;
    } cases[] = {{"", 0.0},         {"abc", 0.0},
                 {"22.4", 22.4},    {"-3.5", -3.5},
                 {"+7", 7.0},       {".5", 0.5},
                 {"5.", 5.0},       {"12x3", 12.0},
                 {"1e2", 100.0},    {"1e", 1.0},
                 {"nan", 0.0},      {"inf", 0.0},
                 {"07.038", 7.038}, {"0.1234567890123456789", 0.1234567890123456789}};
    for (const auto& c : cases)
        EXPECT_EQ(NmeaNumber(c.text), c.value) << c.text;
}

GpsFix Parse(const std::string& sentence, GpsFix fix = {}) {
    ParseRmc(sentence, fix);
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
        std::string sentence;
        int fixVoid;
    } cases[] = {
        {"$GPRMC,1,V,0000.000,N,00000.000,E,1,1,1,1,E*00", 1},
        {"$GPRMC,1,,0000.000,N,00000.000,E,1,1,1,1,E*00", 0},
        {"$GPRMC,1,X,0000.000,N,00000.000,E,1,1,1,1,E*00", 0},
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
        std::string sentence;
        double latitude, longitude, variation, magneticTrack;
    } cases[] = {
        // wrong checksum is used as it comes
        {"$GPRMC,1,A,4807.038,S,01131.000,W,1,1.0,1,3.1,E*FF", -288703.8, -69100.0, -3.1, 357.9},
        // indicators are whole texts: "s", "S " and "w" do not match
        {"$GPRMC,1,A,4807.038,s,01131.000,w,1,1.0,1,3.1,e", 288703.8, 69100.0, 3.1, 4.1},
        {"$GPRMC,1,A,4807.038,S ,01131.000,W,1,1.0,1,,", 288703.8, -69100.0, 0.0, 1.0},
        // empty position fields move the fix to 0,0; a short line leaves later fields empty
        {"$GPRMC,1,A,,,,,", 0.0, 0.0, 0.0, 0.0},
        {"$GPRMC,1,A,5", 5 * 6000.0, 0.0, 0.0, 0.0},
        {"$GNRMC,1,A,0030.5,N,00030.5,E,0,359,1,2,W", 3050.0, 3050.0, 2.0, 1.0},
    };
    for (const auto& c : cases) {
        GpsFix fix = Parse(c.sentence);
        EXPECT_NEAR(fix.latitude, c.latitude, 1e-9);
        EXPECT_NEAR(fix.longitude, c.longitude, 1e-9);
        EXPECT_NEAR(fix.magneticVariation, c.variation, 1e-12);
        EXPECT_NEAR(fix.magneticTrack, c.magneticTrack, 1e-9);
    }
}

TEST(NmeaSentence, TheTableChoosesByTypeAndLeavesOtherSentencesAlone) {
    GpsFix fix;
    EXPECT_TRUE(ParseNmeaSentence("$GNRMC,1,A,4807.038,N,01131.000,E,022.4,084.4,1,003.1,W", fix));
    EXPECT_DOUBLE_EQ(fix.latitude, 288703.8);
    GpsFix before = fix;
    for (std::string_view other : {"$GPGGA,123519,4907.038,N,01131.000,E,1,08", "$GPRM", ""}) {
        EXPECT_FALSE(ParseNmeaSentence(other, fix)) << other;
        EXPECT_EQ(fix.latitude, before.latitude);
    }
    EXPECT_EQ(FindNmeaSentenceParser("$LCRMC"), FindNmeaSentenceParser("$GPRMC"));
}

}  // namespace
}  // namespace aerix
