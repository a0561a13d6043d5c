#pragma once

#include <QHash>

class QWidget;

/// Dialog templates: Designer files in the resources, named by their numbers. Dynamic properties carry what Designer
/// does not know: "controlId" the control's number, "buddyId" the box that a spin button belongs to, "placeholder"
/// true for a hidden item whose place in the layout is kept.
namespace TemplateLoader
{
/// Builds the template as a child of the parent; null when there is none of this number.
[[nodiscard]] QWidget* Load(int templateNumber, QWidget* parent);

/// The controls of a template by their numbers.
[[nodiscard]] QHash<int, QWidget*> NumberedItems(const QWidget* content);
} // namespace TemplateLoader
