#include "LoadingPictures.h"

#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPolygonF>
#include <array>

int loadingBand(int p)
{
    // The bands overlap and leave a gap at 76 on purpose.
    if (p >= 1 && p < 26)
        return 1;
    if (p > 25 && p < 51)
        return 2;
    if (p > 50 && p < 76)
        return 3;
    if (p > 76)
        return 4;
    return 0;
}

QIcon defaultPagePicture()
{
    static QIcon sheet;
    if (sheet.isNull()) {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QPalette().color(QPalette::Text), 1));
        painter.setBrush(QPalette().color(QPalette::Base));
        // A sheet with its top right corner folded.
        painter.drawPolygon(
            QPolygonF({{3.5, 1.5}, {9.5, 1.5}, {12.5, 4.5}, {12.5, 14.5}, {3.5, 14.5}}));
        painter.drawPolyline(QPolygonF({{9.5, 1.5}, {9.5, 4.5}, {12.5, 4.5}}));
        sheet = QIcon::fromTheme(QStringLiteral("text-html"), QIcon(pixmap));
    }
    return sheet;
}

QIcon loadingPicture(int band, const QIcon& pagePicture)
{
    if (band >= 4)
        return pagePicture;
    static std::array<QIcon, 3> pies;
    QIcon& pie = pies[size_t(std::clamp(band, 1, 3) - 1)];
    if (pie.isNull()) {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor colour = QPalette().color(QPalette::Highlight);
        painter.setPen(QPen(colour, 1.2));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QRectF(1.5, 1.5, 13, 13));
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        // Clockwise from twelve o'clock, a quarter per band.
        painter.drawPie(QRectF(1.5, 1.5, 13, 13), 90 * 16, -band * 90 * 16);
        pie = QIcon(pixmap);
    }
    return pie;
}
