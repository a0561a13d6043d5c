#include "controls/core/EclipsePath.h"
#include "controls/core/LandmarkList.h"
#include "controls/core/LineSet.h"
#include "controls/core/TerrainModel.h"
#include "controls/globe_map/EclipseLayer.h"
#include "controls/sky_engine/SurfaceNames.h"
#include "controls/sphere/LineDrawing.h"
#include "fuzz/FuzzFolder.h"
#include "host/dialog/CommandHistory.h"

#include <QDataStream>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace
{
QGuiApplication& Application()
{
    static int count = 1;
    static char name[] = "data_fuzz";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(count, arguments);
    return application;
}

/// Draws from afar, from near and across the edge of the disc, whatever was read.
template <typename Drawer> void OnMaps(const Drawer& draw)
{
    constexpr QSizeF Size(96, 64);
    static QImage image(Size.toSize(), QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    for (const double angle : {180.0, 40.0, 0.5})
        draw(painter, CSphereView::ForAngle({139.0, 36.0}, angle, Size), Size);
}

void TryLines(const QString& file)
{
    CLineSet lines;
    if (lines.Load(file)) {
        OnMaps([&lines](QPainter& painter, const CSphereView& view, QSizeF size) {
            LineDrawing::Draw(painter, lines, view, size, 0.5);
            (void)lines.Inside(view, size);
        });
    } else if (!lines.IsEmpty()) {
        std::abort();
    }
}

/// The input is the index and the one tile that it may name, "tile".
void TryTerrain(const QString& index)
{
    CTerrainModel terrain;
    (void)terrain.Load(index);
    for (const double longitude : {-180.0, 0.0, 138.7, 540.0}) {
        for (const double latitude : {-90.0, 35.4, 90.0}) {
            const auto altitude = terrain.Altitude(longitude, latitude);
            if (altitude && !(std::abs(*altitude) <= 32768.0))
                std::abort();
        }
    }
}

void TryNames(const QString& file)
{
    CSurfaceNames names;
    names.Load(file);
    OnMaps([&names](QPainter& painter, const CSphereView& view, QSizeF size) {
        names.Draw(painter, view, size, QRectF(0, 0, 20, 10), true);
        names.Draw(painter, view, size, {}, false);
    });
}

void TryEclipse(const QByteArray& bytes)
{
    const EclipsePath path = EclipsePath::Parse(QString::fromUtf8(bytes));
    OnMaps([&path](QPainter& painter, const CSphereView& view, QSizeF) {
        EclipseLayer::Draw(painter, view, path, Qt::red, true);
        EclipseLayer::Draw(painter, view, path, Qt::red, false);
    });
}

void TryLandmarks(const QByteArray& bytes)
{
    for (const Landmark& place : LandmarkList::Parse(bytes)) {
        const bool isOnEarth = std::abs(place.Position.Longitude) <= 180 && std::abs(place.Position.Latitude) <= 90;
        if (!isOnEarth || place.Kind < 0 || place.Kind >= LandmarkKind::Count)
            std::abort();
    }
}

/// What was read of a history is written and read again without a difference.
void TryHistory(const QByteArray& bytes)
{
    CCommandHistory history;
    QDataStream source(bytes);
    source >> history;
    QByteArray written;
    QDataStream sink(&written, QIODevice::WriteOnly);
    sink << history;
    CCommandHistory again;
    QDataStream back(written);
    back >> again;
    if (again != history)
        std::abort();
}
} // namespace

// The first byte says what kind of file the rest is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Application();
    if (size == 0)
        return 0;
    static CFuzzFolder folder;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);
    const auto file = [&bytes] { return folder.Write(QStringLiteral("tile"), bytes); };
    switch (data[0]) {
    case 'l':
        TryLines(file());
        break;
    case 't':
        TryTerrain(file());
        break;
    case 'n':
        TryNames(file());
        break;
    case 'e':
        TryEclipse(bytes);
        break;
    case 'p':
        TryLandmarks(bytes);
        break;
    case 'h':
        TryHistory(bytes);
        break;
    default:
        break;
    }
    return 0;
}
