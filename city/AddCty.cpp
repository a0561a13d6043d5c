#include "city/AddCty.h"

#include "city/ControlIds.h"
#include "res/StringTable.h"

CAddCty::CAddCty(QWidget* parent) : CAddCty(nullptr, parent) {}

CAddCty::CAddCty(CCorKiv* engine, QWidget* parent)
    : CKivDialog(AddCityId::Template, StringTable::Load(StringTable::SectionAddCity), parent)
{
    SetHostEngine(engine);
}

void CAddCty::DoDataExchange(CDataExchange* exchange)
{
    CKivDialog::DoDataExchange(exchange);
    DDX_Radio(exchange, AddCityId::RadioCity, AddKind);
}

void CAddCty::OnOK()
{
    UpdateData();
    CKivDialog::OnOK();
}
