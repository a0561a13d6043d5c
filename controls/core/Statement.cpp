#include "controls/core/Statement.h"

#include "host/text/Number.h"

namespace
{
constexpr qsizetype MaximumPathLength = 128;
constexpr qsizetype MaximumNumberLength = 64;
constexpr qsizetype MaximumConstructorLength = 512;
constexpr qsizetype MaximumArguments = 8;

bool IsDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool IsNameCharacter(QChar c)
{
    return IsDigit(c) || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

/// The end of the statement that begins at start: its semicolon outside quotes, or the end of the line.
qsizetype StatementEnd(QStringView line, qsizetype start)
{
    bool quoted = false;
    for (qsizetype i = start; i < line.size(); ++i) {
        if (line[i] == u'"')
            quoted = !quoted;
        else if (line[i] == u';' && !quoted)
            return i;
    }
    return line.size();
}

Statement Malformed(QStringView text)
{
    return {Statement::Kind::Malformed, text, {}};
}

Statement ReadAssignment(QStringView text, qsizetype equals)
{
    Statement statement{Statement::Kind::Assignment, text.first(equals).trimmed(), text.sliced(equals + 1).trimmed()};
    if (!StatementReader::IsPath(statement.Path) || statement.Value.isEmpty())
        return Malformed(text);
    if (const auto quotes = statement.Value.count(u'"'); quotes != 0) {
        if (quotes != 2 || !statement.Value.startsWith(u'"') || !statement.Value.endsWith(u'"'))
            return Malformed(text);
        statement.Value = statement.Value.sliced(1, statement.Value.size() - 2);
    }
    return statement;
}

/// A statement of a text that is not blank.
Statement ReadStatement(QStringView text)
{
    if (text.startsWith(u'?')) {
        const QStringView path = text.sliced(1).trimmed();
        if (!StatementReader::IsPath(path))
            return Malformed(text);
        return {Statement::Kind::Query, path, {}};
    }
    if (const qsizetype equals = text.indexOf(u'='); equals >= 0)
        return ReadAssignment(text, equals);
    return {Statement::Kind::Verb, text, {}};
}

/// Skips digits from a position and says how many there were.
qsizetype SkipDigits(QStringView text, qsizetype& position)
{
    const qsizetype start = position;
    while (position < text.size() && IsDigit(text[position]))
        ++position;
    return position - start;
}

void SkipSign(QStringView text, qsizetype& position)
{
    if (position < text.size() && (text[position] == u'+' || text[position] == u'-'))
        ++position;
}
} // namespace

void StatementReader::ForEach(QStringView line, const std::function<void(const Statement&)>& visit)
{
    for (qsizetype start = 0; start < line.size();) {
        const qsizetype end = StatementEnd(line, start);
        if (const QStringView text = line.sliced(start, end - start).trimmed(); !text.isEmpty())
            visit(ReadStatement(text));
        start = end + 1;
    }
}

bool StatementReader::IsPath(QStringView text)
{
    if (text.isEmpty() || text.size() > MaximumPathLength || text.back() == u'.')
        return false;
    bool nameBegins = true;
    for (const QChar c : text) {
        if (c == u'.' ? nameBegins : !IsNameCharacter(c))
            return false;
        nameBegins = c == u'.';
    }
    return true;
}

std::optional<Constructor> StatementReader::ReadConstructor(QStringView value)
{
    if (value.size() > MaximumConstructorLength || !value.endsWith(u')'))
        return std::nullopt;
    const qsizetype open = value.indexOf(u'(');
    if (open < 0)
        return std::nullopt;
    Constructor constructor{value.first(open).trimmed(), {}};
    if (!IsPath(constructor.Name))
        return std::nullopt;
    for (const QStringView part : value.sliced(open + 1).chopped(1).split(u','))
        constructor.Arguments.append(part.trimmed());
    if (constructor.Arguments.size() > MaximumArguments)
        return std::nullopt;
    return constructor;
}

std::optional<double> StatementReader::ReadNumber(QStringView text)
{
    text = text.trimmed();
    if (text.size() > MaximumNumberLength)
        return std::nullopt;
    qsizetype position = 0;
    SkipSign(text, position);
    qsizetype digits = SkipDigits(text, position);
    if (position < text.size() && text[position] == u'.') {
        ++position;
        digits += SkipDigits(text, position);
    }
    if (digits == 0)
        return std::nullopt;
    if (position < text.size() && (text[position] == u'e' || text[position] == u'E')) {
        ++position;
        SkipSign(text, position);
        if (SkipDigits(text, position) == 0)
            return std::nullopt;
    }
    if (position != text.size())
        return std::nullopt;
    return Number::LeadingDouble(text);
}
