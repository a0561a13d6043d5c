#pragma once

#include "controls/core/GeoPoint.h"

#include <QVariant>

/// What the road map is asked to do, in its own types.
class IRoadMapCalls
{
public:
    IRoadMapCalls() = default;
    IRoadMapCalls(const IRoadMapCalls&) = delete;
    IRoadMapCalls& operator=(const IRoadMapCalls&) = delete;
    virtual ~IRoadMapCalls() = default;

    virtual void ShowPosition(const GeoPoint& position) = 0;
    virtual void MarkPosition(const GeoPoint& position) = 0;
    virtual bool Search(bool isFacility, const QString& text) = 0; ///< whether it is started
    [[nodiscard]] virtual qint64 SearchResult() const = 0;         ///< number of its list, 0 for none
    virtual void SetScale(double denominator) = 0;                 ///< above 0
    virtual void CenterMark() = 0;
    virtual void OpenFile(const QString& path) = 0;
};

/// Decodes the numbered methods of the road map; an unknown number or a wrong argument calls nothing.
namespace RoadMapCalls
{
QVariant Invoke(IRoadMapCalls& map, int method, const QVariantList& arguments);
} // namespace RoadMapCalls
