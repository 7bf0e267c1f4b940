#include "settings/settings.hpp"

#include <gtest/gtest.h>

#include <cctype>

#include <algorithm>
#include <map>

#include "app/app_state.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

using namespace platform;
using Bytes = std::vector<std::uint8_t>;
using Texts = std::vector<std::string>;

const Texts kFlags = {"shlinmap",      "shlinhsi",         "shsinmap",
                      "shsinhsi",      "EnableHotKeys",    "showAirspace",
                      "recordGPSdata", "overwriteGPSdata", "showTrkPointer"};
// Every value in the order it is written; the load reads the same minus FuelCalc and IcaoSearch.
const Texts kWritten = [] {
    Texts t = {"AcReg",    "CuDbase",    "CuPlanName", "CurrentPlan",
               "FuelCalc", "IcaoSearch", "CommPort",   "BaudRate"};
    t.insert(t.end(), kFlags.begin(), kFlags.end());
    return t;
}();

class SettingsTest : public ::testing::Test {
  protected:
    // What start-up does: preset the port, write first-run defaults, load.
    void Start() {
        g_app.settings.PortName.assign(u"COM1:");
        CreateDefaultSettings(g_app.settings);
        LoadSettings(g_app.settings);
    }
    std::map<std::string, Bytes> Stored() {
        std::map<std::string, Bytes> out;
        for (auto& v : p.Registry().Values(kSettingsKey)) {
            out[Utf16ToUtf8(v.name)] = v.data;
        }
        return out;
    }
    void SetDword(std::u16string_view name, const Bytes& data) {
        HKEY key = 0;
        p.Registry().CreateKey(kHkeyLocalMachine, kSettingsKey, &key, nullptr);
        p.Registry().SetValue(key, name, kRegDword, data.data(), std::uint32_t(data.size()));
        p.Registry().CloseKey(key);
    }
    testing::TestPlatform p;
};

TEST_F(SettingsTest, FirstStartWritesDefaultsThenLoadsThem) {
    CreateDefaultSettings(g_app.settings);
    EXPECT_EQ(g_app.settings.EnableHotKeys, 1);  // while the registry gets shsinhsi's 0
    auto stored = Stored();
    EXPECT_EQ(stored.size(), 17u);
    for (auto& v : p.Registry().Values(kSettingsKey)) {
        bool text = v.name == u"AcReg" || v.name == u"CuDbase" || v.name == u"CuPlanName" ||
                    v.name == u"CommPort";
        EXPECT_EQ(v.type, text ? kRegSz : kRegDword);
    }
    EXPECT_EQ(stored["AcReg"].size(), 14u);  // "G-CESS" and its terminator
    EXPECT_EQ(stored["CuDbase"], (Bytes{0, 0}));
    EXPECT_EQ(stored["CurrentPlan"], (Bytes{0, 0, 0, 0}));
    EXPECT_EQ(stored["BaudRate"], (Bytes{0xc0, 0x12, 0, 0}));
    EXPECT_EQ(stored["FuelCalc"], Bytes{1});
    EXPECT_EQ(stored["IcaoSearch"], Bytes{0});
    const std::uint8_t written[] = {1, 0, 1, 0, 0, 1, 0, 0, 1};
    for (std::size_t i = 0; i < kFlags.size(); ++i)
        EXPECT_EQ(stored[kFlags[i]], Bytes{written[i]}) << kFlags[i];

    LoadSettings(g_app.settings);
    EXPECT_EQ(g_app.settings.AircraftReg.utf8(), "G-CESS");
    EXPECT_TRUE(g_app.settings.NavDatabaseName.empty() && g_app.settings.ActivePlanName.empty());
    EXPECT_EQ(g_app.settings.BaudRate, 4800u);
    // Each 1-byte flag lands on the low byte of the buffer BaudRate (0x12c0) filled: all read 1.
    const SettingsState& s = g_app.settings;
    EXPECT_EQ(
        (Bytes{s.ShowLatLonMap, s.ShowLatLonHsi, s.ShowScaleMap, s.ShowScaleHsi, s.EnableHotKeys,
               s.ShowAirspace, s.RecordGpsData, s.OverwriteGpsData, s.ShowTrackPointer}),
        Bytes(9, 1));
    EXPECT_TRUE(p.Ui().Boxes().empty());
}

