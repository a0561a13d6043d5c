#include "city/DlgCity.h"

#include "city/ControlIds.h"
#include "city/PlaceFindLine.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/KivTreeCtrl.h"
#include "host/dialog/ThemedControls.h"
#include "host/dialog/WaitCursor.h"
#include "host/text/Number.h"
#include "obs/core/EngineLines.h"
#include "res/StringTable.h"

#include <QFileInfo>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace
{
constexpr QSize RoomForTree(60, 140); // pixels more than the tree's least size
}

CDlgCity::CDlgCity(QWidget* parent) : CDlgCity(nullptr, parent) {}

CDlgCity::CDlgCity(CCorKiv* engine, QWidget* parent)
    : CCoordinateDialog(CityId::Template, StringTable::Load(StringTable::SectionCity), EntryRules::Policy::CityList,
                        parent)
{
    SetHostEngine(engine);
}

CDlgCity::~CDlgCity() = default;

void CDlgCity::SetMesh(int hasMesh)
{
    HasMesh = hasMesh;
    if (HasMesh == 0 || !HostEngine())
        return;
    const auto ask = [this](const char16_t* query) {
        return Number::LeadingDouble(HostEngine()->Command(QString::fromUtf16(query)));
    };
    SavedLongitude = ask(EngineLines::QueryLongitude);
    SavedLatitude = ask(EngineLines::QueryLatitude);
    SavedAltitude = ask(EngineLines::QueryAltitude);
}

int CDlgCity::DoModal()
{
    const int result = CKivDialog::DoModal(HostEngine());
    DestroyWindow();
    return result;
}

bool CDlgCity::RefreshUserObs()
{
    LoadPlaces();
    return Document.RefreshUserObs();
}

CKivDialog::MessageMap CDlgCity::GetMessageMap()
{
    MessageMap map = CCoordinateDialog::GetMessageMap();
    map.push_back(OnClicked(CityId::ButtonSetInit, &CDlgCity::OnObsSetInit));
    map.push_back(OnClicked(CityId::ButtonEdit, &CDlgCity::OnCityEdit));
    map.push_back(OnClicked(CityId::ButtonAdd, &CDlgCity::OnCityAdd));
    map.push_back(OnClicked(CityId::ButtonDel, &CDlgCity::OnCityDel));
    map.push_back(OnClicked(CityId::ButtonReset, &CDlgCity::OnBnClickedCityReset));
    return map;
}

bool CDlgCity::OnInitDialog()
{
    CCoordinateDialog::OnInitDialog();
    AttachControls();
    const CWaitCursor wait;
    const QFileInfo list(Paths.ListFilePath);
    // The file's own mark counts: what the user changes goes to other files.
    IsListWritable = list.exists() && list.permission(QFileDevice::WriteOwner) ? 1 : 0;
    MakeImageList();
    LoadPlaces();
    if (!Tree)
        return true;
    ShowTree();
    resize(sizeHint() + RoomForTree);
    Tree->expand(Model.Index(Document.Tree().Root()));
    Tree->Select(Model.Index(Document.Tree().Root()));
    EnableBtn();
    Tree->setFocus();
    return false;
}

void CDlgCity::MakeImageList()
{
    ImageList = PlaceImage::Load();
}

/// Reads the shipped list and replays the user's changes onto it. A load that a full table ends is reported; the rest
/// shows.
void CDlgCity::LoadPlaces()
{
    if (Document.Tree().Root())
        return; // once only
    Document.SetPaths(Paths);
    Document.SetProgress(HostWindow::SendListProgress);
    bool isLoaded = false;
    Guarded([this, &isLoaded] {
        Document.LoadCityList();
        isLoaded = true;
    });
    if (!isLoaded) // the load broke off before its own report of the end
        HostWindow::SendListProgress(CPlaceList::PhaseEnd, 0);
    Guarded([this] { Document.LoadLocationTreeContext(); });
}

void CDlgCity::AttachControls()
{
    IsQuiet = false;
    Tree = Item<CKivTreeCtrl>(CityId::Tree);
    if (!Tree)
        return;
    Tree->installEventFilter(this);
    connect(Tree, &CKivTreeCtrl::DoubleClicked, this, [this] { Guarded([this] { OnDblclkSetObsTreeCity(); }); });
    connect(Tree, &CKivTreeCtrl::BeginDrag, this, &CDlgCity::OnBegindragSetObsTreeCity);
    connect(Tree, &CKivTreeCtrl::EndLabelEdit, this, &CDlgCity::OnEndlabeleditSetObsTreeCity);
    connect(Tree, &CKivTreeCtrl::TextTyped, this, &CDlgCity::OpenFind);

    FindLine = new CPlaceFindLine(Tree);
    connect(FindLine, &CPlaceFindLine::TextChanged, this, &CDlgCity::OnFindText);
    connect(FindLine, &CPlaceFindLine::NextWanted, this, [this] { WalkToMatch(CPlaceFinder::Step::Next); });
    connect(FindLine, &CPlaceFindLine::PreviousWanted, this, [this] { WalkToMatch(CPlaceFinder::Step::Previous); });
    const auto forget = [this] { IsFinderCurrent = false; };
    connect(&Model, &QAbstractItemModel::rowsInserted, this, forget);
    connect(&Model, &QAbstractItemModel::rowsRemoved, this, forget);
    connect(&Model, &QAbstractItemModel::dataChanged, this, forget);
    connect(&Model, &QAbstractItemModel::modelReset, this, forget);
}

/// Hands the tree its images and what was loaded.
void CDlgCity::ShowTree()
{
    Delegate = new CPlaceItemDelegate(ImageList, this);
    Tree->setItemDelegate(Delegate);
    Tree->setModel(&Model);
    connect(Tree->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!IsQuiet)
            Guarded([this] { OnSelchangedSetObsTreeCity(); });
    });
}

