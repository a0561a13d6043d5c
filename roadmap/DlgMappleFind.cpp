#include "roadmap/DlgMappleFind.h"

#include "host/control_window/CorMpp.h"
#include "host/dialog/HeldKey.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/ThemedControls.h"
#include "host/dialog/WaitCursor.h"
#include "host/system/CommonFile.h"
#include "res/StringTable.h"
#include "roadmap/ControlIds.h"
#include "roadmap/core/RoadMapSettings.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>

#include <array>

using namespace Qt::StringLiterals;

CDlgMappleFind::CDlgMappleFind(QWidget& owner)
    : CKivDialog(MappleFindId::Template, StringTable::Load(StringTable::SectionMappleFind), &owner), Owner(owner)
{
}

CDlgMappleFind::~CDlgMappleFind()
{
    DestroyWindow();
}

CKivDialog::MessageMap CDlgMappleFind::GetMessageMap()
{
    using namespace MappleFindId;
    return {
        OnClicked(ButtonSearch, &CDlgMappleFind::OnBnClickedSearch),
        OnClicked(ButtonMoveMap, &CDlgMappleFind::OnBnClickedMoveMap),
        OnClicked(ButtonSetObs, &CDlgMappleFind::OnBnClickedSetObs),
        OnDblClick(ListResult, &CDlgMappleFind::OnDblclkResultList),
    };
}

void CDlgMappleFind::DoDataExchange(CDataExchange* exchange)
{
    CKivDialog::DoDataExchange(exchange);
    DDX_Text(exchange, MappleFindId::EditSearchChar, SearchChar);
    DDX_Radio(exchange, MappleFindId::RadioAddressKey, Rule);
}

int CDlgMappleFind::Create(CCorKiv* hostEngine)
{
    const CWaitCursor wait;
    if (!CKivDialog::Create(hostEngine))
        return 0;
    AttachControls();
    const RoadMapSettings::Search stored = RoadMapSettings::ReadSearch(RegistrySection());
    SearchChar = stored.Text;
    Rule = stored.Rule;
    UpdateData(false);
    EnableControls();
    return 1;
}

void CDlgMappleFind::AttachControls()
{
    SearchEdit = Item<CKivEdit>(MappleFindId::EditSearchChar);
    ResultList = Item<CKivListCtrl>(MappleFindId::ListResult);
    if (ResultList) {
        ResultList->setModel(&ResultTable);
        ResultList->SetFullRowSelect();
    }
    // However it is pressed, OnOK is to find the focus on it.
    if (auto* close = Item<QAbstractButton>(MappleFindId::ButtonClose))
        connect(close, &QAbstractButton::pressed, close, [close] { close->setFocus(); });
    CatchKeys();
}

void CDlgMappleFind::OnBnClickedSearch()
{
    const CWaitCursor wait;
    UpdateData();
    if (SearchChar.isEmpty()) {
        MessageBox(u"検索する文字列を入力してください。"_s, IPrompts::Icon::Information);
        return;
    }
    if (!MapCtrl)
        return;
    DisableControls();
    Searching = 1;
    Directory.SwitchTo(CCommonFile::GetModulePath());
    const bool isKnown =
        Rule == static_cast<int>(SearchRule::AddressKey) || Rule == static_cast<int>(SearchRule::LandMark);
    const QPointer<CDlgMappleFind> self(this); // the map may report the end, and more, before it answers
    const bool isStarted = isKnown && MapCtrl->Search(Rule == static_cast<int>(SearchRule::LandMark), SearchChar);
    if (self && !isStarted)
        EndSearch(false, u"エラーが発生したため、検索ができませんでした。"_s);
}

void CDlgMappleFind::OnSearchEnd(SearchRule rule, long status)
{
    if (!IsWindow())
        return;
    const SearchOutcome& outcome = SearchOutcome::Of(rule);
    if (!SearchOutcome::IsFinished(static_cast<int>(status))) {
        EndSearch(false, QString::fromUtf16(outcome.Cancelled));
        return;
    }
    ClearResultList();
    Results = MapCtrl ? MapCtrl->GetSearchResult() : 0;
    const CRoadMapResults* const found = CRoadMapResults::Find(Results);
    if (!found) {
        Directory.Restore(); // deliberately no more: without a list the controls stay disabled
        return;
    }
    ShowResults(outcome, found->Rows());
    const bool hasResults = !found->Rows().empty();
    EndSearch(hasResults, hasResults ? QString() : QString::fromUtf16(outcome.NothingFound));
}

/// Fills the list and selects the first row.
void CDlgMappleFind::ShowResults(const SearchOutcome& outcome, const std::vector<CRoadMapResult>& rows)
{
    if (!ResultList)
        return;
    const int width = ResultList->WidthBesideScrollBar();
    ResultTable.Fill(outcome.Columns, rows);
    for (int column = 0; const ResultColumn& shown : outcome.Columns)
        ResultList->header()->resizeSection(column++, width / shown.WidthParts);
    Directory.Restore(); // before the selection is heard of
    if (!rows.empty())
        ResultList->SelectRow(0);
}

