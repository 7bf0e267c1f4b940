// The PLAN view on the 240 x 320 screen: every waypoint name whole on a line of its own, the
// figures between them, scrolling and tapping by sector.
#include "app/plan_view.hpp"

#include <gtest/gtest.h>

#include "app/app_state.hpp"
#include "app/default_data.hpp"
#include "planning/flight_log.hpp"
#include "planning/sector_computation.hpp"
#include "platform/recording_canvas.hpp"
#include "store/record_store.hpp"
#include "test_platform.hpp"

namespace aerix {
namespace {

using platform::CanvasCall;

class PlanViewTest : public ::testing::Test {
  protected:
    void SetUp() override {
        g_app.settings.AircraftReg.assign(u"G-CESS");
        CreateDefaultData();
        g_app.settings.CurrentPlanId = CreatePlanDatabase(u"Trip");
        g_app.settings.ActivePlanName.assign(u"Trip");
    }

    // count sectors hopping east along 51N between airports with long names.
    void Sectors(int count) {
        DbHandle h = OpenDatabase(u"Trip", schema::kSecNumber);
        for (int i = 0; i < count; ++i) {
            SectorRecord s;
            s.SectorNumber = static_cast<std::int16_t>(i + 1);
            s.Text401 = Name(i);
            s.Text402 = Name(i + 1);
            s.StartLatitude = s.EndLatitude = 51 * 6000;
            s.StartLongitude = i * 1200;
            s.EndLongitude = (i + 1) * 1200;
            s.Phase = 2;
            s.AltitudeText = u"2000";
            s.WindText = u"000/00";
            WriteSector(h, s, 0);
        }
        h.Close();
        RecomputePlanRoute(g_app.settings, g_app.plan, 1);
    }
    static std::u16string Name(int i) {
        return u"Farnborough London Gatwick " + std::u16string(1, static_cast<char16_t>(u'A' + i));
    }

    std::vector<CanvasCall> Texts() {
        canvas_.Clear();
        view_.Paint(canvas_);
        return canvas_.CallsOf(CanvasCall::Text);
    }
    static const CanvasCall* Find(const std::vector<CanvasCall>& texts, const std::string& text) {
        for (const CanvasCall& t : texts)
            if (t.text == text)
                return &t;
        return nullptr;
    }

    testing::TestPlatform platform_;
    platform::RecordingCanvas canvas_;
    PlanView view_;
};

TEST_F(PlanViewTest, NamesAreWholeOnTheirOwnLinesWithTheFiguresBetween) {
    Sectors(8);
    auto texts = Texts();
    // Five sectors fit: six names, each across the screen, and no two texts share a pixel.
    for (int i = 0; i < 6; ++i) {
        const CanvasCall* name = Find(texts, Utf16ToUtf8(Name(i)));
        ASSERT_NE(name, nullptr) << i;
        EXPECT_EQ(name->rect.left, 2);
        EXPECT_EQ(name->rect.right, 238);
    }
    EXPECT_EQ(Find(texts, Utf16ToUtf8(Name(6))), nullptr);
    for (std::size_t a = 0; a < texts.size(); ++a)
        for (std::size_t b = a + 1; b < texts.size(); ++b) {
            const auto &r = texts[a].rect, &s = texts[b].rect;
            bool apart =
                r.right <= s.left || s.right <= r.left || r.bottom <= s.top || s.bottom <= r.top;
            EXPECT_TRUE(apart) << texts[a].text << " / " << texts[b].text;
        }
    for (const CanvasCall& t : texts)
        EXPECT_LE(t.rect.bottom, PlanView::kBottom) << t.text;
    // Headings with their units and reference; the figures of the first sector below its start.
    for (const char* heading : {"MH", "Dist", "GS", "Time", "Fuel", "nm", "kt", "h:mm"})
        EXPECT_NE(Find(texts, heading), nullptr) << heading;
    const CanvasCall* heading = Find(texts, "090°M");
    ASSERT_NE(heading, nullptr);
    EXPECT_GT(heading->rect.top, Find(texts, Utf16ToUtf8(Name(0)))->rect.top);
    EXPECT_LT(heading->rect.top, Find(texts, Utf16ToUtf8(Name(1)))->rect.top);

    // Scrolled to the end the last sector's end shows; a tap on figures highlights that sector.
    view_.ScrollBy(99);
    texts = Texts();
    EXPECT_EQ(g_app.view.PlanScrollRow, 3u);
    ASSERT_NE(Find(texts, Utf16ToUtf8(Name(8))), nullptr);
    const CanvasCall* last = Find(texts, "8");
    ASSERT_NE(last, nullptr);
    view_.PenDown(120, last->rect.top + 2);
    EXPECT_EQ(g_app.plan.HighlightedSector, 7u);
    view_.PenDown(120, Find(texts, Utf16ToUtf8(Name(8)))->rect.top + 2);
    EXPECT_EQ(g_app.plan.HighlightedSector, 7u);
    view_.PenDown(120, Find(texts, "4")->rect.top + 2);
    EXPECT_EQ(g_app.plan.HighlightedSector, 3u);
    view_.ScrollBy(-99);
    EXPECT_EQ(g_app.view.PlanScrollRow, 0u);
}

}  // namespace
}  // namespace aerix
