#include "platform/data_root.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "platform/numeric.hpp"
#include "platform/text.hpp"
#include "test_platform.hpp"

namespace aerix::platform {
namespace {

namespace fs = std::filesystem;
using aerix::testing::TempDir;
using aerix::testing::WriteFile;

TEST(DataRoot, ResolvesEachComponentIgnoringCaseAndSeparatorForm) {
    TempDir dir;
    DataRoot root(dir.Path());
    WriteFile(dir.Path() / "My Documents" / "Aerix" / "World1.bmp", "b");
    WriteFile(dir.Path() / "My Documents" / "Zürich" / "a.txt", "a");
    const fs::path aerix = dir.Path() / "My Documents" / "Aerix";
    const std::vector<std::pair<std::string, fs::path>> cases = {
        {"\\My Documents\\Aerix\\World1.bmp", aerix / "World1.bmp"},
        {"\\my documents\\aerix\\WORLD1.BMP", aerix / "World1.bmp"},
        {"My Documents/aerix/world1.bmp", aerix / "World1.bmp"},
        {"/MY DOCUMENTS/AERIX/", aerix},
        {"\\My Documents\\aerix\\New.txt", aerix / "New.txt"},  // missing: spelled as given
        {"\\My Documents\\ZÜRICH\\A.TXT", dir.Path() / "My Documents" / "Zürich" / "a.txt"},
        {"", dir.Path()}};
    for (const auto& [pocket, expected] : cases) {
        EXPECT_EQ(root.Resolve(pocket), expected) << pocket;
        EXPECT_EQ(root.Resolve(Utf8ToUtf16(pocket)), expected) << pocket;
    }
}

TEST(DataRoot, ResolveForWriteCreatesTheFoldersButNotTheFile) {
    TempDir dir;
    DataRoot root(dir.Path() / "home");
    EXPECT_TRUE(root.Create());
    fs::path file = root.ResolveForWrite(u"\\My Documents\\Aerix\\GpsData.txt");
    EXPECT_EQ(file, dir.Path() / "home" / "My Documents" / "Aerix" / "GpsData.txt");
    EXPECT_TRUE(fs::is_directory(file.parent_path()));
    EXPECT_FALSE(fs::exists(file));
    // An existing folder in another case is reused, not doubled.
    EXPECT_EQ(root.ResolveForWrite("\\my documents\\AERIX\\x.txt").parent_path(),
              file.parent_path());
}

TEST(DataRoot, RefusesPathsThatCouldLeaveTheRootAndCreatesNothing) {
    TempDir dir;
    DataRoot root(dir.Path() / "home");
    ASSERT_TRUE(root.Create());
    const std::vector<std::pair<std::string, std::string>> refused = {
        {"\\My Documents\\aerix\\..\\..\\..\\outside\\escaped.CDB", "\"..\" component"},
        {"../../x", "\"..\" component"},
        {"\\My Documents\\aerix\\..\\x.CDB", "\"..\" component"},
        {"\\My Documents\\aerix\\/etc/passwd.CDB", "absolute path"},
        {"\\My Documents\\aerix\\C:\\x.CDB", "absolute path"},
        {std::string("\\My Documents\\a\0b.bmp", 21), "NUL"}};
    for (const auto& [pocket, why] : refused) {
        EXPECT_NE(DataRoot::Refusal(pocket).find(why), std::string::npos) << pocket;
        EXPECT_EQ(root.Resolve(pocket), fs::path()) << pocket;
        EXPECT_EQ(root.ResolveForWrite(Utf8ToUtf16(pocket)), fs::path()) << pocket;
    }
    for (std::string fine : {"\\My Documents\\Aerix\\.", "\\My Documents\\a..b.CDB", "x:y"})
        EXPECT_EQ(DataRoot::Refusal(fine), "") << fine;
    // Nothing was made, inside the root or beside it.
    EXPECT_TRUE(fs::is_empty(dir.Path() / "home"));
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path()), fs::directory_iterator()), 1);
}

