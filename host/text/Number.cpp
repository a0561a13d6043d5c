#include "host/text/Number.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <limits>
#include <locale.h>
#include <string_view>

namespace
{
/// The C locale for the lifetime of the object, whatever the host set for its process.
class CLocaleGuard
{
public:
    CLocaleGuard() : m_previous(uselocale(Locale())) {}
    CLocaleGuard(const CLocaleGuard&) = delete;
    CLocaleGuard& operator=(const CLocaleGuard&) = delete;
    ~CLocaleGuard() { uselocale(m_previous); }

private:
    static locale_t Locale()
    {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t m_previous;
};

QByteArray Print(const char* format, va_list arguments)
{
    const CLocaleGuard guard;
    constexpr size_t usualLength = 512; // only a longer text is printed twice
    std::array<char, usualLength> usual{};
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(usual.data(), usual.size(), format, arguments);
    QByteArray text;
    if (length > 0 && static_cast<size_t>(length) < usual.size())
        text = QByteArray(usual.data(), length);
    else if (length > 0) {
        text.resize(length);
        std::vsnprintf(text.data(), static_cast<size_t>(length) + 1, format, again);
    }
    va_end(again);
    return text;
}

void Append(QByteArray& bytes, std::string_view text, int width, char fill)
{
    const auto length = static_cast<qsizetype>(text.size());
    bytes.append(std::max<qsizetype>(width - length, 0), fill);
    bytes.append(text.data(), length);
}

bool IsBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Skips leading blanks and a plus sign, which std::from_chars does not take.
QByteArrayView NumberBody(QByteArrayView text)
{
    qsizetype start = 0;
    while (start < text.size() && IsBlank(text[start]))
        ++start;
    if (start + 1 < text.size() && text[start] == '+' && text[start + 1] != '-')
        ++start;
    return text.sliced(start);
}

/// The leading part of a text that can belong to a number, as bytes; anything else ends it.
QByteArray AsciiHead(QStringView text)
{
    QByteArray head;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        const bool isBlank = unit == u' ' || (unit >= u'\t' && unit <= u'\r');
        const bool isOfNumber = (unit >= u'0' && unit <= u'9') || QStringView(u"+-.eE").contains(c);
        if (!isOfNumber && !(isBlank && head.isEmpty()))
            break;
        if (isOfNumber)
            head.append(static_cast<char>(unit));
    }
    return head;
}
} // namespace

QString Number::Format(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const QString text = QString::fromUtf8(Print(format, arguments));
    va_end(arguments);
    return text;
}

void Number::AppendFixed(QByteArray& bytes, double value, int decimals, int width, char fill)
{
    constexpr size_t longest = 512; // the largest double has 309 digits before the point
    std::array<char, longest> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    Append(bytes, std::string_view(text.data(), static_cast<size_t>(result.ptr - text.data())), width, fill);
}

void Number::AppendInt(QByteArray& bytes, int value, int width)
{
    std::array<char, 16> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    Append(bytes, std::string_view(text.data(), static_cast<size_t>(result.ptr - text.data())), width, ' ');
}

QString Number::FormatUnchecked(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const QString text = QString::fromUtf8(Print(format, arguments));
    va_end(arguments);
    return text;
}

std::optional<double> Number::FindLeadingDouble(QByteArrayView text)
{
    const QByteArrayView body = NumberBody(text);
    const qsizetype digit = !body.isEmpty() && body[0] == '-' ? 1 : 0;
    if (digit >= body.size() || !((body[digit] >= '0' && body[digit] <= '9') || body[digit] == '.'))
        return std::nullopt; // keeps "inf" and "nan" out
    double value = 0.0;
    const auto result = std::from_chars(body.data(), body.data() + body.size(), value);
    if (result.ec != std::errc() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<int> Number::FindLeadingInt(QByteArrayView text)
{
    const QByteArrayView body = NumberBody(text);
    int value = 0;
    const auto result = std::from_chars(body.data(), body.data() + body.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return body[0] == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    return result.ec == std::errc() ? std::optional<int>(value) : std::nullopt;
}

std::optional<double> Number::FindLeadingDouble(QStringView text)
{
    return FindLeadingDouble(QByteArrayView(AsciiHead(text)));
}

std::optional<int> Number::FindLeadingInt(QStringView text)
{
    return FindLeadingInt(QByteArrayView(AsciiHead(text)));
}

double Number::LeadingDouble(QByteArrayView text)
{
    return FindLeadingDouble(text).value_or(0.0);
}

double Number::LeadingDouble(QStringView text)
{
    return FindLeadingDouble(text).value_or(0.0);
}

int Number::LeadingInt(QByteArrayView text)
{
    return FindLeadingInt(text).value_or(0);
}

int Number::LeadingInt(QStringView text)
{
    return FindLeadingInt(text).value_or(0);
}
