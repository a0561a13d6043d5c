#include "host/dialog/Prompts.h"

#include "host/dialog/HeldKey.h"
#include "host/system/HostContext.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace
{
/// The ordinary cursor over a prompt that comes up in the middle of a wait.
class CPromptCursor
{
public:
    CPromptCursor() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    CPromptCursor(const CPromptCursor&) = delete;
    CPromptCursor& operator=(const CPromptCursor&) = delete;
    ~CPromptCursor() { QGuiApplication::restoreOverrideCursor(); }
};

/// Keeps a held Enter or Escape from answering a question that nobody has read.
class CHeldKeyFilter : public QObject
{
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        return IsHeldEndKey(*event) || QObject::eventFilter(watched, event);
    }
};

/// The text with the middle of very long lines, such as a name of thousands of characters, left out.
QString Presentable(const QString& text)
{
    constexpr qsizetype longestLine = 160;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        if (line.size() > longestLine)
            line = line.left(longestLine / 2) + QChar(0x2026) + line.right(longestLine / 2);
    }
    return lines.join(QLatin1Char('\n'));
}

class CToolkitPrompts : public IPrompts
{
public:
    Answer Show(QWidget* parent, const QString& text, Icon icon, Buttons buttons) override
    {
        // The parent may go, and take the box with it, while the box stands.
        const QPointer<QMessageBox> box =
            new QMessageBox(BoxIcon(icon), parent ? parent->window()->windowTitle() : QString(), Presentable(text),
                            QMessageBox::NoButton, parent);
        box->setTextFormat(Qt::PlainText);
        QPushButton* ok = box->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box->setDefaultButton(ok);
        box->setEscapeButton(
            buttons == Buttons::OkCancel ? box->addButton(QStringLiteral("キャンセル"), QMessageBox::RejectRole) : ok);
        auto* filter = new CHeldKeyFilter(box);
        box->installEventFilter(filter);
        for (QAbstractButton* button : box->buttons())
            button->installEventFilter(filter);
        const CPromptCursor cursor;
        box->exec();
        const bool isOk = box && box->clickedButton() == ok;
        delete box;
        return isOk ? Answer::Ok : Answer::Cancel;
    }

    QString OpenFile(QWidget* parent) override
    {
        const QPointer<QFileDialog> dialog = new QFileDialog(parent);
        dialog->setFileMode(QFileDialog::ExistingFile);
        const bool isChosen = dialog->exec() == QDialog::Accepted && dialog;
        const QString path = isChosen ? dialog->selectedFiles().value(0) : QString();
        delete dialog;
        return path;
    }

private:
    static QMessageBox::Icon BoxIcon(Icon icon)
    {
        switch (icon) {
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::Warning:
        case Icon::Exclamation:
            return QMessageBox::Warning;
        case Icon::None:
            break;
        }
        return QMessageBox::NoIcon;
    }
};

} // namespace

IPrompts& IPrompts::Current()
{
    static CToolkitPrompts toolkit;
    IPrompts* prompts = CHostContext::Current().Prompts;
    return prompts ? *prompts : toolkit;
}
