#include "host/control/ControlArguments.h"

#include <cmath>

bool ControlArguments::IsWholeNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
        return true;
    default:
        return false;
    }
}

std::optional<double> ControlArguments::FiniteNumber(const QVariant& value)
{
    if (!IsWholeNumber(value) && value.typeId() != QMetaType::Double && value.typeId() != QMetaType::Float)
        return std::nullopt;
    const double number = value.toDouble();
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<bool> ControlArguments::Switch(const QVariantList& arguments)
{
    if (arguments.size() != 1 || (arguments[0].typeId() != QMetaType::Bool && !IsWholeNumber(arguments[0])))
        return std::nullopt;
    return arguments[0].toBool();
}

std::optional<QString> ControlArguments::Text(const QVariantList& arguments)
{
    if (arguments.size() != 1 || arguments[0].typeId() != QMetaType::QString)
        return std::nullopt;
    return arguments[0].toString();
}
