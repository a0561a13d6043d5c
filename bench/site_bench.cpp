// Each promise of speed, measured against its floor or its bound in the same run. A figure is to be held
// against the counter with "most_" in front of its name.

#include "bench/Measure.h"
#include "bench/PromiseReporter.h"
#include "city/core/PlaceDocument.h"
#include "controls/globe_map/GlobeMap.h"
#include "controls/road_map/RoadMap.h"
#include "host/control/ControlNumbers.h"
#include "host/control/ControlRegister.h"
#include "host/control/RoadMapResults.h"
#include "host/control_window/CorKivMap.h"
#include "host/control_window/CorMpp.h"
#include "host/dialog/Theme.h"
#include "host/dialog/ThemedControls.h"
#include "host/system/ComponentStore.h"
#include "host/system/Registry.h"
#include "host/text/CodePage932.h"
#include "host/text/Number.h"
#include "obs/ControlIds.h"
#include "obs/DlgObs.h"
#include "obs/core/ObsSettings.h"
#include "planetarium/ControlClasses.h"
#include "planetarium/MainWindow.h"
#include "roadmap/ControlIds.h"
#include "roadmap/DlgMapple.h"
#include "roadmap/DlgMappleFind.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

using namespace Measure;

namespace
{
const QString DataFolder = QStringLiteral(KIV_SOURCE_DATA);

/// Times the work against its floor, in turn, and reports the ratio of the medians. What waits for the disk is timed by
/// the clock on the wall.
void Compare(
    benchmark::State& state, double promise, const std::function<void()>& floor, const std::function<void()>& work,
    const std::function<void()>& prepare = [] {}, Clock time = ProcessorMilliseconds)
{
    std::vector<double> floors;
    std::vector<double> works;
    for (auto step : state) {
        prepare();
        floors.push_back(time(floor));
        const double taken = time(work);
        works.push_back(taken);
        state.SetIterationTime(taken / 1000.0);
    }
    state.counters["floor_ms"] = Median(floors);
    state.counters["median_ms"] = Median(works);
    Hold(state, "ratio", Median(works) / Median(floors), promise);
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

/// What no loader can do without: read, decode, split.
void ReadDecodeSplit(const QString& path)
{
    qsizetype pieces = 0;
    for (const QByteArray& line : ReadFile(path).split('\n')) {
        for (const QByteArray& piece : line.split(','))
            pieces += CodePage932::Decode(piece).size();
    }
    benchmark::DoNotOptimize(pieces);
}

void Load(const QString& path)
{
    CPlaceList list;
    list.ListFilePath = path;
    list.LoadCityList();
    benchmark::DoNotOptimize(list.PlaceCount());
}

void LoadShippedList(benchmark::State& state)
{
    const QString path = DataFolder + u"kivpel.obs"_s;
    Compare(
        state, 3.0, [&] { ReadDecodeSplit(path); }, [&] { Load(path); });
}

void LoadTwiceTheLines(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QList<QByteArray> lines = ReadFile(DataFolder + u"kivpel.obs"_s).split('\n');
    const QString half = folder.filePath(u"half.obs"_s);
    const QString whole = folder.filePath(u"whole.obs"_s);
    WriteFile(half, lines.mid(0, lines.size() / 2).join('\n'));
    WriteFile(whole, lines.join('\n'));
    Compare(
        state, 2.0, [&] { Load(half); }, [&] { Load(whole); });
}

void WriteUserList(benchmark::State& state)
{
    const QTemporaryDir folder;
    CPlaceList list;
    list.ListFilePath = DataFolder + u"kivpel.obs"_s;
    list.UserListFilePath = folder.filePath(u"user.obs"_s);
    list.LoadCityList();
    const QString text = CodePage932::Decode(ReadFile(list.ListFilePath));
    Compare(
        state, 3.0,
        [&] {
            CKivFile file;
            if (file.OpenCreate(folder.filePath(u"floor.obs"_s)))
                file.Write(text);
            file.Close();
        },
        [&] { benchmark::DoNotOptimize(list.RefreshUserObs()); }, [] {}, Milliseconds);
}

/// A document over a list of so many empty folders, in a folder of its own.
class CPlaces
{
public:
    explicit CPlaces(int folders) : m_paths(CPlacePaths::InFolder(m_folder.path() + u'/'))
    {
        QByteArray list;
        for (int folder = 0; folder < folders; ++folder)
            list += "@f" + QByteArray::number(folder) + "\n";
        WriteFile(m_paths.ListFilePath, list);
        Open();
    }

    CPlaceDocument& Open()
    {
        Document = std::make_unique<CPlaceDocument>();
        Document->SetPaths(m_paths);
        Document->LoadCityList();
        Document->LoadLocationTreeContext();
        return *Document;
    }

    /// Adds so many places, in turn to each folder, each after the one added to that folder before.
    void Add(int count)
    {
        std::vector<std::pair<CPlaceItem*, CPlaceItem*>> folders;
        for (CPlaceItem* item = Document->Tree().Root()->FirstChild(); item; item = item->Next())
            folders.emplace_back(item, nullptr);
        CCityList place;
        place.Longitude = 139.5;
        for (int i = 0; i < count; ++i) {
            auto& [folder, last] = folders[static_cast<size_t>(i) % folders.size()];
            last = Document->AddPlace(folder, last, u"place"_s + QString::number(i), place);
        }
    }

    [[nodiscard]] QByteArray OverlayBytes() const { return ReadFile(m_paths.OverlayFilePath); }
    [[nodiscard]] QByteArray UserListBytes() const { return ReadFile(m_paths.UserListFilePath); }
    [[nodiscard]] QString Path(const QString& name) const { return m_folder.filePath(name); }

    std::unique_ptr<CPlaceDocument> Document;

private:
    QTemporaryDir m_folder;
    CPlacePaths m_paths;
};

constexpr int ManyPlaces = 10000;

/// Additions to one folder against the same number spread over a hundred.
void EditOneFolder(benchmark::State& state)
{
    std::unique_ptr<CPlaces> one;
    std::unique_ptr<CPlaces> hundred;
    Compare(
        state, 3.0, [&] { hundred->Add(ManyPlaces); }, [&] { one->Add(ManyPlaces); },
        [&] {
            one = std::make_unique<CPlaces>(1);
            hundred = std::make_unique<CPlaces>(100);
        });
}

void ReplayOneFolder(benchmark::State& state)
{
    CPlaces one(1);
    CPlaces hundred(100);
    for (CPlaces* places : {&one, &hundred}) {
        places->Add(ManyPlaces);
        (void)places->Document->SaveCityList();
    }
    Compare(
        state, 3.0, [&] { hundred.Open(); }, [&] { one.Open(); },
        [&] {
            one.Document.reset();
            hundred.Document.reset();
        });
}

void ReplayAgainstParsing(benchmark::State& state)
{
    CPlaces one(1);
    one.Add(ManyPlaces);
    (void)one.Document->SaveCityList();
    const QByteArray bytes = one.OverlayBytes();
    Compare(
        state, 4.0, [&] { benchmark::DoNotOptimize(OverlayJson::Parse(bytes).IsWhole); }, [&] { one.Open(); },
        [&] { one.Document.reset(); });
}

/// The shipped list filled up to ten thousand places, two thousand entries, against the same bytes encoded and written.
void SaveBothFiles(benchmark::State& state)
{
    CPlaces places(100);
    places.Add(ManyPlaces - 2000);
    (void)places.Document->SaveCityList();
    WriteFile(places.Path(QString::fromUtf16(CPlacePaths::ListName)), places.UserListBytes());
    QFile::remove(places.Path(QString::fromUtf16(CPlacePaths::OverlayName)));
    places.Open();
    places.Add(2000);
    (void)places.Document->SaveCityList();
    const QString list = CodePage932::Decode(places.UserListBytes());
    const QString overlay = CodePage932::Decode(places.OverlayBytes());
    const auto write = [&](const QString& name, const QString& text) {
        CKivFile file;
        if (file.OpenCreate(places.Path(name)))
            file.Write(text);
        file.Close();
    };
    int turn = 0;
    Compare(
        state, 3.0,
        [&] {
            write(u"floor.obs"_s, list);
            write(u"floor.json"_s, overlay);
        },
        [&] { benchmark::DoNotOptimize(places.Document->SaveCityList()); },
        [&] { // something new to save, so that backups are made, too
            if (++turn % 2 == 1)
                places.Document->Undo();
            else
                places.Document->Redo();
        },
        Milliseconds);
}

/// The road map with a marked site, moved before each redraw as under the user's hand.
void RedrawRoadMap(benchmark::State& state)
{
    using namespace ControlNumber::RoadMap;
    constexpr double unit = ControlNumber::RoadMap::MillisecondsPerDegree;
    CRoadMap map(nullptr, DataFolder);
    map.resize(640, 480);
    map.show();
    const auto scale = static_cast<int>(state.range(0));
    map.Invoke(SetScale, {scale});
    map.Invoke(SetPosition, {true, 139.54 * unit, 35.68 * unit});
    QApplication::processEvents();
    double x = 138.0 * unit;
    const auto draw = [&] {
        map.Invoke(SetPosition, {false, x, 36.0 * unit});
        map.repaint();
    };
    draw();
    MeasureMedian(
        state, 16.0, [&] { x += scale * 0.01; }, draw);
}

/// Ways of a file that cross each other everywhere, in one piece (0) or in many (1).
void DrawTangle(benchmark::State& state)
{
    using namespace ControlNumber::RoadMap;
    constexpr double unit = ControlNumber::RoadMap::MillisecondsPerDegree;
    const QTemporaryDir folder;
    const QByteArray gap = state.range(0) != 0 ? "</trkseg><trkseg>" : "";
    QByteArray tangle = "<gpx><trk><trkseg>";
    for (int i = 0; i < 20'000; ++i) {
        tangle += i % 2 == 0 ? gap : QByteArray();
        tangle +=
            Number::Format("<trkpt lat='%f' lon='%f'/>", 35.5 + 0.001 * (i * 37 % 101), 139 + 0.001 * (i * 53 % 211))
                .toUtf8();
    }
    QFile file(folder.filePath(u"tangle.gpx"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(tangle + "</trkseg></trk></gpx>") < 0)
        std::abort();
    file.close();
    CRoadMap map(nullptr, DataFolder);
    map.resize(640, 480);
    map.show();
    map.Invoke(SetScale, {100'000});
    map.Invoke(OpenFile, {file.fileName()});
    QApplication::processEvents();
    double x = 139.1 * unit;
    MeasureMedian(
        state, 1500.0, [&] { x += 1000.0; },
        [&] {
            map.Invoke(SetPosition, {false, x, 35.55 * unit});
            map.repaint();
        });
}

/// From the call until the event that reports the end; everything is looked through, and much of it is found.
void SearchRoadMap(benchmark::State& state)
{
    using namespace ControlNumber::RoadMap;
    CRoadMap map(nullptr, DataFolder);
    const bool isFacility = state.range(0) != 0;
    const QString text = isFacility ? u"天文 台"_s : u"県 市"_s;
    const auto search = [&] {
        map.Invoke(Search, {isFacility, text});
        QApplication::processEvents();
    };
    search();
    MeasureMedian(
        state, 20.0, [] {}, search);
    if (!CRoadMapResults::Find(map.Invoke(GetSearchResult, {}).toLongLong()))
        state.SkipWithError("nothing was found");
}

/// The program with its windows, in folders of its own.
class CStage
{
public:
    CStage()
    {
        DataFolders folders;
        folders.Shipped = DataFolder;
        folders.User = m_folder.filePath(u"user/"_s);
        folders.TerrainIndex = DataFolder + u"terrain/terrain.idx"_s;
        m_context.emplace(folders.HostFiles(m_folder.filePath(u"settings.ini"_s)));
        ControlClasses::Register(DataFolder);
        folders.InstallPlaceList();
        m_window = std::make_unique<CMainWindow>(*m_context, folders);
        m_window->show();
        QApplication::processEvents();
    }

    CHost& Host() { return m_window->Host(); }

    void Open()
    {
        Host().OpenSiteDialog();
        Host().SiteDialog().repaint();
        QApplication::processEvents();
    }

    /// The dialog's map with all layers and names, from near.
    void ShowAllLayers()
    {
        CDlgObs& dialog = Host().SiteDialog();
        for (int layer = 3; layer < ObsSettings::LayerCount; ++layer)
            dialog.Item<QAbstractButton>(ObsId::CheckFeatureFirst + layer)->click();
        dialog.Item<QSlider>(ObsId::SliderMagnification)->setValue(64);
        QApplication::processEvents();
    }

private:
    QTemporaryDir m_folder;
    std::optional<CHostContext> m_context;
    std::unique_ptr<CMainWindow> m_window;
};

void OpenDialog(benchmark::State& state)
{
    CStage().Open(); // the first showing in a process loads fonts and pictures
    std::unique_ptr<CStage> stage;
    const auto prepare = [&] {
        stage = std::make_unique<CStage>();
        CRegistry::Write(u"Dialog\\Obs"_s, u"ViewAngle"_s, 120, CRegistry::Count);
    };
    MeasureMedian(state, 500.0, prepare, [&] { stage->Open(); });
}

/// One digit in the seconds of longitude, by the clock on the wall: from the key event until the main globe and the
/// dialog's map are painted.
void TypeDigit(benchmark::State& state)
{
    CStage stage;
    stage.Open();
    stage.ShowAllLayers();
    auto* edit = stage.Host().SiteDialog().Item<QLineEdit>(ObsId::EditLngSec);
    int digit = 0;
    MeasureMedian(
        state, 6.0,
        [&] {
            edit->setFocus();
            edit->selectAll();
            digit = (digit + 1) % 10;
        },
        [&] {
            QTest::keyClick(edit, static_cast<Qt::Key>(Qt::Key_0 + digit));
            QApplication::processEvents();
        },
        Milliseconds);
}

/// A click beside the middle of the dialog's map, by the clock on the wall: until the main globe and the map are
/// painted.
void ClickMap(benchmark::State& state)
{
    CStage stage;
    stage.Open();
    stage.ShowAllLayers();
    QWidget* map = stage.Host().SiteDialog().MapOfDialog().Control()->Window();
    int side = 0;
    MeasureMedian(
        state, 10.0, [&] { side = side == 9 ? -9 : 9; },
        [&] {
            QTest::mouseClick(map, Qt::LeftButton, {}, map->rect().center() + QPoint(side, side));
            QApplication::processEvents();
        },
        Milliseconds);
}

/// One step of a held spin button; the toolkit repeats it every 100 ms.
void SpinStep(benchmark::State& state)
{
    CStage stage;
    stage.Open();
    CDlgObs& dialog = stage.Host().SiteDialog();
    dialog.Item<QSlider>(ObsId::SliderMagnification)->setValue(64);
    QApplication::processEvents();
    auto* arrow = dialog.Item(ObsId::SpinLngDeg)->findChildren<QAbstractButton*>().constFirst();
    MeasureMedian(
        state, 100.0, [] {},
        [&] {
            arrow->click();
            QApplication::processEvents();
        });
}

/// A road map that has found a great many facilities.
class CFullRoadMap : public IControl
{
public:
    explicit CFullRoadMap(QWidget* parent) : m_window(new QWidget(parent)), m_results(MakeRows()) {}
    ~CFullRoadMap() override { delete m_window; }

    [[nodiscard]] QWidget* Window() override { return m_window; }
    QVariant Invoke(int method, const QVariantList& /*arguments*/) override
    {
        return method == ControlNumber::RoadMap::GetSearchResult ? QVariant(m_results.Handle()) : QVariant();
    }
    void SetControlProperty(int /*property*/, const QVariant& /*value*/) override {}
    void EndSearch() const { RaiseEvent(ControlNumber::RoadMap::EventLandMarkEnd, {0}); }

private:
    static std::vector<CRoadMapResult> MakeRows()
    {
        constexpr int count = 50'000;
        std::vector<CRoadMapResult> rows;
        for (int i = 0; i < count; ++i)
            rows.push_back({1.0 * i, 2.0 * i, u"施設 %1"_s.arg(i), u"東京都三鷹市大沢 %1"_s.arg(i), u"大分類"_s,
                            u"中分類"_s, u"小分類"_s});
        return rows;
    }

    QWidget* m_window;
    CRoadMapResults m_results;
};

/// The search window over such a map.
class CSearchStage
{
public:
    CSearchStage()
    {
        CRegistry::Write(u"Dialog\\Mapple"_s, u"CreateWait"_s, 0, CRegistry::Count);
        CComponentStore store;
        store.SetValue(CComponentStore::Root::LocalMachine, u"SOFTWARE\\Super Mapple\\version 12.0.0\\Mapple\\App",
                       u"path"_s, {CComponentStore::ValueType::String, m_folder.path()});
        static_cast<void>(store.Save());
        CControlRegister::Instance().Register(QString::fromUtf16(ControlClass::RoadMap),
                                              [](QWidget* parent) { return std::make_unique<CFullRoadMap>(parent); });
        m_dialog.Create(nullptr);
        m_dialog.FindOfDialog()->show();
        QApplication::processEvents();
    }

    void EndSearch()
    {
        static_cast<CFullRoadMap*>(m_dialog.MapOfDialog().Control())->EndSearch();
        QApplication::processEvents();
    }
    CKivListCtrl& List() { return *m_dialog.FindOfDialog()->Item<CKivListCtrl>(MappleFindId::ListResult); }

private:
    QTemporaryDir m_folder;
    CHostContext m_context{{m_folder.filePath(u"settings.ini"_s), m_folder.filePath(u"components.xml"_s), QString()}};
    CDlgMapple m_dialog{nullptr};
};

/// From the end of a search until its 50,000 matches are on screen.
void FillResults(benchmark::State& state)
{
    CSearchStage stage;
    MeasureMedian(
        state, 200.0, [] {}, [&] { stage.EndSearch(); });
}

/// A page further down the 50,000 matches.
void ScrollResults(benchmark::State& state)
{
    CSearchStage stage;
    stage.EndSearch();
    MeasureMedian(
        state, 16.0, [] {},
        [&] {
            QTest::keyClick(&stage.List(), Qt::Key_PageDown);
            QApplication::processEvents();
        });
}
} // namespace

BENCHMARK(LoadShippedList)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTwiceTheLines)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(WriteUserList)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(EditOneFolder)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReplayOneFolder)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ReplayAgainstParsing)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SaveBothFiles)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(RedrawRoadMap)
    ->ArgName("scale")
    ->Arg(1000)
    ->Arg(8000)
    ->Arg(200000)
    ->Arg(1000000)
    ->Arg(9999999)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(DrawTangle)->ArgName("pieces")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SearchRoadMap)->ArgName("facility")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(OpenDialog)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(SpinStep)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(TypeDigit)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ClickMap)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FillResults)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ScrollResults)->UseManualTime()->Unit(benchmark::kMillisecond);

namespace
{
/// Leaves out what the offscreen platform says of every window: that it has no window manager.
void PrintMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& message)
{
    if (!message.startsWith(u"This plugin does not support "_s))
        std::cerr << message.toStdString() << '\n';
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(PrintMessage);
    QApplication application(argc, argv);
    Theme::Install(application);
    benchmark::Initialize(&argc, argv);
    CPromiseReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return reporter.ConcludeAllKept() ? 0 : 1;
}
