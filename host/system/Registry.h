#pragma once

#include <QString>

/// The host's settings: sections of named values in one file of the user. A section name may hold backslashes
/// ("Dialog\\Obs"). Nothing here fails: a value that cannot be read is absent, one that cannot be written is lost.
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

    /// Puts the store into this file from now on; a test hands in one of a temporary folder. What was written before
    /// stays in the file used until then.
    static void UseFile(const QString& path);

    /// Writes what is pending to disk; also done now and then by the event loop and at the end of the program.
    static void Flush();
};
