// Coordinate entry: the split form, its boxes, spin buttons and radios, and how a location is applied.

#include "host/dialog/ThemedControls.h"
#include "host/observer/BodyTable.h"
#include "host/observer/CommonCoordFormat.h"
#include "host/observer/KPDateObs.h"
#include "host/text/Number.h"
#include "obs/ControlIds.h"
#include "obs/DlgObs.h"
#include "obs/core/EngineLines.h"
#include "res/StringTable.h"

#include <array>

using namespace Qt::StringLiterals;
using EntryRules::Box;

namespace
{
/// Guards the automatic-altitude radio; shared by all dialogs and left set once terrain data turned out to be missing.
bool AltitudeModeBusy = false;

/// The control of each box, and the one whose caret is restored after it: latitude minutes restore the caret of the
/// longitude minutes, on purpose.
struct BoxControls
{
    int EditId;
    int CaretId;
};

constexpr std::array<BoxControls, EntryRules::BoxCount> Controls{{
    {ObsId::EditLngDeg, ObsId::EditLngDeg},
    {ObsId::EditLngMin, ObsId::EditLngMin},
    {ObsId::EditLngSec, ObsId::EditLngSec},
    {ObsId::EditLatDeg, ObsId::EditLatDeg},
    {ObsId::EditLatMin, ObsId::EditLngMin},
    {ObsId::EditLatSec, ObsId::EditLatSec},
    {ObsId::EditTzHour, ObsId::EditTzHour},
    {ObsId::EditTzMin, ObsId::EditTzMin},
}};

/// Remembers where the user types and puts the caret back there.
class CCaret
{
public:
    explicit CCaret(const CKivEdit* edit)
        : m_length(edit ? edit->text().size() : 0), m_end(edit ? edit->SelectionEnd() : 0)
    {
    }

    void Restore(CKivEdit* edit) const
    {
        if (edit)
            edit->setCursorPosition(edit->text().size() > m_length ? m_end : m_end + 1);
    }

private:
    qsizetype m_length;
    int m_end;
};
} // namespace

void CDlgObs::SetValue(double longitude, double latitude, double altitude, double timeZone, int force)
{
    using namespace SiteLocationFormat;
    if (force != 0 || !CCommonCoordFormat::IsEqualDeg(longitude, AppliedLongitude)) {
        SplitLongitude(longitude, BodyIndex, Fields);
        UpdateData(false);
        AppliedLongitude = longitude;
    }
    if (force != 0 || !CCommonCoordFormat::IsEqualDeg(latitude, AppliedLatitude)) {
        SplitLatitude(latitude, Fields);
        UpdateData(false);
        AppliedLatitude = latitude;
    }
    if (force != 0 || !CCommonCoordFormat::IsEqualAlt(altitude, AppliedAltitude)) {
        Fields.AltitudeValue = DisplayFromMetres(altitude, IsSmall());
        UpdateData(false);
        AppliedAltitude = altitude;
    }
    if (force == 0 && timeZone == AppliedTimeZone)
        return;
    if (timeZone != NoTimeZone) {
        SplitTimeZone(timeZone, Fields);
        ShowsOffset = false;
    }
    UpdateData(false);
    AppliedTimeZone = timeZone;
}

double CDlgObs::EditToLng() const
{
    return SiteLocationFormat::JoinLongitude(Fields, BodyIndex);
}

double CDlgObs::EditToLat() const
{
    return SiteLocationFormat::JoinLatitude(Fields);
}

bool CDlgObs::IsSmall() const
{
    return DateObs && DateObs->IsSmallObject(BodyIndex) != 0;
}

bool CDlgObs::HasTerrainAltitude() const
{
    return !LandscapeIndexFile.isEmpty() && Fields.AltitudeMode == 0;
}

void CDlgObs::UpdateValue()
{
    UpdateData();
    MoveCurrentPos(EditToLng(), EditToLat(), SiteLocationFormat::MetresFromDisplay(Fields.AltitudeValue, IsSmall()),
                   EditToTz());
}

