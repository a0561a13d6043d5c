#pragma once

#include <QString>

/// Names of places and folders as the place files can keep them.
namespace PlaceName
{
/// The name without blanks around it, and with the code page's own forms of those characters of Shift_JIS that have two
/// codes in Unicode: what many input methods give would be lost in the files.
[[nodiscard]] QString Normalized(const QString& name);

/// Why the files cannot keep the name, in lines that each end with a line feed; empty when they can. `caption` is
/// what the name is called to the user.
[[nodiscard]] QString Complaints(const QString& name, const QString& caption);
} // namespace PlaceName
