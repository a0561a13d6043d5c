#include "host/dialog/KivDialog.h"

#include "host/dialog/HeldKey.h"
#include "host/dialog/ScreenFit.h"
#include "host/dialog/TemplateLoader.h"
#include "host/dialog/ThemedControls.h"
#include "host/system/HostContext.h"
#include "host/system/InvalidArgument.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{
constexpr int IdOk = 1;
constexpr int IdCancel = 2;
constexpr int IdHelp = 57670;
const QString UnknownArgument = u"無効な引数が検出されました。"_s;
} // namespace

CKivDialog::CKivDialog(int templateNumber, QString registrySection, QWidget* parent)
    : QDialog(parent), m_templateNumber(templateNumber), m_section(std::move(registrySection))
{
}

CKivDialog::~CKivDialog() = default;

bool CKivDialog::Create(CCorKiv* hostEngine)
{
    if (!CreateWindow(hostEngine))
        return false;
    OnInitDialog();
    return true;
}

bool CKivDialog::CreateWindow(CCorKiv* hostEngine)
{
    m_hostEngine = hostEngine;
    if (m_isWindow || !LoadTemplate())
        return false;
    m_isWindow = true;
    m_messages = GetMessageMap();
    m_events = GetEventSinkMap();
    ConnectMessages();
    BindSpinButtons();
    for (QGroupBox* group : m_content->findChildren<QGroupBox*>())
        group->installEventFilter(this);
    return true;
}

void CKivDialog::DestroyWindow()
{
    if (!m_isWindow)
        return;
    OnDestroy();
    m_isWindow = false;
    qApp->removeEventFilter(this);
    for (const QWidget* item : std::as_const(m_items)) // first, as hiding ends what a held key or button does
        item->disconnect(this);
    m_items.clear();
    hide();
    delete layout();
    // Not at once: what destroys the window is, as a rule, one of its own controls.
    m_content->hide();
    m_content->deleteLater();
    m_content = nullptr;
}

int CKivDialog::DoModal(CCorKiv* engine)
{
    constexpr int failed = -1;
    if (!m_isWindow && !CreateWindow(engine))
        return failed;
    m_hostEngine = engine;
    bool placesFocus = true;
    Guarded([this, &placesFocus] { placesFocus = OnInitDialog(); });
    // A window without a focused control gives the focus to the first one when it becomes active.
    if (QWidget* last = focusWidget(); placesFocus && last)
        last->clearFocus();
    return exec();
}

bool CKivDialog::LoadTemplate()
{
    m_content = TemplateLoader::Load(m_templateNumber, this);
    if (!m_content)
        return false;
    setWindowTitle(m_content->windowTitle());
    auto* frame = new QVBoxLayout(this);
    frame->setContentsMargins(0, 0, 0, 0);
    m_items = TemplateLoader::NumberedItems(m_content);
    m_content = ScreenFit::Scrolled(m_content, ScreenFit::Room(*this));
    frame->addWidget(m_content);
    return true;
}

void CKivDialog::ConnectMessages()
{
    const auto notify = [this](const MessageEntry& entry, int argument) {
        if (m_writing == 0)
            RunHandler(entry, argument);
    };
    for (const MessageEntry& entry : m_messages) {
        QWidget* item = Item(entry.Id);
        switch (entry.Kind) {
        case Notice::Change:
            if (auto* edit = qobject_cast<CKivEdit*>(item))
                connect(edit, &QLineEdit::textEdited, this, [this, edit, &entry] {
                    if (m_writing == 0)
                        RunChangeHandler(entry, *edit);
                });
            break;
        case Notice::Clicked:
            if (auto* button = qobject_cast<QAbstractButton*>(item))
                connect(button, &QAbstractButton::clicked, this, [this, notify, &entry] {
                    SettleFocusedBox();
                    notify(entry, 0);
                });
            break;
        case Notice::DeltaPos:
            if (auto* spin = qobject_cast<CKivSpinButton*>(item))
                connect(spin, &CKivSpinButton::DeltaPos, this, [notify, &entry](int delta) { notify(entry, delta); });
            break;
        case Notice::SelChange:
            if (auto* combo = qobject_cast<QComboBox*>(item))
                connect(combo, &QComboBox::activated, this, [notify, &entry] { notify(entry, 0); });
            break;
        case Notice::Scroll:
            if (auto* slider = qobject_cast<QSlider*>(item))
                connect(slider, &QSlider::valueChanged, this, [notify, &entry] { notify(entry, 0); });
            break;
        case Notice::EndScroll:
            if (auto* slider = qobject_cast<CKivSlider*>(item))
                connect(slider, &CKivSlider::EndScroll, this, [notify, &entry] { notify(entry, 0); });
            break;
        case Notice::DblClick:
            if (auto* list = qobject_cast<CKivListCtrl*>(item))
                connect(list, &CKivListCtrl::doubleClicked, this,
                        [notify, &entry](const QModelIndex& index) { notify(entry, index.row()); });
            break;
        }
    }
    const auto connectButton = [this](int id, void (CKivDialog::*handler)()) {
        if (auto* button = Item<QAbstractButton>(id))
            connect(button, &QAbstractButton::clicked, this, [this, handler] {
                SettleFocusedBox();
                Guarded([this, handler] { (this->*handler)(); });
            });
    };
    connectButton(IdOk, &CKivDialog::OnOK);
    connectButton(IdCancel, &CKivDialog::OnCancel);
    if (auto* button = Item<QAbstractButton>(IdHelp))
        connect(button, &QAbstractButton::clicked, this,
                [this] { CHostContext::Current().ShowHelp(this, m_templateNumber); });
}

