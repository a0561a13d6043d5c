#pragma once

#include "controls/core/GeoPoint.h"
#include "controls/core/LandmarkList.h"

#include <QVariant>

#include <bitset>

/// What the globe map is asked to do, in its own types.
class IGlobeMapCalls
{
public:
    IGlobeMapCalls() = default;
    IGlobeMapCalls(const IGlobeMapCalls&) = delete;
    IGlobeMapCalls& operator=(const IGlobeMapCalls&) = delete;
    virtual ~IGlobeMapCalls() = default;

    virtual void SetCenter(const GeoPoint& center) = 0; ///< drawn by the next Redraw
    [[nodiscard]] virtual GeoPoint CalledCenter() const = 0;
    virtual void SetObsPosition(const GeoPoint& position) = 0;
    virtual void Redraw() = 0;
    virtual void SetZoom(double zoom) = 0; ///< 0 (whole globe) to 1 (nearest)
    virtual void ShowNames(bool on) = 0;
    virtual void ShowCoasts(bool on) = 0;
    virtual void ShowGraticule(bool on) = 0;
    virtual void SetLandmarkFile(const QString& path) = 0;
    virtual void SetLandmarkFileExists(bool exists) = 0;
    virtual void ReloadUserPlaces() = 0;
    virtual void SetFeatures(const std::bitset<LandmarkKind::Count>& kinds) = 0;
    virtual void SetEclipsePath(const QString& path) = 0;
    virtual void SetEclipseLimits(bool on) = 0;
    virtual void SetEclipseColor(quint32 color) = 0; ///< 0x00BBGGRR
};

/// Decodes the numbered methods of the globe map; an unknown number or a wrong argument calls nothing.
namespace GlobeMapCalls
{
QVariant Invoke(IGlobeMapCalls& map, int method, const QVariantList& arguments);
} // namespace GlobeMapCalls
