#include "controls/core/EngineState.h"

#include "host/text/Number.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
constexpr double UnixEpochJulianDay = 2440587.5;
constexpr double MaximumAltitude = 1.0e12; ///< metres; more is no place on a body
constexpr qsizetype MaximumFileName = 4096;

/// A longitude as given, but within one turn either way.
double KeptLongitude(double longitude)
{
    return std::fabs(longitude) <= 360.0 ? longitude : EngineBodies::FullTurn(longitude);
}

double KeptAltitude(double altitude)
{
    return std::clamp(altitude, -MaximumAltitude, MaximumAltitude);
}

bool IsVerb(QStringView text, QStringView verb)
{
    constexpr qsizetype LongestVerb = 64;
    return text.size() <= LongestVerb && text.toString().simplified().compare(verb, Qt::CaseInsensitive) == 0;
}

/// A part of a line as a message names it.
QString Quoted(QStringView text)
{
    constexpr qsizetype mostShown = 40;
    const QString ellipsis = text.size() > mostShown ? u"…"_s : QString();
    return u"「"_s + text.left(mostShown).toString() + ellipsis + u"」"_s;
}

/// A number of a constructor that must be whole and in a range.
std::optional<int> WholeNumber(QStringView text, int least, int greatest)
{
    const auto number = StatementReader::ReadNumber(text);
    if (!number || *number < least || *number > greatest || *number != std::floor(*number))
        return std::nullopt;
    return static_cast<int>(*number);
}
} // namespace

/// Paths whose value is more than a text: how they are set and answered.
struct CEngineState::Special
{
    QStringView Path;
    Step (CEngineState::*Set)(QStringView value) = nullptr;
    QString (CEngineState::*Answer)() = nullptr;
};

const CEngineState::Special CEngineState::Specials[] = {
    {u"Location", &CEngineState::SetLocation, &CEngineState::LocationText},
    {u"Location.Longitude", &CEngineState::SetLongitude, &CEngineState::LongitudeText},
    {u"Location.Latitude", &CEngineState::SetLatitude, &CEngineState::LatitudeText},
    {u"Location.Altitude", &CEngineState::SetAltitude, &CEngineState::AltitudeText},
    // Two names of one switch: the site dialog uses the first for its own engine and the second for the host's.
    {u"Location.Altitude.AutoGet", &CEngineState::SetAutomatic, &CEngineState::AutomaticText},
    // The second says whether the terrain is what gives the altitude, which it does on the Earth alone.
    {u"Solar.Planet.Earth.Landscape.AutoGetAltitude", &CEngineState::SetAutomatic, &CEngineState::LandscapeText},
    {u"Solar.Planet.Earth.Landscape.IndexFile", &CEngineState::SetIndexFile, &CEngineState::IndexFileText},
    {u"Time", &CEngineState::SetTime, &CEngineState::TimeText},
};

double EngineTime::JulianDay() const
{
    using namespace std::chrono;
    const sys_days date = year(Year) / month(static_cast<unsigned>(Month)) / day(static_cast<unsigned>(Day));
    return UnixEpochJulianDay + static_cast<double>(date.time_since_epoch().count()) + (Hour * 60 + Minute) / 1440.0 +
           Second / 86400.0;
}

const CEngineState::Special* CEngineState::FindSpecial(QStringView path)
{
    const auto* const found = std::find_if(std::begin(Specials), std::end(Specials), [path](const Special& special) {
        return special.Path.compare(path, Qt::CaseInsensitive) == 0;
    });
    return found == std::end(Specials) ? nullptr : found;
}

QString CEngineState::Command(QStringView line)
{
    QString answer;
    QString complaint;
    std::vector<Step> steps;
    StatementReader::ForEach(line, [&](const Statement& statement) {
        if (!complaint.isEmpty())
            return;
        if (Step step = Read(statement, answer))
            steps.push_back(std::move(step));
        else
            complaint = Complaint(statement);
    });
    if (!complaint.isEmpty())
        return u"エラー："_s + complaint;
    for (const Step& step : steps)
        step();
    return answer;
}

