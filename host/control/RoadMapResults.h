#pragma once

#include <QString>

#include <vector>

/// A match of a road-map search.
struct CRoadMapResult
{
    double X = 0.0; ///< longitude, milliseconds of arc
    double Y = 0.0; ///< latitude, milliseconds of arc
    QString Name;   ///< of a facility; empty for an address
    QString Address;
    QString LargeCategory;
    QString MiddleCategory;
    QString SmallCategory;
};

/// The matches of a search, owned by the road map and read in place by the caller. The number that the road map
/// returns stands for the list only while the list lives: it is looked up, never followed, so that a control may return
/// any number at any time.
class CRoadMapResults
{
public:
    explicit CRoadMapResults(std::vector<CRoadMapResult> rows);
    CRoadMapResults(const CRoadMapResults&) = delete;
    CRoadMapResults& operator=(const CRoadMapResults&) = delete;
    ~CRoadMapResults();

    /// The number to return for this list: above 0, and never used again after the list is gone.
    [[nodiscard]] qint64 Handle() const { return m_handle; }
    [[nodiscard]] const std::vector<CRoadMapResult>& Rows() const { return m_rows; }

    /// The living list of that number, null for any other number. Stays owned by the road map.
    [[nodiscard]] static const CRoadMapResults* Find(qint64 handle);

private:
    std::vector<CRoadMapResult> m_rows;
    qint64 m_handle = 0;
};
