#include <gtest/gtest.h>

#include <filesystem>

#include "app/app_state.hpp"
#include "store/nav_database_dialogs.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

class NavDialogsTest : public ::testing::Test {
  protected:
    WaypointForm Form(std::string name, std::string ident, std::string lat, std::string lon) {
        WaypointForm f;
        f.name = std::move(name);
        f.ident = std::move(ident);
        f.latitude = std::move(lat);
        f.longitude = std::move(lon);
        return f;
    }
    std::vector<std::string> Lines(std::string_view search) {
        std::vector<std::string> out;
        for (const auto& l : ListNavDatabase(g_app.settings, g_app.nav, search))
            out.push_back(l.text);
        return out;
    }
    testing::TestPlatform platform;
};

TEST(PositionText, AcceptsTheUsualForms) {
    struct Case {
        const char* text;
        bool latitude;
        bool ok;
        std::int32_t value;
    };
    const Case cases[] = {
        {"51.5", true, true, 309000},
        {"-0.25", false, true, -1500},
        {"N51 30.5", true, true, 309050},
        {"51 30 30 S", true, true, -309050},
        {"W001\xC2\xB0 30.000", false, true, -9000},
        {"5130.500N", true, true, 309050},
        {"00012.000W", false, true, -1200},
        {"91", true, false, 0},
        {"180.0001", false, false, 0},
        {"51 60", true, false, 0},
        {"N-51", true, false, 0},
        {"51.5E", true, false, 0},
        {"", true, false, 0},
        {"abc", true, false, 0},
        {"1 2 3 4", true, false, 0},
    };
    for (const Case& c : cases) {
        std::int32_t v = 0;
        EXPECT_EQ(ParsePositionText(c.text, c.latitude, &v), c.ok) << c.text;
        if (c.ok) {
            EXPECT_EQ(v, c.value) << c.text;
        }
    }
}

TEST_F(NavDialogsTest, NewDatabaseIsCreatedEmptyAndBecomesActive) {
    struct Case {
        const char* name;
        const char* message;
    };
    const Case refused[] = {
        {"  ", "Enter a database name"},
        {"ThisNameIsLongerThanThirtyTwoChars", "Database name too long (32 characters at most)"},
        {"a/b", "A database name cannot contain \\ / : * ? \" < > |"},
    };
    for (const Case& c : refused) {
        platform.Ui().Clear();
        EXPECT_FALSE(NewNavDatabase(g_app.settings, g_app.nav, c.name));
        EXPECT_EQ(platform.Ui().BoxTexts(), std::vector<std::string>{c.message});
    }
    platform.Ui().Clear();
    EXPECT_TRUE(NewNavDatabase(g_app.settings, g_app.nav, "Alps"));
    EXPECT_EQ(g_app.settings.NavDatabaseName.view(), u"Alps");
    EXPECT_EQ(g_app.nav.ArraysPending, 1);
    EXPECT_TRUE(
        std::filesystem::exists(platform.Data().Resolve(u"\\My Documents\\Aerix\\Alps.CDB")));
    EXPECT_TRUE(ListNavDatabase(g_app.settings, g_app.nav, "").empty());
    EXPECT_TRUE(platform.Ui().Boxes().empty());
    EXPECT_FALSE(
        NewNavDatabase(g_app.settings, g_app.nav, "alps"));  // the file system ignores letter case
    EXPECT_EQ(platform.Ui().BoxTexts(), std::vector<std::string>{"Database already exists"});
}

