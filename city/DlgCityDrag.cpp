// Moves within the place tree: drag and drop, cut and paste, and the arrow keys.

#include "city/DlgCity.h"
#include "city/DlgCityMoveTo.h"
#include "host/dialog/KivTreeCtrl.h"

#include <QLabel>
#include <QMouseEvent>

#include <vector>

namespace
{
bool IsBelow(const CPlaceItem* item, const CPlaceItem* folder)
{
    while (item && item != folder)
        item = item->Parent();
    return item != nullptr;
}

/// The rows that lead from a folder down to an item below it.
std::vector<int> PathBelow(const CPlaceItem* item, const CPlaceItem* folder)
{
    std::vector<int> path;
    for (; item != folder; item = item->Parent()) {
        int row = 0;
        for (const CPlaceItem* sibling = item->Previous(); sibling; sibling = sibling->Previous())
            ++row;
        path.insert(path.begin(), row);
    }
    return path;
}

CPlaceItem* Follow(CPlaceItem* folder, const std::vector<int>& path)
{
    CPlaceItem* item = folder;
    for (const int row : path) {
        item = item->FirstChild();
        for (int i = 0; i < row; ++i)
            item = item->Next();
    }
    return item;
}
} // namespace

QPoint CDlgCity::TreePoint(QPoint point) const
{
    return Tree->viewport()->mapFromGlobal(mapToGlobal(point));
}

void CDlgCity::OnBegindragSetObsTreeCity(const QModelIndex& index, QPoint point)
{
    if (IsListWritable == 0) {
        Tree->Select(index); // a click, however unsteady
        return;
    }
    if (IsDragging != 0)
        return;
    DragItem = index;
    DragImage = new QLabel(Tree->viewport());
    DragImage->setAttribute(Qt::WA_TransparentForMouseEvents);
    DragImage->setPixmap(Tree->CreateDragImage(index));
    DragImage->adjustSize();
    // The point is the tree's and is taken for the dialog's, on purpose: the picture starts off by the tree's place.
    DragImage->move(TreePoint(point));
    DragImage->show();
    grabMouse();
    IsDragging = 1;
}

void CDlgCity::OnMouseMove(QPoint point)
{
    if (IsListWritable == 0 || IsDragging == 0)
        return;
    const QPoint treePoint = TreePoint(point);
    if (DragImage)
        DragImage->move(treePoint);
    const QModelIndex hit = Tree->viewport()->rect().contains(treePoint) ? Tree->indexAt(treePoint) : QModelIndex();
    if (hit.isValid())
        Tree->SetDropHighlight(hit);
}

void CDlgCity::OnLButtonUp(QPoint point)
{
    if (IsListWritable != 0 && IsDragging != 0)
        EndOfDrag(1, point);
}

void CDlgCity::OnRButtonDown(QPoint point)
{
    if (IsListWritable != 0 && IsDragging != 0)
        EndOfDrag(0, point);
}

bool CDlgCity::IsInTree(QPoint point) const
{
    return QRect(Tree->mapTo(this, QPoint()), Tree->size()).contains(point);
}

void CDlgCity::EndOfDrag(int drop, QPoint point)
{
    IsDragging = 0;
    releaseMouse();
    delete DragImage;
    // Raised by every drag, also one that came to nothing, and the highlight stays then; both on purpose.
    IsModified = 1;
    if (drop != 0 && IsInTree(point) && DragItem.isValid())
        DropItem(CPlaceModel::Item(DragItem));
}

/// Drops an item on the highlighted one.
void CDlgCity::DropItem(CPlaceItem* item)
{
    CPlaceItem* target = CPlaceModel::Item(Tree->DropHighlight());
    if (target == item) {
        Tree->SetDropHighlight({});
        return;
    }
    if (!target || !target->Parent())
        return; // the highlight stays, on purpose
    if (IsBelow(target, item)) {
        Tree->SetDropHighlight({});
        return;
    }
    bool goesInto = target->IsFolder();
    if (target->IsFolder() && item->IsFolder()) {
        CDlgCityMoveTo moveTo(target->Text(), this);
        if (moveTo.DoModal() != Accepted) {
            Tree->SetDropHighlight({});
            return;
        }
        goesInto = moveTo.MoveMode == CDlgCityMoveTo::MoveInto;
    }
    if (goesInto)
        MoveItem(item, target, nullptr);
    else
        MoveItem(item, target->Parent(), target);
    Tree->SetDropHighlight({});
}

