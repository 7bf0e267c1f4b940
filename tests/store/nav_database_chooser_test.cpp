#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "platform/ui.hpp"
#include "store/nav_database_chooser.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

class ChooserTest : public ::testing::Test {
  protected:
    platform::FileDialogResult Pick(const std::u16string& title) {
        auto path = platform.Data().ResolveForWrite(u"\\My Documents\\Aerix\\" + title);
        testing::WriteFile(path, "db");
        return {path, title};
    }
    testing::TestPlatform platform;
};

TEST_F(ChooserTest, ChoosingCutsFourCharactersAndMarksTheArrays) {
    platform.Ui().ChooseNext(Pick(u"Europe.CDB"));
    EXPECT_EQ(ChooseNavDatabase(g_app.settings, g_app.nav), 0);
    EXPECT_EQ(g_app.settings.NavDatabaseName.view(), u"Europe");
    EXPECT_EQ(g_app.nav.ArraysPending, 1);
    auto request = platform.Ui().FileRequests().at(0);
    EXPECT_EQ(request.title, "Open a database");
    EXPECT_EQ(request.filterName, "Databases");
    EXPECT_EQ(request.pattern, "*.CDB");
    EXPECT_EQ(request.initialFolder, "aerix");

    platform.Ui().ChooseNext(Pick(u"Alps.cdbx"));  // four characters go, whatever they are
    EXPECT_EQ(ChooseNavDatabase(g_app.settings, g_app.nav), 0);
    EXPECT_EQ(g_app.settings.NavDatabaseName.view(), u"Alps.");
}

TEST_F(ChooserTest, CancelOrATooShortTitleChangesNothing) {
    g_app.settings.NavDatabaseName.assign(u"World");
    platform.Ui().ChooseNext(std::nullopt);
    EXPECT_EQ(ChooseNavDatabase(g_app.settings, g_app.nav), -1);
    platform.Ui().ChooseNext(Pick(u"CDB"));
    EXPECT_EQ(ChooseNavDatabase(g_app.settings, g_app.nav), -1);
    EXPECT_EQ(g_app.settings.NavDatabaseName.view(), u"World");
    EXPECT_EQ(g_app.nav.ArraysPending, 0);
}

TEST_F(ChooserTest, DeleteRefusesTheActiveDatabaseCaseSensitively) {
    g_app.settings.NavDatabaseName.assign(u"Europe");
    auto active = Pick(u"Europe.CDB");
    platform.Ui().ChooseNext(active);
    DeleteNavDatabase(g_app.settings);
    EXPECT_EQ(platform.Ui().BoxTexts(),
              std::vector<std::string>{"Cannot delete - active database"});
    EXPECT_TRUE(std::filesystem::exists(active.path));

    // Differs only in letter case: not protected; asks, and deletes only on Yes.
    auto other = Pick(u"EUROPE2.CDB");
    other.title = u"europe.CDB";
    platform.Ui().ChooseNext(other);
    platform.Ui().AnswerNext(platform::kIdNo);
    DeleteNavDatabase(g_app.settings);
    EXPECT_TRUE(std::filesystem::exists(other.path));
    platform.Ui().ChooseNext(other);
    platform.Ui().AnswerNext(platform::kIdYes);
    DeleteNavDatabase(g_app.settings);
    EXPECT_FALSE(std::filesystem::exists(other.path));
    auto boxes = platform.Ui().Boxes();
    ASSERT_EQ(boxes.size(), 3u);
    EXPECT_EQ(boxes[1].text, "Delete database - Are you sure?");
    EXPECT_EQ(boxes[1].caption, "Warning");
    EXPECT_EQ(platform.Ui().FileRequests().back().title, "Delete a database");
}

}  // namespace
}  // namespace aerix
