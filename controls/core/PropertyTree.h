#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

/// The engine's properties: dotted paths, letter case ignored, each with a default, a form of value and a text. There
/// are no others.
class CPropertyTree
{
public:
    static constexpr qsizetype MaximumValueLength = 1 << 20; ///< characters of one value

    CPropertyTree();

    /// Whether there is such a property.
    [[nodiscard]] bool Knows(QStringView path) const;

    /// Whether there is such a property and the value has the form and the size that it asks for.
    [[nodiscard]] bool Accepts(QStringView path, QStringView value) const;

    /// Assigns a value that is accepted; TRUE and FALSE are kept in capitals.
    void Assign(QStringView path, QStringView value);

    /// The value of a path; empty when there is none.
    [[nodiscard]] QString Value(QStringView path) const;

    /// Whether the value is TRUE.
    [[nodiscard]] bool IsTrue(QStringView path) const;

    /// The number that the value begins with, 0.0 when there is none.
    [[nodiscard]] double NumberOf(QStringView path) const;

private:
    enum class Form
    {
        Any,
        Boolean,
        Number,
        Name
    };
    struct Property
    {
        QString Value;
        Form Kind = Form::Any;
    };
    struct Known;
    static const Known KnownProperties[];

    [[nodiscard]] static bool HasForm(Form form, QStringView value);

    QHash<QString, Property> m_properties; ///< by path in lower case
};
