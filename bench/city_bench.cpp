// The promises of the city list, with a full table of places and an overlay of 2000 entries.

#include "bench/Measure.h"
#include "city/ControlIds.h"
#include "city/DlgCity.h"
#include "host/dialog/KivTreeCtrl.h"
#include "host/text/CodePage932.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace Measure;

namespace
{
constexpr int FolderCount = 10;
constexpr int PlacesPerFolder = CPlaceList::PlaceTableSize / FolderCount;
constexpr int EntriesPerFolder = 2000 / FolderCount;

QString FolderName(int folder)
{
    return u"フォルダ%1"_s.arg(folder);
}

QString PlaceName(int folder, int place)
{
    return u"観測地点%1の%2"_s.arg(folder).arg(place);
}

/// Waits for a widget's first painting.
class CPaintWatch : public QObject
{
public:
    explicit CPaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    [[nodiscard]] bool HasPainted() const { return m_hasPainted; }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        m_hasPainted = m_hasPainted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_hasPainted = false;
};

/// Files of the city list, and the dialog on them.
class CCityStage
{
public:
    CCityStage()
    {
        QString list = u"#PLACE LIST\r\n"_s;
        QStringList folders;
        for (int folder = 0; folder < FolderCount; ++folder) {
            list += u'@' + FolderName(folder) + u"\r\n"_s;
            QStringList entries;
            for (int place = 0; place < PlacesPerFolder; ++place) {
                const QString name = PlaceName(folder, place);
                list += name + u",139.7500000E,35.5000000N,     39,+09.00, 0, 0, 2\r\n"_s;
                if (place < EntriesPerFolder)
                    entries += uR"({"action":"update","data":"139.5,35.5,1,9,0,1,2","latest_name":")"_s + name +
                               uR"(x","next":[],"original_name":")"_s + name + uR"(","type":"leaf"})"_s;
            }
            list += u"#\r\n"_s;
            folders += uR"({"action":"path","original_name":")"_s + FolderName(folder) + uR"(","next":[)"_s +
                       entries.join(u',') + u"]}"_s;
        }
        Write(u"kivpel.obs"_s, list);
        Write(u"kivpel_user_obs.json"_s,
              uR"([{"action":"path","original_name":"場所","next":[)"_s + folders.join(u',') + u"]}]"_s);
    }

    /// Runs the steps in an open city list; returns the milliseconds from the call to the first painted tree.
    double Run(const std::function<void(CDlgCity&, CKivTreeCtrl&)>& steps)
    {
        const auto start = std::chrono::steady_clock::now();
        double opened = 0.0;
        CDlgCity dialog(nullptr);
        dialog.Paths = CPlacePaths::InFolder(m_folder.path() + u'/');
        QTimer::singleShot(0, &dialog, [&] {
            auto* tree = dialog.Item<CKivTreeCtrl>(CityId::Tree);
            CPaintWatch watch(*tree->viewport());
            while (!watch.HasPainted())
                QApplication::processEvents();
            opened = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
            steps(dialog, *tree);
            dialog.reject();
        });
        dialog.DoModal();
        return opened;
    }

private:
    void Write(const QString& name, const QString& text) const
    {
        QFile file(m_folder.filePath(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(CodePage932::Encode(text));
    }

    QTemporaryDir m_folder;
};

double HeapMegabytes()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<double>(heap.uordblks + heap.hblkhd) / 1.0e6;
}

void OpenCityList(benchmark::State& state)
{
    CCityStage stage;
    stage.Run([](CDlgCity&, CKivTreeCtrl&) {}); // the first showing in a process loads fonts
    std::vector<double> times;
    double megabytes = 0.0;
    for (auto step : state) {
        const double before = HeapMegabytes();
        times.push_back(stage.Run([&](CDlgCity&, CKivTreeCtrl&) { megabytes = HeapMegabytes() - before; }));
        state.SetIterationTime(times.back() / 1000.0);
    }
    constexpr double mostMegabytes = 20.0;
    Hold(state, "heap_mb", megabytes, mostMegabytes);
    Hold(state, "median_ms", Median(times), 100.0);
}

/// A character more or less in the find line, until the match is selected and painted.
void FindPlace(benchmark::State& state)
{
    CCityStage stage;
    stage.Run([&state](CDlgCity&, CKivTreeCtrl& tree) {
        tree.setFocus();
        QTest::keyClick(&tree, Qt::Key_F, Qt::ControlModifier);
        auto* line = tree.findChild<QLineEdit*>();
        const QString text = PlaceName(FolderCount - 1, PlacesPerFolder - 1);
        // The first one takes over all names, and finds them all.
        const double first = ProcessorMilliseconds([line] {
            line->setText(u"観"_s);
            QApplication::processEvents();
        });
        Hold(state, "first_ms", first, 5.0);
        bool isWhole = false;
        MeasureMedian(
            state, 5.0, [&isWhole] { isWhole = !isWhole; },
            [&] {
                line->setText(isWhole ? text : text.chopped(1));
                QApplication::processEvents();
            });
    });
}

void ExpandFolder(benchmark::State& state)
{
    CCityStage stage;
    stage.Run([&state](CDlgCity&, CKivTreeCtrl& tree) {
        const QModelIndex folder = tree.model()->index(FolderCount / 2, 0, tree.model()->index(0, 0));
        MeasureMedian(
            state, 16.0,
            [&] {
                tree.collapse(folder);
                QApplication::processEvents();
            },
            [&] {
                tree.expand(folder);
                QApplication::processEvents();
            });
    });
}
} // namespace

BENCHMARK(OpenCityList)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(FindPlace)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ExpandFolder)->UseManualTime()->Unit(benchmark::kMillisecond);
