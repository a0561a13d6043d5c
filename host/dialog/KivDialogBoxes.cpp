// The boxes of a dialog: spin buttons beside them, numbers that are left in them, keys that lead to them.

#include "host/dialog/KivDialog.h"
#include "host/dialog/TemplateLoader.h"
#include "host/dialog/ThemedControls.h"
#include "host/text/Number.h"

#include <QGroupBox>
#include <QPointer>

#include <optional>

namespace
{
constexpr char BuddyProperty[] = "buddyId";
} // namespace

/// The arrow keys of a box work the spin button beside it.
void CKivDialog::BindSpinButtons()
{
    for (QWidget* item : std::as_const(m_items)) {
        auto* spin = qobject_cast<CKivSpinButton*>(item);
        if (!spin)
            continue;
        if (auto* edit = Item<QLineEdit>(spin->property(BuddyProperty).toInt())) {
            spin->SetCaption(edit->accessibleName());
            spin->SetBuddy(edit);
            edit->installEventFilter(this);
        }
    }
}

bool CKivDialog::StepBeside(int editId, int key)
{
    if (key != Qt::Key_Up && key != Qt::Key_Down)
        return false;
    for (QWidget* item : std::as_const(m_items)) {
        auto* button = qobject_cast<CKivSpinButton*>(item);
        if (button && button->property(BuddyProperty).toInt() == editId && button->isEnabled()) {
            Q_EMIT button->DeltaPos(key == Qt::Key_Up ? -1 : 1);
            return true;
        }
    }
    return false;
}

/// A number that the handler replaced by another, or that it left for the next key, has not been applied.
void CKivDialog::RunChangeHandler(const MessageEntry& entry, CKivEdit& edit)
{
    const QPointer<CKivEdit> box(&edit);
    const std::optional<double> typed = Number::FindLeadingDouble(edit.text());
    RunHandler(entry, 0);
    if (!box || !box->TakesNumbers() || !m_isWindow)
        return;
    const std::optional<double> left = Number::FindLeadingDouble(box->text());
    if (typed && left) // an empty box leaves what is pending as it was
        box->SetPending(box->text().endsWith(u'.') || *typed != *left);
}

/// What a box shows when the user leaves it is so: a number that no handler has applied is applied as the next key
/// would do it, and what is no number gives way to the value in force.
void CKivDialog::SettleBox(CKivEdit& edit)
{
    if (!m_isWindow || m_handling > 0 || !edit.TakesNumbers())
        return;
    const int id = m_items.key(&edit, 0);
    if (!Number::FindLeadingDouble(edit.text())) {
        edit.SetInForce({}); // whatever the box held
        UpdateItem(id, false);
    }
    if (edit.text().endsWith(u'.'))
        edit.SetText(edit.text().chopped(1));
    if (!edit.IsPending())
        return;
    edit.SetPending(false);
    for (const MessageEntry& entry : m_messages) {
        if (entry.Kind == Notice::Change && entry.Id == id)
            RunHandler(entry, 0);
    }
}

void CKivDialog::SettleFocusedBox()
{
    if (auto* edit = qobject_cast<CKivEdit*>(focusWidget()))
        SettleBox(*edit);
}

/// The key of a group's title goes to its first box, whichever was used last; false when it has none to go to.
bool CKivDialog::FocusFirstBox(const QGroupBox* group)
{
    if (!group)
        return false;
    for (auto* edit : group->findChildren<CKivEdit*>()) {
        if (edit->isEnabled()) {
            edit->setFocus(Qt::ShortcutFocusReason);
            return true;
        }
    }
    return false;
}
