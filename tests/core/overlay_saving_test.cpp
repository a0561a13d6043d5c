#include "FillingFile.h"
#include "OverlayScript.h"

#include <csignal>
#include <random>
#include <set>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Serialized(const CPlaceDocument& document)
{
    return document.Overlay().Bytes();
}
} // namespace

TEST(PlaceSaving, WhatIsNoDocumentIsSetAside)
{
    const QByteArray real = OverlayScript::Document(u"path Japan(path Kanto(delete Harbour)), update Overseas>海外"_s);
    QByteArray noughts = real;
    for (const QByteArray& bytes :
         {QByteArray("{}"), QByteArray("\"text\""), QByteArray("7"), QByteArray("[\"\\ud800\"]"), real + "x",
          noughts.insert(40, '\0'), QByteArray("[").repeated(100'000), QByteArray("{\"next\":[").repeated(100'000),
          QByteArray(R"([{"action":"path","original_name":"x","next":)").repeated(100'000)}) {
        CPlacesInFolder f;
        f.Put(SmallList);
        f.PutOverlay(bytes);
        CPlaceDocument& document = f.Open();
        document.AddFolder(document.Tree().Root(), nullptr, u"new"_s);
        ASSERT_TRUE(document.SaveCityList().IsAll());
        EXPECT_EQ(f.File(QString::fromUtf16(CPlacePaths::OverlayName) + u".damaged-1"_s), bytes);
        EXPECT_EQ(f.Open().Tree().Root()->FirstChild()->Text(), u"new"_s) << bytes.left(60).toStdString();
    }
}

TEST(PlaceSaving, OfACutOverlayTheCompleteElementsAreReplayed)
{
    const QString unchanged = u"Japan(Kanto(Harbour 港見台))"_s;
    const QByteArray whole = OverlayScript::Document(u"delete Overseas"_s);
    const QByteArray head = whole.left(whole.indexOf("],\"original_name\"")) + ',';
    const std::pair<QByteArray, QString> cases[] = {
        {"", unchanged},
        {R"({"action":"delete","original_name":"Japan"})", u""_s},
        {R"({"action":"delete","original_name":"Japan")", unchanged},
        {R"({"action":"add","original_name":"New","type":"node","next":[)", unchanged},
        {R"({"action":"path","original_name":"Jap)", unchanged},
        {R"({"action":"path","original_name":"Japan","next":[{"action":"delete","original_name":"Kanto"},7)",
         u"Japan"_s}};
    for (const auto& [cut, outline] : cases) {
        CPlacesInFolder f;
        f.Put(SmallList);
        f.PutOverlay(head + cut);
        EXPECT_EQ(Outline(f.Open().Tree().Root()->FirstChild()), outline) << cut.toStdString();
    }
}

TEST(PlaceSaving, OfAFileThatItWroteItselfTheFoldersBeforeTheCutAreReplayed)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.Open();
    OverlayScript::Edit(f, u"folder . 1; folder . 2; folder . 3"_s);
    const QByteArray whole = Serialized(f.Document());
    qsizetype most = 0;
    for (qsizetype length = 0; length < whole.size(); ++length) {
        f.PutOverlay(whole.left(length));
        const qsizetype added = Outline(f.Open().Tree().Root()->FirstChild()).split(u' ').size() - 3;
        EXPECT_GE(added, most) << length;
        most = added;
    }
    EXPECT_EQ(most, 3);
}

TEST(PlaceSaving, KeepsWhatOthersWroteAndWhatLinksPointTo)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    const QString path = f.Paths().OverlayFilePath;
    const QString target = path + u".elsewhere"_s;
    const QByteArray other = "[{\"action\":\"path\"}]";
    const QByteArray damaged = "[{";
    WriteFile(target, damaged);
    ASSERT_TRUE(QFile::link(target, path));
    f.Open();
    f.Document().SetSaveFileFactory([](const QString& name) { return std::make_unique<CFillingFile>(name, 1); });
    for (int attempt = 0; attempt < 3; ++attempt)
        EXPECT_FALSE(f.Document().SaveCityList().Overlay);
    f.Document().SetSaveFileFactory([](const QString& name) { return std::make_unique<QSaveFile>(name); });
    ASSERT_TRUE(f.Document().SaveCityList().IsAll());
    EXPECT_EQ(ReadFile(path + u".damaged-1"_s), damaged);
    EXPECT_FALSE(QFile::exists(path + u".damaged-2"_s)) << "once for all attempts";
    WriteFile(path, other); // a second program, which read the file before
    f.Document().AddFolder(f.At({}), nullptr, u"mine"_s);
    ASSERT_TRUE(f.Document().SaveCityList().IsAll());
    EXPECT_EQ(ReadFile(path + u".other-1"_s), other);
    EXPECT_EQ(ReadFile(target), Serialized(f.Document()));
}

