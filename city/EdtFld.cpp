#include "city/EdtFld.h"

#include "city/ControlIds.h"
#include "city/core/PlaceName.h"
#include "host/dialog/ThemedControls.h"
#include "res/StringTable.h"

using namespace Qt::StringLiterals;

CEdtFld::CEdtFld(QWidget* parent) : CEdtFld(nullptr, parent) {}

CEdtFld::CEdtFld(CCorKiv* engine, QWidget* parent)
    : CKivDialog(EditFolderId::Template, StringTable::Load(StringTable::SectionEditFolder), parent)
{
    SetHostEngine(engine);
}

void CEdtFld::DoDataExchange(CDataExchange* exchange)
{
    CKivDialog::DoDataExchange(exchange);
    DDX_Text(exchange, EditFolderId::EditName, Name);
}

bool CEdtFld::OnInitDialog()
{
    CKivDialog::OnInitDialog();
    if (auto* name = Item<CKivEdit>(EditFolderId::EditName))
        name->selectAll(); // the first key replaces the name
    return true;
}

void CEdtFld::OnOK()
{
    UpdateData();
    Name = PlaceName::Normalized(Name);
    const QString complaint =
        Name.isEmpty() ? u"フォルダ名を入力してください。\n"_s : PlaceName::Complaints(Name, u"フォルダ名"_s);
    if (!complaint.isEmpty())
        MessageBox(complaint);
    UpdateData(false);
    if (complaint.isEmpty())
        CKivDialog::OnOK();
}
