#pragma once

#include <QString>
#include <QStringView>

/// Numbers as the C library reads and writes them, in the C locale whatever the process's locale is.
namespace Number
{
/// printf: exact ties go to even, negative zero keeps its sign. The format and texts are UTF-8.
[[nodiscard]] QString Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// The decimal number that the text begins with (leading blanks, a sign and an exponent allowed), 0.0 when there is
/// none. "0x10", "inf" and "nan" have no leading number; a number too large for a double reads as 0.0.
[[nodiscard]] double LeadingDouble(QStringView text);
[[nodiscard]] double LeadingDouble(QByteArrayView text);

/// The decimal integer that the text begins with, 0 when there is none; clamped to the range of int.
[[nodiscard]] int LeadingInt(QStringView text);
[[nodiscard]] int LeadingInt(QByteArrayView text);
} // namespace Number