// Sets an environment variable for one scope and restores it after.
class ScopedEnv {
  public:
    ScopedEnv(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name))
            old_ = old;
        value ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~ScopedEnv() { old_ ? ::setenv(name_, old_->c_str(), 1) : ::unsetenv(name_); }

  private:
    const char* name_;
    std::optional<std::string> old_;
};

TEST(DataRoot, ChoosesEnvironmentThenOptionThenXdg) {
    ScopedEnv home("HOME", "/home/pilot");
    {
        ScopedEnv aerixHome("AERIX_HOME", "/env/root");
        ScopedEnv xdg("XDG_DATA_HOME", "/xdg");
        EXPECT_EQ(DataRoot::Choose(fs::path("/option")), fs::path("/env/root"));
    }
    ScopedEnv aerixHome("AERIX_HOME", nullptr);
    {
        ScopedEnv xdg("XDG_DATA_HOME", "/xdg");
        EXPECT_EQ(DataRoot::Choose(fs::path("/option")), fs::path("/option"));
        EXPECT_EQ(DataRoot::Choose(std::nullopt), fs::path("/xdg/aerix"));
    }
    ScopedEnv xdg("XDG_DATA_HOME", "");
    EXPECT_EQ(DataRoot::Choose(std::nullopt), fs::path("/home/pilot/.local/share/aerix"));
}

TEST(DataRoot, RuntimeFolderIsOnlyEverOneOtherUsersCannotEnter) {
    TempDir dir;
    fs::path xdg = dir.Path() / "run";
    fs::create_directory(xdg);
    fs::permissions(xdg, fs::perms::owner_all, fs::perm_options::replace);
    fs::path root = dir.Path() / "home";
    {
        ScopedEnv env("XDG_RUNTIME_DIR", xdg.c_str());
        EXPECT_EQ(PrivateRuntimeFolder(root), xdg);
        // Open to others: not used.
        fs::permissions(xdg, fs::perms::owner_all | fs::perms::others_exec,
                        fs::perm_options::replace);
        EXPECT_EQ(PrivateRuntimeFolder(root), root / ".runtime");
    }
    ScopedEnv env("XDG_RUNTIME_DIR", nullptr);
    fs::permissions(root / ".runtime", fs::perms::all, fs::perm_options::replace);
    EXPECT_EQ(PrivateRuntimeFolder(root), root / ".runtime");
    EXPECT_EQ(fs::status(root / ".runtime").permissions(), fs::perms::owner_all);
    // A link in its place, to somewhere another user may control, is not followed.
    fs::remove(root / ".runtime");
    fs::create_directory_symlink(xdg, root / ".runtime");
    EXPECT_EQ(PrivateRuntimeFolder(root), fs::path());
}

// Text crosses between UTF-8 files and UTF-16 buffers; numbers truncate as the ARM did.
TEST(TextAndNumbers, ConvertWithoutLosingAnything) {
    for (std::string utf8 : {"", "G-CESS", "Zürich °", "€", "\xF0\x9D\x84\x9E"})
        EXPECT_EQ(Utf16ToUtf8(Utf8ToUtf16(utf8)), utf8);
    EXPECT_EQ(Utf8ToUtf16("\xF0\x9D\x84\x9E"), u"\U0001D11E");
    EXPECT_EQ(Utf8ToUtf16("a\xE9z\xC3"), u"a\u00E9z\u00C3");  // not UTF-8: taken as Latin-1
    EXPECT_EQ(BytesToUtf16("\xB0\x41"), u"\u00B0A");
    WideBuf<4> buf;
    buf.assign(u"ABCDEFG");
    EXPECT_EQ(buf.view(), u"ABC");
    EXPECT_EQ(buf.chars[3], u'\0');
    const std::pair<double, std::int32_t> cases[] = {{2.9, 2},
                                                     {-2.9, -2},
                                                     {1e10, INT32_MAX},
                                                     {-1e10, INT32_MIN},
                                                     {NAN, 0},
                                                     {-INFINITY, INT32_MIN},
                                                     {2147483646.5, 2147483646}};
    for (const auto& [in, out] : cases)
        EXPECT_EQ(TruncInt32(in), out) << in;
}

}  // namespace
}  // namespace aerix::platform
