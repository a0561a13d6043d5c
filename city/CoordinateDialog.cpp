#include "city/CoordinateDialog.h"

#include "city/ControlIds.h"

#include <array>

using EntryRules::Box;
using EntryRules::Policy;

namespace
{
using namespace CoordinateId;

struct BoxControls
{
    Box Which;
    int EditId;
    int SpinId;
};

constexpr std::array<BoxControls, EntryRules::BoxCount> Controls{{
    {Box::LngDeg, EditLong1, SpinLong1},
    {Box::LngMin, EditLong2, SpinLong2},
    {Box::LngSec, EditLong3, SpinLong3},
    {Box::LatDeg, EditLat1, SpinLat1},
    {Box::LatMin, EditLat2, SpinLat2},
    {Box::LatSec, EditLat3, SpinLat3},
    {Box::Alt, EditAlt, SpinAlt},
    {Box::TzHour, EditTzHour, SpinTzHour},
    {Box::TzMin, EditTzMin, SpinTzMin},
}};
} // namespace

CCoordinateDialog::CCoordinateDialog(int templateNumber, const QString& registrySection, Policy policy, QWidget* parent)
    : CKivDialog(templateNumber, registrySection, parent), m_policy(policy)
{
}

CKivDialog::MessageMap CCoordinateDialog::GetMessageMap()
{
    MessageMap map;
    for (const BoxControls& controls : Controls) {
        map.push_back(
            {Notice::Change, controls.EditId, [this, box = controls.Which](int) { OnChangeSetObsEdit(box); }});
        map.push_back({Notice::DeltaPos, controls.SpinId,
                       [this, box = controls.Which](int delta) { OnDeltaposSetObsSpin(box, delta); }});
    }
    for (const int radio : {RadioEast, RadioWest, RadioNorth, RadioSouth, RadioPlus, RadioMinus})
        map.push_back({Notice::Clicked, radio, [this](int) { OnClickedSetObsRadio(); }});
    return map;
}

void CCoordinateDialog::DoDataExchange(CDataExchange* exchange)
{
    constexpr int width = 0;
    constexpr int maxChars = 7;
    const char* secondsFormat = m_policy == Policy::CityList ? "%.1f" : "%4.1f";
    CKivDialog::DoDataExchange(exchange);
    DDX_Radio(exchange, RadioEast, Coordinates.LongitudeHemisphere);
    DDX_Radio(exchange, RadioNorth, Coordinates.LatitudeHemisphere);
    DDX_Radio(exchange, RadioPlus, Coordinates.TimeZoneSign);
    DDX_Int(exchange, EditLong1, Coordinates.LongitudeDegrees, width, maxChars);
    DDX_Int(exchange, EditLong2, Coordinates.LongitudeMinutes, width, maxChars);
    DDX_DoubleFmt(exchange, EditLong3, Coordinates.LongitudeSeconds, secondsFormat, maxChars);
    DDX_Int(exchange, EditLat1, Coordinates.LatitudeDegrees, width, maxChars);
    DDX_Int(exchange, EditLat2, Coordinates.LatitudeMinutes, width, maxChars);
    DDX_DoubleFmt(exchange, EditLat3, Coordinates.LatitudeSeconds, secondsFormat, maxChars);
    DDX_DoubleFmt(exchange, EditAlt, Coordinates.Altitude, "%.0f", maxChars);
    DDX_Int(exchange, EditTzHour, Coordinates.TimeZoneHours, width, maxChars);
    DDX_Int(exchange, EditTzMin, Coordinates.TimeZoneMinutes, width, maxChars);
}

void CCoordinateDialog::OnChangeSetObsEdit(Box box)
{
    UpdateData();
    const bool isBelowDegrees = box == Box::LatMin || box == Box::LatSec;
    if (isBelowDegrees && EntryRules::ClearBeyondPole(Coordinates, m_policy)) {
        UpdateData(false);
        return;
    }
    const EntryRules::Finding finding = EntryRules::Check(Entered(), box, m_policy);
    if (finding.IsOutside)
        MessageBox(QString::fromUtf16(finding.Message), IPrompts::Icon::Information);
    EntryRules::Correct(Entered(), box, finding);
    const bool isCleared = box == Box::LatDeg && EntryRules::ClearBeyondPole(Coordinates, m_policy);
    if (finding.IsOutside || isCleared)
        UpdateData(false);
}

void CCoordinateDialog::OnDeltaposSetObsSpin(Box box, int delta)
{
    UpdateData();
    EntryRules::Spin(Entered(), box, delta, m_policy);
    UpdateData(false);
}
