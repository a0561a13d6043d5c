#pragma once

#include <QString>

#include <optional>

/// A site on the road map, in degrees, longitude first; any turn is left as it is.
struct SitePosition
{
    double Longitude = 0.0;
    double Latitude = 0.0;

    [[nodiscard]] bool IsFinite() const;

    /// Milliseconds of arc, as the road map counts.
    [[nodiscard]] double X() const;
    [[nodiscard]] double Y() const;
    [[nodiscard]] static SitePosition FromMilliseconds(double x, double y);

    /// Reads an engine's answer to "? Location"; none without a bracket after a name and two commas after numbers.
    [[nodiscard]] static std::optional<SitePosition> FromEngineAnswer(const QString& answer);

    /// The engine lines that move the observer there and keep the altitude: to a clicked point, to a search result.
    /// They differ in the case of their verb.
    [[nodiscard]] QString ClickLine() const;
    [[nodiscard]] QString ResultLine() const;
};

/// One angle as it is shown.
struct SiteAngle
{
    const char* Label = ""; ///< hemisphere, UTF-8
    int Degrees = 0;
    int Minutes = 0;
    double Seconds = 0.0; ///< below 60, but "60.00" once rounded: nothing is carried
};

struct SiteAngles
{
    SiteAngle Longitude;
    SiteAngle Latitude;
};

/// Splits a position; an angle that is not a number, or beyond all counting, is bounded.
[[nodiscard]] SiteAngles ConvHMS(const SitePosition& position);

/// The text of the site that the dialog shows.
[[nodiscard]] QString SiteText(const SitePosition& position);
