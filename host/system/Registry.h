#pragma once

#include <QString>

/// The host's settings: sections of named values in one file of the user. A section name may hold backslashes
/// ("Dialog\\Obs"). A value that cannot be read is absent. The file is that of the host's context.
class CRegistry
{
public:
    /// What an integer means; both are stored alike.
    enum Kind : int
    {
        Flag = 0,
        Count = 1
    };

    /// Reads an integer; `result` gets the default when the value is absent or not an integer.
    static void Read(const QString& section, const QString& name, int defaultValue, int* result, int kind);

    /// Reads a text; `result` gets the default when the value is absent or not a text.
    static void Read(const QString& section, const QString& name, const QString& defaultValue, QString* result);

    static void Write(const QString& section, const QString& name, int data, int kind);
    static void Write(const QString& section, const QString& name, const QString& data);
};
