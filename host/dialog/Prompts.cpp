#include "host/dialog/Prompts.h"

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

class CToolkitPrompts : public IPrompts
{
public:
    Answer Show(QWidget* parent, const QString& text, Icon icon, Buttons buttons) override
    {
        // The parent may go, and take the box with it, while the box stands.
        const QPointer<QMessageBox> box = new QMessageBox(
            BoxIcon(icon), parent ? parent->window()->windowTitle() : QString(), text, QMessageBox::NoButton, parent);
        box->setTextFormat(Qt::PlainText);
        QPushButton* ok = box->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box->setDefaultButton(ok);
        box->setEscapeButton(
            buttons == Buttons::OkCancel ? box->addButton(QStringLiteral("キャンセル"), QMessageBox::RejectRole) : ok);
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

IPrompts*& Replacement()
{
    static IPrompts* prompts = nullptr;
    return prompts;
}
} // namespace

IPrompts& IPrompts::Current()
{
    static CToolkitPrompts toolkit;
    return Replacement() ? *Replacement() : toolkit;
}

void IPrompts::Use(IPrompts* prompts)
{
    Replacement() = prompts;
}
