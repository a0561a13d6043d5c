#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"
#include "host/dialog/CommandHistory.h"
#include "host/dialog/CommandIds.h"
#include "host/dialog/DlgCommand.h"
#include "host/system/Registry.h"
#include "obs/ControlIds.h"
#include "obs/DlgObs.h"
#include "res/StringTable.h"
#include "tests/dialog/DialogDriver.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDataStream>
#include <QIODevice>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{
// Answers every line with itself in angle brackets and keeps it.
class CEchoEngine : public IControl
{
public:
    CEchoEngine(QWidget* parent, QStringList& lines) : m_window(parent), m_lines(lines) {}

    QWidget* Window() override { return &m_window; }
    QVariant Invoke(int method, const QVariantList& arguments) override
    {
        if (method != ControlNumber::Engine::MethodCommand)
            return {};
        const QString line = arguments.value(0).toString();
        m_lines += line;
        return line == u"huge"_s ? QString(10'000'000, u'x') : u'<' + line + u'>';
    }
    void SetControlProperty(int /*property*/, const QVariant& /*value*/) override {}

private:
    QWidget m_window;
    QStringList& m_lines;
};

class CommandTest : public CDialogDriver
{
protected:
    CommandTest()
    {
        for (const char16_t* name : {ControlClass::SkyEngine, ControlClass::GlobeMap}) {
            CControlRegister::Instance().Register(QString::fromUtf16(name), [this](QWidget* parent) {
                return std::make_unique<CEchoEngine>(parent, m_lines);
            });
        }
        EXPECT_TRUE(m_engine.Create(CCorKiv::DefaultVariant, &m_parent, QRect(), 1));
        m_lines.clear();
    }
    // Runs the window and, from inside its modal loop, the steps; they have to close it.
    template <typename Steps> int Run(Steps steps, const QString& title = QString())
    {
        CDlgCommand dialog(&m_engine, &m_parent);
        dialog.SetTitle(title);
        return RunModal(dialog, [&] {
            steps(dialog);
            EXPECT_FALSE(dialog.isVisible());
        });
    }

    static QComboBox& Command(const CDlgCommand& dialog) { return *dialog.Item<QComboBox>(CommandId::ComboCommand); }
    static QString Answer(const CDlgCommand& dialog) { return dialog.Item<QLineEdit>(CommandId::EditAnswer)->text(); }
    // Keys go to whatever has the focus, as for a person.
    static void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    // By its mnemonic; the toolkit shows the box pressed for a moment before it changes.
    static void ToggleSave(const CDlgCommand& dialog, bool isOn)
    {
        Press(Qt::Key_S, Qt::AltModifier);
        auto* save = dialog.Item<QAbstractButton>(CommandId::CheckSave);
        EXPECT_TRUE(QTest::qWaitFor([save, isOn] { return save->isChecked() == isOn; }));
    }
    static QStringList Entries(const QComboBox& combo)
    {
        QStringList entries;
        for (int i = 0; i < combo.count(); ++i)
            entries += combo.itemText(i);
        return entries;
    }
    static QString Stored(const QString& name)
    {
        QString value;
        CRegistry::Read(u"Dialog\\Command"_s, name, u"(none)"_s, &value);
        return value;
    }
    static void Store(const CCommandHistory& history, const QString& last)
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << history;
        StoreText(QString::fromLatin1(bytes.toBase64()), last);
    }
    static void StoreText(const QString& commands, const QString& last)
    {
        CRegistry::Write(u"Dialog\\Command"_s, u"Enable"_s, 1, CRegistry::Flag);
        CRegistry::Write(u"Dialog\\Command"_s, u"Commands"_s, commands);
        CRegistry::Write(u"Dialog\\Command"_s, u"Command"_s, last);
    }

    QWidget m_parent;
    QStringList m_lines;
    CCorKiv m_engine;
};
} // namespace

