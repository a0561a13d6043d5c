#pragma once

#include "host/system/WriteFailure.h"

#include <QString>

#include <functional>

/// The host's settings: sections of named values in one file of the user. A section name may hold backslashes
/// ("Dialog\\Obs"). A value that cannot be read is absent. One that cannot be written holds while the program runs; the
/// listener is notified, and the next writing tries again. The file is replaced whole or stays as it was, and what
/// another program wrote into it in the meantime is kept.
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

    /// Writes what is pending to disk; also done by the event loop after each change and at the end of the program.
    static void Flush();

    /// Hears how each attempt to write the file ended; none when empty.
    using WriteListener = std::function<void(const QString& path, WriteFailure::Cause cause)>;
    static void SetWriteListener(WriteListener listener);
};
