#pragma once

#include <QString>

class CHostContext;

/// The user guide in a window of its own.
namespace Guide
{
/// Makes the help of all dialogs open this guide, a Markdown file, at the heading of the dialog.
void Install(CHostContext& context, const QString& file);
} // namespace Guide
