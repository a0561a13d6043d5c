#include "host/dialog/CommandHistory.h"
#include "host/dialog/CommandIds.h"
#include "host/dialog/DlgCommand.h"
#include "obs/ControlIds.h"
#include "obs/DlgObs.h"
#include "tests/dialog/DialogDriver.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QDataStream>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Serialised(const CCommandHistory& history)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << history;
    return bytes;
}

class CommandTest : public CDialogDriver
{
protected:
    CommandTest()
    {
        m_script.Register(QString::fromUtf16(ControlClass::SkyEngine));
        m_script.Register(QString::fromUtf16(ControlClass::GlobeMap));
        EXPECT_TRUE(m_engine.Create(CCorKiv::DefaultVariant, &m_parent, QRect(), 1));
        m_transcript.Take();
    }
    // Runs the window and the steps inside its modal loop; they have to close it.
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
    // Keys go to whatever has the focus, as for a person.
    static void Type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    static void Send(const QString& line)
    {
        Type(line);
        Key(Qt::Key_Return);
    }
    // By its mnemonic; the toolkit shows the box pressed for a moment before it changes.
    static void ToggleSave(const CDlgCommand& dialog, bool isOn)
    {
        Key(Qt::Key_S, Qt::AltModifier);
        auto* save = dialog.Item<QAbstractButton>(CommandId::CheckSave);
        EXPECT_TRUE(QTest::qWaitFor([save, isOn] { return save->isChecked() == isOn; }));
    }
    static QStringList Entries(const CDlgCommand& dialog)
    {
        QStringList entries;
        for (int i = 0; i < Command(dialog).count(); ++i)
            entries += Command(dialog).itemText(i);
        return entries;
    }
    // What is stored: whether the history is kept, whether there is one, the last line.
    static std::string Stored()
    {
        const bool hasCommands = !StoredText("Dialog\\Command", "Commands").empty();
        return StoredText("Dialog\\Command", "Enable") + (hasCommands ? " commands " : " none ") +
               StoredText("Dialog\\Command", "Command");
    }

    QWidget m_parent;
    CTranscript m_transcript;
    ControlScript m_script{u"E"_s, m_transcript};
    CCorKiv m_engine;
};
} // namespace

TEST_F(CommandTest, EnterSendsAndTheNextLineIsTypedAtOnce)
{
    m_script.Answers[u"? Location"_s] = u"Location(1, 2, 3)"_s;
    const int result = Run([](CDlgCommand& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"コマンド入力 (for Debug of Map CorKiv)"_s);
        EXPECT_TRUE(Command(dialog).hasFocus());
        Key(Qt::Key_Return); // nothing typed, nothing sent
        Send(u"? Location"_s);
        EXPECT_EQ(TextOf(dialog, CommandId::EditAnswer), "Location(1, 2, 3)");
        Type(u"? Loc"_s); // not completed to the earlier line
        Key(Qt::Key_Enter);
        Type(u"? Location"_s);
        QTest::mouseClick(dialog.Item(CommandId::ButtonOk), Qt::LeftButton);
        Send(u"  "_s);
        EXPECT_EQ(Entries(dialog), (QStringList{u"? Location"_s, u"? Loc"_s}));
        Key(Qt::Key_A, Qt::ControlModifier);
        QApplication::clipboard()->setText(u"Show\r\nSky"_s);
        Key(Qt::Key_V, Qt::ControlModifier);
        Key(Qt::Key_Return);
        Key(Qt::Key_Escape);
    });
    EXPECT_EQ(result, QDialog::Rejected);
    EXPECT_EQ(m_transcript.Take(), "E ? Location\nE ? Loc\nE ? Location\nE Show  Sky");
}

TEST_F(CommandTest, UpAndDownWalkTheLinesSentAsInAShell)
{
    Run([](CDlgCommand& dialog) {
        for (const QString& line : {u"one"_s, u"two"_s, u"three"_s})
            Send(line);
        // Steps of a script, ^ up and v down, each with the text that the box then shows.
        const auto walk = [&dialog](const QString& script) {
            for (const QString& step : script.split(u' ')) {
                Key(step.startsWith(u'^') ? Qt::Key_Up : Qt::Key_Down);
                EXPECT_EQ(Command(dialog).currentText(), step.sliced(1)) << script.toStdString();
            }
        };
        // What was sent stands in the box; behind it is an empty line.
        walk(u"^two ^one ^one vtwo vthree v v"_s);
        // A line half typed waits there, and a line changed becomes the one being typed.
        Type(u"fo"_s);
        walk(u"^three ^two vthree vfo"_s);
        Type(u"ur"_s);
        Key(Qt::Key_Up);
        Type(u"!"_s);
        walk(u"^three vthree!"_s);
        Key(Qt::Key_Down, Qt::AltModifier);
        EXPECT_TRUE(Command(dialog).view()->isVisible());
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
            QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_FALSE(Command(dialog).view()->isVisible());
        walk(u"^one vtwo"_s);
        Key(Qt::Key_Return);
        Key(Qt::Key_Escape);
    });
    EXPECT_EQ(m_transcript.Take(), "E one\nE two\nE three\nE two");
}

