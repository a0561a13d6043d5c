#include "tests/dialog/DialogDriver.h"

#include "obs/ControlIds.h"

#include <QClipboard>
#include <QGroupBox>
#include <QMouseEvent>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

std::string CDialogDriver::TextOf(const CKivDialog& dialog, int id)
{
    QWidget* item = dialog.Item(id);
    if (const auto* edit = qobject_cast<QLineEdit*>(item))
        return edit->text().toStdString();
    if (const auto* label = qobject_cast<QLabel*>(item))
        return label->text().toStdString();
    if (const auto* group = qobject_cast<QGroupBox*>(item))
        return group->title().toStdString();
    const auto* button = qobject_cast<QAbstractButton*>(item);
    return button ? button->text().toStdString() : std::string();
}

std::string CDialogDriver::Fields() const
{
    using namespace ObsId;
    return std::string(IsChecked(RadioEast)   ? "E"
                       : IsChecked(RadioWest) ? "W"
                                              : "?") +
           ' ' + TextOf(EditLngDeg) + ' ' + TextOf(EditLngMin) + ' ' + TextOf(EditLngSec) +
           (IsChecked(RadioNorth)   ? " N "
            : IsChecked(RadioSouth) ? " S "
                                    : " ? ") +
           TextOf(EditLatDeg) + ' ' + TextOf(EditLatMin) + ' ' + TextOf(EditLatSec);
}

void CDialogDriver::Click(QWidget* item)
{
    ASSERT_NE(item, nullptr);
    QTest::mouseClick(item, Qt::LeftButton, {}, QPoint(8, item->height() / 2));
}

void CDialogDriver::Type(const CKivDialog& dialog, int id, const char* text)
{
    auto* edit = dialog.Item<QLineEdit>(id);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromUtf8(text));
}

void CDialogDriver::Paste(const CKivDialog& dialog, int id, const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    auto* edit = dialog.Item<QLineEdit>(id);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
}

void CDialogDriver::Key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (!QApplication::focusWidget() && QApplication::activeModalWidget()) // after a child has closed
        QApplication::activeModalWidget()->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }, 500));
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void CDialogDriver::Drag(QWidget& widget, QPoint start, QPoint end)
{
    QTest::mousePress(&widget, Qt::LeftButton, {}, start);
    for (const QPoint point : {(start + end) / 2, end}) {
        QMouseEvent move(QEvent::MouseMove, point, widget.mapToGlobal(point), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &move);
    }
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, end);
}

void CDialogDriver::ClickSpin(int id, bool up) const
{
    auto* spin = Item<CKivSpinButton>(id);
    ASSERT_NE(spin, nullptr);
    QTest::mouseClick(spin->childAt(spin->width() / 2, up ? spin->height() / 4 : spin->height() * 3 / 4),
                      Qt::LeftButton);
}

void CDialogDriver::Wheel(QWidget& window, QPoint point, int delta, Qt::KeyboardModifiers modifiers)
{
    QWidget* under = window.childAt(point);
    QWidget* target = under ? under : &window;
    QWheelEvent event(target->mapFrom(&window, point), window.mapToGlobal(point), {}, {0, delta}, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event); // the toolkit hands on to parents only what came from the user
    qApp->notify(target, &event);
}

void CDialogDriver::Settle()
{
    for (int round = 0; round < 3; ++round)
        QApplication::processEvents();
}

std::string CDialogDriver::StoredText(const char* section, const char* name)
{
    QString value;
    CRegistry::Read(QString::fromLatin1(section), QString::fromLatin1(name), u"(none)"_s, &value);
    return value.toStdString();
}

int CDialogDriver::Stored(const char* section, const char* name)
{
    int value = 0;
    CRegistry::Read(QString::fromLatin1(section), QString::fromLatin1(name), -77, &value, CRegistry::Count);
    return value;
}

void CDialogDriver::Store(const char* section, const char* name, const QString& value)
{
    CRegistry::Write(QString::fromLatin1(section), QString::fromLatin1(name), value);
}
