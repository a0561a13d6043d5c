#include "controls/core/LineSet.h"

#include "controls/core/Angle.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr qint64 LargestFile = 64LL << 20;
constexpr std::size_t PieceLength = 64;
constexpr qsizetype PointSize = 8;
constexpr double LargestSingleRadius = 1e5; // pixels

// Takes numbers off the front of the bytes; the caller asks first whether there are enough.
class CNumberReader
{
public:
    explicit CNumberReader(QByteArrayView bytes) : m_bytes(bytes) {}

    [[nodiscard]] bool Has(qsizetype count) const { return m_bytes.size() >= count; }
    [[nodiscard]] qsizetype Left() const { return m_bytes.size(); }

    template <typename T> T Take()
    {
        const T value = qFromLittleEndian<T>(m_bytes.data());
        m_bytes = m_bytes.sliced(sizeof(T));
        return value;
    }

private:
    QByteArrayView m_bytes;
};
} // namespace

bool CLineSet::Load(const QString& path)
{
    m_points.clear();
    m_pieces.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestFile)
        return false;
    const QByteArray bytes = file.readAll();
    CNumberReader reader(bytes);
    if (!reader.Has(8) || !bytes.startsWith("KOL1"))
        return false;
    (void)reader.Take<quint32>();
    const auto lineCount = reader.Take<quint32>();
    m_points.reserve(static_cast<std::size_t>(reader.Left() / PointSize));
    for (quint32 line = 0; line < lineCount; ++line) {
        const quint32 count = reader.Has(4) ? reader.Take<quint32>() : ~0U;
        if (!reader.Has(static_cast<qsizetype>(count) * PointSize)) {
            m_points.clear();
            m_pieces.clear();
            return false;
        }
        const std::size_t first = m_points.size();
        for (quint32 index = 0; index < count; ++index) {
            const double longitude = reader.Take<qint32>() * 1e-6;
            const double latitude = std::clamp(reader.Take<qint32>() * 1e-6, -90.0, 90.0);
            const UnitVector vector = ToVector({longitude, latitude});
            m_points.push_back(
                {static_cast<float>(vector.X), static_cast<float>(vector.Y), static_cast<float>(vector.Z)});
        }
        AddPieces(first, count);
    }
    return true;
}

void CLineSet::AddPieces(std::size_t first, std::size_t count)
{
    for (std::size_t start = 0; start + 1 < count; start += PieceLength) {
        // One point belongs to both neighbours, so that no gap is left.
        Piece piece{first + start, std::min(PieceLength + 1, count - start), {0, 0, 0}, 0, 0, 1, start == 0};
        for (std::size_t index = piece.First; index < piece.First + piece.Count; ++index) {
            piece.Middle.X += static_cast<double>(m_points[index].X);
            piece.Middle.Y += static_cast<double>(m_points[index].Y);
            piece.Middle.Z += static_cast<double>(m_points[index].Z);
        }
        const double length = std::sqrt(Dot(piece.Middle, piece.Middle));
        if (length < 1e-9) {
            piece.Middle = {};
            piece.CapAngle = std::numbers::pi;
        } else {
            piece.Middle = {piece.Middle.X / length, piece.Middle.Y / length, piece.Middle.Z / length};
            for (std::size_t index = piece.First; index < piece.First + piece.Count; ++index) {
                const Point& point = m_points[index];
                const UnitVector way{static_cast<double>(point.X) - piece.Middle.X,
                                     static_cast<double>(point.Y) - piece.Middle.Y,
                                     static_cast<double>(point.Z) - piece.Middle.Z};
                // By the chord: single numbers are too coarse for the cosine of an angle of some hundred metres.
                const double chord = std::sqrt(Dot(way, way));
                piece.CapAngle = std::max(piece.CapAngle, 2 * std::asin(std::min(chord / 2, 1.0)));
            }
        }
        piece.CapSine = std::sin(piece.CapAngle);
        piece.CapCosine = std::cos(piece.CapAngle);
        m_pieces.push_back(piece);
    }
}

CLineSet::CSight::CSight(const CSphereView& view, QSizeF size)
    : m_viewer(view.Viewer()), m_reach(view.VisibleAngle(size) * RadiansPerDegree), m_sine(std::sin(m_reach)),
      m_cosine(std::cos(m_reach))
{
}

void CLineSet::Trace(const CSphereView& view, QSizeF size, double tolerance, const Pen& pen) const
{
    // Single numbers are twice as quick, but from very near they would shift the lines by pixels.
    if (view.Radius() > LargestSingleRadius)
        TraceIn<double>(view, size, tolerance, pen);
    else
        TraceIn<float>(view, size, tolerance, pen);
}

template <typename T>
void CLineSet::TraceIn(const CSphereView& view, QSizeF size, double tolerance, const Pen& pen) const
{
    const CSight sight(view, size);
    const auto radius = static_cast<T>(view.Radius());
    const auto middleX = static_cast<T>(view.CenterPixel().x());
    const auto middleY = static_cast<T>(view.CenterPixel().y());
    struct Axis
    {
        T X, Y, Z;
    };
    const auto share = [](const UnitVector& axis) {
        return Axis{static_cast<T>(axis.X), static_cast<T>(axis.Y), static_cast<T>(axis.Z)};
    };
    const Axis east = share(view.East());
    const Axis north = share(view.North());
    const Axis viewer = share(view.Viewer());
    const auto dot = [](const Point& a, const Axis& b) {
        return static_cast<T>(a.X) * b.X + static_cast<T>(a.Y) * b.Y + static_cast<T>(a.Z) * b.Z;
    };
    const auto nearEnough = static_cast<T>(tolerance);

    Run run;
    run.reserve(PieceLength + 1);
    const auto finish = [&] {
        if (run.size() > 1)
            pen(run);
        run.clear();
    };
    for (const Piece& piece : m_pieces) {
        if (piece.CapAngle * view.Radius() < tolerance * 0.7 || !sight.Has(piece))
            continue;
        T lastX = 0;
        T lastY = 0;
        const std::size_t end = piece.First + piece.Count;
        for (std::size_t index = piece.First; index < end; ++index) {
            const Point& point = m_points[index];
            if (dot(point, viewer) < 0) {
                finish();
                continue;
            }
            const T x = middleX + radius * dot(point, east);
            const T y = middleY - radius * dot(point, north);
            const bool isEnd = index + 1 == end;
            if (!run.isEmpty() && !isEnd && std::fabs(x - lastX) + std::fabs(y - lastY) < nearEnough)
                continue;
            run.append(QPointF(static_cast<double>(x), static_cast<double>(y)));
            lastX = x;
            lastY = y;
        }
        finish();
    }
}
