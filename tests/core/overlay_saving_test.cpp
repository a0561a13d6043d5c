#include "FillingFile.h"
#include "PlaceFixture.h"
#include "city/core/PlaceModel.h"

#include <QAbstractItemModelTester>

#include <chrono>
#include <csignal>
#include <map>
#include <random>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
/// Edits at random, such as one day of a user might be.
class CWalk
{
public:
    explicit CWalk(CPlacesInFolder& folder, unsigned seed) : m_folder(folder), m_random(seed) {}

    /// With `isExact` the walk keeps off what names alone cannot tell apart later: it never renames, moves or deletes
    /// an item that a recorded addition stands behind, and never gives a name twice. Returns whether it edited
    /// anything.
    bool Step(bool isExact)
    {
        CPlaceItem* item = Any(false);
        const unsigned edit = Number(8);
        if (edit < 3)
            return Add(Any(true), Name(isExact));
        if (edit == 7)
            return !isExact && Number(4) == 0 && m_folder.Document().Reset();
        if (!item->Parent() || (isExact && m_anchors.contains(item)))
            return false;
        if (edit < 5)
            return Update(item, Number(3) == 0 ? item->Text() : Name(isExact));
        if (edit == 5) {
            m_folder.Document().Delete(item);
            return true;
        }
        return Move(item, Any(true));
    }

    unsigned Number(unsigned below) { return static_cast<unsigned>(m_random() % below); }

private:
    bool Add(CPlaceItem* folder, const QString& name)
    {
        CPlaceItem* after = AnyChild(folder);
        m_anchors.insert(after);
        if (Number(3) == 0)
            m_folder.Document().AddFolder(folder, after, name);
        else
            m_folder.Document().AddPlace(folder, after, name, AnyValues());
        return true;
    }

    bool Update(CPlaceItem* item, const QString& name)
    {
        if (item->IsFolder())
            m_folder.Document().UpdateFolder(item, name);
        else
            m_folder.Document().UpdatePlace(item, name, AnyValues());
        return true;
    }

    bool Move(CPlaceItem* item, CPlaceItem* folder)
    {
        if (Contains(item, folder))
            return false;
        CPlaceItem* after = AnyChild(folder);
        after = after == item ? nullptr : after;
        m_anchors.insert(after);
        for (CPlaceItem* inner : Below(m_folder.Document().Move(item, folder, after)))
            m_anchors.insert(inner); // each stands behind the one before it
        return true;
    }

    static std::vector<CPlaceItem*> Below(CPlaceItem* item)
    {
        std::vector<CPlaceItem*> all;
        for (CPlaceItem* child = item->FirstChild(); child; child = child->Next()) {
            all.push_back(child);
            for (CPlaceItem* inner : Below(child))
                all.push_back(inner);
        }
        return all;
    }

    static bool Contains(const CPlaceItem* item, const CPlaceItem* other)
    {
        while (other && other != item)
            other = other->Parent();
        return other == item;
    }

    CPlaceItem* Any(bool isFolder)
    {
        CPlaceItem* root = m_folder.Document().Tree().Root();
        std::vector<CPlaceItem*> all = Below(root);
        all.push_back(root);
        if (isFolder)
            std::erase_if(all, [](const CPlaceItem* item) { return !item->IsFolder(); });
        return all[Number(static_cast<unsigned>(all.size()))];
    }

    CPlaceItem* AnyChild(const CPlaceItem* folder)
    {
        CPlaceItem* child = folder->FirstChild();
        while (child && child->Next() && Number(3) > 0)
            child = child->Next();
        return child;
    }

    QString Name(bool isFresh)
    {
        const QStringList endings{u"山"_s, u"ソ"_s, u"\"/\\"_s, u"Spot"_s, u" "_s, u"～－"_s};
        const QString& name = endings[static_cast<qsizetype>(Number(6))];
        return isFresh ? QString::number(++m_count) + name : name;
    }

    CCityList AnyValues()
    {
        CCityList values = Values(Number(3600) / 10.0 - 180.0, Number(1800) / 10.0 - 90.0, Number(4000), 3);
        values.IsAutoAltitude = static_cast<int>(Number(2));
        return values;
    }

    CPlacesInFolder& m_folder;
    std::mt19937 m_random;
    std::set<const CPlaceItem*> m_anchors;
    int m_count = 0;
};

QByteArray Serialized(const CPlaceDocument& document)
{
    return document.Overlay().Bytes();
}

