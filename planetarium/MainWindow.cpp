#include "planetarium/MainWindow.h"

#include "host/dialog/Help.h"
#include "host/dialog/HostMessage.h"
#include "host/dialog/ScreenFit.h"
#include "planetarium/ObserverPanel.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStatusBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
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

CMainWindow::CMainWindow(const DataFolders& folders)
{
    setWindowTitle(u"プラネタリウム"_s);
    HostWindow::SetMain(this);

    auto* center = new QWidget(this);
    m_panel = new CObserverPanel(center);
    m_log = new QPlainTextEdit(center);
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(LongestLog);
    m_log->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_log->setAccessibleName(u"エンジンへの命令の記録"_s);
    m_log->setMinimumHeight(60);
    m_progress = new QProgressBar(this);
    m_progress->setMaximumWidth(220);
    m_progress->hide();
    m_note = new QLabel(this);
    statusBar()->addWidget(m_note, 1);
    statusBar()->addPermanentWidget(m_progress);

    m_host = std::make_unique<CHost>(this, folders);
    m_host->Engine().setMinimumSize(240, 200);
    m_host->Engine().show();

    auto* side = new QVBoxLayout;
    side->addWidget(Framed(u"観測者"_s, m_panel, center));
    side->addWidget(Framed(u"エンジンへの命令と答え"_s, m_log, center), 1);
    auto* row = new QHBoxLayout(center);
    row->setContentsMargins(12, 12, 12, 12);
    row->setSpacing(12);
    row->addWidget(&m_host->Engine(), 1);
    row->addLayout(side, 1);
    setCentralWidget(center);
    BuildMenus();
    resize(QSize(1080, 640).boundedTo(ScreenFit::Room(*this)));

    connect(m_host.get(), &CHost::Spoken, this, &CMainWindow::Log);
    connect(m_host.get(), &CHost::ObserverChanged, this, [this] { m_panel->Refresh(m_host->Observer()); });
    m_panel->Refresh(m_host->Observer());
}

CMainWindow::~CMainWindow()
{
    disconnect(m_host.get(), nullptr, this, nullptr);
    m_host.reset(); // before the window that its widgets belong to
}

QString CMainWindow::LogText() const
{
    return m_log->toPlainText();
}

void CMainWindow::ClearLog()
{
    m_log->clear();
}

void CMainWindow::Log(const QString& who, const QString& line, const QString& answer)
{
    QString entry = u'[' + who + u"] "_s + Shortened(line);
    if (!answer.isEmpty())
        entry += u"  →  "_s + Shortened(answer);
    m_log->appendPlainText(entry);
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
        m_note->setText(u"「場所」を閉じました。"_s);
        break;
    case HostWindow::MessageDialogClosed:
        activateWindow(); // the user goes on here
        break;
    case HostWindow::MessageModalLoop:
        menuBar()->setEnabled(message.First.toInt() == 0);
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

void CMainWindow::closeEvent(QCloseEvent* event)
{
    m_host->CloseRoadMap();
    m_host->SiteDialog().Show(0);
    QMainWindow::closeEvent(event);
}
