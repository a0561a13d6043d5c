// Edits of the place tree: add, edit, delete, reset, undo.

#include "city/AddCty.h"
#include "city/DlgCity.h"
#include "city/EdtCty.h"
#include "city/EdtFld.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/KivTreeCtrl.h"
#include "host/text/Number.h"
#include "res/StringTable.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace
{
constexpr char DuplicatePlace[] = "都市名[%s]はすでに存在しています。\n別の名称を指定してください。";
constexpr char DuplicateFolder[] = "フォルダ[%s]はすでに存在しています。\n別の名称を指定してください。";

/// The values of the block as a place's record has them.
void Compose(const CoordinateBlock& block, CCityList& place)
{
    place.Longitude = PlaceCoordinates::ComposeLongitude(block);
    place.Latitude = PlaceCoordinates::ComposeLatitude(block);
    place.Altitude = block.Altitude;
    place.TimeZone = PlaceCoordinates::ComposeTimeZone(block);
    place.IsUserEdited = 1;
}
} // namespace

/// Shows a message when a sibling has the name already.
bool CDlgCity::RefusesName(const CPlaceItem* parent, const QString& newName, const QString& oldName,
                           const char* message)
{
    if (!Document.IsDuplicateItemName(parent, newName, oldName))
        return false;
    MessageBox(Number::FormatUnchecked(message, newName.toUtf8().constData()), IPrompts::Icon::Information);
    return true;
}

void CDlgCity::OnCityAdd()
{
    if (!Document.Tree().Root())
        return; // a foreign overlay may have deleted the root
    CAddCty add(this);
    add.AddKind = CAddCty::AddPlace;
    if (add.DoModal() != Accepted)
        return;
    // Into a folder as its first item, after a place into its folder; without a selection the root is the folder.
    CPlaceItem* selected = SelectedItem ? SelectedItem : Document.Tree().Root();
    CPlaceItem* parent = selected->IsFolder() ? selected : selected->Parent();
    CPlaceItem* after = selected->IsFolder() ? nullptr : selected;
    if (!parent) { // a place that stands beside the root; nothing new goes there
        parent = Document.Tree().Root();
        after = nullptr;
    }
    if (!parent->IsFolder())
        return; // a foreign overlay may put a place in front of the root
    if (add.AddKind == CAddCty::AddPlace)
        AddCity(parent, after);
    else if (add.AddKind == CAddCty::AddFolder)
        AddFolder(parent, after);
}

void CDlgCity::AddCity(CPlaceItem* parent, CPlaceItem* after)
{
    if (Document.PlaceCount() >= CPlaceList::PlaceTableSize) // reported before the user types anything
        throw CInvalidArgument("the place table is full", u"地名の数が上限（10,000 件）に達したため、追加できません。\n"
                                                          u"不要な地名を「編集」で書き換えてください。"_s);
    CEdtCty editor(this);
    editor.MapControl = MapControl;
    editor.Name = StringTable::Load(StringTable::NewPlaceName);
    editor.Coordinates = Coordinates;
    if (editor.DoModal() != Accepted)
        return;
    // Before the name is tested, on purpose: a refused name leaves the editor's values here, and the boxes as they
    // were.
    Coordinates = editor.Coordinates;
    if (RefusesName(parent, editor.Name, QString(), DuplicatePlace))
        return;
    CCityList place;
    Compose(Coordinates, place);
    place.Kind = editor.Kind;
    ShowItem(Quietly([&] { return Document.AddPlace(parent, after, editor.Name, place); }));
}

void CDlgCity::AddFolder(CPlaceItem* parent, CPlaceItem* after)
{
    CEdtFld editor(this);
    if (editor.DoModal() != Accepted || RefusesName(parent, editor.Name, QString(), DuplicateFolder))
        return;
    ShowItem(Quietly([&] { return Document.AddFolder(parent, after, editor.Name); }));
}

void CDlgCity::OnCityEdit()
{
    if (!SelectedItem)
        return; // after a reset the button is enabled with nothing selected
    if (IsPlaceSelected != 0)
        EditCity();
    else
        EditFolder();
}

