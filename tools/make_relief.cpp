#include "tools/PictureGaps.h"

#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace
{
int Brightness(QRgb pixel)
{
    return std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)});
}

double Latitude(const QImage& picture, int row)
{
    return 90.0 - 180.0 * (row + 0.5) / picture.height();
}

/// The depths of a part of the Southern Ocean are missing: that sea is black.
void FillEarth(QImage& picture)
{
    const QImage before = picture;
    const auto isGap = [&before](int, int y, QRgb pixel) {
        return Latitude(before, y) < -58.0 && Brightness(pixel) < 60;
    };
    // Neither the ice nor the half-white pixels at its edge may colour the sea.
    PictureGaps::Fill(picture, isGap, [](int, int, QRgb pixel) { return qRed(pixel) < 25; });
}

/// The camera missed some frames, which are black; no shadow away from the poles is.
void FillMoon(QImage& picture)
{
    constexpr int Fringe = 3; // compression left dark edges around the missing frames
    const QImage before = picture;
    const auto isBlack = [&before](int x, int y) { return Brightness(before.pixel(x, y)) < 18; };
    const auto isGap = [&before, &isBlack](int x, int y, QRgb) {
        if (std::abs(Latitude(before, y)) > 62.0) {
            return false;
        }
        for (int nearY = y - Fringe; nearY <= y + Fringe; ++nearY) {
            for (int nearX = std::max(x - Fringe, 0); nearX <= std::min(x + Fringe, before.width() - 1); ++nearX) {
                if (isBlack(nearX, nearY)) {
                    return true;
                }
            }
        }
        return false;
    };
    PictureGaps::Fill(picture, isGap, [](int, int, QRgb) { return true; });
}

/// A map whose left edge is the meridian of 0 becomes one from -180 to 180 degrees.
void Turn(QImage& picture)
{
    const int half = picture.width() / 2;
    const QImage west = picture.copy(half, 0, picture.width() - half, picture.height());
    const QImage east = picture.copy(0, 0, half, picture.height());
    QPainter painter(&picture);
    painter.drawImage(0, 0, west);
    painter.drawImage(west.width(), 0, east);
}

/// Colours that were added to a map of brightness go.
void MakeGrey(QImage& picture)
{
    picture = picture.convertToFormat(QImage::Format_Grayscale8).convertToFormat(QImage::Format_RGB32);
}
} // namespace

// make_relief <kind> <picture> <output> <width>: scales a map of the whole globe to width x width / 2. Of kinds "earth"
// and "moon" the holes are filled that these pictures are known to have; "grey" leaves the brightness alone; "turned"
// has its left edge at the meridian of 0; "plain" is as it should be.
int main(int argc, char** argv)
{
    constexpr int Quality = 85;
    if (argc != 5) {
        std::fprintf(stderr, "usage: make_relief earth|moon|grey|turned|plain <picture> <output> <width>\n");
        return 2;
    }
    const int width = QByteArray(argv[4]).toInt();
    QImageReader reader(QString::fromLocal8Bit(argv[2]));
    QImage picture = reader.read().convertToFormat(QImage::Format_RGB32);
    if (picture.isNull() || width < 2) {
        std::fprintf(stderr, "cannot read %s\n", argv[2]);
        return 1;
    }
    const std::string_view kind(argv[1]);
    if (kind == "moon")
        FillMoon(picture);
    else if (kind == "earth")
        FillEarth(picture);
    else if (kind == "grey")
        MakeGrey(picture);
    else if (kind == "turned")
        Turn(picture);
    QImageWriter writer(QString::fromLocal8Bit(argv[3]), "jpg");
    writer.setQuality(Quality);
    writer.setOptimizedWrite(true);
    if (!writer.write(picture.scaled(width, width / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation))) {
        std::fprintf(stderr, "cannot write %s\n", argv[3]);
        return 1;
    }
    return 0;
}
