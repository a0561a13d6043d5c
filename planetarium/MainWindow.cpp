#include "planetarium/MainWindow.h"

#include "host/dialog/HostMessage.h"
#include "host/dialog/ScreenFit.h"
#include "host/observer/BodyTable.h"
#include "host/system/Registry.h"
#include "planetarium/ObserverPanel.h"
#include "planetarium/SiteChoices.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr int NoticeTime = 4000;   // milliseconds
constexpr int LongestLog = 5000;   // lines
constexpr int LongestEntry = 1000; // characters of a line or an answer

QString Shortened(const QString& text)
{
    return text.size() <= LongestEntry ? text : text.left(LongestEntry) + u"…"_s;
}

/// A titled frame around a widget.
QGroupBox* Framed(const QString& title, QWidget* content, QWidget* parent)
{
    auto* box = new QGroupBox(title, parent);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(10, 8, 10, 10);
    layout->addWidget(content);
    return box;
}
} // namespace

CMainWindow::CMainWindow(CHostContext& context, const DataFolders& folders, Audience audience)
    : m_context(context), m_failures(*this, context.Settings())
{
    setWindowTitle(u"プラネタリウム"_s);
    setProperty("windowMemory", u"WindowMain"_s);
    context.MainWindow = this;
    m_progress = new QProgressBar(this);
    m_progress->setMaximumWidth(220);
    m_progress->hide();
    m_note = new QLabel(this);
    statusBar()->addWidget(m_note, 1);
    statusBar()->addPermanentWidget(m_progress);

    Install(folders);
    m_host = std::make_unique<CHost>(this, folders);
    m_host->Engine().setMinimumSize(240, 200);
    m_host->Engine().show();

    auto* center = new QWidget(this);
    auto* row = new QHBoxLayout(center);
    row->setContentsMargins(12, 12, 12, 12);
    row->setSpacing(12);
    row->addWidget(&m_host->Engine(), 3);
    row->addWidget(BuildSide(audience), 2);
    setCentralWidget(center);
    BuildMenus(audience);
    const int height = audience == Audience::Developer ? 880 : 660;
    resize(QSize(1060, height).boundedTo(ScreenFit::Room(*this)));

    connect(m_host.get(), &CHost::Spoken, this, &CMainWindow::Log);
    connect(m_host.get(), &CHost::ObserverChanged, this, &CMainWindow::Refresh);
    Refresh();
    m_host->Engine().setFocus();
}

void CMainWindow::Install(const DataFolders& folders)
{
    constexpr qint64 listSize = 1 << 20; // bytes, as the next
    constexpr qint64 storeSize = 1 << 12;
    if (const QString list = folders.InstallPlaceList(); !list.isEmpty())
        m_failures.Report(u"地名の一覧を用意できませんでした。"_s, list, WriteFailure::Diagnose(list, listSize),
                          u"付属の一覧を使います。一覧を編集しても、保存できないことがあります。"_s);
    if (const QString store = folders.InstallRoadMap(); !store.isEmpty())
        m_failures.Report(u"道路地図を登録できませんでした。"_s, store, WriteFailure::Diagnose(store, storeSize),
                          u"原因を取り除いて起動し直すまで、道路地図は使えません。"_s);
}

QWidget* CMainWindow::BuildSide(Audience audience)
{
    auto* side = new QWidget(this);
    m_panel = new CObserverPanel(side);
    m_choices = new CSiteChoices(side);
    m_log = new QPlainTextEdit(side);
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(LongestLog);
    m_log->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_log->setAccessibleName(u"コマンドと応答の記録"_s);
    m_log->setMinimumHeight(60);
    // It follows its newest line; somebody who reads further up is left there.
    QScrollBar* bar = m_log->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, [this, bar](int value) { m_isLogAtEnd = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int end) {
        if (m_isLogAtEnd)
            bar->setValue(end);
    });
    auto* log = Framed(u"コマンドと応答"_s, m_log, side);
    log->setToolTip(u"[空] メインのエンジン　[場所]「場所」のエンジン　[地球]「場所」の地球儀　[道路] 道路地図"_s);

    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(Framed(u"観測地と時刻"_s, m_panel, side));
    column->addWidget(Framed(u"観測地を選ぶ"_s, m_choices, side));
    column->addWidget(log, 1);
    if (audience != Audience::Developer) {
        log->hide();
        column->addStretch(1);
    }
    auto* area = new QScrollArea(this); // on a small screen
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(side);
    area->setMinimumWidth(side->minimumSizeHint().width() + area->verticalScrollBar()->sizeHint().width());
    return area;
}