TEST_F(CommandTest, EnterSendsAndTheNextLineIsTypedAtOnce)
{
    const int result = Run([](CDlgCommand& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"コマンド入力 (for Debug of Map CorKiv)"_s);
        EXPECT_TRUE(Command(dialog).hasFocus());
        Press(Qt::Key_Return); // nothing typed, nothing sent
        Type(u"? Location"_s);
        Press(Qt::Key_Return);
        EXPECT_EQ(Answer(dialog), u"<? Location>"_s);
        Type(u"? Loc"_s); // not completed to the earlier line
        Press(Qt::Key_Enter);
        Type(u"? Location"_s);
        QTest::mouseClick(dialog.Item(CommandId::ButtonOk), Qt::LeftButton);
        Type(u"  "_s);
        Press(Qt::Key_Return);
        EXPECT_EQ(Entries(Command(dialog)), (QStringList{u"? Location"_s, u"? Loc"_s}));
        Press(Qt::Key_A, Qt::ControlModifier);
        QApplication::clipboard()->setText(u"Show\r\nSky"_s);
        Press(Qt::Key_V, Qt::ControlModifier);
        Press(Qt::Key_Return);
        Press(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(m_lines, (QStringList{u"? Location"_s, u"? Loc"_s, u"? Location"_s, u"Show  Sky"_s}));
}

TEST_F(CommandTest, UpAndDownWalkTheLinesSentAsInAShell)
{
    Run([](CDlgCommand& dialog) {
        for (const char16_t* line : {u"one", u"two", u"three"}) {
            Type(QString::fromUtf16(line));
            Press(Qt::Key_Return);
        }
        const auto walk = [&dialog](const QList<std::pair<Qt::Key, const char16_t*>>& steps) {
            for (const auto& [key, text] : steps) {
                Press(key);
                EXPECT_EQ(Command(dialog).currentText(), QStringView(text));
            }
        };
        // What was sent stands in the box; behind it is an empty line.
        walk({{Qt::Key_Up, u"two"},
              {Qt::Key_Up, u"one"},
              {Qt::Key_Up, u"one"},
              {Qt::Key_Down, u"two"},
              {Qt::Key_Down, u"three"},
              {Qt::Key_Down, u""},
              {Qt::Key_Down, u""}});
        // A line half typed waits there, and a line changed becomes the one being typed.
        Type(u"fo"_s);
        walk({{Qt::Key_Up, u"three"}, {Qt::Key_Up, u"two"}, {Qt::Key_Down, u"three"}, {Qt::Key_Down, u"fo"}});
        Type(u"ur"_s);
        Press(Qt::Key_Up);
        Type(u"!"_s);
        walk({{Qt::Key_Up, u"three"}, {Qt::Key_Down, u"three!"}});
        Press(Qt::Key_Down, Qt::AltModifier);
        EXPECT_TRUE(Command(dialog).view()->isVisible());
        Press(Qt::Key_Down);
        Press(Qt::Key_Down);
        Press(Qt::Key_Return);
        EXPECT_FALSE(Command(dialog).view()->isVisible());
        walk({{Qt::Key_Up, u"one"}, {Qt::Key_Down, u"two"}});
        Press(Qt::Key_Return);
        EXPECT_EQ(Answer(dialog), u"<two>"_s);
        Press(Qt::Key_Escape);
    });
    EXPECT_EQ(m_lines.last(), u"two"_s);
}

TEST_F(CommandTest, KeepsTheHistoryOnlyWhenAsked)
{
    Run([](CDlgCommand&) {
        Type(u"first"_s);
        Press(Qt::Key_Return);
        Press(Qt::Key_Escape);
    });
    EXPECT_EQ(Stored(u"Enable"_s), u"0"_s);
    EXPECT_EQ(Stored(u"Commands"_s), QString());

    Run([](CDlgCommand& dialog) {
        EXPECT_EQ(Command(dialog).count(), 0);
        Type(u"one; = \\"_s);
        Press(Qt::Key_Return);
        Type(u"two, \"2\""_s);
        Press(Qt::Key_Return);
        ToggleSave(dialog, true);
        dialog.close(); // the close box
    });
    EXPECT_EQ(Stored(u"Enable"_s), u"1"_s);
    EXPECT_EQ(Stored(u"Command"_s), u"two, \"2\""_s);
    Machine.ReadAnew();

    const QString title = u"別の題"_s;
    Run(
        [&title](CDlgCommand& dialog) {
            EXPECT_EQ(dialog.windowTitle(), title);
            EXPECT_EQ(Entries(Command(dialog)), (QStringList{u"two, \"2\""_s, u"one; = \\"_s}));
            EXPECT_EQ(Command(dialog).lineEdit()->selectedText(), u"two, \"2\""_s);
            ToggleSave(dialog, false);
            QTest::mouseClick(dialog.Item(CommandId::ButtonCancel), Qt::LeftButton);
        },
        title);
    EXPECT_EQ(Stored(u"Enable"_s), u"0"_s);
    EXPECT_EQ(Stored(u"Commands"_s), QString());
    EXPECT_EQ(Stored(u"Command"_s), QString());
}

TEST_F(CommandTest, BoundsWhatItKeepsAndShows)
{
    CCommandHistory history{QString(CDlgCommand::LongestCommand + 1, u'x'), u" "_s, u"twice"_s, u"twice"_s};
    for (int i = 0; i < 200; ++i)
        history += u"line %1"_s.arg(i);
    Store(history, QString(100'000, u'y'));
    Run([](CDlgCommand& dialog) {
        EXPECT_EQ(Command(dialog).count(), CDlgCommand::LongestHistory);
        EXPECT_EQ(Command(dialog).itemText(0), u"twice"_s);
        EXPECT_EQ(Command(dialog).itemText(1), u"line 0"_s);
        EXPECT_EQ(Command(dialog).currentText(), QString());
        Type(u"huge"_s);
        Press(Qt::Key_Return);
        EXPECT_EQ(Command(dialog).count(), CDlgCommand::LongestHistory);
        EXPECT_LT(Answer(dialog).size(), 100'000);
        EXPECT_TRUE(Answer(dialog).endsWith(u'…'));
        Press(Qt::Key_Escape);
    });

    for (const char* commands : {"/////w==", "/////wAAAAIAYQ==", "\xE3\x81\x82 not Base64"}) {
        StoreText(QString::fromUtf8(commands), QString());
        Run([](CDlgCommand& dialog) {
            EXPECT_LE(Command(dialog).count(), 1);
            Press(Qt::Key_Escape);
        });
    }
}

TEST_F(CommandTest, TheHiddenButtonOpensItOnTheEngineOfTheSiteDialog)
{
    CDlgObs site(&m_parent, Folder.path() + u'/', 0);
    site.DoModeless(nullptr, QString());
    auto* button = site.Item<QAbstractButton>(ObsId::ButtonCommand);
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->isHidden());
    EXPECT_FALSE(button->isEnabled());

    m_lines.clear();
    QTimer::singleShot(0, &site, [&] {
        QWidget* const console = QApplication::activeModalWidget();
        ASSERT_NE(console, nullptr);
        EXPECT_EQ(console->parentWidget(), &site);
        ASSERT_TRUE(QTest::qWaitForWindowActive(console));
        Type(u"Show Sky"_s);
        Press(Qt::Key_Return);
        Press(Qt::Key_Escape);
    });
    QStringList sent;
    QObject::connect(&site.EngineOfDialog(), &CCorKiv::CommandSent, &site,
                     [&sent](const QString& line) { sent += line; });
    button->setEnabled(true);
    button->click();
    EXPECT_EQ(sent, QStringList{u"Show Sky"_s});
}
