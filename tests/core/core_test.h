#pragma once

#include "host/text/CodePage932.h"
#include "host/text/Number.h"
#include "tests/TestFile.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <ostream>

inline constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinity = std::numeric_limits<double>::infinity();

/// Lets a failed comparison show the text.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
