#pragma once

#include <QDir>
#include <QString>

#include <functional>

class CKivDialog;
class CMainWindow;
class QPointF;
class QWidget;

/// Saves pictures of windows and transcripts of what was sent to controls, into one folder.
class CCamera
{
public:
    explicit CCamera(const QString& folder) : m_folder(folder) {}

    /// The window as it looks once it has settled.
    void Shoot(QWidget& window, const QString& name);
    void Write(const QString& name, const QString& text);
    /// Writes what is sent to the engines and the maps while the action runs, as "transcript-<name>.txt".
    void Record(CMainWindow& window, const QString& name, const std::function<void()>& action);
    /// Takes the picture of the next message box and presses its first button, from inside the box's own loop. The
    /// camera must outlive the box.
    void AnswerNextBox(const QString& picture);
    /// Does the steps inside the loop of the next dialog with this template, and cancels it when they leave it open.
    /// The camera must outlive the dialog.
    void InNext(int templateNumber, const std::function<void(CKivDialog&)>& steps);

    /// Whether nothing failed so far, and every box and dialog waited for came.
    [[nodiscard]] bool AllWritten() const { return m_allWritten && m_awaited == 0; }

    /// Lets the windows lay themselves out and paint.
    static void Settle();
    /// A click of the left button.
    static void Click(QWidget& widget, const QPointF& at);

private:
    void Note(const QString& name, bool written);

    QDir m_folder;
    bool m_allWritten = true;
    int m_awaited = 0; ///< boxes and dialogs
};
