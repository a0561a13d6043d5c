#pragma once

#include <functional>

class QWidget;

/// Help for a dialog; the host brings the pages.
namespace Help
{
/// Shows the page of a template over the parent; nothing happens when the host set no provider.
void Show(QWidget* parent, int templateNumber);
void SetProvider(std::function<void(QWidget* parent, int templateNumber)> provider);
} // namespace Help
