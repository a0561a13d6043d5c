#include "pictures/Camera.h"

#include "host/dialog/KivDialog.h"
#include "planetarium/MainWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QSaveFile>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

void CCamera::Settle()
{
    constexpr int settleMilliseconds = 150;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < settleMilliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
}

void CCamera::Click(QWidget& widget, const QPointF& at)
{
    const QPointF global = widget.mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &release);
}

void CCamera::Shoot(QWidget& window, const QString& name)
{
    Settle();
    Note(name, window.grab().save(m_folder.filePath(name)));
}

void CCamera::Write(const QString& name, const QString& text)
{
    QSaveFile file(m_folder.filePath(name));
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen)
        file.write(text.toUtf8() + '\n');
    Note(name, isOpen && file.commit());
}

void CCamera::Record(CMainWindow& window, const QString& name, const std::function<void()>& action)
{
    window.ClearLog();
    action();
    Settle();
    Write(u"transcript-"_s + name + u".txt"_s, window.LogText());
}

void CCamera::AnswerNextBox(const QString& picture)
{
    ++m_awaited;
    QTimer::singleShot(0, qApp, [this, picture] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        --m_awaited;
        Shoot(*box, picture);
        box->defaultButton()->click();
    });
}

void CCamera::InNext(int templateNumber, const std::function<void(CKivDialog&)>& steps)
{
    ++m_awaited;
    auto* poll = new QTimer(qApp);
    poll->callOnTimeout([this, poll, templateNumber, steps] {
        auto* dialog = qobject_cast<CKivDialog*>(QApplication::activeModalWidget());
        if (!dialog || dialog->TemplateNumber() != templateNumber)
            return;
        --m_awaited;
        poll->stop();
        poll->deleteLater();
        Settle();
        steps(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
    poll->start(1);
}

void CCamera::Note(const QString& name, bool written)
{
    QTextStream(stdout) << (written ? "wrote " : "cannot write ") << m_folder.filePath(name) << '\n';
    m_allWritten = m_allWritten && written;
}