CEngineState::Step CEngineState::Read(const Statement& statement, QString& answer)
{
    switch (statement.What) {
    case Statement::Kind::Assignment:
        return Assignment(statement.Path, statement.Value);
    case Statement::Kind::Query:
        if (!Knows(statement.Path))
            return {};
        return [this, &answer, path = statement.Path] { answer = Query(path); };
    case Statement::Kind::Verb:
        if (IsVerb(statement.Path, u"Show Sky"))
            return [this] { m_showRequested = true; };
        if (IsVerb(statement.Path, u"Calc Stellar"))
            return [] {}; // every answer is worked out when it is asked for
        return {};
    case Statement::Kind::Malformed:
        break;
    }
    return {};
}

QString CEngineState::Complaint(const Statement& statement) const
{
    const QString path = Quoted(statement.Path);
    switch (statement.What) {
    case Statement::Kind::Verb:
        return path + u"というコマンドはありません。"_s;
    case Statement::Kind::Malformed:
        return path + u"は書き方に誤りがあります。"_s;
    case Statement::Kind::Assignment:
        if (Knows(statement.Path))
            return path + u"に"_s + Quoted(statement.Value) + u"は設定できません。"_s;
        break;
    case Statement::Kind::Query:
        break;
    }
    return path + u"というプロパティはありません。"_s;
}

bool CEngineState::Knows(QStringView path) const
{
    return FindSpecial(path) || m_properties.Knows(path);
}

bool CEngineState::Assign(QStringView path, QStringView value)
{
    const Step step = Assignment(path, value);
    if (step)
        step();
    return static_cast<bool>(step);
}

CEngineState::Step CEngineState::Assignment(QStringView path, QStringView value)
{
    if (const Special* const special = FindSpecial(path))
        return (this->*special->Set)(value);
    if (!m_properties.Accepts(path, value))
        return {};
    return [this, path, value] { m_properties.Assign(path, value); };
}

QString CEngineState::Query(QStringView path)
{
    if (const Special* const special = FindSpecial(path))
        return (this->*special->Answer)();
    return m_properties.Value(path);
}

void CEngineState::MoveTo(double longitude, double latitude)
{
    m_longitude = KeptLongitude(longitude);
    m_latitude = std::clamp(latitude, -90.0, 90.0);
    m_isAltitudeAssigned = false;
    m_isTerrainRead = false;
}

bool CEngineState::TakesTerrain() const
{
    return m_isAutomatic && !m_isAltitudeAssigned && m_body == BodyTable::Earth && !m_terrain.IsEmpty();
}

double CEngineState::Altitude()
{
    if (!TakesTerrain())
        return m_ownAltitude;
    if (!m_isTerrainRead) {
        m_terrainAltitude = m_terrain.Altitude(m_longitude, m_latitude);
        m_isTerrainRead = true;
    }
    return m_terrainAltitude.value_or(m_ownAltitude);
}

bool CEngineState::TakeShowRequest()
{
    return std::exchange(m_showRequested, false);
}

CEngineState::Step CEngineState::SetLocation(QStringView value)
{
    const auto constructor = StatementReader::ReadConstructor(value);
    if (!constructor || constructor->Arguments.size() != 3)
        return {};
    const bool isPlain = constructor->Name.compare(u"Location", Qt::CaseInsensitive) == 0;
    const auto body = isPlain ? BodyTable::Earth : BodyTable::Find(constructor->Name);
    const auto longitude = StatementReader::ReadNumber(constructor->Arguments[0]);
    const auto latitude = StatementReader::ReadNumber(constructor->Arguments[1]);
    const bool keepsAltitude = constructor->Arguments[2] == u"*";
    const auto altitude = StatementReader::ReadNumber(constructor->Arguments[2]);
    if (!body || !longitude || !latitude || (!altitude && !keepsAltitude))
        return {};
    return [this, body = *body, longitude = *longitude, latitude = *latitude, altitude] {
        m_ownAltitude = altitude ? KeptAltitude(*altitude) : Altitude();
        m_body = body;
        MoveTo(longitude, latitude);
    };
}

