#include "qt/graphics/qt_graphics.hpp"

#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

#include "platform/image_header.hpp"
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
    // Qt's readers give no size for some headers they would still try to decode (a BMP of
    // 30000 x 30000 pixels), so the size check does not depend on them.
    QSize size = reader.size();
    if (auto header = platform::ReadImageHeader(path))
        size = QSize(static_cast<int>(std::min<std::int64_t>(header->width, INT32_MAX)),
                     static_cast<int>(std::min<std::int64_t>(header->height, INT32_MAX)));
    if (!size.isValid() || size.isEmpty()) {
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
    // The size was checked above; Qt's own default limit (256 MB) would refuse a chart of
    // 8000 x 8000 pixels.
    reader.setAllocationLimit(static_cast<int>(kMaxPixels * 4 / (1024 * 1024)) * 2);
    // A large chart must not be held twice: the reader decodes straight into the bitmap's
    // pixels when the file is 24- or 32-bit (most charts); other formats are decoded apart and
    // copied in once their buffer is converted in place where Qt can.
    platform::Bitmap bitmap(size.width(), size.height());
    QImage image(reinterpret_cast<uchar*>(bitmap.Row(0)), size.width(), size.height(),
                 size.width() * 4, QImage::Format_RGB32);
    if (!reader.read(&image)) {
        if (error)
            *error = "Could not read image " + path + ": " + reader.errorString().toStdString();
        return false;
    }
    if (image.constBits() != reinterpret_cast<const uchar*>(bitmap.Row(0))) {
        bitmap = platform::Bitmap();
        image.convertTo(QImage::Format_RGB32);
        bitmap = platform::Bitmap(image.width(), image.height());
        for (int y = 0; y < image.height(); ++y)
            std::memcpy(bitmap.Row(y), image.constScanLine(y),
                        static_cast<std::size_t>(image.width()) * 4);
    }
    image = QImage();
    // Bitmaps keep the top byte clear.
    for (int y = 0; y < bitmap.Height(); ++y) {
        std::uint32_t* row = bitmap.Row(y);
        for (int x = 0; x < bitmap.Width(); ++x)
            row[x] &= 0x00FFFFFFu;
    }
    *out = std::move(bitmap);
    return true;
}

bool QtGraphics::SaveImage(const std::string& path, const platform::Bitmap& bitmap) {
    QImage image = ImageOver(bitmap);
    return !image.isNull() && image.save(QString::fromStdString(path));
}

}  // namespace aerix::qt
