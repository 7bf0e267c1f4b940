#include "qt/graphics/qt_graphics.hpp"

#include <QImage>
#include <QImageReader>
#include <QPainter>

#include "qt/graphics/qpainter_canvas.hpp"

namespace aerix::qt {

namespace {

// A canvas that owns its painter over an image of the bitmap's memory.
class BitmapCanvas : public QPainterCanvas {
  public:
    BitmapCanvas(QImage image, QPainter* painter)
        : QPainterCanvas(*painter, image.width(), image.height()),
          image_(std::move(image)),
          painter_(painter) {}
    ~BitmapCanvas() override {
        painter_->end();
        delete painter_;
    }

    static std::unique_ptr<platform::Canvas> Make(platform::Bitmap& bitmap) {
        QImage image = ImageOver(bitmap);
        auto* painter = new QPainter();
        if (!image.isNull())
            painter->begin(&image);
        return std::make_unique<BitmapCanvas>(std::move(image), painter);
    }

  private:
    QImage image_;
    QPainter* painter_;
};

}  // namespace

std::unique_ptr<platform::Canvas> QtGraphics::CanvasOn(platform::Bitmap& bitmap) {
    return BitmapCanvas::Make(bitmap);
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
