#include "qt/graphics/qt_graphics.hpp"

#include <QImage>
#include <QImageReader>
#include <QPainter>

#include "qt/graphics/qpainter_canvas.hpp"

namespace aerix::qt {

namespace {

// The image over the bitmap and the painter on it, alive before the canvas that uses them.
struct ImagePainter {
    explicit ImagePainter(QImage over) : image(std::move(over)) {
        if (!image.isNull())
            painter.begin(&image);
    }
    ~ImagePainter() {
        if (painter.isActive())
            painter.end();
    }
    QImage image;
    QPainter painter;
};

class BitmapCanvas : private ImagePainter, public QPainterCanvas {
  public:
    explicit BitmapCanvas(platform::Bitmap& bitmap)
        : ImagePainter(ImageOver(bitmap)),
          QPainterCanvas(painter, bitmap.Width(), bitmap.Height()) {}
};

}  // namespace

std::unique_ptr<platform::Canvas> QtGraphics::CanvasOn(platform::Bitmap& bitmap) {
    return std::make_unique<BitmapCanvas>(bitmap);
}

bool QtGraphics::LoadImage(const std::string& path, platform::Bitmap* out, std::string* error) {
    QImageReader reader(QString::fromStdString(path));
    QSize size = reader.size();
    if (!size.isValid()) {
        if (error)
            *error = "Could not read image " + path + ": " + reader.errorString().toStdString();
        return false;
    }
    if (static_cast<long long>(size.width()) * size.height() > kMaxPixels) {
        if (error)
            *error = "Image " + path + " is too large for memory (" + std::to_string(size.width()) +
                     " x " + std::to_string(size.height()) + " pixels)";
        return false;
    }
    QImage image = reader.read();
    if (image.isNull()) {
        if (error)
            *error = "Could not read image " + path + ": " + reader.errorString().toStdString();
        return false;
    }
    image = image.convertToFormat(QImage::Format_RGB32);
    platform::Bitmap bitmap(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y) {
        const auto* src = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
        std::uint32_t* dst = bitmap.Row(y);
        for (int x = 0; x < image.width(); ++x)
            dst[x] = src[x] & 0x00FFFFFFu;
    }
    *out = std::move(bitmap);
    return true;
}

bool QtGraphics::SaveImage(const std::string& path, const platform::Bitmap& bitmap) {
    QImage image = ImageOver(bitmap);
    return !image.isNull() && image.save(QString::fromStdString(path));
}

}  // namespace aerix::qt
