#include "host/dialog/TemplateLoader.h"

#include "host/dialog/ComboAccessible.h"
#include "host/dialog/Contrast.h"
#include "host/dialog/KivTreeCtrl.h"
#include "host/dialog/ThemedControls.h"

#include <QFile>
#include <QUiLoader>

using namespace Qt::StringLiterals;

namespace
{
/// Makes the host's themed controls where a template names them.
class CThemedLoader : public QUiLoader
{
public:
    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override
    {
        QWidget* widget = CreateThemed(className, parent);
        if (!widget)
            return QUiLoader::createWidget(className, parent, name);
        widget->setObjectName(name);
        return widget;
    }

private:
    static QWidget* CreateThemed(const QString& className, QWidget* parent)
    {
        if (className == u"CKivEdit"_s)
            return new CKivEdit(parent);
        if (className == u"CKivSpinButton"_s)
            return new CKivSpinButton(parent);
        if (className == u"CKivRadioButton"_s)
            return new CKivRadioButton(parent);
        if (className == u"CKivCheckBox"_s)
            return new CKivCheckBox(parent);
        if (className == u"CKivButton"_s)
            return new CKivButton(parent);
        if (className == u"CKivComboBox"_s)
            return new CKivComboBox(parent);
        if (className == u"CKivSlider"_s)
            return new CKivSlider(parent);
        if (className == u"CKivTreeCtrl"_s)
            return new CKivTreeCtrl(parent);
        if (className == u"CKivListCtrl"_s)
            return new CKivListCtrl(parent);
        return nullptr;
    }
};

/// The templates give number boxes the width that their digits take in the theme's font; another may be broader.
void FitToFont(CKivEdit& box)
{
    constexpr int designedDigit = 7; // pixels
    const int digit = box.fontMetrics().horizontalAdvance(u'0');
    if (box.minimumWidth() == box.maximumWidth() && digit > designedDigit)
        box.setFixedWidth(box.maximumWidth() * digit / designedDigit);
}
} // namespace

QWidget* TemplateLoader::Load(int templateNumber, QWidget* parent)
{
    QFile file(u":/kiv/dialogs/%1.ui"_s.arg(templateNumber));
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    ComboAccessible::Install();
    QWidget* content = CThemedLoader().load(&file, parent);
    if (!content)
        return nullptr;
    for (CKivEdit* box : content->findChildren<CKivEdit*>())
        FitToFont(*box);
    for (QLineEdit* box : content->findChildren<QLineEdit*>())
        Contrast::KeepPlaceholderReadable(*box);
    for (QWidget* item : NumberedItems(content)) {
        if (!item->property("placeholder").toBool())
            continue;
        QSizePolicy policy = item->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        item->setSizePolicy(policy);
        item->hide();
    }
    return content;
}

QHash<int, QWidget*> TemplateLoader::NumberedItems(const QWidget* content)
{
    QHash<int, QWidget*> items;
    for (QWidget* item : content->findChildren<QWidget*>()) {
        const QVariant id = item->property("controlId");
        if (id.isValid())
            items.insert(id.toInt(), item);
    }
    return items;
}
