#pragma once

#include "city/CoordinateDialog.h"
#include "city/PlaceItemDelegate.h"
#include "city/core/PlaceDocument.h"
#include "city/core/PlaceFinder.h"
#include "city/core/PlaceModel.h"
#include "host/control_window/CorKivMap.h"
#include "host/dialog/WaitCursor.h"
#include "module/kivobs_export.h"

#include <QPointer>

#include <utility>

class CKivTreeCtrl;
class CPlaceFindLine;
class QLabel;

/// The city list "都市名": the user picks a place from the tree of places, edits the tree, and can make a place the
/// initial one. The caller sets the files, the globe map, the terrain flag and the coordinates, runs the dialog once,
/// and after OK reads the coordinates and the public members.
class KIVOBS_EXPORT CDlgCity : public CCoordinateDialog
{
    Q_OBJECT

public:
    explicit CDlgCity(QWidget* parent);
    /// The engine gets the dialog's commands; not owned.
    CDlgCity(CCorKiv* engine, QWidget* parent);
    ~CDlgCity() override;

    /// The place files; to be set before the dialog opens.
    CPlacePaths Paths;

    /// Non-zero: the engine has a terrain model; its location is kept now and put back when the dialog ends.
    void SetMesh(int hasMesh);
    /// The globe map that names the kinds of places and reloads the user's places after OK. Not owned.
    void SetCorMapPtr(CCorKivMap* map) { MapControl = map; }

    /// Returns the dialog's result, -1 when it has no template.
    int DoModal();

    /// Writes the user list file from the tree, which is loaded first when the dialog was not opened; false when it
    /// could not be written.
    bool RefreshUserObs();

    /// Goes back to the shipped list after a question.
    void OnBnClickedCityReset();

    int IsAltitudeFromTerrain = 1; ///< 1: the altitude shown was asked from the terrain; 0: the place's own
    int IsInitialSet = 0;          ///< 1 once the user made a place the initial one: the four values below
    double InitialLongitude = 0.0;
    double InitialLatitude = 0.0;
    double InitialAltitude = 0.0;
    double InitialTimeZone = 0.0;

protected:
    MessageMap GetMessageMap() override;
    bool OnInitDialog() override;
    void OnOK() override;
    void OnClose() override { OnCancel(); }
    void OnDestroy() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // Life cycle and selection
    void AttachControls();
    void ShowTree();
    void MakeImageList();
    void LoadPlaces();
    [[nodiscard]] bool SavePlaces();
    void EnableBtn();
    void OnSelchangedSetObsTreeCity();
    void ShowPlace(const CCityList& place);
    void OnDblclkSetObsTreeCity();
    void OnEndlabeleditSetObsTreeCity(const QModelIndex& index, const QString& text);
    void OnObsSetInit();

    // Edits
    void OnCityAdd();
    void AddCity(CPlaceItem* parent, CPlaceItem* after);
    void AddFolder(CPlaceItem* parent, CPlaceItem* after);
    void OnCityEdit();
    void EditFolder();
    void EditCity();
    void OnCityDel();
    [[nodiscard]] bool RefusesName(const CPlaceItem* parent, const QString& newName, const QString& oldName,
                                   const char* message);
    void OnUndo();
    void OnRedo();
    void ShowItem(CPlaceItem* item);
    /// Changes the tree, under the wait cursor, without the selection handler's running for what the tree selects
    /// meanwhile.
    template <typename Change> auto Quietly(Change change);

    // Drag and drop, and moves by keyboard
    void OnBegindragSetObsTreeCity(const QModelIndex& index, QPoint point);
    void OnMouseMove(QPoint point);
    void OnLButtonUp(QPoint point);
    void OnRButtonDown(QPoint point);
    void EndOfDrag(int drop, QPoint point);
    void DropItem(CPlaceItem* item);
    void MoveItem(CPlaceItem* item, CPlaceItem* newParent, CPlaceItem* after);
    [[nodiscard]] bool IsInTree(QPoint point) const;
    [[nodiscard]] QPoint TreePoint(QPoint point) const;
    void OnCut();
    void OnPaste();
    void OnMoveUp();
    void OnMoveDown();
    void OnMoveOut();
    void OnMoveInto();

    // Keys and the find line
    [[nodiscard]] bool OnTreeKey(const QKeyEvent& event);
    [[nodiscard]] bool OnDialogKey(const QKeyEvent& event);
    void PressButton(int id);
    void OpenFind(const QString& text);
    void OnFindText(const QString& text);
    void RefreshFinder();
    void WalkToMatch(CPlaceFinder::Step step);
    void ShowMatchCount();

    CPlaceDocument Document;
    CPlaceModel Model{Document};
    CKivTreeCtrl* Tree = nullptr; ///< a child of this
    PlaceImage::List ImageList;
    CPlaceItemDelegate* Delegate = nullptr; ///< a child of this
    CCorKivMap* MapControl = nullptr;

    int IsListWritable = 0; ///< 1: the list may be edited and saved
    int IsModified = 0;     ///< raised by every change of the tree, never lowered
    CPlaceItem* SelectedItem = nullptr;
    int SelectedIndex = CPlaceItem::FolderData; ///< the selected item's data
    int IsFolderSelected = 0;                   ///< 1 also when nothing is selected
    int IsPlaceSelected = 0;
    bool IsQuiet = false; ///< the program itself changes the tree

    int HasMesh = 0;
    double SavedLongitude = 0.0;
    double SavedLatitude = 0.0;
    double SavedAltitude = 0.0;

    int IsDragging = 0;
    QPersistentModelIndex DragItem;
    QPointer<QLabel> DragImage; ///< a child of the tree

    CPlaceFindLine* FindLine = nullptr; ///< a child of the tree
    CPlaceFinder Finder;
    bool IsFinderCurrent = false; ///< the finder knows the tree as it is
};

template <typename Change> auto CDlgCity::Quietly(Change change)
{
    class CQuiet
    {
    public:
        explicit CQuiet(bool& flag) : m_flag(flag), m_before(std::exchange(flag, true)) {}
        CQuiet(const CQuiet&) = delete;
        CQuiet& operator=(const CQuiet&) = delete;
        ~CQuiet() { m_flag = m_before; }

    private:
        bool& m_flag;
        bool m_before;
    };
    const CWaitCursor wait;
    const CQuiet quiet(IsQuiet);
    return change();
}