void CDlgCity::EnableBtn()
{
    if (SelectedItem && SelectedItem == Document.Tree().Root()) {
        // The other two stay as they are, on purpose: a place can always be added under the root.
        EnableItem(CityId::ButtonEdit, false);
        EnableItem(CityId::ButtonDel, false);
        return;
    }
    EnableItem(CityId::ButtonSetInit, IsPlaceSelected != 0);
    const bool isEditable = IsListWritable != 0 && (IsPlaceSelected != 0 || IsFolderSelected != 0);
    for (const int button : {CityId::ButtonEdit, CityId::ButtonAdd, CityId::ButtonDel})
        EnableItem(button, isEditable);
}

void CDlgCity::OnSelchangedSetObsTreeCity()
{
    SelectedItem = CPlaceModel::Item(Tree->Selected());
    SelectedIndex = SelectedItem ? SelectedItem->Data() : CPlaceItem::FolderData;
    IsPlaceSelected = SelectedItem && !SelectedItem->IsFolder() ? 1 : 0;
    IsFolderSelected = IsPlaceSelected == 0 ? 1 : 0;
    if (IsPlaceSelected != 0)
        ShowPlace(Document.Place(SelectedIndex));
    EnableBtn();
    if (FindLine && !FindLine->isHidden())
        ShowMatchCount();
}

/// Takes a place over into the coordinates; its altitude may be the terrain's.
void CDlgCity::ShowPlace(const CCityList& place)
{
    PlaceCoordinates::SplitLongitude(place.Longitude, Coordinates);
    PlaceCoordinates::SplitLatitude(place.Latitude, Coordinates);
    PlaceCoordinates::SplitTimeZone(place.TimeZone, Coordinates);
    Coordinates.Altitude = place.Altitude;
    IsAltitudeFromTerrain = HasMesh != 0 && place.IsAutoAltitude != 0 && HostEngine() ? 1 : 0;
    if (IsAltitudeFromTerrain != 0) {
        HostEngine()->Command(EngineLines::MoveToAndCalculate(place.Longitude, place.Latitude));
        const QString answer = HostEngine()->Command(QString::fromUtf16(EngineLines::QueryAltitude));
        Coordinates.Altitude = Number::LeadingDouble(answer);
    }
    UpdateData(false);
}

void CDlgCity::OnDblclkSetObsTreeCity()
{
    SelectedItem = CPlaceModel::Item(Tree->Selected());
    if (!SelectedItem || SelectedItem->IsFolder())
        return;
    UpdateData();
    OnOK();
}

/// A tree that edits names in place changes the tree alone: no name is compared and no change is recorded, on purpose.
void CDlgCity::OnEndlabeleditSetObsTreeCity(const QModelIndex& index, const QString& text)
{
    if (IsListWritable == 0)
        return;
    CPlaceItem* item = CPlaceModel::Item(index);
    if (item && !text.isNull())
        Document.SetItemText(item, text);
    IsModified = 1;
}

void CDlgCity::OnObsSetInit()
{
    if (MessageBox(PlaceCoordinates::InitialPlaceText(Coordinates), IPrompts::Icon::Information,
                   IPrompts::Buttons::OkCancel) != IPrompts::Answer::Ok)
        return;
    IsInitialSet = 1;
    InitialLongitude = PlaceCoordinates::ComposeLongitude(Coordinates);
    InitialLatitude = PlaceCoordinates::ComposeLatitude(Coordinates);
    InitialAltitude = Coordinates.Altitude;
    InitialTimeZone = PlaceCoordinates::ComposeTimeZone(Coordinates);
}

void CDlgCity::OnOK()
{
    if (IsListWritable == 0 && Document.CanUndo())
        MessageBox(u"地名の一覧のファイルが読み取り専用のため、一覧の編集内容は保存されません。\n"
                   u"（選んだ観測地は反映されます。）\n\n"_s +
                       Paths.ListFilePath,
                   IPrompts::Icon::Exclamation);
    if (IsModified != 0 && IsListWritable != 0 && !SavePlaces())
        return;
    UpdateData();
    CKivDialog::OnOK();
}

/// False when the changes could not be saved and the user would rather stay than lose them.
bool CDlgCity::SavePlaces()
{
    CPlaceDocument::CSaved saved;
    {
        const CWaitCursor wait;
        saved = Document.SaveCityList();
        if (MapControl)
            MapControl->ReloadUserPlaces(true);
    }
    if (!saved.Overlay)
        return MessageBox(
                   u"地名の一覧の編集内容を保存できませんでした。保存先のフォルダと空き容量を確認してください。\n"
                   u"「OK」で編集内容を破棄して閉じ、「キャンセル」で一覧に戻ります。\n\n"_s +
                       Paths.OverlayFilePath,
                   IPrompts::Icon::Warning, IPrompts::Buttons::OkCancel) == IPrompts::Answer::Ok;
    if (!saved.UserList)
        MessageBox(u"一覧の編集内容は保存しましたが、地図に表示する一覧を更新できませんでした。\n"
                   u"保存先の空き容量を確認し、もう一度保存してください。\n\n"_s +
                       Paths.UserListFilePath,
                   IPrompts::Icon::Exclamation);
    return true;
}

void CDlgCity::OnDestroy()
{
    // Undoes the moves of the engine that selecting places made.
    if (HasMesh != 0 && HostEngine())
        HostEngine()->Command(EngineLines::MoveBackTo(SavedLongitude, SavedLatitude, SavedAltitude));
    IsQuiet = true;
    if (Tree)
        Tree->setModel(nullptr); // it outlives the window for a while, and may outlive the model
    Tree = nullptr;
    FindLine = nullptr;
}
