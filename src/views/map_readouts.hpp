// The map view's two readout windows: the latitude/longitude readout and the scale readout. Each
// has its own drawing surface in its own coordinates; the front end may back them with child
// windows, or CanvasReadouts draws them onto the view at their places.
#pragma once

#include "platform/canvas.hpp"

namespace aerix {

// The readouts of every view: blue text on yellow.
inline constexpr platform::Color kReadoutText = platform::Rgb(0, 0, 255);
inline constexpr platform::Color kReadoutBack = platform::Rgb(255, 255, 0);

class MapReadouts {
  public:
    virtual ~MapReadouts() = default;
    // The readout's surface for one paint (null when it cannot be had); End releases it and is
    // false when the release fails.
    virtual platform::Canvas* BeginLatLon() = 0;
    virtual bool EndLatLon() = 0;
    // Moves and sizes the scale readout (in view coordinates), then its surface as above.
    virtual void MoveScale(const platform::Rect& place) = 0;
    virtual platform::Canvas* BeginScale() = 0;
    virtual bool EndScale() = 0;
};

// A canvas that draws onto another one shifted by (dx, dy).
class OffsetCanvas : public platform::Canvas {
  public:
    OffsetCanvas(platform::Canvas& target, int dx, int dy, int width, int height)
        : t_(target), dx_(dx), dy_(dy), width_(width), height_(height) {}
    int Width() const override { return width_; }
    int Height() const override { return height_; }
    void SetPen(const platform::Pen& pen) override { t_.SetPen(pen); }
    void SetBrush(const platform::Brush& brush) override { t_.SetBrush(brush); }
    void SetFont(const platform::Font& font) override { t_.SetFont(font); }
    void MoveTo(int x, int y) override { t_.MoveTo(x + dx_, y + dy_); }
    void LineTo(int x, int y) override { t_.LineTo(x + dx_, y + dy_); }
    void Polyline(const std::vector<platform::Point>& points) override;
    void Polygon(const std::vector<platform::Point>& points) override;
    void Rectangle(const platform::Rect& rect) override { t_.Rectangle(Shift(rect)); }
    void Ellipse(const platform::Rect& rect) override { t_.Ellipse(Shift(rect)); }
    void Arc(const platform::Rect& rect, double start, double sweep) override {
        t_.Arc(Shift(rect), start, sweep);
    }
    void FillRect(const platform::Rect& rect, platform::Color color) override {
        t_.FillRect(Shift(rect), color);
    }
    void DrawText(std::string_view text, const platform::Rect& rect, unsigned format,
                  platform::Color textColor, platform::Color background,
                  bool transparent) override {
        t_.DrawText(text, Shift(rect), format, textColor, background, transparent);
    }
    void StretchBlt(const platform::Rect& dst, const platform::Bitmap& src,
                    const platform::Rect& srcRect) override {
        t_.StretchBlt(Shift(dst), src, srcRect);
    }

  private:
    platform::Rect Shift(const platform::Rect& r) const {
        return {r.left + dx_, r.top + dy_, r.right + dx_, r.bottom + dy_};
    }
    std::vector<platform::Point> Shift(const std::vector<platform::Point>& points) const;
    platform::Canvas& t_;
    int dx_, dy_, width_, height_;
};

// Readouts drawn straight onto the view at the child windows' places: the latitude/longitude
// readout at (42, 44), 158 x 16; the scale readout wherever it was moved.
class CanvasReadouts : public MapReadouts {
  public:
    explicit CanvasReadouts(platform::Canvas& view) : view_(view) {}
    platform::Canvas* BeginLatLon() override;
    bool EndLatLon() override { return true; }
    void MoveScale(const platform::Rect& place) override { scale_ = place; }
    platform::Canvas* BeginScale() override;
    bool EndScale() override { return true; }

  private:
    platform::Canvas& view_;
    platform::Rect scale_{0, 0, 1, 1};
    std::unique_ptr<OffsetCanvas> current_;
};

}  // namespace aerix
