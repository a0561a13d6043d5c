#pragma once

#include "host/control/ControlNumbers.h"
#include "host/dialog/KivDialog.h"
#include "host/dialog/ThemedControls.h"
#include "host/system/Registry.h"
#include "host/text/CodePage932.h"
#include "host/text/Number.h"
#include "tests/TestFile.h"
#include "tests/TestHost.h"
#include "tests/dialog/Doubles.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

/// What every test of a window needs, with the headers that most of them use: the host's side in a temporary folder,
/// prompts that are expected, and what a user does to a dialog.
class CDialogDriver : public testing::Test
{
protected:
    CDialogDriver() { Machine.Context().Prompts = &Prompts; }
    ~CDialogDriver() override { EXPECT_EQ(m_awaited, 0) << "a dialog never came"; }

    /// The dialog that is meant where none is given; each fixture of one dialog names its own.
    [[nodiscard]] virtual CKivDialog* Shown() const { return nullptr; }
    template <typename Control = QWidget> [[nodiscard]] Control* Item(int id) const
    {
        return Shown()->Item<Control>(id);
    }

    /// Text of a box, a label, a group or a button; empty for anything else.
    [[nodiscard]] static std::string TextOf(const CKivDialog& dialog, int id);
    [[nodiscard]] std::string TextOf(int id) const { return TextOf(*Shown(), id); }
    [[nodiscard]] bool IsChecked(int id) const { return Item<QAbstractButton>(id)->isChecked(); }
    /// Hemispheres, degrees, minutes, seconds of the site dialog: "E 139 41 30.4 N 35 41 21.2".
    [[nodiscard]] std::string Fields() const;
    static void Click(QWidget* item);
    void Click(int id) const { Click(Item(id)); }
    /// Types over what a box holds.
    static void Type(const CKivDialog& dialog, int id, const char* text);
    void Type(int id, const char* text) const { Type(*Shown(), id, text); }
    /// Puts a text in place of what a box holds through the clipboard.
    static void Paste(const CKivDialog& dialog, int id, const QString& text);
    void Paste(int id, const char* text) const { Paste(*Shown(), id, QString::fromUtf8(text)); }
    /// Presses a key where the focus is.
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Drags with the left button held.
    static void Drag(QWidget& widget, QPoint start, QPoint end);
    void ClickSpin(int id, bool up) const;
    /// The wheel over a point of a window, in eighths of a degree.
    static void Wheel(QWidget& window, QPoint point, int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Lets the windows settle: queued calls, layout, painting.
    static void Settle();

    /// Runs a dialog and the steps inside its modal loop; a dialog that the steps leave open is cancelled.
    template <typename Dialog, typename Steps> static int RunModal(Dialog& dialog, Steps steps)
    {
        QTimer::singleShot(0, &dialog, [&] {
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
            steps();
            if (dialog.isVisible())
                dialog.reject();
        });
        return dialog.DoModal();
    }

    /// Does the steps inside the loop of the next modal dialog of the class, and of the template where one is given;
    /// called before what opens it. A dialog that the steps leave open is cancelled.
    template <typename Dialog = CKivDialog> void InNext(std::function<void(Dialog&)> steps, int templateNumber = 0)
    {
        ++m_awaited;
        auto* poll = new QTimer(&m_polls);
        poll->callOnTimeout([this, poll, steps = std::move(steps), templateNumber] {
            auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            const auto* numbered = qobject_cast<CKivDialog*>(dialog);
            if (!dialog || (templateNumber != 0 && numbered && numbered->TemplateNumber() != templateNumber))
                return;
            dialog->activateWindow(); // no window manager does it here
            if (!dialog->isAncestorOf(QApplication::focusWidget()))
                return;
            --m_awaited;
            poll->stop();
            poll->deleteLater();
            steps(*dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
        poll->start(1);
    }

    /// Settings; "(none)" and -77 for an absent one.
    [[nodiscard]] static std::string StoredText(const char* section, const char* name);
    [[nodiscard]] static int Stored(const char* section, const char* name);
    static void Store(const char* section, const char* name, const QString& value);

    CTestHost Machine;
    const QTemporaryDir& Folder = Machine.Folder;
    CExpectedPrompts Prompts;

private:
    int m_awaited = 0; ///< modal dialogs
    QObject m_polls;   ///< owns the timers that wait for them
};
