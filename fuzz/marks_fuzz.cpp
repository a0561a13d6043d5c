#include "controls/core/MarksFile.h"
#include "controls/core/RoadMapData.h"

#include <QByteArray>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{
void MustBeOnEarth(const GeoPoint& point)
{
    if (!(std::abs(point.Longitude) <= 180 && std::abs(point.Latitude) <= 90))
        std::abort();
}

/// The input as each of the tables, and as what is looked for in them.
void TryTables(QByteArrayView bytes)
{
    CRoadMapData data;
    data.ParseAddresses(bytes);
    data.ParseFacilities(bytes);
    for (const Landmark& place : data.Landmarks())
        MustBeOnEarth(place.Position);
    for (const CRoadMapResult& row : data.FindFacilities(QString::fromUtf8(bytes.first(qMin(bytes.size(), 20)))))
        MustBeOnEarth({row.X / 3'600'000.0, row.Y / 3'600'000.0});
    (void)data.FindAddresses(QString::fromUtf8(bytes));
    (void)data.NearestMunicipality({139, 36}, 1);
}
} // namespace

// The input is a file of marks, and each of the road map's tables.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const RoadMapMarks marks = MarksFile::Parse(bytes);
    for (const RoadMapMark& mark : marks.Points)
        MustBeOnEarth(mark.Position);
    for (const auto& way : marks.Ways) {
        for (const GeoPoint& point : way)
            MustBeOnEarth(point);
    }
    TryTables(bytes);
    return 0;
}
