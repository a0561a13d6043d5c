#pragma once

#include <QString>

class QWidget;

/// The user guide in a window of its own.
namespace Guide
{
/// Makes the help of all dialogs open this guide, a Markdown file, at the heading of the dialog.
void Install(const QString& file);
} // namespace Guide
