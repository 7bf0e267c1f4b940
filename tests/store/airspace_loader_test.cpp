#include <gtest/gtest.h>

#include <string>

#include "app/app_state.hpp"
#include "store/airspace_loader.hpp"
#include "store/field_splitter.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

using testing::TestPlatform;

// One airspace file line: fields each followed by the separator, CR LF ended.
std::string Line(std::initializer_list<std::string> fields) {
    // (CR LF ended)
    std::string line;
    for (const auto& f : fields)
        line += f + kFieldSeparator;
    return line + "\r\n";
}

class AirspaceLoaderTest : public ::testing::Test {
  protected:
    void Load(const std::string& text) {
        testing::WriteFile(platform.Data().ResolveForWrite(kAirspaceFile), text);
        LoadAirspace(g_app.nav);
    }
    std::u16string Keyword(std::size_t i) const {
        return std::u16string(g_app.nav.AirspaceOverlay.at(i).keyword.view());
    }
    TestPlatform platform;
};

TEST(FieldSplitter, CopiesTerminatesAndKeepsQuirks) {
    FieldBuffer buf;
    std::string line =
        std::string("AB") + kFieldSeparator + "12" + kFieldSeparator + kFieldSeparator;
    EXPECT_EQ(SplitField(line, 0, buf), 1);
    EXPECT_EQ(buf.Text(), "AB");
    EXPECT_EQ(SplitField(line, 1, buf), 1);
    EXPECT_EQ(buf.Text(), "12");
    EXPECT_EQ(SplitField(line, 2, buf), 1);  // empty but separated
    EXPECT_EQ(buf.Text(), "");

    SplitField(std::string("12345") + kFieldSeparator, 0, buf);
    EXPECT_EQ(SplitField("9", 0, buf), 0);  // ended by the line: copied over, unterminated
    EXPECT_EQ(buf.Text(), "92345");
    EXPECT_EQ(SplitField("9", 3, buf), 0);  // no such field: untouched
    EXPECT_EQ(buf.Text(), "92345");

    std::string longField(1000, 'x');
    EXPECT_EQ(SplitField(longField + kFieldSeparator, 0, buf), 1);
    EXPECT_EQ(buf.Text().size(), FieldBuffer::kSize - 1);
}

TEST_F(AirspaceLoaderTest, ReadsFieldsOfEachKind) {
    Load(Line({"EGTT", "300000", "-6000", "1.5", "2.25", "-3", "-1"}) +
         Line({"GLINETO", "300100", "-6100", "0", "0", "0", "0"}) +
         Line({"ARC", "  300000", "-6000x", "5", "90", "180", "1"}));
    ASSERT_EQ(g_app.nav.AirspaceEntryCount, 3u);
    ASSERT_EQ(g_app.nav.AirspaceOverlay.size(), 3u);
    const auto& first = g_app.nav.AirspaceOverlay[0];
    EXPECT_EQ(Keyword(0), u"EGTT");
    EXPECT_EQ(first.latitude, 300000);
    EXPECT_EQ(first.longitude, -6000);
    EXPECT_DOUBLE_EQ(first.valueA, 1.5);
    EXPECT_DOUBLE_EQ(first.valueB, 2.25);
    EXPECT_DOUBLE_EQ(first.valueC, -3.0);
    EXPECT_EQ(first.valueD, -1);
    EXPECT_EQ(g_app.nav.AirspaceOverlay[2].latitude, 300000);  // leading blanks skipped
    EXPECT_EQ(g_app.nav.AirspaceOverlay[2].longitude, -6000);  // stops at the first non-digit
}