void CKivDialog::RunHandler(const MessageEntry& entry, int argument)
{
    const QPointer<CKivDialog> self(this);
    ++m_handling;
    Guarded([&entry, argument] { entry.Handler(argument); });
    if (self)
        --m_handling;
}

void CKivDialog::CatchKeys()
{
    qApp->installEventFilter(this);
}

bool CKivDialog::IsOwnKey(const QObject* watched, const QEvent* event) const
{
    const auto* widget = event->type() == QEvent::KeyPress ? qobject_cast<const QWidget*>(watched) : nullptr;
    return m_isWindow && widget && widget->window() == this;
}

bool CKivDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (IsOwnKey(watched, event)) {
        bool isConsumed = false;
        Guarded([this, event, &isConsumed] { isConsumed = PreTranslateMessage(*static_cast<QKeyEvent*>(event)); });
        if (isConsumed)
            return true;
    }
    if (event->type() == QEvent::Shortcut && FocusFirstBox(qobject_cast<QGroupBox*>(watched)))
        return true;
    if (event->type() == QEvent::FocusOut || event->type() == QEvent::KeyPress) {
        auto* edit = qobject_cast<CKivEdit*>(watched);
        const int id = edit ? m_items.key(edit, 0) : 0;
        if (id != 0 && event->type() == QEvent::KeyPress && StepBeside(id, static_cast<QKeyEvent*>(event)->key()))
            return true;
        if (id != 0 && event->type() == QEvent::FocusOut &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) // not its own menu
            SettleBox(*edit);
    }
    return QDialog::eventFilter(watched, event);
}

void CKivDialog::Guarded(const std::function<void()>& handler)
{
    try {
        handler();
    } catch (const CInvalidArgument& error) {
        MessageBox(error.UserText().isEmpty() ? UnknownArgument : error.UserText(), IPrompts::Icon::Exclamation);
    } catch (const std::invalid_argument&) {
        MessageBox(UnknownArgument, IPrompts::Icon::Exclamation);
    }
}

void CKivDialog::ConnectEvents(CControlWindow& control)
{
    control.SetEventSink([this, id = control.ControlId()](int event, const QVariantList& arguments) {
        for (const EventEntry& entry : m_events) {
            if (entry.ControlId == id && entry.Event == event) {
                Guarded([&entry, &arguments] { entry.Handler(arguments); });
                return; // the handler may have ended the dialog
            }
        }
    });
}

void CKivDialog::UpdateData(bool saveAndValidate)
{
    if (!m_isWindow)
        return;
    const WriteGuard guard(*this);
    CDataExchange exchange(*this, saveAndValidate);
    DoDataExchange(&exchange);
}

void CKivDialog::UpdateItem(int id, bool saveAndValidate)
{
    const WriteGuard guard(*this);
    CDataExchange exchange(*this, saveAndValidate);
    exchange.RestrictTo(id);
    DoDataExchange(&exchange);
}

bool CKivDialog::OnInitDialog()
{
    UpdateData(false);
    return true;
}

void CKivDialog::OnOK()
{
    QDialog::done(Accepted);
}

void CKivDialog::OnCancel()
{
    QDialog::done(Rejected);
}

void CKivDialog::OnClose()
{
    hide();
}

void CKivDialog::done(int result)
{
    QDialog::done(result);
}

void CKivDialog::accept()
{
    SettleFocusedBox();
    Guarded([this] { OnOK(); });
}

void CKivDialog::reject()
{
    SettleFocusedBox();
    Guarded([this] { OnCancel(); });
}

void CKivDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    ScreenFit::Keep(*this);
}

void CKivDialog::closeEvent(QCloseEvent* event)
{
    SettleFocusedBox();
    // Not the toolkit's own handling: that would go on to reject().
    Guarded([this] { OnClose(); });
    event->accept();
}

void CKivDialog::keyPressEvent(QKeyEvent* event)
{
    if (IsHeldEndKey(*event))
        return;
    switch (event->key()) {
    case Qt::Key_F1:
        CHostContext::Current().ShowHelp(this, m_templateNumber);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (auto* button = qobject_cast<QPushButton*>(focusWidget())) {
            button->click(); // the focused button is the default one, as everywhere on the desktop
            return;
        }
        accept();
        return;
    case Qt::Key_Escape:
        reject();
        return;
    default:
        QDialog::keyPressEvent(event);
    }
}

void CKivDialog::DoitBool(const QString& path, int flag)
{
    if (m_hostEngine)
        m_hostEngine->Command(path + (flag != 0 ? u" = TRUE"_s : u" = FALSE"_s));
}

int CKivDialog::IsIt(const QString& path, const QString& value) const
{
    return m_hostEngine && m_hostEngine->Command(u"? "_s + path) == value ? 1 : 0;
}

void CKivDialog::SetItemText(int id, const QString& text)
{
    const WriteGuard guard(*this);
    if (auto* label = Item<QLabel>(id))
        label->setText(text);
    else if (auto* edit = Item<CKivEdit>(id))
        edit->SetText(text);
    else if (auto* button = Item<QAbstractButton>(id))
        button->setText(text);
}

void CKivDialog::EnableItem(int id, bool enable)
{
    if (QWidget* item = Item(id))
        item->setEnabled(enable);
}

IPrompts::Answer CKivDialog::MessageBox(const QString& text, IPrompts::Icon icon, IPrompts::Buttons buttons)
{
    return IPrompts::Current().Show(this, text, icon, buttons);
}
