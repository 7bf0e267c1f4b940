// The Canvas on a QPainter: pens, brushes and fonts kept as the views select them, text in the
// program's sans-serif face.
#pragma once

#include <QPainter>

#include "platform/canvas.hpp"

namespace aerix::qt {

class QPainterCanvas : public platform::Canvas {
  public:
    // width and height are the logical size the views draw in.
    QPainterCanvas(QPainter& painter, int width, int height);

    int Width() const override { return width_; }
    int Height() const override { return height_; }
    void SetPen(const platform::Pen& pen) override;
    void SetBrush(const platform::Brush& brush) override;
    void SetFont(const platform::Font& font) override;
    void MoveTo(int x, int y) override;
    void LineTo(int x, int y) override;
    void Polyline(const std::vector<platform::Point>& points) override;
    void Polygon(const std::vector<platform::Point>& points) override;
    void Rectangle(const platform::Rect& rect) override;
    void Ellipse(const platform::Rect& rect) override;
    void Arc(const platform::Rect& rect, double startDegrees, double sweepDegrees) override;
    void FillRect(const platform::Rect& rect, platform::Color color) override;
    void DrawText(std::string_view text, const platform::Rect& rect, unsigned format,
                  platform::Color textColor, platform::Color background, bool transparent) override;
    void StretchBlt(const platform::Rect& dst, const platform::Bitmap& src,
                    const platform::Rect& srcRect) override;

  private:
    QPainter& painter_;
    int width_;
    int height_;
    QPoint current_;
};

QColor ToQColor(platform::Color c);
// A QImage sharing the bitmap's pixels (valid while the bitmap lives and keeps its size).
QImage ImageOver(platform::Bitmap& bitmap);
QImage ImageOver(const platform::Bitmap& bitmap);

}  // namespace aerix::qt
