// Chart and calibration paths from the "Maps" records and the dialogs: on a card they stay on the
// card, elsewhere under the data root.
#include <gtest/gtest.h>

#include "support/test_platform.hpp"
#include "views/storage_cards.hpp"

namespace aerix {
namespace {

namespace fs = std::filesystem;

TEST(StorageCards, PathsStayOnTheirCardOrUnderTheDataRoot) {
    testing::TestPlatform platform;
    testing::TempDir media;
    fs::create_directories(media.Path() / "SD" / "charts");
    SetStorageCardRoots({media.Path()});
    EXPECT_EQ(ResolveStoragePath(u"\\SD\\charts\\a.bmp"), media.Path() / "SD" / "charts" / "a.bmp");
    EXPECT_EQ(ResolveStoragePath(u"\\My Documents\\Aerix\\a.bmpndx"),
              platform.Root() / "My Documents" / "Aerix" / "a.bmpndx");
    for (std::u16string_view escaping :
         {u"\\SD\\..\\..\\etc\\passwd", u"\\SD\\charts\\..\\..\\x.bmp", u"\\SD\\/etc/x.bmp",
          u"\\My Documents\\Aerix\\..\\..\\..\\x.bmp"})
        EXPECT_EQ(ResolveStoragePath(escaping), fs::path());
    SetStorageCardRoots({});
}

}  // namespace
}  // namespace aerix
