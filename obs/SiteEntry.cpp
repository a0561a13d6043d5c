#include "obs/SiteEntry.h"

#include "host/dialog/ThemedControls.h"
#include "host/observer/BodyTable.h"
#include "host/text/Number.h"
#include "obs/ControlIds.h"
#include "obs/core/EngineLines.h"
#include "obs/core/SiteModel.h"
#include "res/StringTable.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;
using EntryRules::Box;
using Notice = CKivDialog::Notice;

namespace
{
/// Guards the automatic-altitude radio; shared by all dialogs and left set once terrain data turned out to be missing.
bool AltitudeModeBusy = false;

/// The controls of each box, and the one whose caret is restored after it: latitude minutes restore the caret of the
/// longitude minutes, on purpose.
struct BoxControls
{
    Box Which;
    int EditId;
    int SpinId;
    int CaretId;
};

using namespace ObsId;
constexpr std::array<BoxControls, EntryRules::BoxCount> Controls{{
    {Box::LngDeg, EditLngDeg, SpinLngDeg, EditLngDeg},
    {Box::LngMin, EditLngMin, SpinLngMin, EditLngMin},
    {Box::LngSec, EditLngSec, SpinLngSec, EditLngSec},
    {Box::LatDeg, EditLatDeg, SpinLatDeg, EditLatDeg},
    {Box::LatMin, EditLatMin, SpinLatMin, EditLngMin},
    {Box::LatSec, EditLatSec, SpinLatSec, EditLatSec},
    {Box::TzHour, EditTzHour, SpinTzHour, EditTzHour},
    {Box::TzMin, EditTzMin, SpinTzMin, EditTzMin},
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

CSiteEntry::CSiteEntry(CKivDialog& dialog, CSiteModel& model, std::function<void()> updateStatus)
    : m_dialog(dialog), m_model(model), m_updateStatus(std::move(updateStatus))
{
}

CKivDialog::MessageMap CSiteEntry::Messages()
{
    CKivDialog::MessageMap map{
        {Notice::Change, EditAlt, [this](int) { OnChangeEdtAlt(); }},
        {Notice::DeltaPos, SpinAlt, [this](int delta) { OnDeltaposSpnAlt(delta); }},
        {Notice::Clicked, RadioAltAuto, [this](int) { OnRdAltAuto(); }},
        {Notice::Clicked, RadioAltManual, [this](int) { OnRdAltManual(); }},
    };
    for (const BoxControls& controls : Controls) {
        map.push_back({Notice::Change, controls.EditId, [this, box = controls.Which](int) { OnChangeBox(box); }});
        map.push_back(
            {Notice::DeltaPos, controls.SpinId, [this, box = controls.Which](int delta) { OnSpinBox(box, delta); }});
    }
    for (const int radio : {RadioEast, RadioWest, RadioNorth, RadioSouth})
        map.push_back({Notice::Clicked, radio, [this](int) { OnRdHemisphere(); }});
    for (const int radio : {RadioTzPlus, RadioTzMinus}) // OnRdTzP and OnRdTzM
        map.push_back({Notice::Clicked, radio, [this](int) { UpdateValue(); }});
    return map;
}

void CSiteEntry::Exchange(CDataExchange* exchange)
{
    constexpr int width = 0;
    constexpr int maxChars = 7;
    SiteFields& fields = m_model.Fields;
    DDX_Radio(exchange, RadioEast, fields.LongitudeHemisphere);
    DDX_Radio(exchange, RadioNorth, fields.LatitudeHemisphere);
    DDX_Radio(exchange, RadioTzPlus, fields.TimeZoneSign);
    DDX_Radio(exchange, RadioAltAuto, fields.AltitudeMode);
    DDX_Int(exchange, EditLngDeg, fields.LongitudeDegrees, width, maxChars);
    DDX_Int(exchange, EditLngMin, fields.LongitudeMinutes, width, maxChars);
    DDX_Int(exchange, EditLatDeg, fields.LatitudeDegrees, width, maxChars);
    DDX_Int(exchange, EditLatMin, fields.LatitudeMinutes, width, maxChars);
    DDX_Int(exchange, EditTzHour, fields.TimeZoneHours, width, maxChars);
    DDX_Int(exchange, EditTzMin, fields.TimeZoneMinutes, width, maxChars);
    DDX_DoubleFmt(exchange, EditLngSec, fields.LongitudeSeconds, "%.1f", maxChars);
    DDX_DoubleFmt(exchange, EditLatSec, fields.LatitudeSeconds, "%.1f", maxChars);
    DDX_DoubleFmt(exchange, EditAlt, fields.AltitudeValue, "%.0f", maxChars);
}

void CSiteEntry::UpdateValue()
{
    m_dialog.UpdateData();
    m_model.ApplyAll();
}

void CSiteEntry::OnChangeBox(Box box)
{
    const EntryRules::EditRule& rule = EntryRules::Edit(box);
    const BoxControls& controls = Controls[static_cast<size_t>(box)];
    const auto* edit = m_dialog.Item<CKivEdit>(controls.EditId);
    if (rule.WaitsForDigit && edit && (edit->text().isEmpty() || edit->text().endsWith(u'.')))
        return;
    const CCaret caret(edit);
    m_dialog.UpdateData();

    if ((box == Box::LatMin || box == Box::LatSec) && EntryRules::ClearBeyondPole(m_model.Fields))
        m_dialog.UpdateData(false);
    const bool wasCorrected = CorrectBox(box);
    if (box == Box::LatDeg && EntryRules::ClearBeyondPole(m_model.Fields))
        m_dialog.UpdateData(false);
    if (wasCorrected && !rule.AppliesAfterCorrection)
        return;
    m_model.ApplyFields(rule.Then);
    if (rule.KeepsCaret)
        caret.Restore(m_dialog.Item<CKivEdit>(controls.CaretId));
}

/// Tests a box's value; outside its range shows the message, puts the nearest bound in its place and answers true.
bool CSiteEntry::CorrectBox(Box box)
{
    SiteFields& fields = m_model.Fields;
    const EntryRules::EditRule& rule = EntryRules::Edit(box);
    const double value = EntryRules::Get(fields, rule.Value);
    const int longitudeBound = EntryRules::LongitudeBound(m_model.BodyIndex);
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
    m_dialog.MessageBox(message, IPrompts::Icon::Information);
    EntryRules::Set(fields, rule.Value, isBelow ? rule.Low : (box == Box::LngDeg ? high : rule.HighCorrection));
    if (box == Box::LatDeg && isBelow) {
        fields.LatitudeMinutes = 0;
        fields.LatitudeSeconds = 0.0;
    }
    m_dialog.UpdateData(false);
    return true;
}

void CSiteEntry::OnChangeEdtAlt()
{
    m_dialog.UpdateData();
    double& altitude = m_model.Fields.AltitudeValue;
    const double low = EntryRules::AltitudeLow(m_model.IsSmall());
    if (altitude >= low && altitude <= EntryRules::AltitudeHigh) {
        UpdateValue();
        return;
    }
    const QByteArray format = StringTable::Load(StringTable::AltitudeRange).toUtf8();
    const QByteArray body = BodyTable::Label(m_model.BodyIndex).toUtf8();
    m_dialog.MessageBox(Number::FormatUnchecked(format.constData(), body.constData(), low, EntryRules::AltitudeHigh),
                        IPrompts::Icon::Information);
    altitude = altitude < low ? low : EntryRules::AltitudeHigh;
    m_dialog.UpdateData(false);
}

void CSiteEntry::OnSpinBox(Box box, int delta)
{
    m_dialog.UpdateData();
    EntryRules::SpinBox(m_model.Fields, box, delta, m_model.BodyIndex);
    m_dialog.UpdateData(false);
    if (EntryRules::Edit(box).Then == EntryRules::Apply::Location)
        m_dialog.UpdateData();
    m_model.ApplyFields(EntryRules::Edit(box).Then);
}

void CSiteEntry::OnDeltaposSpnAlt(int delta)
{
    m_dialog.UpdateData();
    EntryRules::SpinAltitude(m_model.Fields, delta, m_model.IsSmall());
    m_dialog.UpdateData(false);
    UpdateValue();
}

void CSiteEntry::OnRdHemisphere()
{
    m_dialog.UpdateData();
    m_model.ApplyFields(EntryRules::Apply::Location);
}

void CSiteEntry::TellAltitudeMode()
{
    m_dialog.UpdateData();
    m_updateStatus();
    m_dialog.DoitBool(QString::fromUtf16(EngineLines::AutoGetAltitude), m_model.Fields.AltitudeMode == 0 ? 1 : 0);
}

void CSiteEntry::OnRdAltManual()
{
    TellAltitudeMode();
}

void CSiteEntry::CheckManualAltitude()
{
    m_dialog.WithoutNotices([this] {
        if (auto* manual = m_dialog.Item<CKivRadioButton>(RadioAltManual))
            manual->setChecked(true); // unchecks "自動" of the same group
    });
}

void CSiteEntry::OnRdAltAuto()
{
    if (AltitudeModeBusy) {
        if (TerrainMissing != 0)
            CheckManualAltitude();
        return;
    }
    AltitudeModeBusy = true;
    if (m_model.LandscapeIndexFile.isEmpty()) {
        CheckManualAltitude();
        m_model.Fields.AltitudeMode = 1;
        m_dialog.EnableItem(RadioAltAuto, false);
        m_dialog.EnableItem(RadioAltManual, false);
        if (QWidget* altitude = m_dialog.Item(EditAlt))
            altitude->setFocus();
        m_dialog.MessageBox(
            u"標高を自動設定するには、地形データが必要です。\r\n地形データを追加インストールしてください。"_s,
            IPrompts::Icon::Exclamation);
        TerrainMissing = 1;
        return; // with the guard left set: from now on no dialog asks again
    }
    TellAltitudeMode();
    UpdateValue();
    AltitudeModeBusy = false;
}
