#include "platform/registry.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "platform/text.hpp"
#include "test_platform.hpp"

namespace aerix::platform {
namespace {

using aerix::testing::ReadFile;
using aerix::testing::TempDir;
using aerix::testing::WriteFile;
using Bytes = std::vector<std::uint8_t>;
namespace fs = std::filesystem;

constexpr std::u16string_view kKey = u"Software\\Zürich \"q\"";

Bytes Utf16Bytes(std::u16string_view text, bool terminated) {
    Bytes out;
    for (char16_t c : text) {
        out.push_back(static_cast<std::uint8_t>(c & 0xFF));
        out.push_back(static_cast<std::uint8_t>(c >> 8));
    }
    if (terminated)
        out.insert(out.end(), {0, 0});
    return out;
}

HKEY Create(RegistryHive& hive, std::u16string_view path = kKey) {
    HKEY key = 0;
    EXPECT_EQ(hive.CreateKey(kHkeyLocalMachine, path, &key, nullptr), kErrorSuccess);
    return key;
}

void Set(RegistryHive& hive, HKEY key, std::u16string_view name, std::uint32_t type,
         const Bytes& data) {
    ASSERT_EQ(hive.SetValue(key, name, type, data.data(), static_cast<std::uint32_t>(data.size())),
              kErrorSuccess);
}

// Type and bytes as a query returns them.
std::pair<std::uint32_t, Bytes> Query(RegistryHive& hive, HKEY key, std::u16string_view name) {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(hive.QueryValue(key, name, &type, nullptr, &size), kErrorSuccess);
    Bytes data(size);
    EXPECT_EQ(hive.QueryValue(key, name, &type, data.data(), &size), kErrorSuccess);
    return {type, data};
}

struct StoredCase {
    std::u16string name;
    std::uint32_t type;
    Bytes data;
    std::string line;  // as written to the file
};

TEST(RegistryHive, KeepsTypeAndExactBytesThroughTheFile) {
    const std::vector<StoredCase> cases = {
        {u"flag", kRegDword, {0x01}, "\"flag\"=hex(4):01"},
        {u"baud", kRegDword, {0xc0, 0x12, 0, 0}, "\"baud\"=dword:000012c0"},
        {u"long", kRegDword, Bytes(8, 0xab), "\"long\"=hex(4):ab,ab,ab,ab,ab,ab,ab,ab"},
        {u"empty", kRegDword, {}, "\"empty\"=hex(4):"},
        {u"sz", kRegSz, Utf16Bytes(u"G-CESS", true), "\"sz\"=\"G-CESS\""},
        {u"bare", kRegSz, Utf16Bytes(u"ab", false), "\"bare\"=hex(1):61,00,62,00"},
        {u"odd", kRegSz, {0x41}, "\"odd\"=hex(1):41"},
        {u"bin", kRegBinary, {0x00, 0xff, 0x10}, "\"bin\"=hex:00,ff,10"},
        {u"multi", 7, Utf16Bytes(u"a", true), "\"multi\"=hex(7):61,00,00,00"},
        {u"", 0x20000, {0x7f}, "@=hex(20000):7f"},
        {u"big", kRegBinary, Bytes(100, 0x5a), ""},
        {u"say \"hi\"", kRegSz, Utf16Bytes(u"C:\\dir\\", true), R"("say \"hi\""="C:\\dir\\")"},
        {u"two\nlines", kRegSz, Utf16Bytes(u"Zürich € \U0001D11E", true), ""},
        {u"=;@[x]", kRegSz, Utf16Bytes(u"two\r\nlines", true), ""}};
    TempDir dir;
    fs::path file = dir.Path() / "registry.reg";
    {
        RegistryHive hive(file);
        HKEY key = Create(hive);
        for (const auto& c : cases) {
            Set(hive, key, c.name, c.type, c.data);
            EXPECT_EQ(Query(hive, key, c.name), std::make_pair(c.type, c.data));
        }
        EXPECT_FALSE(fs::exists(file));  // saved when the changed key is closed
        EXPECT_EQ(hive.CloseKey(key), kErrorSuccess);
        EXPECT_EQ(hive.CloseKey(key), kErrorInvalidHandle);
    }
    std::string text = ReadFile(file);
    RegistryHive reloaded(file);
    EXPECT_FALSE(reloaded.TakeLoadNotice());
    HKEY key = Create(reloaded, u"SOFTWARE\\ZÜRICH \"Q\"");
    for (const auto& c : cases) {
        SCOPED_TRACE(Utf16ToUtf8(c.name));
        if (!c.line.empty()) {
            EXPECT_NE(text.find("\n" + c.line + "\n"), std::string::npos) << text;
        }
        EXPECT_EQ(Query(reloaded, key, c.name), std::make_pair(c.type, c.data));
    }
}

TEST(RegistryHive, QueryValueReportsSizesAndCopiesOnlyTheStoredBytes) {
    RegistryHive hive;
    HKEY key = Create(hive);
    Set(hive, key, u"v", kRegDword, {0x01});
    std::uint32_t size = 0, type = 0;
    EXPECT_EQ(hive.QueryValue(key, u"v", &type, nullptr, &size), kErrorSuccess);
    EXPECT_EQ(size, 1u);
    EXPECT_EQ(type, kRegDword);
    // A 1-byte value read into a 4-byte buffer replaces only the first byte.
    std::uint8_t buffer[4] = {0xee, 0xee, 0xee, 0xee};
    size = 4;
    EXPECT_EQ(hive.QueryValue(key, u"v", nullptr, buffer, &size), kErrorSuccess);
    EXPECT_EQ(size, 1u);
    EXPECT_EQ(Bytes(buffer, buffer + 4), (Bytes{0x01, 0xee, 0xee, 0xee}));

    Set(hive, key, u"s", kRegSz, Utf16Bytes(u"abc", true));
    size = 4;
    EXPECT_EQ(hive.QueryValue(key, u"s", nullptr, buffer, &size), kErrorMoreData);
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(hive.QueryValue(key, u"missing", nullptr, nullptr, &size), kErrorFileNotFound);
    EXPECT_EQ(hive.QueryValue(0x7777, u"v", nullptr, nullptr, &size), kErrorInvalidHandle);
    EXPECT_EQ(hive.QueryValue(key, u"v", nullptr, buffer, nullptr), kErrorInvalidParameter);
}

TEST(RegistryHive, CreateOpenAndNamesIgnoreLetterCase) {
    RegistryHive hive;
    HKEY key = 0, again = 0, opened = 0;
    std::uint32_t disposition = 0;
    ASSERT_EQ(hive.CreateKey(kHkeyLocalMachine, kKey, &key, &disposition), kErrorSuccess);
    EXPECT_EQ(disposition, kRegCreatedNewKey);
    ASSERT_EQ(hive.CreateKey(kHkeyLocalMachine, u"SOFTWARE\\zÜRICH \"Q\"", &again, &disposition),
              kErrorSuccess);
    EXPECT_EQ(disposition, kRegOpenedExistingKey);
    EXPECT_EQ(hive.OpenKey(kHkeyLocalMachine, u"software\\zürich \"q\"", &opened), kErrorSuccess);
    EXPECT_EQ(hive.OpenKey(kHkeyLocalMachine, u"Software\\Other", &opened), kErrorFileNotFound);
    // A key name stands unquoted on a line of its own: no line breaks.
    EXPECT_EQ(hive.CreateKey(kHkeyLocalMachine, u"a\nb", &again, nullptr), kErrorInvalidParameter);

    Set(hive, key, u"Value", kRegDword, {1});
    Set(hive, again, u"VALUE", kRegDword, {2});  // the same value
    EXPECT_EQ(Query(hive, opened, u"value").second, Bytes{2});
    auto values = hive.Values(kKey);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].name, u"Value");  // first spelling kept
}

