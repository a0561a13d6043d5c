#include "planetarium/SiteChoices.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{
QLabel* Hint(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setWordWrap(true);
    return label;
}

/// The action's name without what only a menu needs.
QString ButtonText(const QAction& action)
{
    QString text = action.text();
    text.truncate(text.indexOf(u"(&"_s) < 0 ? text.size() : text.indexOf(u"(&"_s));
    return text + u"  "_s + action.shortcut().toString(QKeySequence::NativeText);
}
} // namespace

CSiteChoices::CSiteChoices(QWidget* parent) : QWidget(parent), m_rows(new QVBoxLayout(this)), m_picture(Hint(this))
{
    m_rows->setContentsMargins(4, 4, 4, 4);
    m_rows->setSpacing(3);
    m_rows->addWidget(m_picture);
}

void CSiteChoices::Add(QAction* action, const QString& hint)
{
    auto* button = new QPushButton(this);
    auto* label = Hint(this);
    const auto show = [action, button, label, hint] {
        const bool isRefused = !action->isEnabled() && !action->statusTip().isEmpty();
        button->setText(ButtonText(*action));
        button->setEnabled(action->isEnabled());
        button->setToolTip(action->toolTip());
        label->setText(isRefused ? action->statusTip() : hint);
        button->setAccessibleDescription(label->text());
    };
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, button, show);
    show();
    m_rows->addSpacing(4);
    m_rows->addWidget(button);
    m_rows->addWidget(label);
}

void CSiteChoices::ShowBody(const QString& body)
{
    const QString text = u"左の%1をクリックした地点が観測地になります。"_s.arg(body);
    if (m_picture->text() != text)
        m_picture->setText(text);
}
