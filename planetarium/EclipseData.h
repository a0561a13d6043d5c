#pragma once

#include <QString>

/// The text of a path file of the eclipse folder; empty when there is none. At most a few megabytes are read.
[[nodiscard]] QString LoadEclipsePath(const QString& dataFolder);
