#include "tests/dialog/CityFixture.h"

#include "host/control/ControlRegister.h"
#include "host/dialog/HostMessage.h"

#include <QWindow>

using namespace Qt::StringLiterals;

namespace
{
constexpr char16_t List[] = u"#PLACE LIST\r\n"
                            u"@日本\r\n@@関東\r\n"
                            u"東京,139.7500000E,35.5000000N,     39,+09.00, 0, 0, 2\r\n"
                            u"横浜,139.5000000E,35.2500000N,      5,+09.00, 1, 0, 2\r\n#\r\n"
                            u"@@東北\r\n仙台,140.5000000E,38.2500000N,     43,+09.00, 0, 0, 2\r\n#\r\n"
                            u"富士山,138.5000000E,35.2500000N,   3776,+09.00, 0, 0, 4\r\n#\r\n"
                            u"@海外\r\n"
                            u"Paris,002.5000000E,48.5000000N,     35,+01.00, 0, 0, 2\r\n"
                            u"London,000.5000000W,51.5000000N,     11,+00.00, 0, 0, 2\r\n#\r\n";

QString Text(const CPlaceItem* folder)
{
    QStringList texts;
    for (const CPlaceItem* item = folder->FirstChild(); item; item = item->Next())
        texts += item->FirstChild() ? item->Text() + u'(' + Text(item) + u')' : item->Text();
    return texts.join(u' ');
}
} // namespace

CCityFixture::CCityFixture()
{
    Machine.Context().MainWindow = &MainWindow;
    EngineScript.Register(QString::fromUtf16(ControlClass::SkyEngine));
    MapScript.Register(QString::fromUtf16(ControlClass::GlobeMap));
    MapScript.FeatureCount = 5;
    MapScript.FeatureNames = {u"観測地"_s, u"市区町村"_s, u"都市"_s, u"天文台"_s, u"山岳"_s};
    EXPECT_TRUE(Engine.Create(CCorKiv::DefaultVariant, &MainWindow, QRect(), 1));
    EXPECT_TRUE(Map.Create(&MainWindow, QRect(), 2));
    WriteFile("kivpel.obs", CodePage932::Encode(List));
    Renew();
    Dialog->Coordinates.LongitudeHemisphere = Dialog->Coordinates.LatitudeHemisphere = 0;
    Dialog->Coordinates.TimeZoneSign = 0;
    Dialog->Coordinates.LongitudeDegrees = 10;
    Dialog->Coordinates.LatitudeDegrees = 20;
    Transcript.Take();
}

void CCityFixture::Renew()
{
    Dialog = std::make_unique<CDlgCity>(&Engine, &MainWindow);
    Dialog->Paths = CPlacePaths::InFolder(Folder.path() + u'/');
    Dialog->SetCorMapPtr(&Map);
}

void CCityFixture::PutDeletion(const char* folder) const
{
    const QString deletion = uR"({"action":"delete","next":"","original_name":"%1"})"_s;
    const QString below = uR"({"action":"path","type":"node","original_name":"場所","next":[%1]})"_s;
    const QString element = *folder ? below.arg(deletion.arg(QString::fromUtf8(folder))) : deletion.arg(u"場所"_s);
    WriteFile("kivpel_user_obs.json", CodePage932::Encode(u'[' + element + u']'));
}

void CCityFixture::Keys(const char* keys)
{
    for (const QString& key : QString::fromUtf8(keys).split(u' ')) {
        const QKeyCombination combination = QKeySequence(key)[0];
        Key(combination.key(), combination.keyboardModifiers());
    }
}

CCityFixture::~CCityFixture()
{
    Dialog.reset();
}

int CCityFixture::Run(const std::function<void()>& steps)
{
    return RunModal(*Dialog, [&] {
        Transcript.Take();
        steps();
    });
}

std::string CCityFixture::Enabled() const
{
    std::string enabled;
    for (const auto& [id, letter] : {std::pair{CityId::ButtonEdit, 'e'}, std::pair{CityId::ButtonAdd, 'a'},
                                     std::pair{CityId::ButtonDel, 'd'}, std::pair{CityId::ButtonSetInit, 'i'}})
        enabled += Item(id)->isEnabled() ? letter : '-';
    return enabled;
}

QModelIndex CCityFixture::At(const char* path) const
{
    const QAbstractItemModel* model = Item<CKivTreeCtrl>(CityId::Tree)->model();
    QModelIndex at = model->index(0, 0);
    for (const QString& name : QString::fromUtf8(path).split(u'/', Qt::SkipEmptyParts)) {
        const QModelIndexList found = model->match(model->index(0, 0, at), Qt::DisplayRole, name, 1, Qt::MatchExactly);
        EXPECT_FALSE(found.isEmpty()) << path;
        at = found.value(0);
    }
    return at;
}

void CCityFixture::Select(const char* path)
{
    auto* tree = Item<CKivTreeCtrl>(CityId::Tree);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->viewport()->mapFrom(Dialog.get(), PointOf(path)));
}

std::string CCityFixture::Selected() const
{
    return Item<CKivTreeCtrl>(CityId::Tree)->Selected().data().toString().toStdString();
}

std::string CCityFixture::TreeText() const
{
    return Text(CPlaceModel::Item(At(""))).toStdString();
}

QPoint CCityFixture::PointOf(const char* path) const
{
    auto* tree = Item<CKivTreeCtrl>(CityId::Tree);
    const QModelIndex index = At(path);
    for (QModelIndex folder = index.parent(); folder.isValid(); folder = folder.parent())
        tree->expand(folder);
    tree->scrollTo(index);
    const QRect row = tree->visualRect(index);
    return tree->viewport()->mapTo(Dialog.get(), QPoint(row.left() + 20, row.center().y()));
}

void CCityFixture::Mouse(QEvent::Type type, QPoint dialogPoint, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QWindow* window = Dialog->windowHandle();
    QMouseEvent event(type, dialogPoint, window->mapToGlobal(dialogPoint), button, buttons, Qt::NoModifier);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
}

void CCityFixture::Drag(const char* from, const char* to, bool cancel)
{
    (void)PointOf(to); // opens its folders before the points are taken
    const QPoint start = PointOf(from);
    const QPoint end = PointOf(to);
    Mouse(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, start + QPoint(3, 3), Qt::NoButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, start + QPoint(12, 12), Qt::NoButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton);
    if (cancel)
        Mouse(QEvent::MouseButtonPress, end, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    Mouse(QEvent::MouseButtonRelease, end, Qt::LeftButton, Qt::NoButton);
}
