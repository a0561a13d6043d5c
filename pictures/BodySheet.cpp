#include "pictures/BodySheet.h"

#include "controls/sky_engine/PlanetPainter.h"
#include "host/observer/BodyTable.h"

#include <QApplication>
#include <QPainter>

namespace
{
constexpr int Side = 300;
constexpr int Gap = 6;
constexpr int BodiesInRow = 3; // each with two pictures
constexpr double Angles[] = {180.0, 50.0};
} // namespace

QImage BodySheet::Draw(const QString& dataFolder)
{
    constexpr int step = Side + Gap;
    constexpr int rows = (BodyTable::Count + BodiesInRow - 1) / BodiesInRow;
    QImage sheet(BodiesInRow * 2 * step + Gap, rows * step + Gap, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(Qt::black);
    QPainter painter(&sheet);
    for (int body = 0; body < BodyTable::Count; ++body) {
        CPlanetPainter planet(dataFolder);
        PlanetScene scene;
        scene.Body = body;
        scene.Center = {20.0, 12.0};
        scene.Sun = {-10.0, 5.0};
        scene.Observer = {30.0, 20.0};
        scene.HasGrid = scene.HasNames = scene.HasLeadlines = true;
        for (const double& angle : Angles) {
            scene.Angle = angle;
            QImage picture(Side, Side, QImage::Format_ARGB32_Premultiplied);
            planet.Draw(picture, scene, QApplication::font());
            const int column = body % BodiesInRow * 2 + static_cast<int>(&angle - Angles);
            painter.drawImage(Gap + column * step, Gap + body / BodiesInRow * step, picture);
        }
    }
    return sheet;
}
