// A whole session of the host in one text: what it says to its engine, its maps and the dialogs, what its panel and its
// menus show.

#include "controls/sky_engine/SkyEngine.h"
#include "roadmap/DlgMapple.h"
#include "tests/story/StoryFixture.h"

#include <QAction>
#include <QFormLayout>
#include <QMenuBar>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace
{
/// Writes down every line of every engine from its making on, the calls of the maps, and what the window shows.
class SessionStory : public CStory
{
protected:
    SessionStory()
    {
        for (const char16_t* name : {ControlClass::SkyEngine, ControlClass::SkyEngine3, ControlClass::SkyEngine4})
            CControlRegister::Instance().Register(QString::fromUtf16(name), [this](QWidget* parent) {
                auto engine = std::make_unique<CSkyEngine>(parent, Folders.Shipped);
                const QString tag = m_engines++ == 0 ? u"sky  "_s : u"site "_s;
                engine->SetCommandLog([this, tag](const QString& line, const QString& answer) {
                    Say(tag + line + (answer.isEmpty() ? QString() : u" -> "_s + answer));
                });
                return engine;
            });
    }
    void Say(QString line)
    {
        if (line == u"site Show Sky"_s)
            return; // a painting
        line.replace(Folder.path(), u"FOLDER"_s);
        line.replace(QDir::cleanPath(Folders.Shipped), u"DATA"_s);
        m_said += line.size() > Longest ? line.left(Longest) + u"..."_s : line;
    }
    /// Everything up to now under a heading, with what the window shows then.
    void Chapter(const QString& name, const std::function<void()>& steps)
    {
        m_said += u"\n== "_s + name;
        steps();
        Settle();
        QStringList rows;
        for (const auto* form : Window().findChildren<QFormLayout*>()) {
            for (int row = 0; row < form->rowCount(); ++row) {
                const auto* value = qobject_cast<QLabel*>(form->itemAt(row, QFormLayout::FieldRole)->widget());
                if (value)
                    rows += value->text();
            }
        }
        m_said += u"panel "_s + rows.join(u" | "_s);
    }
    void SayMenu(QMenu& menu, const QString& indent)
    {
        Q_EMIT menu.aboutToShow();
        for (const QAction* action : menu.actions()) {
            m_said += indent + (action->isSeparator() ? u"---"_s : action->text()) +
                      (action->shortcut().isEmpty() ? QString() : u"  "_s + action->shortcut().toString()) +
                      (action->isCheckable() ? (action->isChecked() ? u" [x]"_s : u" [ ]"_s) : QString()) +
                      (action->isEnabled() ? QString() : u" (off)"_s);
            if (action->menu())
                SayMenu(*action->menu(), indent + u"  "_s);
        }
    }
    QAction* Action(const QString& start)
    {
        for (auto* action : Window().findChildren<QAction*>()) {
            if (action->text().startsWith(start))
                return action;
        }
        return nullptr;
    }

    QStringList m_said;

private:
    static constexpr qsizetype Longest = 150; // the path of an eclipse has thousands of letters
    int m_engines = 0;
};
} // namespace

TEST_F(SessionStory, SaysWhatItAlwaysSays)
{
    Start();
    for (QString& line : m_said) {
        if (line.startsWith(u"sky  Time = UT("_s))
            line = u"sky  Time = UT(now)"_s;
    }
    QObject::connect(&Host(), &CHost::Spoken, &Window(),
                     [this](const QString& who, const QString& line, const QString& answer) {
                         if (who == u"地球"_s || who == u"道路"_s)
                             Say(who + u' ' + line + (answer.isEmpty() ? QString() : u" -> "_s + answer));
                     });
    Chapter(u"an instant"_s, [&] { Host().SetInstant(QDateTime(QDate(2031, 12, 31), QTime(23, 30), Qt::UTC)); });
    Chapter(u"the site dialog"_s, [&] { OpenSite(); });
    Chapter(u"a degree is typed"_s, [&] {
        Enter(ObsId::EditLngDeg);
        Type("7");
    });
    Chapter(u"local mean time"_s, [&] { Action(u"地方平時"_s)->trigger(); });
    Chapter(u"Mars"_s, [&] { ChooseBody(5); });
    Chapter(u"the Earth again"_s, [&] { Host().SetBody(4); });
    Chapter(u"the eclipse"_s, [&] { Action(u"2035年"_s)->trigger(); });
    Chapter(u"no eclipse"_s, [&] { Action(u"2035年"_s)->trigger(); });
    Chapter(u"without the limits"_s, [&] { Action(u"ベッセル"_s)->trigger(); });
    Chapter(u"an hour on"_s, [&] { Action(u"1時間進める"_s)->trigger(); });
    Chapter(u"the site dialog is hidden"_s, [&] { Action(u"「場所」を隠す"_s)->trigger(); });
    Chapter(u"the road map"_s, [&] { Host().OpenRoadMap(true); });
    Chapter(u"a click on the road map"_s, [&] {
        QWidget& map = *Host().RoadMap()->MapOfDialog().Control()->Window();
        ClickAt(map, QPointF(map.rect().center()) + QPointF(40, -30));
    });
    m_said += u"\n== menus"_s;
    for (const QAction* action : Window().menuBar()->actions()) {
        m_said += action->text();
        SayMenu(*action->menu(), u"  "_s);
    }
    m_said += u"\n== the status bar"_s;
    for (const auto* label : Window().statusBar()->findChildren<QLabel*>())
        m_said += label->text();
    m_said += u"\n== the end"_s;
    Quit();

    const QByteArray said = m_said.join(u'\n').toUtf8() + '\n';
    const QByteArray expected = ReadFile(QStringLiteral(KIV_SOURCE_DATA) + u"../tests/story/session.txt"_s);
    if (said == expected)
        return;
    const QString fresh = QDir::temp().filePath(u"session.txt"_s);
    WriteFile(fresh, said);
    const QList<QByteArray> now = said.split('\n');
    const QList<QByteArray> before = expected.split('\n');
    qsizetype line = 0;
    while (line < std::min(now.size(), before.size()) && now[line] == before[line])
        ++line;
    ADD_FAILURE() << "line " << line + 1 << "\n  expected " << before.value(line).toStdString() << "\n  said     "
                  << now.value(line).toStdString() << "\nall of it is in " << fresh.toStdString();
}