/// A document with a good number of edits, as bytes.
QByteArray RealOverlay()
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.Open();
    CWalk walk(f, 5);
    for (int step = 0; step < 12; ++step)
        walk.Step(true);
    EXPECT_TRUE(f.Document().SaveCityList().IsAll());
    return f.OverlayBytes();
}

QString ModelOutline(const QAbstractItemModel& model, const QModelIndex& parent = {})
{
    QStringList items;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString children = ModelOutline(model, index);
        items += children.isEmpty() ? index.data().toString() : index.data().toString() + u'(' + children + u')';
    }
    return items.join(u' ');
}
} // namespace

TEST(PlaceSaving, RandomEditsComeBackExactly)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        CPlacesInFolder f;
        f.Put(SmallList);
        f.Open();
        for (int session = 0; session < 3; ++session) {
            CWalk walk(f, seed * 10 + static_cast<unsigned>(session));
            for (int step = 0; step < 25; ++step)
                walk.Step(session == 0);
            const QString tree = TreeText(f.Document());
            ASSERT_TRUE(f.Document().SaveCityList().IsAll());
            const QByteArray overlay = f.OverlayBytes();
            f.Open();
            if (session == 0) { // later names and neighbours may be ambiguous
                ASSERT_EQ(TreeText(f.Document()), tree) << "seed " << seed;
            }
            const QByteArray list = ReadFile(f.Paths().UserListFilePath);
            ASSERT_TRUE(f.Document().SaveCityList().IsAll());
            ASSERT_EQ(f.OverlayBytes(), overlay) << "seed " << seed;
            if (session == 0) {
                ASSERT_EQ(ReadFile(f.Paths().UserListFilePath), list);
            }
        }
    }
}

TEST(PlaceSaving, UndoingEverythingLeavesTheBytesAndRedoingThemAllToo)
{
    for (unsigned seed = 1; seed <= 30; ++seed) {
        CPlacesInFolder f;
        f.Put(SmallList);
        f.PutOverlay(R"([{"action":"path","next":[{"action":"update","original_name":"x"},3,{"next":7},)"
                     R"({"action":"path","next":4,"original_name":"Japan"}],"original_name":")" +
                     CodePage932::Encode(u"場所") + "\"}]");
        CPlaceDocument& document = f.Open();
        CPlaceModel model(document);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        CWalk walk(f, seed);
        const auto state = [&] { return Serialized(document) + '\n' + TreeText(document).toUtf8(); };
        std::vector<QByteArray> states{state()};
        for (int step = 0; step < 40; ++step) {
            if (walk.Step(false))
                states.push_back(state());
            ASSERT_EQ(ModelOutline(model), Outline(document.Tree().Root()));
        }
        for (size_t edits = states.size() - 1; document.CanUndo(); --edits) {
            document.Undo();
            ASSERT_EQ(state().toStdString(), states[edits - 1].toStdString()) << "seed " << seed << " edit " << edits;
            ASSERT_EQ(ModelOutline(model), Outline(document.Tree().Root()));
        }
        for (size_t edits = 1; document.CanRedo(); ++edits) {
            document.Redo();
            ASSERT_EQ(state().toStdString(), states[edits].toStdString()) << "seed " << seed << " edit " << edits;
        }
        for (unsigned back = walk.Number(20); back > 0; --back)
            document.Undo();
        document.AddFolder(document.Tree().Root(), nullptr, u"another way"_s);
        EXPECT_FALSE(document.CanRedo());
    }
}

