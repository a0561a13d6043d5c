#include "pictures/CityPictures.h"

#include "city/ControlIds.h"
#include "host/dialog/KivDialog.h"
#include "host/dialog/KivTreeCtrl.h"
#include "obs/ControlIds.h"
#include "pictures/Camera.h"
#include "planetarium/MainWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>

using namespace Qt::StringLiterals;

namespace
{
void Key(QWidget& widget, int key, const QString& text = QString(), Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &press);
}

void Press(const CKivDialog& dialog, int id)
{
    if (auto* button = dialog.Item<QAbstractButton>(id))
        button->click();
}

/// Types a text into the tree's find line.
void Find(CKivTreeCtrl& tree, const QString& text)
{
    tree.setFocus();
    Key(tree, Qt::Key_F, {}, Qt::ControlModifier);
    if (auto* line = tree.findChild<QLineEdit*>())
        line->setText(text);
}

void CloseFind(const CKivTreeCtrl& tree)
{
    if (auto* line = tree.findChild<QLineEdit*>())
        Key(*line, Qt::Key_Escape);
}

/// The pointer on its way from one item to another; the button stays down.
void DragHalfway(CKivDialog& list, CKivTreeCtrl& tree, const QModelIndex& from, const QModelIndex& to)
{
    const auto mouse = [](QWidget& widget, QEvent::Type type, QPoint point, Qt::MouseButton button) {
        QMouseEvent event(type, point, widget.mapToGlobal(point), button, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    };
    QWidget& viewport = *tree.viewport();
    const QPoint start = tree.visualRect(from).center();
    mouse(viewport, QEvent::MouseButtonPress, start, Qt::LeftButton);
    mouse(viewport, QEvent::MouseMove, start + QPoint(20, 0), Qt::NoButton);
    const QRect target = tree.visualRect(to);
    mouse(list, QEvent::MouseMove, viewport.mapTo(&list, target.topLeft() + QPoint(30, target.height() / 2)),
          Qt::NoButton);
}

void ShootEditors(CCamera& camera, const CKivDialog& list)
{
    camera.InNext(EditCityId::Template, [&camera](CKivDialog& editor) { camera.Shoot(editor, u"city-place.png"_s); });
    Press(list, CityId::ButtonEdit);
    camera.InNext(AddCityId::Template, [&camera](CKivDialog& add) {
        camera.Shoot(add, u"city-add.png"_s);
        // A sibling's name is refused by the list.
        camera.InNext(EditCityId::Template, [&camera](CKivDialog& editor) {
            if (auto* name = editor.Item<QLineEdit>(EditCityId::EditName))
                name->setText(u"富士山"_s);
            camera.AnswerNextBox(u"box-duplicate.png"_s);
            Press(editor, EditCityId::ButtonOk);
        });
        Press(add, AddCityId::ButtonOk);
    });
    Press(list, CityId::ButtonAdd);
    camera.AnswerNextBox(u"box-delete.png"_s);
    Press(list, CityId::ButtonDel);
}

/// A folder taken to another one by keyboard, which asks where it goes.
void ShootFolders(CCamera& camera, CKivDialog& list, CKivTreeCtrl& tree)
{
    const QModelIndex root = tree.model()->index(0, 0);
    const QModelIndex first = tree.model()->index(0, 0, root);
    tree.Select(first);
    camera.InNext(EditFolderId::Template,
                  [&camera](CKivDialog& editor) { camera.Shoot(editor, u"city-folder.png"_s); });
    Press(list, CityId::ButtonEdit);
    list.activateWindow(); // offscreen, nobody brings it back to the front
    CCamera::Settle();
    tree.setFocus();
    Key(tree, Qt::Key_X, {}, Qt::ControlModifier);
    tree.Select(first.siblingAtRow(1));
    camera.InNext(MoveToId::Template, [&camera](CKivDialog& moveTo) { camera.Shoot(moveTo, u"city-move-to.png"_s); });
    Key(tree, Qt::Key_V, {}, Qt::ControlModifier);
}

void ShootList(CCamera& camera, CKivDialog& list)
{
    auto* tree = list.Item<CKivTreeCtrl>(CityId::Tree);
    if (!tree)
        return;
    Find(*tree, u"富士山"_s);
    CloseFind(*tree);
    camera.Shoot(list, u"city-list.png"_s);
    ShootEditors(camera, list);
    Find(*tree, u"天文台"_s);
    camera.Shoot(list, u"city-find.png"_s);
    CloseFind(*tree);
    const QModelIndex dragged = tree->Selected();
    DragHalfway(list, *tree, dragged, tree->indexBelow(tree->indexBelow(dragged)));
    camera.Shoot(list, u"city-drag.png"_s);
    Key(*tree, Qt::Key_Escape); // ends the drag
    ShootFolders(camera, list, *tree);
}
} // namespace

void CityPictures::Take(CCamera& camera, CMainWindow& window)
{
    camera.InNext(CityId::Template, [&camera](CKivDialog& list) { ShootList(camera, list); });
    Press(window.Host().SiteDialog(), ObsId::ButtonCity);
}
