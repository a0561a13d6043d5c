#pragma once

#include "obs/core/EntryRules.h"
#include "obs/core/SiteLocation.h"

#include <QString>

#include <functional>

class CKPDateObs;

/// The location that the site dialog edits, without its window: the fields, the values that they were last filled from,
/// and the road of a change from the fields over the engine of the dialog's map to the observer object.
///
/// Degrees, metres and hours throughout; longitudes as the observer object holds them.
class CSiteModel
{
public:
    /// What the model needs of the dialog around it.
    struct Ports
    {
        std::function<QString(const QString& line)> Command; ///< a line to the embedded engine, and its answer
        std::function<void()> Push;                          ///< writes all fields into the controls
    };

    explicit CSiteModel(Ports ports);

    SiteFields Fields;          ///< what the data exchange binds
    int BodyIndex;              ///< the Earth at first
    QString LandscapeIndexFile; ///< terrain index file; empty: no terrain data
    CKPDateObs* DateObs = nullptr;

    /// The fields as the rules of the boxes take them.
    [[nodiscard]] EntryRules::Entered Entered();
    [[nodiscard]] bool IsSmall() const;            ///< altitudes of the body are shown in metres
    [[nodiscard]] bool HasTerrainAltitude() const; ///< the terrain gives the altitude
    [[nodiscard]] double EditToLng() const;
    [[nodiscard]] double EditToLat() const;
    /// The zone that the fields stand for: where they show the offset of another time system, the user's nevertheless.
    [[nodiscard]] double EditToTz() const;
    /// The leading number of the embedded engine's answer; 0 when there is none.
    [[nodiscard]] double Query(const char16_t* line) const;

    /// Fills the fields from a location: what differs from the last one, or all of them at the first time on a body and
    /// with the flag set. Each quantity is pushed by itself.
    void Fill(double longitude, double latitude, double altitude, double timeZone, bool isAll);
    /// The same, all of them when `force` is not 0.
    void SetValue(double longitude, double latitude, double altitude, double timeZone, int force);
    /// Shows an offset in the zone fields, the user's own zone or that of another time system.
    void ShowOffset(double hours, bool isUserZone);
    [[nodiscard]] bool ShowsOtherOffset() const { return ShowsOffset; }
    /// The zone fields were filled with a zone that is to be the user's.
    void OwnZone() { ShowsOffset = false; }

    /// Makes longitude and latitude of the fields the observer's location.
    void ApplyPosition();
    /// Makes all fields the observer's location, altitude and zone included.
    void ApplyAll();
    void ChangeTz();
    /// Makes a point picked on a map the observer's location, unless the observer stands there already.
    void TakePickedPlace(double longitude, double latitude, double altitude);
    /// The zone was set by other means than the fields.
    void SetAppliedTimeZone(double hours) { AppliedTimeZone = hours; }

private:
    void MoveCurrentPos(double longitude, double latitude);
    void MoveCurrentPos(double longitude, double latitude, double altitude, double timeZone);
    void ExpectRefill(double previousLongitude, double previousLatitude);

    Ports m_ports;
    double AppliedLongitude = 0.0;
    double AppliedLatitude = 0.0;
    double AppliedAltitude = 0.0; ///< metres, but display units after the two-value MoveCurrentPos
    double AppliedTimeZone = 0.0;
    int FilledBodyIndex = -1; ///< body that the fields were last filled for; -1 before the first fill
    bool ShowsOffset = false; ///< the zone fields show the offset of another time system, not the user's zone
};