void CMainWindow::Refresh()
{
    const CKPDateObs& observer = m_host->Observer();
    m_panel->Refresh(observer);
    m_choices->ShowBody(BodyTable::Label(observer.GetBody()));
    const bool isEarth = observer.GetBody() == BodyTable::Earth;
    if (m_city->isEnabled() != isEarth) {
        m_city->setStatusTip(isEarth ? QString() : u"地名の一覧は、地球にいるときに使えます。"_s);
        m_city->setEnabled(isEarth);
    }
}

CMainWindow::~CMainWindow()
{
    disconnect(m_host.get(), nullptr, this, nullptr);
    m_host.reset(); // before the window that its widgets belong to
}

QString CMainWindow::LogText()
{
    ShowNewLog();
    return m_log->toPlainText();
}

void CMainWindow::ClearLog()
{
    m_newLog.clear();
    m_log->clear();
}

void CMainWindow::Log(const QString& who, const QString& line, const QString& answer)
{
    QString entry = u'[' + who + u"] "_s + Shortened(line);
    if (!answer.isEmpty())
        entry += u"  →  "_s + Shortened(answer);
    // Shown together with all else that is said until the windows are painted: laying out line by line is slow.
    if (m_newLog.isEmpty())
        QTimer::singleShot(0, this, &CMainWindow::ShowNewLog);
    m_newLog.append(entry);
}

void CMainWindow::ShowNewLog()
{
    if (!m_newLog.isEmpty())
        m_log->appendPlainText(std::exchange(m_newLog, {}).join(u'\n'));
}

bool CMainWindow::event(QEvent* event)
{
    if (event->type() != CHostMessage::EventType())
        return QMainWindow::event(event);
    const auto& message = *static_cast<CHostMessage*>(event);
    switch (message.Number) {
    case HostWindow::MessageListProgress:
        ShowProgress(message.First.toInt(), message.Second);
        break;
    case HostWindow::MessageObsClosed:
        statusBar()->showMessage(u"「場所」を閉じました。"_s, NoticeTime);
        m_host->SaveState();
        break;
    case HostWindow::MessageDialogClosed:
        activateWindow(); // the user goes on here
        break;
    case HostWindow::MessageModalLoop:
        menuBar()->setEnabled(message.First.toInt() == 0);
        m_choices->setEnabled(message.First.toInt() == 0);
        break;
    default:
        break;
    }
    return true;
}

void CMainWindow::ShowProgress(int phase, const QVariant& value)
{
    constexpr int start = 0;
    constexpr int percent = 1;
    if (phase == start) {
        m_note->setText(value.toString());
        m_progress->setValue(0);
        m_progress->show();
    } else if (phase == percent) {
        m_progress->setValue(value.toInt());
    } else {
        m_note->clear();
        m_progress->hide();
    }
    statusBar()->repaint(); // the load does not return to the event loop
}

/// The road map may have been installed while another program was in front.
void CMainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_roadMap)
        OfferWhatIsThere();
}

void CMainWindow::closeEvent(QCloseEvent* event)
{
    m_host->SaveState();
    m_host->RunClock(false);
    m_host->CloseRoadMap();
    m_host->SiteDialog().Show(0);
    CWindowMemory::Save(*this);
    m_context.Settings().Save();
    m_failures.Tell(); // soon would be too late
    QMainWindow::closeEvent(event);
}
