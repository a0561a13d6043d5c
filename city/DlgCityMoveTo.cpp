#include "city/DlgCityMoveTo.h"

#include "city/ControlIds.h"
#include "host/text/Number.h"
#include "res/StringTable.h"

#include <QLabel>
#include <QStyle>

using namespace Qt::StringLiterals;

CDlgCityMoveTo::CDlgCityMoveTo(QString folderName, QWidget* parent)
    : CKivDialog(MoveToId::Template, QString(), parent), FolderName(std::move(folderName))
{
}

CKivDialog::MessageMap CDlgCityMoveTo::GetMessageMap()
{
    return {
        OnClicked(MoveToId::RadioAfter, &CDlgCityMoveTo::OnClickedRadio),
        OnClicked(MoveToId::RadioInto, &CDlgCityMoveTo::OnClickedRadio),
    };
}

void CDlgCityMoveTo::DoDataExchange(CDataExchange* exchange)
{
    CKivDialog::DoDataExchange(exchange);
    DDX_Radio(exchange, MoveToId::RadioAfter, MoveMode);
}

bool CDlgCityMoveTo::OnInitDialog()
{
    CKivDialog::OnInitDialog();
    if (auto* icon = Item<QLabel>(MoveToId::Icon)) {
        const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
        icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(size));
    }
    SetRadioText(MoveToId::RadioAfter, StringTable::MoveAfterFolder);
    SetRadioText(MoveToId::RadioInto, StringTable::MoveIntoFolder);
    return true;
}

void CDlgCityMoveTo::SetRadioText(int id, int stringNumber)
{
    constexpr int mostShown = 600; // pixels of a name
    const QString shown = fontMetrics().elidedText(FolderName, Qt::ElideMiddle, mostShown);
    const QByteArray format = StringTable::Load(stringNumber).toUtf8();
    const QByteArray name = shown.toUtf8();
    QString text = Number::FormatUnchecked(format.constData(), name.constData());
    SetItemText(id, text.replace(u'&', u"&&"_s)); // an "&" of the name is no mnemonic
}

void CDlgCityMoveTo::OnOK()
{
    UpdateData();
    CKivDialog::OnOK();
}