CEngineState::Step CEngineState::SetLongitude(QStringView value)
{
    const auto longitude = StatementReader::ReadNumber(value);
    if (!longitude)
        return {};
    return [this, longitude = *longitude] { MoveTo(longitude, m_latitude); };
}

CEngineState::Step CEngineState::SetLatitude(QStringView value)
{
    const auto latitude = StatementReader::ReadNumber(value);
    if (!latitude)
        return {};
    return [this, latitude = *latitude] { MoveTo(m_longitude, latitude); };
}

CEngineState::Step CEngineState::SetAltitude(QStringView value)
{
    const auto altitude = StatementReader::ReadNumber(value);
    if (!altitude)
        return {};
    return [this, altitude = *altitude] {
        m_ownAltitude = KeptAltitude(altitude);
        m_isAltitudeAssigned = true;
    };
}

CEngineState::Step CEngineState::SetAutomatic(QStringView value)
{
    const bool isOn = value.compare(u"TRUE", Qt::CaseInsensitive) == 0;
    if (!isOn && value.compare(u"FALSE", Qt::CaseInsensitive) != 0)
        return {};
    return [this, isOn] {
        // Switching off leaves the observer where the terrain had put it.
        if (!isOn)
            m_ownAltitude = Altitude();
        if (isOn != m_isAutomatic)
            m_isAltitudeAssigned = false;
        m_isAutomatic = isOn;
    };
}

CEngineState::Step CEngineState::SetIndexFile(QStringView value)
{
    if (value.size() > MaximumFileName)
        return {};
    return [this, value] {
        m_indexFile = value.toString();
        m_isTerrainRead = false;
        if (m_indexFile.isEmpty())
            m_terrain.Clear();
        else
            m_terrain.Load(m_indexFile);
    };
}

CEngineState::Step CEngineState::SetTime(QStringView value)
{
    const auto constructor = StatementReader::ReadConstructor(value);
    if (!constructor || constructor->Arguments.size() != 6 ||
        constructor->Name.compare(u"UT", Qt::CaseInsensitive) != 0)
        return {};
    constexpr int Limits[][2] = {{-9999, 9999}, {1, 12}, {1, 31}, {0, 23}, {0, 59}, {0, 60}};
    int parts[6] = {};
    for (qsizetype i = 0; i < constructor->Arguments.size(); ++i) {
        const auto part = WholeNumber(constructor->Arguments[i], Limits[i][0], Limits[i][1]);
        if (!part)
            return {};
        parts[i] = *part;
    }
    const std::chrono::year_month_day date{std::chrono::year(parts[0]),
                                           std::chrono::month(static_cast<unsigned>(parts[1])),
                                           std::chrono::day(static_cast<unsigned>(parts[2]))};
    if (!date.ok())
        return {};
    return [this, time = EngineTime{parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]}] { m_time = time; };
}

QString CEngineState::LocationText()
{
    const QString name = m_body == BodyTable::Earth ? u"Location"_s : BodyTable::EngineName(m_body);
    return name + Number::Format("(%.6f, %.6f, %.6f)", m_longitude, m_latitude, Altitude());
}

QString CEngineState::LongitudeText()
{
    return Number::Format("%.8f", m_longitude);
}

QString CEngineState::LatitudeText()
{
    return Number::Format("%.8f", m_latitude);
}

QString CEngineState::AltitudeText()
{
    return Number::Format("%.8f", Altitude());
}

QString CEngineState::AutomaticText()
{
    return m_isAutomatic ? u"TRUE"_s : u"FALSE"_s;
}

QString CEngineState::LandscapeText()
{
    return m_isAutomatic && m_body == BodyTable::Earth ? u"TRUE"_s : u"FALSE"_s;
}

QString CEngineState::IndexFileText()
{
    return m_indexFile;
}

QString CEngineState::TimeText()
{
    return Number::Format("UT(%d, %d, %d, %d, %d, %d)", m_time.Year, m_time.Month, m_time.Day, m_time.Hour,
                          m_time.Minute, m_time.Second);
}
