#include "host/dialog/Prompts.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QMessageBox>
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
        QMessageBox box(BoxIcon(icon), parent ? parent->window()->windowTitle() : QString(), text,
                        QMessageBox::NoButton, parent);
        box.setTextFormat(Qt::PlainText);
        QPushButton* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box.setDefaultButton(ok);
        box.setEscapeButton(
            buttons == Buttons::OkCancel ? box.addButton(QStringLiteral("キャンセル"), QMessageBox::RejectRole) : ok);
        const CPromptCursor cursor;
        box.exec();
        return box.clickedButton() == ok ? Answer::Ok : Answer::Cancel;
    }

    QString OpenFile(QWidget* parent) override { return QFileDialog::getOpenFileName(parent); }

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
