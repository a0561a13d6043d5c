#include "controls/sphere/MapAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace
{
class CMapAccessible : public QAccessibleWidget
{
public:
    explicit CMapAccessible(QWidget* map) : QAccessibleWidget(map, QAccessible::Canvas) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const QString center = dynamic_cast<const ISpokenMap&>(*widget()).SpokenCenter();
        if (kind == QAccessible::Value)
            return center;
        if (kind != QAccessible::Description)
            return QAccessibleWidget::text(kind);
        const QString where = u"中央は "_s + center + u"。"_s;
        return TellsKeys ? where + QAccessibleWidget::text(kind) : where;
    }

    bool TellsKeys = true;
};

QAccessibleInterface* Create(const QString& /*className*/, QObject* object)
{
    return dynamic_cast<ISpokenMap*>(object) ? new CMapAccessible(static_cast<QWidget*>(object)) : nullptr;
}

CMapAccessible* Find(QWidget& map)
{
    return dynamic_cast<CMapAccessible*>(QAccessible::queryAccessibleInterface(&map));
}
} // namespace

void MapAccessible::Install()
{
    QAccessible::installFactory(Create); // one that is there already is left as it is
}

bool MapAccessible::TellAfterKey(QWidget& map, const std::function<bool()>& handler)
{
    const auto& spoken = dynamic_cast<const ISpokenMap&>(map);
    const QString before = spoken.SpokenCenter();
    const QPointer<QWidget> alive(&map); // a key may pick a point, and the host end the window for it
    const bool isHandled = handler();
    if (!alive || spoken.SpokenCenter() == before)
        return isHandled;
    if (CMapAccessible* told = Find(map))
        told->TellsKeys = false;
    QAccessibleValueChangeEvent value(&map, spoken.SpokenCenter());
    QAccessible::updateAccessibility(&value);
    QAccessibleEvent description(&map, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&description);
    return isHandled;
}

void MapAccessible::Introduce(QWidget& map)
{
    if (CMapAccessible* told = Find(map))
        told->TellsKeys = true;
}
