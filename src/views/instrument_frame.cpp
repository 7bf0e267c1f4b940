#include "views/instrument_frame.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "gps/fix_publication.hpp"
#include "views/data_bar.hpp"
#include "views/map_view.hpp"
#include "views/plan_sectors.hpp"

namespace aerix {

namespace {
constexpr int kAerixPictureHeight = 215;  // 386 rows shrunk by 430 / 240
}

std::string ScaleReadoutText(std::uint32_t rangeStep) {
    char text[32];
    std::snprintf(text, sizeof text, kInstrumentScaleFormat,
                  static_cast<int>(kRangePerStepNm * rangeStep));
    return text;
}

void DrawInstrumentOverlay(platform::Canvas& c, const InstrumentFrameInput& in) {
    DrawDataBar(c, in.leg.bar, kMapDataBar);
    if (in.invalidSignal) {
        c.SetFont({12, true});
        c.DrawText(kInvalidSignalText, {0, 100, 240, 130},
                   platform::kTextCenter | platform::kTextVCenter | platform::kTextSingleLine,
                   platform::Rgb(255, 0, 0), platform::kWhite, false);
    }
}

void ShrinkInto(const platform::Bitmap& src, platform::Bitmap& dst, int dstTop, int dstHeight) {
    const int sw = src.Width(), sh = src.Height();
    const int dw = dst.Width();
    dstHeight = std::min(dstHeight, dst.Height() - dstTop);
    if (sw <= 0 || sh <= 0 || dw <= 0 || dstHeight <= 0)
        return;
    // Per axis: the source pixels under each destination pixel and how much of each is covered.
    struct Tap {
        int first = 0;
        std::vector<float> weights;
    };
    auto taps = [](int from, int to) {
        std::vector<Tap> out(static_cast<std::size_t>(to));
        const double step = double(from) / to;
        for (int i = 0; i < to; ++i) {
            const double a = i * step, b = (i + 1) * step;
            Tap& t = out[static_cast<std::size_t>(i)];
            t.first = static_cast<int>(a);
            for (int s = t.first; s < from && s < b; ++s) {
                double covered = std::min<double>(b, s + 1) - std::max<double>(a, s);
                t.weights.push_back(static_cast<float>(covered / step));
            }
        }
        return out;
    };
    const std::vector<Tap> across = taps(sw, dw);
    const std::vector<Tap> down = taps(sh, dstHeight);
    // Rows first into floats, then columns.
    std::vector<float> rows(static_cast<std::size_t>(sh) * dw * 3);
    for (int y = 0; y < sh; ++y) {
        const std::uint32_t* in = src.Row(y);
        float* out = &rows[static_cast<std::size_t>(y) * dw * 3];
        for (int x = 0; x < dw; ++x) {
            const Tap& t = across[static_cast<std::size_t>(x)];
            float r = 0, g = 0, b = 0;
            for (std::size_t k = 0; k < t.weights.size(); ++k) {
                const std::uint32_t p = in[t.first + static_cast<int>(k)];
                const float w = t.weights[k];
                r += w * float((p >> 16) & 0xFF);
                g += w * float((p >> 8) & 0xFF);
                b += w * float(p & 0xFF);
            }
            out[x * 3] = r;
            out[x * 3 + 1] = g;
            out[x * 3 + 2] = b;
        }
    }
    auto channel = [](float v) {
        return static_cast<std::uint32_t>(std::clamp(std::lround(v), 0L, 255L));
    };
    for (int y = 0; y < dstHeight; ++y) {
        const Tap& t = down[static_cast<std::size_t>(y)];
        std::uint32_t* out = dst.Row(dstTop + y);
        for (int x = 0; x < dw; ++x) {
            float r = 0, g = 0, b = 0;
            for (std::size_t k = 0; k < t.weights.size(); ++k) {
                const float* p = &rows[(static_cast<std::size_t>(t.first) + k) * dw * 3 +
                                       static_cast<std::size_t>(x) * 3];
                const float w = t.weights[k];
                r += w * p[0];
                g += w * p[1];
                b += w * p[2];
            }
            out[x] = channel(r) << 16 | channel(g) << 8 | channel(b);
        }
    }
}

platform::Bitmap RenderInstrumentFrame(const InstrumentFrameInput& in,
                                       const CanvasFactory& canvasOn) {
    const int pictureWidth = 2 * in.centreX;
    const int pictureHeight = 2 * in.centreY;
    if (!in.aerix) {
        platform::Bitmap frame(pictureWidth, pictureHeight);
        if (auto c = canvasOn(frame)) {
            DrawHsiPicture(*c, in);
            DrawInstrumentOverlay(*c, in);
        }
        return frame;
    }
    platform::Bitmap picture(pictureWidth, pictureHeight);
    if (auto c = canvasOn(picture))
        DrawAerixPicture(*c, in);
    platform::Bitmap frame(kInstrumentViewWidth, kInstrumentViewHeight, platform::kBlack);
    if (in.stop.stop_requested())
        return frame;
    ShrinkInto(picture, frame, 0, kAerixPictureHeight);
    if (auto c = canvasOn(frame)) {
        DrawAerixPanel(*c, in);
        DrawInstrumentOverlay(*c, in);
    }
    return frame;
}

InstrumentFrameInput PrepareInstrumentFrame(const ViewInputs& inputs, const NavDataState& nav) {
    const GpsFix& fix = inputs.gps.Fix;
    InstrumentFrameInput in;
    in.aerix = inputs.view.InstrumentAerix != 0;
    in.centreX = inputs.view.InstrumentCentreX;
    in.centreY = inputs.view.InstrumentCentreY;
    in.rangeStep = inputs.view.InstrumentRangeStep;
    in.fix = fix;
    in.haveFix = fix.positionKnown;
    // The banner shows in this frame only: once per void sentence.
    if (fix.FixVoid) {
        in.invalidSignal = true;
        AcknowledgeVoidFix(inputs.gps);
    }
    std::vector<SectorRecord> sectors = ReadPlanSectors(inputs.settings);
    in.leg = SequenceActiveLeg(sectors, inputs.gps, inputs.leg, inputs.view.DataBar);
    // The card turns to the track in the same reference as every figure over it.
    in.fix.magneticTrack = in.leg.reference.Shown(in.fix.trueTrack);
    in.route.reserve(sectors.size() + 1);
    for (const SectorRecord& s : sectors)
        in.route.push_back({double(s.StartLatitude), double(s.StartLongitude),
                            double(s.EndLatitude), double(s.EndLongitude)});
    if (in.leg.direct)
        in.route.push_back(
            {in.leg.startLatitude, in.leg.startLongitude, in.leg.endLatitude, in.leg.endLongitude});
    in.showAirspace = inputs.settings.ShowAirspace == 1;
    in.showScale = inputs.settings.ShowScaleHsi == 1;
    in.showLatLon = inputs.settings.ShowLatLonHsi == 1;
    in.nav = std::span<const NavEntry>(
        nav.NavDatabase.data(), std::min<std::size_t>(nav.NavEntryCount, nav.NavDatabase.size()));
    in.airspace = std::span<const AirspaceEntry>(
        nav.AirspaceOverlay.data(),
        std::min<std::size_t>(nav.AirspaceEntryCount, nav.AirspaceOverlay.size()));
    return in;
}

}  // namespace aerix