TEST_F(SettingsTest, OneByteFlagsKeepTheUpperBytesOfThePreviousRead) {
    const struct {
        std::uint8_t baudLow, baudHigh;
        Bytes shlinmap;
        std::uint8_t expectShlinmap, expectShlinhsi;  // shlinhsi is stored as one byte 0
    } cases[] = {
        {0xc0, 0x12, {0}, 1, 1},           // 4800: the upper byte 0x12 survives
        {0x05, 0x00, {0}, 0, 0},           // nothing above the low byte
        {0xc0, 0x12, {0, 0, 0, 0}, 0, 0},  // a 4-byte value clears the buffer for the next
        {0x00, 0x00, {2}, 1, 0},           // any non-zero byte counts as set
    };
    for (const auto& c : cases) {
        ResetAppState();
        SetDword(u"BaudRate", {c.baudLow, c.baudHigh, 0, 0});
        SetDword(u"shlinmap", c.shlinmap);
        SetDword(u"shlinhsi", {0});
        LoadSettings(g_app.settings);
        EXPECT_EQ(g_app.settings.ShowLatLonMap, c.expectShlinmap) << int(c.baudLow);
        EXPECT_EQ(g_app.settings.ShowLatLonHsi, c.expectShlinhsi) << int(c.baudLow);
        EXPECT_EQ(g_app.settings.ShowScaleMap, 0);  // missing: left as it was, silently
    }
}

TEST_F(SettingsTest, SaveWidensFlagsAndTheNextStartReadsWhatWasSaved) {
    Start();
    g_app.settings.ShowLatLonHsi = 0;
    g_app.settings.AircraftReg.assign(u"D-EFGH");
    g_app.settings.ActivePlanName.assign(u"Plan1");
    g_app.settings.CurrentPlanId = 0x01020304;
    g_app.settings.FuelCalc = 0;
    g_app.settings.IcaoSearch = 1;
    SaveSettings(g_app.settings);
    auto stored = Stored();
    for (const auto& name : kFlags)
        EXPECT_EQ(stored[name].size(), 4u) << name;
    EXPECT_EQ(stored["shlinhsi"], (Bytes{0, 0, 0, 0}));
    EXPECT_EQ(stored["EnableHotKeys"], (Bytes{1, 0, 0, 0}));
    EXPECT_EQ(stored["FuelCalc"], Bytes{0});
    EXPECT_EQ(stored["IcaoSearch"], Bytes{1});
    p.Restart();
    Start();
    EXPECT_EQ(g_app.settings.ShowLatLonHsi, 0);
    EXPECT_EQ(g_app.settings.ShowLatLonMap, 1);
    EXPECT_EQ(g_app.settings.AircraftReg.utf8(), "D-EFGH");
    EXPECT_EQ(g_app.settings.ActivePlanName.utf8(), "Plan1");
    EXPECT_EQ(g_app.settings.CurrentPlanId, 0x01020304u);
    // Written but never read back: every start begins at 1 and 0 again.
    EXPECT_EQ(g_app.settings.FuelCalc, 1);
    EXPECT_EQ(g_app.settings.IcaoSearch, 0);
}

TEST_F(SettingsTest, TextThatFillsItsBufferIsSavedAsItWasRead) {
    Start();
    Bytes port;  // twelve characters and no terminator: the whole 24-byte buffer
    for (char c : std::string("COM123456789"))
        port.insert(port.end(), {std::uint8_t(c), 0});
    HKEY key = 0;
    p.Registry().CreateKey(kHkeyLocalMachine, kSettingsKey, &key, nullptr);
    p.Registry().SetValue(key, u"CommPort", kRegSz, port.data(), std::uint32_t(port.size()));
    LoadSettings(g_app.settings);
    SaveSettings(g_app.settings);
    EXPECT_EQ(Stored()["CommPort"], port);
    EXPECT_EQ(Stored()["BaudRate"], (Bytes{0xc0, 0x12, 0, 0}));
}

TEST_F(SettingsTest, DefaultsAreNotWrittenOverAnExistingKey) {
    SetDword(u"BaudRate", {0x80, 0x25, 0, 0});
    int writes = 0;
    p.Registry().SetFaultInjector([&](RegOp op, std::u16string_view) {
        writes += op == RegOp::SetValue;
        return kErrorSuccess;
    });
    CreateDefaultSettings(g_app.settings);
    EXPECT_EQ(writes, 0);
    EXPECT_EQ(Stored().size(), 1u);
    EXPECT_EQ(g_app.settings.BaudRate, 0u);
}

struct Failure {
    std::string operation;  // "create", "load" or "save"
    RegOp op;
    std::string failing;  // value name, or "" for every call of the op
    std::string box;      // "" for none
};

