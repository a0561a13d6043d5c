#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <functional>
#include <optional>

/// One statement of an engine command line.
struct Statement
{
    enum class Kind
    {
        Assignment,
        Query,
        Verb,
        Malformed
    };

    Kind What = Kind::Verb;
    QStringView Path;  ///< assignment and query: the dotted path as written; else: the whole as written
    QStringView Value; ///< assignment: the value without its quotes
};

/// A value of the form name(argument, argument, ...), its parts without surrounding blanks.
struct Constructor
{
    QStringView Name;
    QList<QStringView> Arguments;
};

/// Reading of the engine's command language. All views point into the text that was read.
namespace StatementReader
{
/// Hands every statement of the line to the visitor, in order; what is of no form comes as malformed, blanks not at
/// all. A semicolon between double quotes separates nothing.
void ForEach(QStringView line, const std::function<void(const Statement&)>& visit);

/// Whether the text is a dotted path: names of ASCII letters, digits and underscores, at most 128 characters.
[[nodiscard]] bool IsPath(QStringView text);

/// The value as a constructor with one to eight arguments; nothing when it has another form.
[[nodiscard]] std::optional<Constructor> ReadConstructor(QStringView value);

/// The decimal number that the whole text is; nothing when it is anything else.
[[nodiscard]] std::optional<double> ReadNumber(QStringView text);
} // namespace StatementReader
