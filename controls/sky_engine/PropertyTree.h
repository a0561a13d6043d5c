#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

/// The engine's properties: dotted paths, letter case ignored, each with a text. Paths that the engine knows have a
/// default and a form of value; other paths are kept as they come, up to a bound on their number and size.
class CPropertyTree
{
public:
    static constexpr qsizetype MaximumExtraPaths = 1024;
    static constexpr qsizetype MaximumValueLength = 1 << 20; ///< characters of one value
    static constexpr qsizetype MaximumTotalLength = 1 << 22; ///< characters of all values together

    CPropertyTree();

    /// Assigns a value; TRUE and FALSE are kept in capitals. False, and nothing changes, when the value has not the
    /// form that the path asks for or a bound would be passed.
    bool Assign(QStringView path, QStringView value);

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
    qsizetype m_knownCount = 0;
    qsizetype m_totalLength = 0;
};
