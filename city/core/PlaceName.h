#pragma once

#include <QString>

/// Names of places and folders as the place files can keep them.
namespace PlaceName
{
/// Why the files cannot keep the name, in lines that each end with a line feed; empty when they can. `caption` is
/// what the name is called to the user.
[[nodiscard]] QString Complaints(const QString& name, const QString& caption);
} // namespace PlaceName
