#include "qt/splash_image.hpp"

#include <QFileInfo>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace aerix::qt {

QImage DrawSplashImage() {
    QImage image(240, 300, QImage::Format_RGB32);
    QLinearGradient sky(0, 0, 0, 300);
    sky.setColorAt(0, QColor(10, 36, 106));
    sky.setColorAt(1, QColor(90, 150, 220));
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(image.rect(), sky);

    // Compass rose.
    QPointF centre(120, 150);
    p.setPen(QPen(Qt::white, 2));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(centre, 80, 80);
    QFont small(QStringLiteral("DejaVu Sans"));
    small.setPixelSize(12);
    small.setBold(true);
    p.setFont(small);
    const char* cardinals[] = {"N", "E", "S", "W"};
    for (int i = 0; i < 36; ++i) {
        double a = qDegreesToRadians(i * 10.0);
        double inner = i % 9 == 0 ? 62 : (i % 3 == 0 ? 70 : 75);
        p.drawLine(centre + QPointF(std::sin(a) * inner, -std::cos(a) * inner),
                   centre + QPointF(std::sin(a) * 80, -std::cos(a) * 80));
        if (i % 9 == 0) {
            QPointF at = centre + QPointF(std::sin(a) * 50, -std::cos(a) * 50);
            p.drawText(QRectF(at.x() - 8, at.y() - 8, 16, 16), Qt::AlignCenter, cardinals[i / 9]);
        }
    }
    // Aircraft seen from above, heading north-east.
    p.save();
    p.translate(centre);
    p.rotate(45);
    QPainterPath plane;
    plane.moveTo(0, -30);
    plane.lineTo(4, -22);
    plane.lineTo(4, -6);
    plane.lineTo(30, 4);
    plane.lineTo(30, 9);
    plane.lineTo(4, 4);
    plane.lineTo(3, 20);
    plane.lineTo(11, 26);
    plane.lineTo(11, 29);
    plane.lineTo(0, 26);
    plane.lineTo(-11, 29);
    plane.lineTo(-11, 26);
    plane.lineTo(-3, 20);
    plane.lineTo(-4, 4);
    plane.lineTo(-30, 9);
    plane.lineTo(-30, 4);
    plane.lineTo(-4, -6);
    plane.lineTo(-4, -22);
    plane.closeSubpath();
    p.setPen(QPen(QColor(10, 36, 106), 1));
    p.setBrush(QColor(255, 210, 0));
    p.drawPath(plane);
    p.restore();

    QFont big(QStringLiteral("DejaVu Sans"));
    big.setPixelSize(34);
    big.setBold(true);
    p.setFont(big);
    p.setPen(Qt::white);
    p.drawText(QRect(0, 8, 240, 44), Qt::AlignCenter, QStringLiteral("Aerix"));
    p.setFont(small);
    p.drawText(QRect(0, 240, 240, 18), Qt::AlignCenter,
               QStringLiteral("Pilot's navigation companion"));
    p.drawText(QRect(0, 262, 240, 18), Qt::AlignCenter, QStringLiteral("Version " AERIX_VERSION));
    return image;
}

bool EnsureSplashFile(const QString& path) {
    if (QFileInfo::exists(path))
        return true;
    return DrawSplashImage().save(path, "BMP");
}

}  // namespace aerix::qt
