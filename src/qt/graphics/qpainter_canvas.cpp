#include "qt/graphics/qpainter_canvas.hpp"

#include <QPolygon>

namespace aerix::qt {

namespace {

QRect ToQRect(const platform::Rect& r) {
    return QRect(QPoint(r.left, r.top), QPoint(r.right - 1, r.bottom - 1));
}

QPolygon ToPolygon(const std::vector<platform::Point>& points) {
    QPolygon polygon;
    polygon.reserve(static_cast<int>(points.size()));
    for (const auto& p : points)
        polygon << QPoint(p.x, p.y);
    return polygon;
}

}  // namespace

QColor ToQColor(platform::Color c) {
    return QColor(c.r, c.g, c.b);
}

QImage ImageOver(platform::Bitmap& bitmap) {
    if (bitmap.Empty())
        return {};
    return QImage(reinterpret_cast<uchar*>(bitmap.Row(0)), bitmap.Width(), bitmap.Height(),
                  bitmap.Width() * 4, QImage::Format_RGB32);
}

QImage ImageOver(const platform::Bitmap& bitmap) {
    if (bitmap.Empty())
        return {};
    return QImage(reinterpret_cast<const uchar*>(bitmap.Row(0)), bitmap.Width(), bitmap.Height(),
                  bitmap.Width() * 4, QImage::Format_RGB32);
}

QPainterCanvas::QPainterCanvas(QPainter& painter, int width, int height)
    : painter_(painter), width_(width), height_(height) {
    painter_.setPen(QPen(Qt::black, 0));
    painter_.setBrush(Qt::white);
}

void QPainterCanvas::SetPen(const platform::Pen& pen) {
    if (pen.style == platform::PenStyle::Null) {
        painter_.setPen(Qt::NoPen);
        return;
    }
    QPen q(ToQColor(pen.color), pen.width <= 1 ? 0 : pen.width);
    q.setStyle(pen.style == platform::PenStyle::Dash  ? Qt::DashLine
               : pen.style == platform::PenStyle::Dot ? Qt::DotLine
                                                      : Qt::SolidLine);
    painter_.setPen(q);
}

void QPainterCanvas::SetBrush(const platform::Brush& brush) {
    painter_.setBrush(brush.hollow ? QBrush(Qt::NoBrush) : QBrush(ToQColor(brush.color)));
}

void QPainterCanvas::SetFont(const platform::Font& font) {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(font.height > 0 ? font.height : 12);
    f.setBold(font.bold);
    painter_.setFont(f);
}

void QPainterCanvas::MoveTo(int x, int y) {
    current_ = QPoint(x, y);
}

void QPainterCanvas::LineTo(int x, int y) {
    QPoint to(x, y);
    painter_.drawLine(current_, to);
    current_ = to;
}

void QPainterCanvas::Polyline(const std::vector<platform::Point>& points) {
    painter_.drawPolyline(ToPolygon(points));
}

void QPainterCanvas::Polygon(const std::vector<platform::Point>& points) {
    painter_.drawPolygon(ToPolygon(points));
}

void QPainterCanvas::Rectangle(const platform::Rect& rect) {
    painter_.drawRect(ToQRect(rect));
}

void QPainterCanvas::Ellipse(const platform::Rect& rect) {
    painter_.drawEllipse(ToQRect(rect));
}

void QPainterCanvas::Arc(const platform::Rect& rect, double startDegrees, double sweepDegrees) {
    painter_.drawArc(ToQRect(rect), static_cast<int>(startDegrees * 16),
                     static_cast<int>(sweepDegrees * 16));
}

void QPainterCanvas::FillRect(const platform::Rect& rect, platform::Color color) {
    painter_.fillRect(QRect(rect.left, rect.top, rect.Width(), rect.Height()), ToQColor(color));
}

void QPainterCanvas::DrawText(std::string_view text, const platform::Rect& rect, unsigned format,
                              platform::Color textColor, platform::Color background,
                              bool transparent) {
    QRect r(rect.left, rect.top, rect.Width(), rect.Height());
    if (!transparent)
        painter_.fillRect(r, ToQColor(background));
    int flags = (format & platform::kTextCenter)  ? Qt::AlignHCenter
                : (format & platform::kTextRight) ? Qt::AlignRight
                                                  : Qt::AlignLeft;
    flags |= (format & platform::kTextVCenter) ? Qt::AlignVCenter : Qt::AlignTop;
    if (!(format & platform::kTextSingleLine))
        flags |= Qt::TextWordWrap;
    QPen saved = painter_.pen();
    painter_.setPen(ToQColor(textColor));
    painter_.drawText(r, flags,
                      QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    painter_.setPen(saved);
}

void QPainterCanvas::StretchBlt(const platform::Rect& dst, const platform::Bitmap& src,
                                const platform::Rect& srcRect) {
    QImage image = ImageOver(src);
    if (image.isNull())
        return;
    painter_.drawImage(QRect(dst.left, dst.top, dst.Width(), dst.Height()), image,
                       QRect(srcRect.left, srcRect.top, srcRect.Width(), srcRect.Height()));
}

}  // namespace aerix::qt
