#include "host/dialog/ComboAccessible.h"

#include "host/dialog/ThemedControls.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>

using namespace Qt::StringLiterals;

namespace
{
class CComboAccessible : public QAccessibleWidget
{
public:
    explicit CComboAccessible(CKivComboBox* combo) : QAccessibleWidget(combo, QAccessible::ComboBox) {}

    [[nodiscard]] int childCount() const override { return Combo().isEditable() ? 2 : 1; }

    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        if (index == 0)
            return QAccessible::queryAccessibleInterface(Combo().view());
        if (index == 1 && Combo().isEditable())
            return QAccessible::queryAccessibleInterface(Combo().lineEdit());
        return nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        if (child->object() == Combo().view())
            return 0;
        return Combo().isEditable() && child->object() == Combo().lineEdit() ? 1 : -1;
    }

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override
    {
        return Combo().isEditable() &&
                       Combo().lineEdit()->rect().contains(Combo().lineEdit()->mapFromGlobal(QPoint(x, y)))
                   ? child(1)
                   : nullptr;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? Combo().currentText() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = Combo().view()->isVisible();
        state.editable = Combo().isEditable();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }

    void doAction(const QString& action) override
    {
        if (action != showMenuAction() && action != pressAction())
            return;
        if (Combo().view()->isVisible())
            Combo().hidePopup();
        else
            Combo().showPopup();
    }

private:
    [[nodiscard]] CKivComboBox& Combo() const { return *static_cast<CKivComboBox*>(widget()); }
};

QAccessibleInterface* Create(const QString& className, QObject* object)
{
    auto* combo = className == u"CKivComboBox"_s ? qobject_cast<CKivComboBox*>(object) : nullptr;
    return combo ? new CComboAccessible(combo) : nullptr; // the toolkit owns it
}
} // namespace

void ComboAccessible::Install()
{
    QAccessible::installFactory(Create); // one that is there already is left as it is
}
