#pragma once

#include <QStringList>

/// The usual Japanese font families, the best one first; not all of them are installed.
[[nodiscard]] inline QStringList JapaneseFontFamilies()
{
    return {QStringLiteral("Noto Sans CJK JP"), QStringLiteral("IPAexGothic"),  QStringLiteral("IPAGothic"),
            QStringLiteral("TakaoPGothic"),     QStringLiteral("Yu Gothic UI"), QStringLiteral("Meiryo")};
}