TEST_F(CommandTest, KeepsTheHistoryOnlyWhenAsked)
{
    Run([](CDlgCommand&) {
        Send(u"first"_s);
        Key(Qt::Key_Escape);
    });
    EXPECT_EQ(Stored(), "0 none ");

    Run([](CDlgCommand& dialog) {
        EXPECT_EQ(Command(dialog).count(), 0);
        Send(u"one; = \\"_s);
        Send(u"two, \"2\""_s);
        ToggleSave(dialog, true);
        dialog.close(); // the close box
    });
    EXPECT_EQ(Stored(), "1 commands two, \"2\"");
    Machine.ReadAnew();

    const QString title = u"別の題"_s;
    Run(
        [&title](CDlgCommand& dialog) {
            EXPECT_EQ(dialog.windowTitle(), title);
            EXPECT_EQ(Entries(dialog), (QStringList{u"two, \"2\""_s, u"one; = \\"_s}));
            EXPECT_EQ(Command(dialog).lineEdit()->selectedText(), u"two, \"2\""_s);
            ToggleSave(dialog, false);
            QTest::mouseClick(dialog.Item(CommandId::ButtonCancel), Qt::LeftButton);
        },
        title);
    EXPECT_EQ(Stored(), "0 none ");
}

TEST_F(CommandTest, BoundsWhatItKeepsAndShows)
{
    CCommandHistory history{QString(CDlgCommand::LongestCommand + 1, u'x'), u" "_s, u"twice"_s, u"twice"_s};
    for (int i = 0; i < 200; ++i)
        history += u"line %1"_s.arg(i);
    CRegistry::Write(u"Dialog\\Command"_s, u"Enable"_s, 1, CRegistry::Flag);
    Store("Dialog\\Command", "Commands", QString::fromLatin1(Serialised(history).toBase64()));
    Store("Dialog\\Command", "Command", QString(100'000, u'y'));
    m_script.Answers[u"huge"_s] = QString(10'000'000, u'x');
    Run([](CDlgCommand& dialog) {
        EXPECT_EQ(Command(dialog).count(), CDlgCommand::LongestHistory);
        EXPECT_EQ(Entries(dialog).mid(0, 2), (QStringList{u"twice"_s, u"line 0"_s}));
        EXPECT_EQ(Command(dialog).currentText(), QString());
        Send(u"huge"_s);
        EXPECT_EQ(Command(dialog).count(), CDlgCommand::LongestHistory);
        const QString answer = dialog.Item<QLineEdit>(CommandId::EditAnswer)->text();
        EXPECT_LT(answer.size(), 100'000);
        EXPECT_TRUE(answer.endsWith(u'…'));
        Key(Qt::Key_Escape);
    });
}

TEST_F(CommandTest, TheHiddenButtonOpensItOnTheEngineOfTheSiteDialog)
{
    CDlgObs site(&m_parent, Folder.path() + u'/', 0);
    site.DoModeless(nullptr, QString());
    auto* button = site.Item<QAbstractButton>(ObsId::ButtonCommand);
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->isHidden());
    EXPECT_FALSE(button->isEnabled());

    QTimer::singleShot(0, &site, [&] {
        QWidget* const console = QApplication::activeModalWidget();
        ASSERT_NE(console, nullptr);
        EXPECT_EQ(console->parentWidget(), &site);
        ASSERT_TRUE(QTest::qWaitForWindowActive(console));
        Send(u"Show Sky"_s);
        Key(Qt::Key_Escape);
    });
    QStringList sent;
    QObject::connect(&site.EngineOfDialog(), &CCorKiv::CommandSent, &site,
                     [&sent](const QString& line) { sent += line; });
    button->setEnabled(true);
    button->click();
    EXPECT_EQ(sent, QStringList{u"Show Sky"_s});
}

TEST(CommandHistory, KeepsTheCompleteEntriesOfADamagedStream)
{
    const auto read = [](const QByteArray& bytes) {
        CCommandHistory history{u"earlier"_s};
        QDataStream stream(bytes);
        stream >> history;
        return (history.join(u' ') + (stream.status() == QDataStream::Ok ? u""_s : u"!"_s)).toStdString();
    };
    const QByteArray whole = Serialised({u"one"_s, u"two"_s});
    const qsizetype entry = (whole.size() - 4) / 2;
    EXPECT_EQ(read(whole), "one two");
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_EQ(read(whole.left(length)), length < 4 + entry ? "!" : "one!") << length;
    EXPECT_EQ(read("\xFF\xFF\xFF\xFF" + whole.sliced(4)), "one two!") << "more entries than there are";
    EXPECT_EQ(read(whole.first(4 + entry) + "\xFF\xFF\xFF\xFE" + whole.sliced(8 + entry)), "one!");
}
