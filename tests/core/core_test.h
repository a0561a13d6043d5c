#pragma once

#include "tests/TestFile.h"

#include <QString>

#include <gtest/gtest.h>
#include <limits>
#include <ostream>

inline constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinity = std::numeric_limits<double>::infinity();

/// Lets a failed comparison show the text.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
