#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

/// Numbers as the C library reads and writes them, in the C locale whatever the process's locale is.
namespace Number
{
/// printf: exact ties go to even, negative zero keeps its sign. The format and texts are UTF-8.
[[nodiscard]] QString Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// The same for a format that comes out of a table of texts; the caller vouches that it fits the arguments.
[[nodiscard]] QString FormatUnchecked(const char* format, ...);

/// Adds what printf's "%*.*f" and "%*d" write, many times as fast, for the lines of long files. The value of
/// AppendFixed must not be negative when the fill is a zero.
void AppendFixed(QByteArray& bytes, double value, int decimals, int width, char fill = ' ');
void AppendInt(QByteArray& bytes, int value, int width);

/// The decimal number that the text begins with (leading blanks, a sign and an exponent allowed); none for "inf",
/// "nan" and a number that no double can hold. "0x10" begins with 0.
[[nodiscard]] std::optional<double> FindLeadingDouble(QStringView text);
[[nodiscard]] std::optional<double> FindLeadingDouble(QByteArrayView text);

/// The decimal integer that the text begins with, clamped to the range of int.
[[nodiscard]] std::optional<int> FindLeadingInt(QStringView text);
[[nodiscard]] std::optional<int> FindLeadingInt(QByteArrayView text);

/// The same, with 0 for a text without a number.
[[nodiscard]] double LeadingDouble(QStringView text);
[[nodiscard]] double LeadingDouble(QByteArrayView text);
[[nodiscard]] int LeadingInt(QStringView text);
[[nodiscard]] int LeadingInt(QByteArrayView text);
} // namespace Number
