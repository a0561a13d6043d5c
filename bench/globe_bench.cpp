// What one frame of a globe takes, and its parts: the ground's texture, the lines on it, the names. Drawn as a window
// does at a scale of 1 and of 2, with the centre moved each time as under the user's hand. By the clock on the wall, as
// the user sees it: all cores draw.

#include "bench/Measure.h"
#include "controls/globe_map/GlobePainter.h"
#include "controls/sky_engine/PlanetPainter.h"
#include "controls/sphere/MapFurniture.h"
#include "host/control/GlobeZoom.h"
#include "host/observer/BodyTable.h"

#include <QPainter>

#include <array>

using namespace Qt::StringLiterals;
using namespace Measure;

namespace
{
constexpr int Side = 480;
constexpr double StepDegrees = 0.05;
const QString DataFolder = QStringLiteral(KIV_SOURCE_DATA);

QImage Picture(qint64 scale)
{
    QImage picture(QSize(Side, Side) * static_cast<int>(scale), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(static_cast<double>(scale));
    return picture;
}

double Promise(qint64 scale)
{
    return scale == 1 ? 4.0 : 12.0;
}

/// Times frames that show ever more, one of each kind in turn: texture, texture and lines, these and names. What a
/// frame takes longer than the one before is the part's own.
void MeasureParts(benchmark::State& state, const std::function<void(int parts, double way)>& draw)
{
    std::array<std::vector<double>, 3> times;
    double way = 0;
    for (int parts = 0; parts < 3; ++parts)
        draw(parts, way += StepDegrees);
    for (auto step : state) {
        for (int parts = 0; parts < 3; ++parts) {
            way += StepDegrees;
            times[static_cast<std::size_t>(parts)].push_back(Milliseconds([&] { draw(parts, way); }));
        }
        state.SetIterationTime(times.back().back() / 1000.0);
    }
    const double texture = Median(times[0]);
    const double lines = Median(times[1]);
    const double all = Median(times[2]);
    state.counters["texture_ms"] = texture;
    state.counters["lines_ms"] = lines - texture;
    state.counters["names_ms"] = all - lines;
    Hold(state, "median_ms", all, Promise(state.range(1)));
}

/// The Earth with all layers and the shipped list.
void RedrawGlobe(benchmark::State& state)
{
    const QSize size(Side, Side);
    CGlobePainter painter(DataFolder);
    painter.Landmarks().SetPlaces(LandmarkList::Read(DataFolder + u"kivpel.obs"_s));
    painter.Landmarks().SetFont(MapFurniture::NameFont(QFont()));
    QImage picture = Picture(state.range(1));
    QImage window = Picture(state.range(1));
    const double angle = GlobeZoom::ViewAngle(1 - static_cast<double>(state.range(0)) / 100.0);
    GlobeScene scene;
    scene.Observer = GeoPoint{139.54, 35.68};
    MeasureParts(state, [&](int parts, double way) {
        std::bitset<LandmarkKind::Count> kinds;
        painter.Landmarks().SetKinds(parts > 1 ? kinds.set() : kinds);
        scene.IsCoastVisible = scene.IsGraticuleVisible = parts > 0;
        scene.IsNamesVisible = parts > 1;
        painter.Paint(picture, CSphereView::ForAngle({139.0 + way, 36.0}, angle, size), angle, scene, false);
        QPainter(&window).drawImage(0, 0, picture);
    });
}

/// Another body with its grid and names.
void RedrawPlanet(benchmark::State& state)
{
    CPlanetPainter painter(DataFolder);
    QImage picture = Picture(state.range(1));
    QImage window = Picture(state.range(1));
    PlanetScene scene;
    scene.Body = static_cast<int>(state.range(0));
    MeasureParts(state, [&](int parts, double way) {
        scene.Center = {20.0 + way, 10.0};
        scene.HasGrid = parts > 0;
        scene.HasNames = scene.HasLeadlines = parts > 1;
        painter.Draw(picture, scene, QFont());
        QPainter(&window).drawImage(0, 0, picture);
    });
}
} // namespace

BENCHMARK(RedrawGlobe)
    ->ArgNames({"zoom", "scale"})
    ->ArgsProduct({{0, 40, 70}, {1, 2}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(RedrawPlanet)
    ->ArgNames({"body", "scale"})
    ->ArgsProduct({{BodyTable::Sun, BodyTable::Moon, BodyTable::Earth, 5 /* Mars */, 6 /* Jupiter */}, {1, 2}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
