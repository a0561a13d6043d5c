#include "tools/ListChecker.h"

#include "host/text/CodePage932.h"
#include "host/text/Number.h"
#include "host/text/PlaceListFormat.h"
#include "tools/CsvTable.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr int MostPlaces = 10000;
constexpr int MostFolders = 2000; // the root included
constexpr int LastKind = 7;
} // namespace

CListChecker::CListChecker(const QString& tables)
{
    if (tables.isEmpty()) {
        return;
    }
    for (const QString& file : {u"/boxes.csv"_s, u"/territory_boxes.csv"_s}) {
        for (const QStringList& row : CsvTable::Read(tables + file, 5)) {
            AddBoxes(row[0], row.sliced(1));
        }
    }
    for (const QStringList& row : CsvTable::Read(tables + u"/prefectures.csv"_s, 7)) {
        AddBoxes(row[1], row.sliced(3));
    }
}

void CListChecker::AddBoxes(const QString& name, const QStringList& numbers)
{
    m_boxes[name].push_back({Number::LeadingDouble(numbers[0]), Number::LeadingDouble(numbers[1]),
                             Number::LeadingDouble(numbers[2]), Number::LeadingDouble(numbers[3])});
}

void CListChecker::Fault(const QString& reason)
{
    m_faults.push_back({m_line, reason});
}

std::vector<ListFault> CListChecker::Check(const QByteArray& bytes)
{
    m_faults.clear();
    m_open.assign(1, {});
    m_line = 0;
    m_placeCount = 0;
    m_folderCount = 1;
    m_worstZone = 0.0;
    m_worstZoneName.clear();

    bool isHeader = true;
    for (qsizetype start = 0; start < bytes.size();) {
        ++m_line;
        qsizetype end = bytes.indexOf('\n', start);
        if (end < 0) {
            end = bytes.size();
            Fault(u"the last line has no end"_s);
        }
        QByteArrayView line = QByteArrayView(bytes).sliced(start, end - start);
        start = end + 1;
        if (!line.endsWith('\r')) {
            Fault(u"the line does not end in CR LF"_s);
        } else {
            line.chop(1);
        }
        isHeader = isHeader && line.startsWith(PlaceListFormat::CloseMark);
        if (!isHeader) {
            CheckLine(line);
        }
    }
    if (m_open.size() > 1) {
        Fault(u"%1 folders are left open"_s.arg(m_open.size() - 1));
    }
    if (m_placeCount > MostPlaces) {
        Fault(u"%1 places, the table holds %2"_s.arg(m_placeCount).arg(MostPlaces));
    }
    if (m_folderCount > MostFolders) {
        Fault(u"%1 folders, the table holds %2"_s.arg(m_folderCount).arg(MostFolders));
    }
    return m_faults;
}

void CListChecker::CheckLine(QByteArrayView line)
{
    if (line.isEmpty()) {
        Fault(u"empty line"_s);
    } else if (line == QByteArrayView(&PlaceListFormat::CloseMark, 1)) {
        if (m_open.size() == 1) {
            Fault(u"closes a folder that is not open"_s);
        } else {
            m_open.pop_back();
        }
    } else if (line.startsWith(PlaceListFormat::CloseMark)) {
        Fault(u"more than the closing sign on a closing line"_s);
    } else if (line.startsWith(PlaceListFormat::FolderMark)) {
        CheckFolder(line);
    } else {
        CheckPlace(line);
    }
}

QString CListChecker::CheckName(QByteArrayView bytes)
{
    QString name = CodePage932::Decode(bytes);
    if (CodePage932::Encode(name) != bytes || name.contains(QChar::ReplacementCharacter)) {
        Fault(u"the name is not whole in the code page"_s);
    }
    if (name.isEmpty() || name.trimmed() != name) {
        Fault(u"the name is empty or has blanks around it"_s);
    }
    if (std::any_of(name.cbegin(), name.cend(),
                    [](QChar c) { return c == u',' || c.category() == QChar::Other_Control; })) {
        Fault(u"the name has a comma or a control character"_s);
    }
    if (m_open.back().Names.contains(name)) {
        Fault(u"the folder has the name twice: "_s + name);
    }
    m_open.back().Names.insert(name);
    return name;
}

void CListChecker::CheckFolder(QByteArrayView line)
{
    ++m_folderCount;
    const qsizetype level = PlaceListFormat::CountMarks(line);
    if (level != static_cast<qsizetype>(m_open.size())) {
        Fault(u"folder of level %1 inside level %2"_s.arg(level).arg(m_open.size() - 1));
    }
    const QString name = CheckName(line.sliced(level));
    m_open.push_back({name, {}});
}

void CListChecker::CheckPlace(QByteArrayView line)
{
    ++m_placeCount;
    if (m_open.size() == 1) {
        Fault(u"the place is in no folder"_s);
    }
    PlaceValues place;
    if (!PlaceListFormat::ParsePlace(line, place)) {
        Fault(u"the line is no place"_s);
        return;
    }
    const QString name = CheckName(line.first(line.indexOf(',')).trimmed());
    QByteArray printed;
    PlaceListFormat::AppendPlace(printed, place.Name, place);
    if (printed != line.toByteArray() + "\r\n") {
        Fault(u"the fields after the name are not as the format prints them"_s);
    }
    CheckPosition(place.Longitude, place.Latitude);
    if (place.Altitude < -500.0 || place.Altitude > 9000.0) {
        Fault(u"no such height on the Earth"_s);
    }
    CheckZone(place.TimeZone, place.Longitude, place.Latitude, name);
    if (place.IsUserEdited != 0) {
        Fault(u"a shipped place is not edited by the user"_s);
    }
    if (place.Kind > LastKind || place.Kind < 0) {
        Fault(u"unknown kind"_s);
    }
}

void CListChecker::CheckPosition(double longitude, double latitude)
{
    constexpr double Margin = 0.3; // coasts and borders of the boxes are drawn roughly
    if (std::abs(longitude) > 180.0 || std::abs(latitude) > 90.0) {
        Fault(u"longitude or latitude out of range"_s);
        return;
    }
    for (const Folder& folder : m_open) {
        const auto found = m_boxes.constFind(folder.Name);
        if (found == m_boxes.cend()) {
            continue;
        }
        const bool isInside = std::any_of(found->cbegin(), found->cend(), [longitude, latitude](const Box& box) {
            return longitude >= box.West - Margin && longitude <= box.East + Margin && latitude >= box.South - Margin &&
                   latitude <= box.North + Margin;
        });
        if (!isInside) {
            Fault(u"lies outside "_s + folder.Name);
        }
    }
}

void CListChecker::CheckZone(double zone, double longitude, double latitude, const QString& name)
{
    constexpr double PolarLatitude = 80.0; // where the meridians meet, stations keep the time of their supply base
    constexpr double MostDeviation = 4.0;
    if (zone < -12.0 || zone > 14.0 || std::fmod(zone, 0.25) != 0.0) {
        Fault(u"no such time zone"_s);
        return;
    }
    if (std::abs(latitude) > PolarLatitude) {
        return;
    }
    const double deviation = std::abs(std::remainder(zone - longitude / 15.0, 24.0));
    if (deviation > MostDeviation) {
        Fault(u"time zone %1 hours from the longitude"_s.arg(Number::Format("%.1f", deviation)));
    }
    if (deviation > m_worstZone) {
        m_worstZone = deviation;
        m_worstZoneName = name;
    }
}