TEST(PlaceSaving, KeepsTheLastGoodOverlays)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.Open();
    QList<QByteArray> saved;
    for (int i = 0; i < 6; ++i) {
        f.Document().AddFolder(f.At({}), nullptr, QString::number(i));
        EXPECT_TRUE(f.Document().SaveCityList().IsAll());
        EXPECT_TRUE(f.Document().SaveCityList().IsAll()) << "the same bytes push nothing out";
        saved.prepend(f.OverlayBytes());
    }
    const QString name = QString::fromUtf16(CPlacePaths::OverlayName);
    for (int number = 1; number <= 3; ++number)
        EXPECT_EQ(f.File(name + u'.' + QString::number(number)), saved[number]) << number;
    EXPECT_EQ(f.Files().size(), 6);
}

TEST(PlaceSaving, AFullDiskLeavesBothFiles)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.Open();
    ASSERT_TRUE(f.Document().SaveCityList().IsAll());
    const QByteArray oldList = ReadFile(f.Paths().UserListFilePath);
    const QByteArray oldOverlay = f.OverlayBytes();
    OverlayScript::Edit(f, u"add Overseas Spot"_s);
    const QByteArray newOverlay = Serialized(f.Document());
    const qint64 newListSize = oldList.size() + oldList.split('\n').at(3).size() + 1; // another place's line
    const QStringList files = f.Files();
    for (qint64 room = 0; room <= std::max<qint64>(newListSize, newOverlay.size()); ++room) {
        f.Document().SetSaveFileFactory(
            [room](const QString& path) { return std::make_unique<CFillingFile>(path, room); });
        const CPlaceDocument::CSaved saved = f.Document().SaveCityList();
        EXPECT_EQ(saved.UserList, room >= newListSize) << room;
        EXPECT_EQ(ReadFile(f.Paths().UserListFilePath) == oldList, !saved.UserList) << room;
        EXPECT_EQ(saved.Overlay, room >= newOverlay.size()) << room;
        EXPECT_EQ(f.OverlayBytes(), saved.Overlay ? newOverlay : oldOverlay) << room;
        EXPECT_TRUE(saved.Overlay || f.Files() == files) << room;
    }
    EXPECT_EQ(f.File(QString::fromUtf16(CPlacePaths::OverlayName) + u".1"_s), oldOverlay);
}

TEST(PlaceSaving, AKilledProgramLeavesWholeFiles)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.Open();
    for (int i = 0; i < 300; ++i)
        f.Document().AddPlace(f.At({u"Overseas"_s}), nullptr, u"p"_s + QString::number(i), Values(1, 2, i, 4));
    std::set<QByteArray> lists;
    std::set<QByteArray> overlays;
    const auto save = [&f] {
        (void)(f.Document().CanRedo() ? f.Document().Redo() : f.Document().Undo());
        return f.Document().SaveCityList().IsAll();
    };
    for (int state = 0; state < 2; ++state) {
        ASSERT_TRUE(save());
        lists.insert(ReadFile(f.Paths().UserListFilePath));
        overlays.insert(f.OverlayBytes());
    }
    const int runs = std::max(50, qEnvironmentVariableIntValue("KIV_CRASH_RUNS"));
    std::mt19937 random(3);
    for (int run = 0; run < runs; ++run) {
        itimerval time{}; // of the processor, so that the saver is in the midst of its work wherever it is slow
        time.it_value.tv_usec = static_cast<suseconds_t>(500 + random() % 20000);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            setitimer(ITIMER_PROF, &time, nullptr);
            while (save()) {
            }
            _exit(1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGPROF) << "the saver gave up";
        ASSERT_TRUE(lists.contains(ReadFile(f.Paths().UserListFilePath))) << run;
        ASSERT_TRUE(overlays.contains(f.OverlayBytes())) << run;
        for (const QString& name : f.Files()) {
            if (name.startsWith(u"kivpel_user_obs.json."_s) && name.size() == 22) {
                ASSERT_TRUE(overlays.contains(f.File(name))) << name.toStdString();
            }
        }
    }
    std::printf("killed %d times while saving\n", runs);
}
