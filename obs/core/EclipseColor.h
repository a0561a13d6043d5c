#pragma once

#include <QStringView>

/// Colour of the eclipse path out of the engine's answer, such as "RGB(255, 128, 0)", as 0x00BBGGRR. A missing part
/// counts as 0 and each part is cut to its lowest 8 bits; the first four characters are passed over unread.
[[nodiscard]] quint32 ParseEclipseColor(QStringView answer);
