#include "platform/recording_canvas.hpp"

namespace aerix::platform {

CanvasCall RecordingCanvas::Make(CanvasCall::Kind kind) const {
    CanvasCall call{kind, {}, {}, {}, 0, 0, {}, 0, {}, {}, false, pen_, brush_, font_};
    return call;
}

void RecordingCanvas::MoveTo(int x, int y) {
    auto c = Make(CanvasCall::MoveTo);
    c.points = {{x, y}};
    calls_.push_back(std::move(c));
}

void RecordingCanvas::LineTo(int x, int y) {
    auto c = Make(CanvasCall::LineTo);
    c.points = {{x, y}};
    calls_.push_back(std::move(c));
}

void RecordingCanvas::Polyline(const std::vector<Point>& points) {
    auto c = Make(CanvasCall::Polyline);
    c.points = points;
    calls_.push_back(std::move(c));
}

void RecordingCanvas::Polygon(const std::vector<Point>& points) {
    auto c = Make(CanvasCall::Polygon);
    c.points = points;
    calls_.push_back(std::move(c));
}

void RecordingCanvas::Rectangle(const Rect& rect) {
    auto c = Make(CanvasCall::Rectangle);
    c.rect = rect;
    calls_.push_back(std::move(c));
}

void RecordingCanvas::Ellipse(const Rect& rect) {
    auto c = Make(CanvasCall::Ellipse);
    c.rect = rect;
    calls_.push_back(std::move(c));
}

void RecordingCanvas::Arc(const Rect& rect, double startDegrees, double sweepDegrees) {
    auto c = Make(CanvasCall::Arc);
    c.rect = rect;
    c.start = startDegrees;
    c.sweep = sweepDegrees;
    calls_.push_back(std::move(c));
}

void RecordingCanvas::FillRect(const Rect& rect, Color color) {
    auto c = Make(CanvasCall::FillRect);
    c.rect = rect;
    c.color = color;
    calls_.push_back(std::move(c));
}

void RecordingCanvas::DrawText(std::string_view text, const Rect& rect, unsigned format,
                               Color textColor, Color background, bool transparent) {
    auto c = Make(CanvasCall::Text);
    c.text = std::string(text);
    c.rect = rect;
    c.format = format;
    c.color = textColor;
    c.background = background;
    c.transparent = transparent;
    calls_.push_back(std::move(c));
}

void RecordingCanvas::StretchBlt(const Rect& dst, const Bitmap&, const Rect& srcRect) {
    auto c = Make(CanvasCall::Blit);
    c.rect = dst;
    c.source = srcRect;
    calls_.push_back(std::move(c));
}

std::vector<CanvasCall> RecordingCanvas::CallsOf(CanvasCall::Kind kind) const {
    std::vector<CanvasCall> out;
    for (const auto& c : calls_) {
        if (c.kind == kind)
            out.push_back(c);
    }
    return out;
}

std::vector<std::string> RecordingCanvas::Texts() const {
    std::vector<std::string> out;
    for (const auto& c : calls_) {
        if (c.kind == CanvasCall::Text)
            out.push_back(c.text);
    }
    return out;
}

std::unique_ptr<Canvas> RecordingGraphics::CanvasOn(Bitmap& bitmap) {
    auto canvas = std::make_unique<RecordingCanvas>(bitmap.Width(), bitmap.Height());
    canvases.push_back(canvas.get());
    return canvas;
}

bool RecordingGraphics::LoadImage(const std::string& path, Bitmap* out, std::string* error) {
    loaded.push_back(path);
    for (const auto& [p, bitmap] : images_) {
        if (p == path) {
            *out = bitmap;
            return true;
        }
    }
    if (error)
        *error = "no such image";
    return false;
}

bool RecordingGraphics::SaveImage(const std::string&, const Bitmap&) {
    return true;
}

void RecordingGraphics::AddImage(const std::string& path, int width, int height) {
    images_.emplace_back(path, Bitmap(width, height));
}

}  // namespace aerix::platform
