#include "obs/core/EclipseColor.h"

#include "host/text/Number.h"

namespace
{
constexpr qsizetype HeadLength = 4;

/// Takes the text up to the separator off the front of `text`; all of it when there is none.
QStringView TakeUntil(QStringView& text, QChar separator)
{
    const qsizetype end = text.indexOf(separator);
    const QStringView part = end < 0 ? text : text.first(end);
    text = text.sliced(part.size());
    return part;
}

void StripSeparators(QStringView& text)
{
    while (!text.isEmpty() && (text.front() == u',' || text.front() == u' '))
        text = text.sliced(1);
}

quint32 LowByte(QStringView text)
{
    return static_cast<quint32>(Number::LeadingInt(text)) & 0xFFU;
}
} // namespace

quint32 ParseEclipseColor(QStringView answer)
{
    QStringView rest = answer.sliced(qMin(HeadLength, answer.size()));
    const quint32 red = LowByte(TakeUntil(rest, u','));
    StripSeparators(rest);
    const quint32 green = LowByte(TakeUntil(rest, u','));
    StripSeparators(rest);
    const quint32 blue = LowByte(TakeUntil(rest, u')'));
    return blue * 65536 + green * 256 + red;
}
