#include "city/EdtCty.h"

#include "city/ControlIds.h"
#include "city/core/PlaceName.h"
#include "host/dialog/ThemedControls.h"
#include "res/StringTable.h"

using namespace Qt::StringLiterals;

CEdtCty::CEdtCty(QWidget* parent) : CEdtCty(nullptr, parent) {}

CEdtCty::CEdtCty(CCorKiv* engine, QWidget* parent)
    : CCoordinateDialog(EditCityId::Template, StringTable::Load(StringTable::SectionEditCity),
                        EntryRules::Policy::Editor, parent)
{
    SetHostEngine(engine);
}

void CEdtCty::DoDataExchange(CDataExchange* exchange)
{
    CCoordinateDialog::DoDataExchange(exchange);
    DDX_Text(exchange, EditCityId::EditName, Name);
    DDX_CBIndex(exchange, EditCityId::ComboKind, Kind);
}

bool CEdtCty::OnInitDialog()
{
    CCoordinateDialog::OnInitDialog();
    WithoutNotices([this] { ListKinds(); });
    if (auto* name = Item<CKivEdit>(EditCityId::EditName))
        name->selectAll(); // the first key replaces the name
    return true;
}

void CEdtCty::ListKinds()
{
    constexpr int mostKinds = 1000; // the map may answer anything
    auto* kinds = Item<CKivComboBox>(EditCityId::ComboKind);
    if (!kinds || !MapControl)
        return;
    kinds->clear();
    for (int kind = 0; kind < qMin(MapControl->FeatureCount(), mostKinds); ++kind)
        kinds->addItem(MapControl->FeatureName(kind));
    kinds->setCurrentIndex(Kind);
}

int CEdtCty::CheckValue()
{
    Name = PlaceName::Normalized(Name);
    QString complaints = Name.isEmpty() ? u"都市名を入力してください。\n"_s : QString();
    complaints += PlaceCoordinates::FinalComplaints(Coordinates);
    complaints += PlaceName::Complaints(Name, u"地名"_s);
    if (complaints.isEmpty())
        return 1;
    MessageBox(complaints);
    return 0;
}

void CEdtCty::OnOK()
{
    UpdateData();
    const bool isAcceptable = CheckValue() != 0;
    // The name is trimmed now. The members keep the digits that the boxes do not show.
    UpdateData(false);
    if (isAcceptable)
        CKivDialog::OnOK();
}