TEST(PlaceSaving, NoDamageToTheOverlayLosesIt)
{
    const QByteArray real = RealOverlay();
    QList<QByteArray> damaged{"{}",
                              "\"text\"",
                              "7",
                              "[1e999]",
                              "[\"\\ud800\"]",
                              real + "x",
                              real.left(40) + '\0' + real.mid(40),
                              QByteArray("[").repeated(100'000),
                              QByteArray("{\"next\":[").repeated(100'000),
                              (R"([{"action":"path","original_name":"x","next":)" + QByteArray()).repeated(100'000)};
    for (qsizetype at = 1; at < real.size(); ++at)
        damaged += real.left(at);
    for (qsizetype at = 0; at < real.size(); ++at) {
        damaged += real;
        damaged.back()[at] = static_cast<char>(real[at] ^ (1 << (at % 8)));
    }
    damaged += CodePage932::Decode(real).toUtf8();
    CPlacesInFolder f;
    f.Put(SmallList);
    int setAside = 0;
    for (qsizetype i = 0; i < damaged.size(); ++i) {
        const QByteArray& bytes = damaged[i];
        f.PutOverlay(bytes);
        CPlaceDocument& document = f.Open();
        document.AddFolder(document.Tree().Root(), nullptr, u"new"_s);
        if (i > 20 && i % 16 != 0)
            continue; // flushing to the disk takes its time
        const QStringList before = f.Files();
        ASSERT_TRUE(document.SaveCityList().IsAll());
        QStringList added = f.Files();
        added.removeIf([&before](const QString& name) { return before.contains(name) && !name.endsWith(u".1"_s); });
        ASSERT_FALSE(added.isEmpty()) << bytes.left(200).toStdString();
        // What was there is kept whole, as a backup when it was a document and under its own name when it was none.
        EXPECT_EQ(f.File(added.last()), bytes) << added.join(u' ').toStdString();
        EXPECT_EQ(added.last().contains(u"damaged"_s), !OverlayJson::Parse(bytes).IsWhole);
        setAside += added.last().contains(u"damaged"_s) ? 1 : 0;
        for (const QString& name : added)
            QFile::remove(QFileInfo(f.Paths().OverlayFilePath).dir().filePath(name));
        EXPECT_TRUE(OverlayJson::Parse(f.OverlayBytes()).IsWhole);
    }
    EXPECT_GT(setAside, damaged.size() / 32);
}

TEST(PlaceSaving, OfACutOverlayTheCompleteElementsAreReplayed)
{
    const QByteArray first = R"({"action":"delete","original_name":"Overseas"})";
    const QByteArray root = R"([{"action":"path","original_name":")" + CodePage932::Encode(u"場所") + R"(","next":[)";
    const struct
    {
        QByteArray Overlay;
        QString Outline;
    } cases[] = {
        {root + first, u"Japan(Kanto(Harbour 港見台))"_s},
        {root + first + R"(,{"action":"delete","original_name":"Japan"})", u""_s},
        {root + first + R"(,{"action":"delete","original_name":"Japan")", u"Japan(Kanto(Harbour 港見台))"_s},
        {root + first + R"(,{"action":"add","original_name":"New","type":"node","next":[)",
         u"Japan(Kanto(Harbour 港見台))"_s},
        {root + R"({"action":"path","original_name":"Jap)", u"Japan(Kanto(Harbour 港見台)) Overseas(Ridge)"_s},
        {root + R"({"action":"path","original_name":"Japan","next":[{"action":"delete","original_name":"Kanto"},7)",
         u"Japan Overseas(Ridge)"_s},
    };
    for (const auto& c : cases) {
        CPlacesInFolder f;
        f.Put(SmallList);
        f.PutOverlay(c.Overlay);
        EXPECT_EQ(Outline(f.Open().Tree().Root()->FirstChild()), c.Outline) << c.Overlay.toStdString();
    }
}

TEST(PlaceSaving, OfAFileThatItWroteItselfTheFoldersBeforeTheCutAreReplayed)
{
    CPlacesInFolder f;
    f.Put(SmallList);
    f.Open();
    for (const char16_t* name : {u"1", u"2", u"3"})
        f.Document().AddFolder(f.At({}), nullptr, QString::fromUtf16(name));
    ASSERT_TRUE(f.Document().SaveCityList().IsAll());
    const QByteArray whole = f.OverlayBytes();
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
    f.Document().AddPlace(f.At({u"Overseas"_s}), nullptr, u"Spot"_s, Values(1, 2, 3, 4));
    const QByteArray newOverlay = Serialized(f.Document());
    const qint64 newListSize = oldList.size() + 94;
    const QStringList files = f.Files();
    int lists = 0;
    int overlays = 0;
    for (qint64 room = 0; room <= std::max<qint64>(newListSize, newOverlay.size()); ++room) {
        f.Document().SetSaveFileFactory(
            [room](const QString& path) { return std::make_unique<CFillingFile>(path, room); });
        const CPlaceDocument::CSaved saved = f.Document().SaveCityList();
        EXPECT_EQ(saved.UserList, ReadFile(f.Paths().UserListFilePath) != oldList) << room;
        EXPECT_EQ(f.OverlayBytes(), saved.Overlay ? newOverlay : oldOverlay) << room;
        if (!saved.Overlay) {
            EXPECT_EQ(f.Files(), files) << room;
        }
        lists += saved.UserList ? 1 : 0;
        overlays += saved.Overlay ? 1 : 0;
    }
    EXPECT_GT(lists, 0);
    EXPECT_GT(overlays, 0);
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
        if (f.Document().CanRedo())
            f.Document().Redo();
        else
            f.Document().Undo();
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
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            while (save()) {
            }
            _exit(1);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500 + random() % 20000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the saver gave up";
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
