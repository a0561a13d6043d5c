#include "controls/core/MarksFile.h"

#include "host/text/Number.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 LargestFile = 16LL << 20;
constexpr std::size_t MostPoints = 5000;
constexpr std::size_t MostWayPoints = 50000;
constexpr qsizetype LongestName = 60;

std::optional<GeoPoint> PositionOf(const QXmlStreamAttributes& attributes)
{
    const auto latitude = Number::FindLeadingDouble(attributes.value(u"lat"_s));
    const auto longitude = Number::FindLeadingDouble(attributes.value(u"lon"_s));
    if (!latitude || !longitude || std::abs(*latitude) > 90 || std::abs(*longitude) > 360)
        return std::nullopt;
    return GeoPoint{WrapLongitude(*longitude), *latitude};
}

/// Takes the marks out of a text from element to element, however they are nested.
class CMarksReader
{
public:
    explicit CMarksReader(const QByteArray& bytes) : m_xml(bytes) {}

    RoadMapMarks Read()
    {
        while (!m_xml.atEnd() && m_marks.Points.size() < MostPoints && m_wayPoints < MostWayPoints) {
            m_xml.readNext();
            if (m_xml.isStartElement())
                Begin();
            else if (m_xml.isEndElement())
                End();
        }
        std::erase_if(m_marks.Ways, [](const auto& way) { return way.size() < 2; });
        return std::move(m_marks);
    }

    /// Whether the text ended as GPX does.
    [[nodiscard]] bool IsWhole() const { return !m_xml.hasError(); }

private:
    void Begin()
    {
        const QStringView element = m_xml.name();
        if (element == u"trkseg" || element == u"rte") {
            if (m_marks.Ways.empty() || !m_marks.Ways.back().empty())
                m_marks.Ways.emplace_back();
        } else if (element == u"wpt") {
            const auto position = PositionOf(m_xml.attributes());
            m_isInPoint = position.has_value();
            if (position)
                m_marks.Points.push_back({QString(), *position});
        } else if (element == u"trkpt" || element == u"rtept") {
            const auto position = PositionOf(m_xml.attributes());
            if (position && !m_marks.Ways.empty()) {
                m_marks.Ways.back().push_back(*position);
                ++m_wayPoints;
            }
        } else if (element == u"name" && m_isInPoint) {
            const QString name = m_xml.readElementText(QXmlStreamReader::SkipChildElements);
            m_marks.Points.back().Name = name.simplified().left(LongestName);
        }
    }

    void End()
    {
        if (m_xml.name() == u"wpt")
            m_isInPoint = false;
    }

    QXmlStreamReader m_xml;
    RoadMapMarks m_marks;
    std::size_t m_wayPoints = 0;
    bool m_isInPoint = false;
};
} // namespace

RoadMapMarks MarksFile::Parse(const QByteArray& bytes)
{
    return CMarksReader(bytes).Read();
}

MarksFile::CResult MarksFile::Read(const QString& path)
{
    QFile file(path);
    const QFileInfo info(file);
    if (!info.exists())
        return {{}, u"ファイルが見つかりません。"_s};
    if (!info.isFile())
        return {{}, u"フォルダや装置は読み込めません。"_s};
    if (file.size() > LargestFile)
        return {{}, u"ファイルが 16 MB を超えています。"_s};
    if (!file.open(QIODevice::ReadOnly))
        return {{}, u"ファイルを開けません。読み取りの権限を確認してください。"_s};
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {{}, u"ファイルを最後まで読めません。"_s};
    CMarksReader reader(bytes);
    RoadMapMarks marks = reader.Read();
    if (!marks.IsEmpty())
        return {std::move(marks), {}};
    return {{}, reader.IsWhole() ? u"地点・ルート・軌跡がありません。"_s : u"GPX 形式ではないか、壊れています。"_s};
}