std::vector<Failure> Failures() {
    std::vector<Failure> f = {
        {"create", RegOp::CreateKey, "", "Could not open/create key:"},
        {"create", RegOp::SetValue, "AcReg", "Could not save AcReg key"},
        {"create", RegOp::SetValue, "CuDbase", "Could not save CuDbase key"},
        {"create", RegOp::SetValue, "CuPlanName", "Could not save CuPlanName key"},
        {"create", RegOp::SetValue, "CurrentPlan", "Could not save CurrentPlan key"},
        {"create", RegOp::SetValue, "CommPort", "Could not save CommPort key"},
        {"load", RegOp::CreateKey, "", "Could not open key:"},
        {"load", RegOp::QueryValue, "AcReg", "Could not open AcReg key"},
        {"load", RegOp::QueryValue, "CuDbase", "Could not open CuDbase key"},
        {"load", RegOp::QueryValue, "CuPlanName", "Could not open CuPlanName key"},
        {"load", RegOp::QueryValue, "CurrentPlan", "Could not open Current Plan key"},
        {"load", RegOp::QueryValue, "CommPort", ""},
        {"load", RegOp::QueryValue, "BaudRate", ""},
        {"load", RegOp::QueryValue, "shsinhsi", ""},
        {"save", RegOp::CreateKey, "", "Could not open/create key:"},
        {"save", RegOp::SetValue, "AcReg", "Could not save AcReg key"},
        {"save", RegOp::SetValue, "CuDbase", "Could not save CuDbase key"},
        {"save", RegOp::SetValue, "CuPlanName", "Could not save CuPlan key"},
        {"save", RegOp::SetValue, "CurrentPlan", "Could not CuPlanId key"},
        {"save", RegOp::SetValue, "FuelCalc", "Could not save key"},
        {"save", RegOp::SetValue, "IcaoSearch", "Could not save key"},
        {"save", RegOp::SetValue, "CommPort", "Could not save CommPort key"},
        {"save", RegOp::SetValue, "BaudRate", "Could not save BaudRate key"},
        {"save", RegOp::CloseKey, "", "Could not close Key"}};
    for (const char* name : {"FuelCalc", "IcaoSearch", "BaudRate"})
        f.push_back({"create", RegOp::SetValue, name, "Could not save key"});
    for (const auto& name : kFlags) {
        f.push_back({"create", RegOp::SetValue, name, "Could not save key"});
        f.push_back({"save", RegOp::SetValue, name, "Could not save " + name + " key"});
    }
    return f;
}

class SettingsFailure : public SettingsTest, public ::testing::WithParamInterface<Failure> {};

TEST_P(SettingsFailure, ShowsItsMessageAndGoesOn) {
    const Failure& c = GetParam();
    if (c.operation != "create")
        Start();
    g_app.settings.AircraftReg.assign(u"G-ABCD");
    Texts calls;
    p.Registry().SetFaultInjector([&](RegOp op, std::u16string_view name) {
        if (op != c.op)
            return kErrorSuccess;
        calls.push_back(Utf16ToUtf8(name));
        return c.failing.empty() || calls.back() == c.failing ? kErrorAccessDenied : kErrorSuccess;
    });
    p.Ui().Clear();
    c.operation == "create" ? CreateDefaultSettings(g_app.settings)
    : c.operation == "load" ? LoadSettings(g_app.settings)
                            : SaveSettings(g_app.settings);
    EXPECT_EQ(p.Ui().BoxTexts(), c.box.empty() ? Texts{} : Texts{c.box});
    for (const auto& box : p.Ui().Boxes())
        EXPECT_EQ(box.caption, "");
    // Every other value is still written or read, in the fixed order.
    Texts read = kWritten;
    read.erase(read.begin() + 4, read.begin() + 6);
    if (c.op == RegOp::SetValue || c.op == RegOp::QueryValue) {
        EXPECT_EQ(calls, c.op == RegOp::SetValue ? kWritten : read);
    }
    if (c.operation == "load" && !c.failing.empty() && c.failing != "AcReg") {
        EXPECT_EQ(g_app.settings.AircraftReg.utf8(), "G-CESS");
    }
}

// Names such as "save_SetValue_CuPlanName" instead of the bytes of the case.
std::string FailureName(const ::testing::TestParamInfo<Failure>& info) {
    static const char* const ops[] = {"CreateKey", "OpenKey", "QueryValue",
                                      "SetValue",  "EnumKey", "CloseKey"};
    std::string name = info.param.operation + "_" + ops[static_cast<int>(info.param.op)] + "_" +
                       (info.param.failing.empty() ? "any" : info.param.failing) + "_" +
                       std::to_string(info.index);
    for (auto& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c)))
            c = '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, SettingsFailure, ::testing::ValuesIn(Failures()), FailureName);

}  // namespace
}  // namespace aerix