/// The zone that the fields stand for: where they show the offset of another time system, the user's all the same.
double CDlgObs::EditToTz() const
{
    return ShowsOffset && DateObs ? DateObs->GetUserTz() : SiteLocationFormat::JoinTimeZone(Fields);
}

void CDlgObs::ChangeTz()
{
    AppliedTimeZone = SiteLocationFormat::JoinTimeZone(Fields);
    if (!DateObs)
        return;
    constexpr unsigned long timeZoneChanged = 2;
    DateObs->SetUserTz(AppliedTimeZone);
    DateObs->UpdateDateDisp(timeZoneChanged);
}

void CDlgObs::MoveCurrentPos(double longitude, double latitude)
{
    EmbeddedEngine.Command(EngineLines::MoveTo(longitude, latitude));
    EmbeddedEngine.Command(EngineLines::CenterAtFine(longitude, latitude));
    // The engine's answer counts as display units too, exactly like a typed value.
    const double shown = HasTerrainAltitude() ? Query(EngineLines::QueryAltitude) : Fields.AltitudeValue;
    const double altitude = SiteLocationFormat::MetresFromDisplay(shown, IsSmall());
    AppliedLongitude = longitude;
    AppliedLatitude = latitude;
    AppliedAltitude = Fields.AltitudeValue; // in display units, unlike everywhere else: kept so on purpose
    AppliedTimeZone = SiteLocationFormat::JoinTimeZone(Fields);
    if (DateObs)
        DateObs->UpdateObsByUI(longitude, latitude, altitude);
}

void CDlgObs::MoveCurrentPos(double longitude, double latitude, double altitude, double timeZone)
{
    EmbeddedEngine.Command(EngineLines::MoveTo(longitude, latitude, altitude));
    EmbeddedEngine.Command(EngineLines::CenterAt(longitude, latitude));
    AppliedLongitude = longitude;
    AppliedLatitude = latitude;
    AppliedAltitude = altitude;
    if (DateObs)
        DateObs->UpdateObsByUI(longitude, latitude, altitude, timeZone);
}

void CDlgObs::ApplyFields(EntryRules::Apply apply)
{
    if (apply == EntryRules::Apply::TimeZone)
        ChangeTz();
    else
        MoveCurrentPos(EditToLng(), EditToLat());
}

void CDlgObs::OnChangeBox(Box box)
{
    const EntryRules::EditRule& rule = EntryRules::Edit(box);
    const BoxControls& controls = Controls[static_cast<size_t>(box)];
    const auto* edit = Item<CKivEdit>(controls.EditId);
    if (rule.WaitsForDigit && edit && (edit->text().isEmpty() || edit->text().endsWith(u'.')))
        return;
    const CCaret caret(edit);
    UpdateData();

    if ((box == Box::LatMin || box == Box::LatSec) && EntryRules::ClearBeyondPole(Fields))
        UpdateData(false);
    const bool wasCorrected = CorrectBox(box);
    if (box == Box::LatDeg && EntryRules::ClearBeyondPole(Fields))
        UpdateData(false);
    if (wasCorrected && !rule.AppliesAfterCorrection)
        return;
    ApplyFields(rule.Then);
    if (rule.KeepsCaret)
        caret.Restore(Item<CKivEdit>(controls.CaretId));
}

