// WindAt's interpolation and the wind table dialogs.
#include <gtest/gtest.h>

#include "planning/wind_table.hpp"
#include "planning/wind_table_dialog.hpp"
#include "planning_fixture.hpp"

namespace aerix::testing {
namespace {

using WindTableTest = PlanningTest;

TEST_F(WindTableTest, InterpolatesTheShortWayRoundAndTruncates) {
    SetWinds({{2000, 350, 20, 10}, {5000, 10, 31, -5}, {8000, 100, 40, -20}, {11000, 90, 40, -30}});
    struct Case {
        std::int32_t altitude;
        WindAtResult expected;
    } cases[] = {
        {-500, {350, 20, 10.0}},   // below the lowest row: the lowest row exactly
        {2000, {350, 20, 10.0}},   // at the lowest row
        {3500, {360, 25, 2.0}},    // halfway 350 -> 010 through north; 360 is kept; 2.5 -> 2
        {2300, {352, 21, 8.0}},    // f = 0.1: 352.0, 21.1, 8.5
        {4700, {8, 29, -3.0}},     // f = 0.9: 368 -> 8, 29.9 -> 29, -3.5 -> -3
        {5000, {10, 31, -5.0}},    // an exact row
        {6500, {55, 35, -12.0}},   // f = 0.5 of 010 -> 100; -12.5 -> -12
        {9500, {95, 40, -25.0}},   // the short way round backwards: 100 -> 090
        {20000, {90, 40, -30.0}},  // above the highest row: the highest row exactly
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.altitude);
        WindAtResult w = WindAt(c.altitude, false);
        EXPECT_EQ(w.direction, c.expected.direction);
        EXPECT_EQ(w.speed, c.expected.speed);
        EXPECT_EQ(w.temperature, c.expected.temperature);
    }
    EXPECT_TRUE(platform_.Ui().Boxes().empty());
}

TEST_F(WindTableTest, FewerThanThreeRowsWarnEachTimeAndGiveCalmWind) {
    SetWinds({{0, 100, 10, 15}, {9000, 200, 30, -3}}, u"ZeroWindTable");
    platform_.Ui().Clear();
    WindAtResult w = WindAt(4000, true);
    EXPECT_EQ(w.direction, 0);
    EXPECT_EQ(w.speed, 0);
    EXPECT_EQ(w.temperature, 0.0);
    WindAt(4000, true);
    auto boxes = platform_.Ui().Boxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0].text, "Wind table has less than 3 records!");
    EXPECT_EQ(boxes[0].caption, "Warning");
}

TEST_F(WindTableTest, ListLinesAndEditingKeepTheRowsAsTyped) {
    WindTableDialog d{g_app.settings, g_app.plan};
    d.Open();
    ASSERT_EQ(d.Lines().size(), 4u);
    EXPECT_EQ(d.Lines()[0], "00000         100        10        15");
    EXPECT_EQ(d.Lines()[3], "10000         130        25        -5");

    // A negative temperature shows as its unsigned 32-bit figure and reads back unchanged.
    d.Select(3);
    auto edit = d.BeginEdit();
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->Text(WindEditDialog::kTemperature), "4294967291");
    EXPECT_EQ(edit->Text(WindEditDialog::kAltitude), "10000");
    edit->SetText(WindEditDialog::kSpeed, "27");
    EXPECT_TRUE(d.Finish(*edit, platform::kIdOk));
    EXPECT_EQ(d.Lines()[3], "10000         130        27        -5");

    // Not a number, or too big for its column: refused, nothing written.
    auto bad = d.BeginAdd();
    bad.SetText(WindEditDialog::kAltitude, "4000");
    bad.SetText(WindEditDialog::kDirection, "abc");
    bad.SetText(WindEditDialog::kSpeed, "10");
    bad.SetText(WindEditDialog::kTemperature, "0");
    EXPECT_FALSE(d.Finish(bad, platform::kIdOk));
    bad.SetText(WindEditDialog::kDirection, "70000");
    EXPECT_FALSE(bad.Ok());
    EXPECT_EQ(platform_.Ui().BoxTexts().back(),
              "Direction (deg true): enter a whole number from -32768 to 32767");
    EXPECT_EQ(d.Lines().size(), 4u);

    // Cancel writes nothing; OK with any integers stores them, sorted by altitude.
    auto add = d.BeginAdd();
    add.SetText(WindEditDialog::kAltitude, "4000");
    add.SetText(WindEditDialog::kDirection, "-20");
    add.SetText(WindEditDialog::kSpeed, "400");
    add.SetText(WindEditDialog::kTemperature, "-7");
    EXPECT_FALSE(d.Finish(add, platform::kIdCancel));
    EXPECT_EQ(d.Lines().size(), 4u);
    EXPECT_TRUE(d.Finish(add, platform::kIdOk));
    ASSERT_EQ(d.Lines().size(), 5u);
    EXPECT_EQ(d.Lines()[2], "04000         -20        400        -7");
}

TEST_F(WindTableTest, DeleteIsRefusedAtThreeRows) {
    WindTableDialog d{g_app.settings, g_app.plan};
    d.Open();
    d.Delete();  // nothing selected: nothing happens
    EXPECT_EQ(d.Lines().size(), 4u);
    d.Select(0);
    d.Delete();
    ASSERT_EQ(d.Lines().size(), 3u);
    EXPECT_EQ(d.Lines()[0], "02000         110        15        11");
    d.Select(1);
    d.Delete();
    EXPECT_EQ(d.Lines().size(), 3u);
    EXPECT_EQ(platform_.Ui().BoxTexts(),
              std::vector<std::string>{"Cannot have less than 3 wind table records"});
}

}  // namespace
}  // namespace aerix::testing