TEST_F(AirspaceLoaderTest, KeepsTheQuirksOfTheLineFormat) {
    // Fewer fields: the last one present is converted again for every missing field.
    // A bare LF line loses its last character; the last line without LF is dropped.
    std::string bareLf = std::string("LONGLABEL1") + kFieldSeparator + "10" + kFieldSeparator +
                         "20" + kFieldSeparator + "7x\n";
    Load(std::string("SHORT") + kFieldSeparator + "100" + kFieldSeparator + "200" +
         kFieldSeparator + "\r\n" + bareLf + "LAST" + kFieldSeparator + "1" + kFieldSeparator);
    ASSERT_EQ(g_app.nav.AirspaceEntryCount, 2u);
    const auto& shortLine = g_app.nav.AirspaceOverlay[0];
    EXPECT_DOUBLE_EQ(shortLine.valueA, 200.0);
    EXPECT_DOUBLE_EQ(shortLine.valueC, 200.0);
    EXPECT_EQ(shortLine.valueD, 200);
    // Field 0 keeps at most nine characters. "7x" lost its x and, ended by the line instead of a
    // separator, was copied unterminated over the "20" before it: it reads as 70.
    EXPECT_EQ(Keyword(1), u"LONGLABEL");
    EXPECT_DOUBLE_EQ(g_app.nav.AirspaceOverlay[1].valueA, 70.0);
    EXPECT_EQ(g_app.nav.AirspaceOverlay[1].valueD, 70);
}

TEST_F(AirspaceLoaderTest, AnOutlineIsKeptOrDroppedByItsFirstPoint) {
    g_app.nav.AreaSouth = 0;
    g_app.nav.AreaNorth = 1000;
    g_app.nav.AreaWest = 0;
    g_app.nav.AreaEast = 1000;
    Load(Line({"GLINETO", "5000", "5000", "0", "0", "0",
               "0"}) +  // file starts inside a "kept" outline
         Line({"OUT", "5000", "5000", "0", "0", "0", "0"}) +
         Line({"GLINETO", "500", "500", "0", "0", "0", "0"}) +  // inside, but its outline is out
         Line({"EDGE", "1000", "0", "0", "0", "0", "0"}) +      // on the bounds: inside
         Line({"GLINETO", "9999", "9999", "0", "0", "0", "0"}) +
         Line({"CIRCLE", "-1", "500", "3", "0", "0", "0"}));  // any other keyword decides anew
    ASSERT_EQ(g_app.nav.AirspaceEntryCount, 3u);
    EXPECT_EQ(Keyword(0), u"GLINETO");
    EXPECT_EQ(Keyword(1), u"EDGE");
    EXPECT_EQ(Keyword(2), u"GLINETO");
    EXPECT_EQ(g_app.nav.AirspaceOverlay[2].latitude, 9999);
}

TEST_F(AirspaceLoaderTest, StopsOneShortOfTheBlock) {
    std::string one = Line({"GLINETO", "1", "1", "0", "0", "0", "0"});
    std::string text;
    for (std::size_t i = 0; i < kAirspaceBlockEntries + 5; ++i)
        text += one;
    Load(text);
    EXPECT_EQ(g_app.nav.AirspaceEntryCount, 28029u);
    EXPECT_EQ(g_app.nav.AirspaceOverlay.size(), 28029u);
}

TEST_F(AirspaceLoaderTest, MissingFileReportsAndLeavesTheCount) {
    g_app.nav.AirspaceEntryCount = 0;
    LoadAirspace(g_app.nav);
    EXPECT_EQ(platform.Ui().BoxTexts(),
              std::vector<std::string>{"Could not open airspace txt file. Error:"});
    EXPECT_EQ(platform.Ui().Boxes()[0].caption, "");
    EXPECT_EQ(g_app.nav.AirspaceEntryCount, 0u);
    EXPECT_EQ(g_app.nav.AirspaceOverlay.size(), kAirspaceBlockEntries);  // the fresh empty block
}

TEST_F(AirspaceLoaderTest, OverlongLineIsSkippedWhole) {
    std::string overlong(kAirspaceMaxLine + 10, '1');
    Load(Line({"A", "1", "1", "0", "0", "0", "0"}) + overlong + "\r\n" +
         Line({"B", "2", "2", "0", "0", "0", "0"}));
    ASSERT_EQ(g_app.nav.AirspaceEntryCount, 2u);
    EXPECT_EQ(Keyword(1), u"B");
}

}  // namespace
}  // namespace aerix