TEST_F(NavDialogsTest, AddListSearchEditAndDelete) {
    ASSERT_TRUE(NewNavDatabase(g_app.settings, g_app.nav, "Mine"));
    WaypointForm full = Form("Lasham", "EGHL", "N51 11.2", "W001 01.9");
    full.elevation = "618";
    full.type = 1;
    full.frequency = "131.025";
    full.runwayLength = "1200";
    full.region = "GB";
    full.municipality = "Alton";
    full.runway = "09/27";
    full.notes[6] = "last note";
    ASSERT_TRUE(AddWaypoint(g_app.settings, g_app.nav, full));
    ASSERT_TRUE(AddWaypoint(g_app.settings, g_app.nav, Form("Detling", "DET", "51.304", "0.598")));
    ASSERT_TRUE(AddWaypoint(g_app.settings, g_app.nav, Form("Benson", "EGUB", "51.616", "-1.095")));
    EXPECT_EQ(Lines(""),
              (std::vector<std::string>{"Benson  EGUB", "Detling  DET", "Lasham  EGHL"}));
    EXPECT_EQ(Lines("son"), std::vector<std::string>{"Benson  EGUB"});
    EXPECT_TRUE(Lines("SON").empty());  // letter case counts
    g_app.nav.NavSearchKey = platform::MakePropId(101, platform::kCevtLpwstr);
    EXPECT_EQ(Lines("EG"), (std::vector<std::string>{"Benson  EGUB", "Lasham  EGHL"}));

    auto lasham = ListNavDatabase(g_app.settings, g_app.nav, "EGHL").at(0);  // by ident now
    WaypointForm read;
    ASSERT_TRUE(ReadWaypointForEdit(g_app.settings, g_app.nav, lasham.oid, read));
    EXPECT_EQ(read.source, "user");
    EXPECT_EQ(read.runwayLength, "1200");
    EXPECT_EQ(read.notes[6], "last note");
    EXPECT_EQ(read.type, 1);
    read.name = "Lasham Gliding";
    read.type = 6;
    ASSERT_TRUE(EditWaypoint(g_app.settings, g_app.nav, lasham.oid, read));
    WaypointForm again;
    ASSERT_TRUE(ReadWaypointForEdit(g_app.settings, g_app.nav, lasham.oid, again));
    EXPECT_EQ(again.name, "Lasham Gliding");
    EXPECT_EQ(again.latitude, read.latitude);  // the position survives the round trip
    EXPECT_EQ(again.type, 6);

    g_app.nav.NavSearchKey = platform::MakePropId(100, platform::kCevtLpwstr);
    auto detling = ListNavDatabase(g_app.settings, g_app.nav, "Detling").at(0);
    platform.Ui().AnswerNext(platform::kIdNo);
    EXPECT_FALSE(DeleteWaypointAt(g_app.settings, g_app.nav, detling.index));
    platform.Ui().AnswerNext(platform::kIdYes);
    EXPECT_TRUE(DeleteWaypointAt(g_app.settings, g_app.nav, detling.index));
    EXPECT_EQ(Lines(""), (std::vector<std::string>{"Benson  EGUB", "Lasham Gliding  EGHL"}));
    EXPECT_EQ(platform.Ui().BoxTexts(),
              (std::vector<std::string>{"Delete waypoint - Are you sure?",
                                        "Delete waypoint - Are you sure?"}));
    EXPECT_EQ(g_app.nav.NavVolumeGuid, 0u);
}

TEST_F(NavDialogsTest, FormProblemsAreToldAndNothingIsWritten) {
    ASSERT_TRUE(NewNavDatabase(g_app.settings, g_app.nav, "Mine"));
    struct Case {
        WaypointForm form;
        const char* message;
    };
    WaypointForm ok = Form("Name", "ID", "51", "0");
    auto with = [&](auto change) {
        WaypointForm f = ok;
        change(f);
        return f;
    };
    const Case cases[] = {
        {with([](WaypointForm& f) { f.name = " "; }), "Enter a name"},
        {with([](WaypointForm& f) { f.name = std::string(36, 'x'); }),
         "Name too long (35 characters at most)"},
        {with([](WaypointForm& f) { f.ident = "ABCDEF"; }),
         "Ident too long (5 characters at most)"},
        {with([](WaypointForm& f) { f.region = std::string(24, 'x'); }),
         "Country too long (23 characters at most)"},
        {with([](WaypointForm& f) { f.latitude = "95"; }), "Invalid latitude"},
        {with([](WaypointForm& f) { f.longitude = "E"; }), "Invalid longitude"},
        {with([](WaypointForm& f) { f.elevation = "1e3"; }), "Invalid elevation"},
        {with([](WaypointForm& f) { f.type = 10; }), "Invalid waypoint type"},
        {with([](WaypointForm& f) { f.runwayLength = "40000"; }), "Invalid runway length"},
        {with([](WaypointForm& f) { f.runwayLength = "12.5"; }), "Invalid runway length"},
    };
    for (const Case& c : cases) {
        platform.Ui().Clear();
        EXPECT_FALSE(AddWaypoint(g_app.settings, g_app.nav, c.form)) << c.message;
        EXPECT_EQ(platform.Ui().BoxTexts(), std::vector<std::string>{c.message});
    }
    EXPECT_TRUE(ListNavDatabase(g_app.settings, g_app.nav, "").empty());
    EXPECT_EQ(WaypointTypeName(7), "Reporting pt");
    EXPECT_EQ(WaypointTypeName(0), "");
}

TEST_F(NavDialogsTest, WithoutAnActiveDatabaseNothingHappens) {
    EXPECT_FALSE(AddWaypoint(g_app.settings, g_app.nav, Form("Name", "ID", "51", "0")));
    EXPECT_EQ(platform.Ui().BoxTexts(), std::vector<std::string>{"No navigation database chosen"});
}

}  // namespace
}  // namespace aerix