/// Back to idle. The window paints itself before this returns, which places the focus.
void CDlgMappleFind::EndSearch(bool hasResults, const QString& message)
{
    Directory.Restore();
    EnableControls();
    const QPointer<CDlgMappleFind> self(this);
    if (!message.isEmpty())
        MessageBox(message, IPrompts::Icon::Information);
    if (!self)
        return; // the host closed the road map while the box stood there
    HasResults = hasResults ? 1 : 0;
    IsEnding = true;
    repaint();
    IsEnding = false;
    Searching = 0;
}

void CDlgMappleFind::paintEvent(QPaintEvent* event)
{
    CKivDialog::paintEvent(event);
    if (Searching != 1 || !IsEnding) // a selection made by any other painting would ask for the next one
        return;
    if (HasResults == 1 && ResultList) {
        ResultList->setFocus();
    } else if (SearchEdit) {
        SearchEdit->setFocus();
        SearchEdit->selectAll(); // the caret, at the end of it, comes into view
    }
}

void CDlgMappleFind::ClearResultList()
{
    ResultTable.Clear();
}

void CDlgMappleFind::DisableControls()
{
    setFocus(); // else it would go on to the button that closes, for the next Enter to press
    EnableSearchControls(false);
}

void CDlgMappleFind::EnableSearchControls(bool enable)
{
    using namespace MappleFindId;
    for (const int id :
         {LabelSearchChar, EditSearchChar, GroupRule, RadioAddressKey, RadioLandMark, ListResult, ButtonSearch})
        EnableItem(id, enable);
    const bool isSelected = ResultList && ResultList->SelectedRow() >= 0;
    for (const int id : {ButtonMoveMap, ButtonSetObs})
        EnableItem(id, enable && isSelected);
}

const CRoadMapResult* CDlgMappleFind::FindResult(int row) const
{
    const CRoadMapResults* const found = MapCtrl ? CRoadMapResults::Find(Results) : nullptr;
    if (!found || row < 0 || static_cast<size_t>(row) >= found->Rows().size())
        return nullptr;
    return &found->Rows()[static_cast<size_t>(row)];
}

bool CDlgMappleFind::MoveToSelection(bool setAsSite)
{
    const CRoadMapResult* const result = FindResult(ResultList ? ResultList->SelectedRow() : -1);
    if (!result)
        return false;
    std::array position{result->X, result->Y}; // the list may be gone once the map or the owner was notified
    const auto [x, y] = position;
    const QPointer<CDlgMappleFind> self(this);
    if (setAsSite) {
        MapCtrl->SetPosition(true, x, y);
        HostWindow::Send(&Owner, MappleId::MessageFindSelectPos, 0, QVariant::fromValue(position.data()));
    }
    if (self)
        MapCtrl->SetPosition(false, x, y);
    return true;
}

void CDlgMappleFind::OnDblclkResultList(int row)
{
    if (const CRoadMapResult* const result = FindResult(row))
        MapCtrl->SetPosition(false, result->X, result->Y);
}

void CDlgMappleFind::OnOK()
{
    const bool isCtrlDown = QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier);
    const QWidget* const focus = focusWidget();
    if (focus && focus == ResultList && MoveToSelection(isCtrlDown))
        return;
    if (focus && focus == Item(MappleFindId::ButtonClose))
        OnClose();
    else
        OnBnClickedSearch();
}

void CDlgMappleFind::OnCancel()
{
    OnClose();
}

void CDlgMappleFind::OnClose()
{
    hide();
}

bool CDlgMappleFind::PreTranslateMessage(QKeyEvent& key)
{
    if (key.key() != Qt::Key_Escape)
        return CKivDialog::PreTranslateMessage(key);
    if (!IsHeldEndKey(key))
        OnClose();
    return true;
}

void CDlgMappleFind::showEvent(QShowEvent* event)
{
    if (!event->spontaneous() && !testAttribute(Qt::WA_Moved))
        PlaceBesideOwner();
    CKivDialog::showEvent(event);
}

void CDlgMappleFind::hideEvent(QHideEvent* event)
{
    setAttribute(Qt::WA_Moved); // it comes up again where the user left it
    CKivDialog::hideEvent(event);
}

/// Keeps the map in sight where the screen has the room; else the window comes up over the middle of its owner.
void CDlgMappleFind::PlaceBesideOwner()
{
    constexpr int gap = 8; // pixels
    const QRect owner = Owner.frameGeometry();
    const QRect screen = Owner.screen()->availableGeometry();
    for (const int left : {owner.right() + 1 + gap, owner.left() - gap - width()}) {
        if (!screen.contains(QRect(QPoint(left, owner.top()), size())))
            continue;
        move(left, owner.top());
        return;
    }
}

void CDlgMappleFind::OnDestroy()
{
    UpdateData();
    RoadMapSettings::SaveSearch(RegistrySection(), {SearchChar, Rule});
    Directory.Restore();
    ResultList = nullptr;
    SearchEdit = nullptr;
    CKivDialog::OnDestroy();
}
