#pragma once

#include <QVariant>

#include <optional>

/// What a control reads out of the arguments of a numbered method, which may be anything.
namespace ControlArguments
{
/// Whether the value is an integer of any size (a bool is none).
[[nodiscard]] bool IsWholeNumber(const QVariant& value);

/// A number that is neither infinite nor "not a number"; none for anything else.
[[nodiscard]] std::optional<double> FiniteNumber(const QVariant& value);

/// The one argument as a switch: a bool or a whole number.
[[nodiscard]] std::optional<bool> Switch(const QVariantList& arguments);

/// The one argument as a text.
[[nodiscard]] std::optional<QString> Text(const QVariantList& arguments);
} // namespace ControlArguments
