#include "app_icon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace tallora::ui {

QImage appIconImage(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    // Drawn on a 64-unit grid and scaled, so that every size keeps the same proportions.
    p.scale(size / 64.0, size / 64.0);

    // Ground: a rounded tile in the blue of the program's help and title bands.
    QLinearGradient ground(0, 0, 0, 64);
    ground.setColorAt(0, QColor(0x3d, 0x78, 0xa0));
    ground.setColorAt(1, QColor(0x24, 0x4a, 0x64));
    p.setPen(Qt::NoPen);
    p.setBrush(ground);
    p.drawRoundedRect(QRectF(2, 2, 60, 60), 12, 12);

    // A ledger sheet with its ruled lines and a margin.
    p.setBrush(QColor(0xfb, 0xfa, 0xf4));
    p.drawRoundedRect(QRectF(13, 9, 32, 42), 3, 3);
    p.setPen(QPen(QColor(0x9a, 0xb3, 0xc6), 2.4, Qt::SolidLine, Qt::RoundCap));
    for (int row = 0; row < 4; ++row) p.drawLine(QPointF(19, 18 + row * 7), QPointF(39, 18 + row * 7));
    p.setPen(QPen(QColor(0xd0, 0x6a, 0x5a), 1.6));
    p.drawLine(QPointF(17, 11), QPointF(17, 49));

    // A gold coin over the sheet's corner, with a euro sign.
    p.setPen(QPen(QColor(0x9c, 0x6b, 0x12), 2));
    QLinearGradient gold(36, 32, 58, 56);
    gold.setColorAt(0, QColor(0xff, 0xd8, 0x5e));
    gold.setColorAt(1, QColor(0xe0, 0x9a, 0x1c));
    p.setBrush(gold);
    p.drawEllipse(QPointF(45, 45), 13, 13);
    p.setPen(QPen(QColor(0x7a, 0x50, 0x08), 2.6, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    QPainterPath euro;
    euro.arcMoveTo(QRectF(39, 38, 14, 14), 50);
    euro.arcTo(QRectF(39, 38, 14, 14), 50, 260);
    p.drawPath(euro);
    p.drawLine(QPointF(37.5, 43.2), QPointF(46, 43.2));
    p.drawLine(QPointF(37.5, 46.8), QPointF(46, 46.8));
    return image;
}

QIcon appIcon() {
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128, 256}) icon.addPixmap(QPixmap::fromImage(appIconImage(size)));
    return icon;
}

}  // namespace tallora::ui
