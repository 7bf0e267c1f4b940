// A GDI-like drawing surface. The views draw on it without knowing the toolkit: the Qt front end
// implements it with QPainter, the tests with a recording canvas that keeps every call.
// Coordinates are logical pixels of the 240 x 320 screen.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace aerix::platform {

struct Color {
    std::uint8_t r = 0, g = 0, b = 0;
    friend bool operator==(const Color&, const Color&) = default;
};
inline constexpr Color Rgb(std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    return {r, g, b};
}
inline constexpr Color kBlack = Rgb(0, 0, 0);
inline constexpr Color kWhite = Rgb(255, 255, 255);

struct Point {
    int x = 0, y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Rect {
    int left = 0, top = 0, right = 0, bottom = 0;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

enum class PenStyle { Solid, Dash, Dot, Null };

struct Pen {
    PenStyle style = PenStyle::Solid;
    int width = 0;  // 0 and 1 both draw one pixel wide
    Color color = kBlack;
    friend bool operator==(const Pen&, const Pen&) = default;
};

struct Brush {
    bool hollow = false;  // the null brush: shapes are not filled
    Color color = kWhite;
    friend bool operator==(const Brush&, const Brush&) = default;
};

struct Font {
    int height = 12;  // pixels
    bool bold = false;
    friend bool operator==(const Font&, const Font&) = default;
};

// Text placement flags, as DrawText took them.
enum TextFormat : unsigned {
    kTextLeft = 0x0,
    kTextCenter = 0x1,
    kTextRight = 0x2,
    kTextVCenter = 0x4,
    kTextSingleLine = 0x20,
};

// An image in memory, 32-bit 0x00RRGGBB pixels, row by row from the top.
class Bitmap {
  public:
    Bitmap() = default;
    Bitmap(int width, int height, Color fill = kWhite);
    int Width() const { return width_; }
    int Height() const { return height_; }
    bool Empty() const { return width_ == 0 || height_ == 0; }
    std::uint32_t* Row(int y) { return pixels_.data() + static_cast<std::size_t>(y) * width_; }
    const std::uint32_t* Row(int y) const {
        return pixels_.data() + static_cast<std::size_t>(y) * width_;
    }
    Color Pixel(int x, int y) const;
    void SetPixel(int x, int y, Color c);
    std::size_t Bytes() const { return pixels_.size() * sizeof(std::uint32_t); }

  private:
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;
};

class Canvas {
  public:
    virtual ~Canvas() = default;

    virtual int Width() const = 0;
    virtual int Height() const = 0;

    // The pen, brush and font stay selected until replaced.
    virtual void SetPen(const Pen& pen) = 0;
    virtual void SetBrush(const Brush& brush) = 0;
    virtual void SetFont(const Font& font) = 0;

    virtual void MoveTo(int x, int y) = 0;
    virtual void LineTo(int x, int y) = 0;
    virtual void Polyline(const std::vector<Point>& points) = 0;
    // Outlined with the pen, filled with the brush.
    virtual void Polygon(const std::vector<Point>& points) = 0;
    virtual void Rectangle(const Rect& rect) = 0;
    virtual void Ellipse(const Rect& rect) = 0;
    // An arc of the ellipse in rect, anticlockwise from start to end angle (degrees, 0 = east).
    virtual void Arc(const Rect& rect, double startDegrees, double sweepDegrees) = 0;
    virtual void FillRect(const Rect& rect, Color color) = 0;

    // Text in UTF-8 inside rect, with foreground and (unless transparent) background colours.
    virtual void DrawText(std::string_view text, const Rect& rect, unsigned format,
                          Color text_color, Color background, bool transparent) = 0;

    // Copies src's rectangle into dst, stretching it (SRCCOPY).
    virtual void StretchBlt(const Rect& dst, const Bitmap& src, const Rect& srcRect) = 0;
};

// What drawing needs from the toolkit besides a canvas: canvases over bitmaps (the chart with its
// burnt-in route, the instrument views' off-screen picture) and image files. The Qt front end
// provides it; headless tools get it from the same library with the offscreen platform.
class Graphics {
  public:
    virtual ~Graphics() = default;
    virtual std::unique_ptr<Canvas> CanvasOn(Bitmap& bitmap) = 0;
    // BMP, PNG or JPEG. False with a reason in *error when the file cannot be read or is too
    // large for memory.
    virtual bool LoadImage(const std::string& path, Bitmap* out, std::string* error) = 0;
    virtual bool SaveImage(const std::string& path, const Bitmap& bitmap) = 0;
};

}  // namespace aerix::platform
