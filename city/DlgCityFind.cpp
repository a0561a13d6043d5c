// Keys of the city list, and finding a place by a part of its name.

#include "city/ControlIds.h"
#include "city/DlgCity.h"
#include "city/PlaceFindLine.h"
#include "host/dialog/KivTreeCtrl.h"

#include <QAbstractButton>
#include <QKeyEvent>

#include <array>

bool CDlgCity::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == Tree && event->type() == QEvent::KeyPress) {
        auto& key = *static_cast<QKeyEvent*>(event);
        const bool isTrees = Tree->hasFocus(); // else it comes from the find line, which did not want it
        bool isTaken = false;
        Guarded([&] { isTaken = isTrees ? OnTreeKey(key) : OnDialogKey(key); });
        if (isTaken)
            return true;
        if (!isTrees) {
            key.ignore(); // on to the dialog, past the tree
            return true;
        }
    }
    return CCoordinateDialog::eventFilter(watched, event);
}

void CDlgCity::keyPressEvent(QKeyEvent* event)
{
    bool isTaken = false;
    Guarded([&] { isTaken = OnDialogKey(*event); });
    if (!isTaken)
        CCoordinateDialog::keyPressEvent(event);
}

/// What a key does when the tree has the focus.
bool CDlgCity::OnTreeKey(const QKeyEvent& event)
{
    struct Command
    {
        int Modifiers;
        int Key;
        void (*Run)(CDlgCity&);
    };
    static constexpr std::array commands{
        Command{Qt::NoModifier, Qt::Key_Insert, [](CDlgCity& d) { d.PressButton(CityId::ButtonAdd); }},
        Command{Qt::NoModifier, Qt::Key_F2, [](CDlgCity& d) { d.PressButton(CityId::ButtonEdit); }},
        Command{Qt::NoModifier, Qt::Key_Delete, [](CDlgCity& d) { d.PressButton(CityId::ButtonDel); }},
        Command{Qt::ControlModifier, Qt::Key_X, [](CDlgCity& d) { d.OnCut(); }},
        Command{Qt::ControlModifier, Qt::Key_V, [](CDlgCity& d) { d.OnPaste(); }},
        Command{Qt::AltModifier, Qt::Key_Up, [](CDlgCity& d) { d.OnMoveUp(); }},
        Command{Qt::AltModifier, Qt::Key_Down, [](CDlgCity& d) { d.OnMoveDown(); }},
        Command{Qt::AltModifier, Qt::Key_Left, [](CDlgCity& d) { d.OnMoveOut(); }},
        Command{Qt::AltModifier, Qt::Key_Right, [](CDlgCity& d) { d.OnMoveInto(); }},
    };
    if (IsDragging != 0)
        return OnDialogKey(event);
    const int modifiers = static_cast<int>(event.modifiers() & ~Qt::KeypadModifier);
    for (const Command& command : commands) {
        if (command.Key != event.key() || command.Modifiers != modifiers)
            continue;
        command.Run(*this);
        return true;
    }
    return OnDialogKey(event);
}

/// What a key does wherever the focus is, unless a box takes it.
bool CDlgCity::OnDialogKey(const QKeyEvent& event)
{
    if (IsDragging != 0) { // nothing but the end of the drag, so that the dragged item stays where it is
        if (event.key() == Qt::Key_Escape)
            EndOfDrag(0, QPoint());
        return true;
    }
    if (event.key() == Qt::Key_Escape && FindLine && !FindLine->isHidden()) {
        FindLine->Close();
        return true;
    }
    if (event.key() == Qt::Key_Escape && Delegate && Delegate->CutItem().isValid()) {
        Delegate->SetCutItem({});
        Tree->viewport()->update();
        return true;
    }
    if (event.key() == Qt::Key_F3) {
        const bool isBackward = (event.modifiers() & Qt::ShiftModifier) != 0;
        WalkToMatch(isBackward ? CPlaceFinder::Step::Previous : CPlaceFinder::Step::Next);
        return true;
    }
    if (event.modifiers() == Qt::ControlModifier && event.key() == Qt::Key_F) {
        OpenFind(QString());
        return true;
    }
    if (event.matches(QKeySequence::Undo)) {
        OnUndo();
        return true;
    }
    if (event.matches(QKeySequence::Redo) || (event.modifiers() == Qt::ControlModifier && event.key() == Qt::Key_Y)) {
        OnRedo();
        return true;
    }
    return false;
}

void CDlgCity::PressButton(int id)
{
    if (auto* button = Item<QAbstractButton>(id))
        button->click(); // does nothing while it is disabled
}

void CDlgCity::OpenFind(const QString& text)
{
    if (!FindLine)
        return;
    FindLine->Open(text);
    if (text.isEmpty())
        ShowMatchCount();
}

void CDlgCity::OnFindText(const QString& text)
{
    RefreshFinder();
    Finder.Find(text);
    WalkToMatch(CPlaceFinder::Step::Here);
}

/// Lets the finder know the tree as it is.
void CDlgCity::RefreshFinder()
{
    if (IsFinderCurrent)
        return;
    Finder.SetTree(Document.Tree());
    Finder.Find(FindLine->Text());
    IsFinderCurrent = true;
}

/// Selects the match that a step leads to.
void CDlgCity::WalkToMatch(CPlaceFinder::Step step)
{
    if (!FindLine)
        return;
    if (FindLine->isHidden())
        OpenFind(QString());
    RefreshFinder();
    if (CPlaceItem* match = Finder.Match(SelectedItem, step))
        Tree->Select(Model.Index(match), QAbstractItemView::PositionAtCenter);
    ShowMatchCount();
}

void CDlgCity::ShowMatchCount()
{
    RefreshFinder();
    FindLine->ShowCount(Finder.Ordinal(SelectedItem), Finder.MatchCount());
}
