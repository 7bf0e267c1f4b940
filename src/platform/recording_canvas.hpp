// A canvas that keeps every call, for testing the views' geometry to the pixel.
#pragma once

#include <string>
#include <vector>

#include "platform/canvas.hpp"

namespace aerix::platform {

struct CanvasCall {
    enum Kind {
        MoveTo,
        LineTo,
        Polyline,
        Polygon,
        Rectangle,
        Ellipse,
        Arc,
        FillRect,
        Text,
        Blit
    } kind;
    std::vector<Point> points;  // MoveTo/LineTo: one point; Polyline/Polygon: all points
    Rect rect;                  // Rectangle, Ellipse, Arc, FillRect, Text, Blit destination
    Rect source;                // Blit source
    double start = 0, sweep = 0;
    std::string text;
    unsigned format = 0;
    Color color, background;  // FillRect colour; text colours
    bool transparent = false;
    Pen pen;  // selected when the call was made
    Brush brush;
    Font font;
};

class RecordingCanvas : public Canvas {
  public:
    RecordingCanvas(int width = 240, int height = 320) : width_(width), height_(height) {}

    int Width() const override { return width_; }
    int Height() const override { return height_; }
    void SetPen(const Pen& pen) override { pen_ = pen; }
    void SetBrush(const Brush& brush) override { brush_ = brush; }
    void SetFont(const Font& font) override { font_ = font; }
    void MoveTo(int x, int y) override;
    void LineTo(int x, int y) override;
    void Polyline(const std::vector<Point>& points) override;
    void Polygon(const std::vector<Point>& points) override;
    void Rectangle(const Rect& rect) override;
    void Ellipse(const Rect& rect) override;
    void Arc(const Rect& rect, double startDegrees, double sweepDegrees) override;
    void FillRect(const Rect& rect, Color color) override;
    void DrawText(std::string_view text, const Rect& rect, unsigned format, Color textColor,
                  Color background, bool transparent) override;
    void StretchBlt(const Rect& dst, const Bitmap& src, const Rect& srcRect) override;

    const std::vector<CanvasCall>& Calls() const { return calls_; }
    std::vector<CanvasCall> CallsOf(CanvasCall::Kind kind) const;
    std::vector<std::string> Texts() const;
    void Clear() { calls_.clear(); }

  private:
    CanvasCall Make(CanvasCall::Kind kind) const;
    int width_, height_;
    Pen pen_;
    Brush brush_;
    Font font_;
    std::vector<CanvasCall> calls_;
};

// Graphics for tests: canvases that record, images from an in-memory table.
class RecordingGraphics : public Graphics {
  public:
    std::unique_ptr<Canvas> CanvasOn(Bitmap& bitmap) override;
    bool LoadImage(const std::string& path, Bitmap* out, std::string* error) override;
    bool SaveImage(const std::string& path, const Bitmap& bitmap) override;
    // Makes LoadImage find a bitmap of this size at path.
    void AddImage(const std::string& path, int width, int height);

    std::vector<std::string> loaded;         // paths asked for, in order
    std::vector<RecordingCanvas*> canvases;  // every canvas handed out (owned by the caller)

  private:
    std::vector<std::pair<std::string, Bitmap>> images_;
};

}  // namespace aerix::platform
