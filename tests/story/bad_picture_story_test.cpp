// Pictures and tables of bodies that are no good: the drawn surface, a line in the log; and what the good ones hold.

#include "controls/sky_engine/SkyEngine.h"
#include "controls/sphere/SphereTexture.h"
#include "tests/TestFile.h"
#include "tests/dialog/DialogDriver.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace
{
const QString Data = QStringLiteral(KIV_SOURCE_DATA);

QStringList& Log()
{
    static QStringList log;
    return log;
}

/// Keeps what is said in the log while it lives.
class CLogReader
{
public:
    CLogReader()
    {
        Log().clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& message) { Log() += message; });
    }
    ~CLogReader() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY_MOVE(CLogReader)
    [[nodiscard]] static qsizetype CountOf(const QString& text) { return Log().filter(text).size(); }

private:
    QtMessageHandler m_previous;
};

/// An engine over a data folder, shown.
class CGlobe
{
public:
    explicit CGlobe(const QString& data) : m_engine(nullptr, data)
    {
        m_engine.resize(240, 240);
        m_engine.show();
        m_engine.Command(u"View.Projection = PlanetaryGlobe; View.Angle = 180; Time = UT(2026, 11, 24, 15, 0, 0)"_s);
        m_engine.Command(u"Solar.Planet.Surface.Name.Visible = TRUE"_s);
    }
    QImage Show(const char* body)
    {
        m_engine.Command(QString::fromUtf8(body).prepend(u"Location = "_s) + u"(0, 0, 0); Show Sky"_s);
        return m_engine.grab().toImage();
    }
    [[nodiscard]] QStringList Names() const
    {
        QStringList names;
        for (const DrawnItem& item : m_engine.Drawn()) {
            if (item.Layer == QStringView(DrawnLayer::Surface))
                names += item.Name;
        }
        return names;
    }
    void Hide() { m_engine.hide(); }

private:
    CSkyEngine m_engine;
};
} // namespace

TEST(BodyPicture, ABadOneGivesWayToTheDrawnSurface)
{
    const QByteArray good = ReadFile(Data + u"mars/relief.jpg"_s);
    QByteArray damaged = good;
    damaged.replace(600, 2000, QByteArray(2000, 'x'));
    const std::tuple<QByteArray, const char*> pictures[] = {
        {QByteArray(), "no picture"},
        {good.left(good.size() / 2), "cut"},
        {"\xFF\xD8 nothing \xFF\xD9", "no picture"},
        {"P6 64 64 255\n" + QByteArray(12288, 'g'), "twice as wide as high"},
        {"P6 60000 30000 255\n", "no picture"}, // five gigabytes
        {"P6 400 200 255\n", "damaged"}};
    const QTemporaryDir folder;
    CGlobe plain(folder.path());
    const QImage drawn = plain.Show("Solar.Planet.Mars");
    EXPECT_NE(drawn.pixel(120, 60), drawn.pixel(120, 180)) << "more than one colour";
    for (const auto& [bytes, reason] : pictures) {
        WriteFile(folder.filePath(u"mars/relief.jpg"_s), bytes);
        const CLogReader log;
        EXPECT_EQ(CGlobe(folder.path()).Show("Solar.Planet.Mars"), drawn) << reason;
        EXPECT_EQ(log.CountOf(u"relief.jpg"_s), 1) << reason;
        EXPECT_EQ(log.CountOf(QString::fromUtf8(reason)), 1) << reason << ": " << Log().join(u'|').toStdString();
    }
    WriteFile(folder.filePath(u"mars/relief.jpg"_s), damaged);
    CGlobe(folder.path()).Show("Solar.Planet.Mars"); // as far as the reader gets along
    WriteFile(folder.filePath(u"mars/relief.jpg"_s), good);
    EXPECT_NE(CGlobe(folder.path()).Show("Solar.Planet.Mars"), drawn);
}

TEST(BodyPicture, BadRowsOfNamesAreLeftOutAndTold)
{
    const QTemporaryDir folder;
    WriteFile(folder.filePath(u"mars/features.csv"_s),
              "one,10,5,100\n\ntwo,x,5,100\nthree,10\n,1,2,3\nfour,340,-20,90\nfive,0,95,10\nsix,0,30,-1\n\xFF\xFE");
    const CLogReader log;
    CGlobe globe(folder.path());
    globe.Show("Solar.Planet.Mars");
    EXPECT_EQ(globe.Names(), QStringList({u"one"_s, u"four"_s}));
    EXPECT_EQ(log.CountOf(u"features.csv: 6 lines are left out, the first is line 3"_s), 1);
}

TEST(BodyPicture, OnlyTheShownBodysIsHeld)
{
    CGlobe globe(Data);
    constexpr qsizetype moon = qsizetype{2048} * 1024 * 4;
    constexpr qsizetype mars = qsizetype{512} * 256 * 4;
    for (int turn = 0; turn < 2; ++turn) {
        for (const auto& [body, bytes] : {std::pair("Solar.Planet.Earth.Satellite.Moon", moon),
                                          {"Solar.Planet.Mars", mars},
                                          {"Solar.Planet.Jupiter", mars}}) {
            globe.Show(body);
            // With its smaller copies.
            EXPECT_GE(CSphereTexture::SharedBytes(), bytes) << body;
            EXPECT_LT(CSphereTexture::SharedBytes(), bytes * 27 / 20) << body;
        }
    }
    globe.Hide();
    EXPECT_EQ(CSphereTexture::SharedBytes(), 0);
}
