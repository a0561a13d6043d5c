// Settings and lists that cannot be written: the user hears of it, and nothing that was there is lost.

#include "roadmap/core/CormppCheck.h"
#include "tests/story/StoryFixture.h"

#include <QAction>
#include <QFile>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace
{
/// As on a full disk, no file grows beyond a few bytes.
class CFullDisk
{
public:
    CFullDisk()
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        rlimit small = m_limit;
        small.rlim_cur = 40;
        setrlimit(RLIMIT_FSIZE, &small);
    }
    CFullDisk(const CFullDisk&) = delete;
    CFullDisk& operator=(const CFullDisk&) = delete;
    ~CFullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_limit{};
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

class WriteFailureStory : public CStory
{
protected:
    QByteArray SettingsFile() const { return ReadFile(Machine.Settings()); }
    bool IsStored(const char* text)
    {
        return QTest::qWaitFor([&] { return SettingsFile().contains(text); });
    }
    void ExpectFailure(const QString& what, const QString& path, const char* cause, const char* consequence)
    {
        const QString text = what + u"\nファイル："_s + path + u"\n原因："_s + QString::fromUtf8(cause) + u"\n\n"_s +
                             QString::fromUtf8(consequence);
        Prompts.Expect(qUtf8Printable(text), IPrompts::Icon::Warning);
    }
    void ExpectSettingsFailure(const char* cause)
    {
        ExpectFailure(u"設定を保存できませんでした。"_s, Folder.filePath(u"settings.ini"_s), cause,
                      "原因を取り除くと、次に設定が変わったときに保存されます。"
                      "それまでに終了すると、変更した設定は失われます。");
    }
};

TEST_F(WriteFailureStory, AnInitialPlaceThatCannotBeStoredSaysSoAtOnceAndIsStoredLater)
{
    OpenSite();
    EXPECT_TRUE(IsStored("Site4")) << "what the start has to keep";
    Machine.Context().Settings().Save();
    const QByteArray before = SettingsFile();
    {
        const CFullDisk disk;
        Prompts.Expect("東経 139度41分30.4秒\n北緯  35度41分21.2秒\n標高 37m\nタイムゾーン +09時間00分\n\n"
                       "を初期値として設定します。",
                       IPrompts::Icon::Information, IPrompts::Buttons::OkCancel);
        ExpectSettingsFailure("書き込みの途中で失敗しました。");
        Click(ObsId::ButtonSetInit);
        EXPECT_EQ(SettingsFile(), before) << "the old file is whole";
        Click(ObsId::CheckFeatureFirst);
        Key(Qt::Key_Escape); // the same cause is reported once
        EXPECT_EQ(SettingsFile(), before);
    }
    Host().MoveObserver(11.0, 21.0, 31.0);
    EXPECT_TRUE(IsStored("11.00000000, 21.00000000"));
    EXPECT_TRUE(SettingsFile().contains("[Default]")) << "the earlier change, too";
    const CFullDisk disk;
    ExpectSettingsFailure("書き込みの途中で失敗しました。");
    Host().MoveObserver(12.0, 22.0, 32.0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Prompts.AreDone(); })) << "another one is reported anew";
    Prompts.AnswerAll();
}

TEST_F(WriteFailureStory, WhatTheLastSessionCannotStoreIsToldBeforeItEnds)
{
    Start();
    QFile::remove(Folder.filePath(u"settings.ini"_s));
    ASSERT_TRUE(QDir().mkdir(Folder.filePath(u"settings.ini"_s))); // in the file's place
    Host().MoveObserver(10.0, 20.0, 30.0);
    ExpectSettingsFailure("同じ名前のフォルダか装置があります。");
    Window().close();
    EXPECT_TRUE(Prompts.AreDone()) << "later nothing would be shown any more";
}

TEST_F(WriteFailureStory, AFolderThatCannotBeMadeIsToldWithWhatItMeans)
{
    Folders.User = Folder.filePath(u"file/user/"_s);
    QFile(Folder.filePath(u"file"_s)).open(QIODevice::WriteOnly);
    const char* cause = "保存先のフォルダがなく、作ることもできません。";
    ExpectFailure(u"地名の一覧を用意できませんでした。"_s, Folders.User + u"kivpel.obs"_s, cause,
                  "付属の一覧を使います。一覧を編集しても、保存できないことがあります。");
    ExpectFailure(u"道路地図を登録できませんでした。"_s, Folders.User + u"components.xml"_s, cause,
                  "原因を取り除いて起動し直すまで、道路地図は使えません。");
    Start();
    Settle();
    for (const QAction* action : Window().findChildren<QAction*>()) {
        if (!action->text().startsWith(u"スーパーマップル"_s))
            continue;
        EXPECT_FALSE(action->isEnabled());
        EXPECT_EQ(action->toolTip(), u"道路地図がこのコンピューターに登録されていません。"
                                     "保存先のフォルダに書き込めることを確認して、起動し直してください。"_s);
    }
}
} // namespace