void CDlgCity::EditFolder()
{
    const QString oldName = SelectedItem->Text();
    CEdtFld editor(this);
    editor.Name = oldName;
    if (editor.DoModal() != Accepted)
        return;
    if (editor.Name != oldName && RefusesName(SelectedItem->Parent(), editor.Name, oldName, DuplicateFolder))
        return;
    // An unchanged name counts as a change too, on purpose.
    Quietly([&] { Document.UpdateFolder(SelectedItem, editor.Name); });
    IsModified = 1;
}

void CDlgCity::EditCity()
{
    const QString oldName = SelectedItem->Text();
    CCityList place = Document.Place(SelectedIndex);
    CEdtCty editor(this);
    editor.MapControl = MapControl;
    editor.Name = oldName;
    editor.Coordinates = Coordinates;
    editor.Kind = place.Kind;
    if (editor.DoModal() != Accepted)
        return;
    if (editor.Name != oldName && RefusesName(SelectedItem->Parent(), editor.Name, oldName, DuplicatePlace))
        return;
    const CoordinateBlock before = std::exchange(Coordinates, editor.Coordinates);
    Compose(Coordinates, place);
    // A place that was moved and whose altitude was left alone follows the terrain from now on.
    const bool isSameAltitude = Coordinates.Altitude == before.Altitude;
    place.IsAutoAltitude = isSameAltitude && !PlaceCoordinates::IsSamePosition(Coordinates, before) ? 1 : 0;
    place.Kind = editor.Kind;
    Quietly([&] { Document.UpdatePlace(SelectedItem, editor.Name, place); });
    UpdateData(false);
    IsModified = 1;
}

void CDlgCity::OnCityDel()
{
    if (!SelectedItem)
        return; // after a reset the button is enabled with nothing selected
    const int question = IsPlaceSelected != 0 ? StringTable::DeletePlace : StringTable::DeleteFolder;
    QString text = StringTable::Load(question);
    text.replace(u"%1"_s, SelectedItem->Text());
    if (MessageBox(text, IPrompts::Icon::Warning, IPrompts::Buttons::OkCancel) != IPrompts::Answer::Ok)
        return;
    Quietly([this] { Document.Delete(SelectedItem); });
    IsModified = 1;
    OnSelchangedSetObsTreeCity(); // the tree has selected another item by now
}

void CDlgCity::OnBnClickedCityReset()
{
    if (MessageBox(u"都市名データを初期化します。\r\nこれまで編集したデータは全て失われます。"_s,
                   IPrompts::Icon::Warning, IPrompts::Buttons::OkCancel) != IPrompts::Answer::Ok)
        return;
    bool isReset = false;
    const auto showAgain = qScopeGuard([&] { // the same items, but the view has forgotten
        if (!isReset)
            Quietly([this] { Tree->Select(Model.Index(SelectedItem)); });
    });
    try {
        isReset = Quietly([this] { return Document.Reset(); });
    } catch (...) {
        HostWindow::SendListProgress(CPlaceList::PhaseEnd, 0); // the load broke off before its own report of the end
        throw;
    }
    if (!isReset) {
        MessageBox(u"地名の一覧のファイル（kivpel.obs）を読み込めないため、初期化できません。"_s,
                   IPrompts::Icon::Exclamation);
        return;
    }
    IsModified = 1;
    IsListWritable = 1; // also when the shipped list is read-only, on purpose: the user's own files are written
    Tree->expand(Model.Index(Document.Tree().Root()));
    OnSelchangedSetObsTreeCity();
}

void CDlgCity::OnUndo()
{
    if (!Document.CanUndo())
        return;
    CPlaceItem* item = Quietly([this] { return Document.Undo(); });
    ShowItem(item ? item : Document.Tree().Root());
}

void CDlgCity::OnRedo()
{
    if (!Document.CanRedo())
        return;
    CPlaceItem* item = Quietly([this] { return Document.Redo(); });
    ShowItem(item ? item : Document.Tree().Root());
}

/// Selects an item after a change of the tree; its values are shown even when it was selected before.
void CDlgCity::ShowItem(CPlaceItem* item)
{
    IsModified = 1;
    Quietly([&] {
        Tree->expand(Model.Index(Document.Tree().Root()));
        Tree->Select(Model.Index(item));
    });
    OnSelchangedSetObsTreeCity();
}