TEST(RegistryHive, EnumeratesSubkeysInOrderThenNoMoreItems) {
    RegistryHive hive;
    for (auto path : {u"Software\\b", u"Software\\A", u"Software\\C\\Deep", u"Other"})
        Create(hive, path);
    HKEY software = Create(hive, u"software");
    std::vector<std::u16string> names;
    std::u16string name;
    std::uint32_t i = 0;
    long rc = kErrorSuccess;
    while ((rc = hive.EnumKey(software, i++, &name)) == kErrorSuccess)
        names.push_back(name);
    EXPECT_EQ(rc, kErrorNoMoreItems);
    EXPECT_EQ(names, (std::vector<std::u16string>{u"A", u"b", u"C"}));
}

TEST(RegistryHive, LeftoverTemporaryFileLosesToTheSavedHive) {
    TempDir dir;
    fs::path file = dir.Path() / "registry.reg";
    {
        RegistryHive hive(file);
        HKEY key = Create(hive);
        Set(hive, key, u"v", kRegDword, {9});
        hive.CloseKey(key);
    }
    WriteFile(dir.Path() / "registry.reg.tmp", "REGEDIT4\n[HKEY_LOCAL_MA");
    RegistryHive reloaded(file);
    EXPECT_FALSE(reloaded.TakeLoadNotice());
    EXPECT_EQ(reloaded.Values(kKey).at(0).data, Bytes{9});
    EXPECT_FALSE(fs::exists(dir.Path() / "registry.reg.tmp"));
}