/// Tests a box's value; outside its range shows the message, puts the nearest bound in its place and answers true.
bool CDlgObs::CorrectBox(Box box)
{
    const EntryRules::EditRule& rule = EntryRules::Edit(box);
    const double value = EntryRules::Get(Fields, rule.Value);
    const int longitudeBound = EntryRules::LongitudeBound(BodyIndex);
    const double high = box == Box::LngDeg ? longitudeBound : rule.High;
    const bool isBelow = value < rule.Low;
    const bool isAbove = rule.HighExcluded ? value >= high : value > high;
    if (!isBelow && !isAbove)
        return false;

    const char16_t* text = isBelow ? rule.BelowMessage : rule.AboveMessage;
    QString message = text ? QString::fromUtf16(text) : QString();
    if (!text) {
        const QByteArray format = StringTable::Load(StringTable::LongitudeRange).toUtf8();
        message = Number::FormatUnchecked(format.constData(), 0, longitudeBound);
    }
    MessageBox(message, IPrompts::Icon::Information);
    EntryRules::Set(Fields, rule.Value, isBelow ? rule.Low : (box == Box::LngDeg ? high : rule.HighCorrection));
    if (box == Box::LatDeg && isBelow) {
        Fields.LatitudeMinutes = 0;
        Fields.LatitudeSeconds = 0.0;
    }
    UpdateData(false);
    return true;
}

void CDlgObs::OnChangeEdtAlt()
{
    UpdateData();
    const double low = EntryRules::AltitudeLow(IsSmall());
    if (Fields.AltitudeValue >= low && Fields.AltitudeValue <= EntryRules::AltitudeHigh) {
        UpdateValue();
        return;
    }
    const QByteArray format = StringTable::Load(StringTable::AltitudeRange).toUtf8();
    const QByteArray body = BodyTable::Label(BodyIndex).toUtf8();
    MessageBox(Number::FormatUnchecked(format.constData(), body.constData(), low, EntryRules::AltitudeHigh),
               IPrompts::Icon::Information);
    Fields.AltitudeValue = Fields.AltitudeValue < low ? low : EntryRules::AltitudeHigh;
    UpdateData(false);
}

void CDlgObs::OnSpinBox(Box box, int delta)
{
    UpdateData();
    EntryRules::SpinBox(Fields, box, delta, BodyIndex);
    UpdateData(false);
    if (EntryRules::Edit(box).Then == EntryRules::Apply::Location)
        UpdateData();
    ApplyFields(EntryRules::Edit(box).Then);
}

void CDlgObs::OnDeltaposSpnAlt(int delta)
{
    UpdateData();
    EntryRules::SpinAltitude(Fields, delta, IsSmall());
    UpdateData(false);
    UpdateValue();
}

void CDlgObs::OnRdHemisphere()
{
    UpdateData();
    ApplyFields(EntryRules::Apply::Location);
}

void CDlgObs::OnRdTzSign()
{
    UpdateValue();
}

void CDlgObs::OnRdAltManual()
{
    UpdateData();
    UpdateStatus();
    DoitBool(QString::fromUtf16(EngineLines::AutoGetAltitude), Fields.AltitudeMode == 0 ? 1 : 0);
}

void CDlgObs::CheckManualAltitude()
{
    WithoutNotices([this] {
        if (auto* manual = Item<CKivRadioButton>(ObsId::RadioAltManual))
            manual->setChecked(true); // unchecks "自動" of the same group
    });
}

void CDlgObs::OnRdAltAuto()
{
    if (AltitudeModeBusy) {
        if (TerrainMissing != 0)
            CheckManualAltitude();
        return;
    }
    AltitudeModeBusy = true;
    if (LandscapeIndexFile.isEmpty()) {
        CheckManualAltitude();
        Fields.AltitudeMode = 1;
        EnableItem(ObsId::RadioAltAuto, false);
        EnableItem(ObsId::RadioAltManual, false);
        if (QWidget* altitude = Item(ObsId::EditAlt))
            altitude->setFocus();
        MessageBox(u"標高を自動設定するには、地形データが必要です。\r\n地形データを追加インストールしてください。"_s,
                   IPrompts::Icon::Exclamation);
        TerrainMissing = 1;
        return; // with the guard left set: from now on no dialog asks again
    }
    UpdateData();
    UpdateStatus();
    DoitBool(QString::fromUtf16(EngineLines::AutoGetAltitude), Fields.AltitudeMode == 0 ? 1 : 0);
    UpdateValue();
    AltitudeModeBusy = false;
}
