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
using EntryRules::Policy;
using Notice = CKivDialog::Notice;

namespace
{
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
    {Box::Alt, EditAlt, SpinAlt, EditAlt},
    {Box::TzHour, EditTzHour, SpinTzHour, EditTzHour},
    {Box::TzMin, EditTzMin, SpinTzMin, EditTzMin},
}};

const BoxControls& ControlsOf(Box box)
{
    return Controls[static_cast<size_t>(box)];
}

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
    const BoxControls& controls = ControlsOf(box);
    const auto* edit = m_dialog.Item<CKivEdit>(controls.EditId);
    if (EntryRules::WaitsForDigit(box) && edit && (edit->text().isEmpty() || edit->text().endsWith(u'.')))
        return;
    const CCaret caret(edit);
    m_dialog.UpdateData();

    if (box == Box::LatMin || box == Box::LatSec)
        ClearBeyondPole();
    const bool wasCorrected = CorrectBox(box);
    if (box == Box::LatDeg)
        ClearBeyondPole();
    if (wasCorrected && !EntryRules::AppliesAfterCorrection(box))
        return;
    Apply(box);
    if (EntryRules::KeepsCaret(box))
        caret.Restore(m_dialog.Item<CKivEdit>(controls.CaretId));
}

void CSiteEntry::ClearBeyondPole()
{
    if (EntryRules::ClearBeyondPole(m_model.Fields, Policy::SiteDialog))
        m_dialog.UpdateData(false);
}

/// Tests a box's value; outside its range shows the message, puts the nearest bound in its place and returns true.
bool CSiteEntry::CorrectBox(Box box)
{
    const EntryRules::Finding finding = EntryRules::Check(m_model.Entered(), box, Policy::SiteDialog);
    if (!finding.IsOutside)
        return false;
    m_dialog.MessageBox(finding.Message ? QString::fromUtf16(finding.Message) : RangeText(box, finding),
                        IPrompts::Icon::Information);
    EntryRules::Correct(m_model.Entered(), box, finding);
    m_dialog.UpdateData(false);
    return true;
}

/// The message about a range that depends on the body.
QString CSiteEntry::RangeText(Box box, const EntryRules::Finding& finding) const
{
    if (box == Box::LngDeg) {
        const QByteArray format = StringTable::Load(StringTable::LongitudeRange).toUtf8();
        return Number::FormatUnchecked(format.constData(), static_cast<int>(finding.Low),
                                       static_cast<int>(finding.High));
    }
    const QByteArray format = StringTable::Load(StringTable::AltitudeRange).toUtf8();
    const QByteArray body = BodyTable::Label(m_model.BodyIndex).toUtf8();
    return Number::FormatUnchecked(format.constData(), body.constData(), finding.Low, finding.High);
}

void CSiteEntry::OnSpinBox(Box box, int delta)
{
    m_dialog.UpdateData();
    EntryRules::Spin(m_model.Entered(), box, delta, Policy::SiteDialog);
    m_dialog.UpdateData(false);
    if (!EntryRules::IsTimeZone(box) && box != Box::Alt)
        m_dialog.UpdateData();
    Apply(box);
}

void CSiteEntry::Apply(Box box)
{
    if (box == Box::Alt)
        UpdateValue();
    else if (EntryRules::IsTimeZone(box))
        m_model.ChangeTz();
    else
        m_model.ApplyPosition();
}

void CSiteEntry::OnRdHemisphere()
{
    m_dialog.UpdateData();
    m_model.ApplyPosition();
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
    if (m_module.AltitudeModeBusy) {
        if (TerrainMissing != 0 || m_model.LandscapeIndexFile.isEmpty())
            CheckManualAltitude();
        return;
    }
    m_module.AltitudeModeBusy = true;
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
    m_module.AltitudeModeBusy = false;
}