TEST(RegistryHive, UnreadableFileIsKeptAsideAndTheHiveStartsEmpty) {
    const std::vector<std::string> bad = {"garbage",
                                          "REGEDIT4\n\"v\"=dword:00000001\n",
                                          "REGEDIT4\n[HKEY_CURRENT_USER\\X]\n",
                                          "REGEDIT4\n[HKEY_LOCAL_MACHINE\\X]\n\"v\"=dword:12\n",
                                          "REGEDIT4\n[HKEY_LOCAL_MACHINE\\X]\n\"v\"=\"open\n",
                                          "REGEDIT4\n[HKEY_LOCAL_MACHINE\\X]\n\"v\"=hex:0g\n",
                                          "REGEDIT4\n[HKEY_LOCAL_MACHINE\\X\n"};
    for (const auto& text : bad) {
        SCOPED_TRACE(text);
        TempDir dir;
        fs::path file = dir.Path() / "registry.reg";
        WriteFile(file, text);
        RegistryHive hive(file);
        EXPECT_FALSE(hive.KeyExists(u"X"));
        EXPECT_FALSE(fs::exists(file));
        EXPECT_EQ(ReadFile(dir.Path() / "registry.reg.bad"), text);
        auto notice = hive.TakeLoadNotice();
        ASSERT_TRUE(notice);
        EXPECT_NE(notice->find("could not be read"), std::string::npos);
        EXPECT_NE(notice->find("kept as registry.reg.bad"), std::string::npos);
        EXPECT_FALSE(hive.TakeLoadNotice());
    }
}

TEST(RegistryHive, EveryUnreadableFileIsKeptAndAnOversizedOneIsNotRead) {
    TempDir dir;
    fs::path file = dir.Path() / "registry.reg";
    const std::vector<std::pair<std::string, std::string>> runs = {
        {"first", "registry.reg.bad"},
        {"second", "registry.reg.bad.1"},
        {std::string(kMaxRegistryFileBytes + 1, '['), "registry.reg.bad.2"},
        {"third", "registry.reg.bad.3"}};
    for (const auto& [text, kept] : runs) {
        WriteFile(file, text);
        RegistryHive hive(file);
        auto notice = hive.TakeLoadNotice();
        ASSERT_TRUE(notice) << kept;
        EXPECT_NE(notice->find("kept as " + kept), std::string::npos) << *notice;
        EXPECT_EQ(notice->find("1 MB") != std::string::npos, text.size() > kMaxRegistryFileBytes);
        HKEY key = 0;
        ASSERT_EQ(hive.CreateKey(kHkeyLocalMachine, u"X", &key, nullptr), kErrorSuccess);
        ASSERT_EQ(hive.CloseKey(key), kErrorSuccess);
        EXPECT_TRUE(fs::exists(file));  // saved afresh
        fs::remove(file);
    }
    for (const auto& [text, kept] : runs)
        EXPECT_EQ(ReadFile(dir.Path() / kept), text) << kept;

    // A file that cannot be set aside is never written over.
    WriteFile(file, "garbage");
    fs::permissions(dir.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    if (::access(dir.Path().c_str(), W_OK) != 0) {  // root writes anyway
        RegistryHive hive(file);
        EXPECT_NE(hive.TakeLoadNotice()->find("nor set aside"), std::string::npos);
        fs::permissions(dir.Path(), fs::perms::owner_all);
        EXPECT_FALSE(hive.Save());
        EXPECT_EQ(ReadFile(file), "garbage");
    }
    fs::permissions(dir.Path(), fs::perms::owner_all);
}

TEST(RegistryHive, FailedSaveKeepsTheValuesInMemory) {
    TempDir dir;
    WriteFile(dir.Path() / "plain-file", "x");  // a file where the hive's folder should be
    RegistryHive hive(dir.Path() / "plain-file" / "registry.reg");
    HKEY key = Create(hive);
    Set(hive, key, u"v", kRegDword, {7});
    EXPECT_EQ(hive.CloseKey(key), kErrorWriteFault);
    EXPECT_FALSE(hive.Save());
    EXPECT_EQ(hive.Values(kKey).at(0).data, Bytes{7});
}

}  // namespace
}  // namespace aerix::platform
