#include "qt/graphics/qt_graphics.hpp"

#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>

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

std::uint32_t Le(const unsigned char* b, int n) {
    std::uint32_t v = 0;
    for (int i = n - 1; i >= 0; --i)
        v = (v << 8) | b[i];
    return v;
}

// The size a BMP or JPEG header claims. Qt's readers give no size for some headers they would
// still try to decode (a 30000 x 30000 BMP), so the size check must not depend on them.
std::optional<QSize> HeaderSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::array<unsigned char, 26> h{};
    if (!in.read(reinterpret_cast<char*>(h.data()), 4))
        return std::nullopt;
    if (h[0] == 'B' && h[1] == 'M') {
        if (!in.read(reinterpret_cast<char*>(h.data()) + 4, 22))
            return std::nullopt;
        std::uint32_t infoSize = Le(&h[14], 4);
        if (infoSize == 12)  // the old OS/2 header: 16-bit sizes
            return QSize(static_cast<int>(Le(&h[18], 2)), static_cast<int>(Le(&h[20], 2)));
        // Rows run top-down when the height is negative.
        auto w = static_cast<std::int32_t>(Le(&h[18], 4));
        auto ht = static_cast<std::int32_t>(Le(&h[22], 4));
        return QSize(std::abs(w), ht == INT32_MIN ? INT32_MAX : std::abs(ht));
    }
    if (h[0] != 0xFF || h[1] != 0xD8)
        return std::nullopt;
    // JPEG: walk the segments to the frame header.
    in.seekg(2);
    unsigned char m[9];
    while (in.read(reinterpret_cast<char*>(m), 4)) {
        if (m[0] != 0xFF)
            return std::nullopt;
        const unsigned marker = m[1];
        const unsigned length = (static_cast<unsigned>(m[2]) << 8) | m[3];
        if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 &&
            marker != 0xCC) {
            if (!in.read(reinterpret_cast<char*>(m), 5))
                return std::nullopt;
            return QSize((m[3] << 8) | m[4], (m[1] << 8) | m[2]);
        }
        if (length < 2)
            return std::nullopt;
        in.seekg(length - 2, std::ios::cur);
    }
    return std::nullopt;
}

}  // namespace

std::unique_ptr<platform::Canvas> QtGraphics::CanvasOn(platform::Bitmap& bitmap) {
    return std::make_unique<BitmapCanvas>(bitmap);
}

bool QtGraphics::LoadImage(const std::string& path, platform::Bitmap* out, std::string* error) {
    QImageReader reader(QString::fromStdString(path));
    std::optional<QSize> claimed = HeaderSize(path);
    QSize size = claimed ? *claimed : reader.size();
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