/// Moves an item; the selection stays where it is, or goes along with what is moved.
void CDlgCity::MoveItem(CPlaceItem* item, CPlaceItem* newParent, CPlaceItem* after)
{
    IsModified = 1;
    const bool goesAlong = SelectedItem && IsBelow(SelectedItem, item);
    const std::vector<int> path = goesAlong ? PathBelow(SelectedItem, item) : std::vector<int>();
    const bool isOpen = Tree->isExpanded(Model.Index(item));
    Quietly([&] {
        CPlaceItem* moved = Document.Move(item, newParent, after);
        if (isOpen)
            Tree->expand(Model.Index(moved));
        if (goesAlong)
            SelectedItem = Follow(moved, path);
        // The tree may have selected another item meanwhile.
        if (SelectedItem)
            Tree->Select(Model.Index(SelectedItem));
        else
            Tree->clearSelection();
    });
}

void CDlgCity::OnCut()
{
    if (IsListWritable == 0 || !SelectedItem || !SelectedItem->Parent())
        return;
    Delegate->SetCutItem(Model.Index(SelectedItem));
    Tree->viewport()->update();
}

void CDlgCity::OnPaste()
{
    CPlaceItem* item = CPlaceModel::Item(Delegate->CutItem());
    if (IsListWritable == 0 || !item || !SelectedItem)
        return;
    Tree->SetDropHighlight(Model.Index(SelectedItem));
    DropItem(item); // a refused one stays cut; a moved one is a copy, and the cut item gone
    Tree->SetDropHighlight({});
}

void CDlgCity::OnMoveUp()
{
    // Behind the one before the previous one; the first place of a folder is what a drop on the folder means.
    if (IsListWritable != 0 && SelectedItem && SelectedItem->Parent() && SelectedItem->Previous())
        MoveItem(SelectedItem, SelectedItem->Parent(), SelectedItem->Previous()->Previous());
}

void CDlgCity::OnMoveDown()
{
    if (IsListWritable != 0 && SelectedItem && SelectedItem->Parent() && SelectedItem->Next())
        MoveItem(SelectedItem, SelectedItem->Parent(), SelectedItem->Next());
}

/// Out of its folder, to the place after it; nothing goes beside the root.
void CDlgCity::OnMoveOut()
{
    CPlaceItem* folder = SelectedItem ? SelectedItem->Parent() : nullptr;
    if (IsListWritable != 0 && folder && folder->Parent())
        MoveItem(SelectedItem, folder->Parent(), folder);
}

/// Into the folder before it, as its first item.
void CDlgCity::OnMoveInto()
{
    if (IsListWritable == 0 || !SelectedItem || !SelectedItem->Parent())
        return;
    CPlaceItem* folder = SelectedItem->Previous();
    if (folder && folder->IsFolder())
        MoveItem(SelectedItem, folder, nullptr);
}

void CDlgCity::mouseMoveEvent(QMouseEvent* event)
{
    OnMouseMove(event->position().toPoint());
    CCoordinateDialog::mouseMoveEvent(event);
}

void CDlgCity::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        OnRButtonDown(event->position().toPoint());
    CCoordinateDialog::mousePressEvent(event);
}

void CDlgCity::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Guarded([this, event] { OnLButtonUp(event->position().toPoint()); });
    CCoordinateDialog::mouseReleaseEvent(event);
}

void CDlgCity::changeEvent(QEvent* event)
{
    // Another window took over in the middle of a drag: the button's release will not come here.
    if (event->type() == QEvent::ActivationChange && !isActiveWindow() && IsDragging != 0)
        EndOfDrag(0, QPoint());
    CCoordinateDialog::changeEvent(event);
}
