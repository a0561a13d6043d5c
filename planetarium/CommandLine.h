#pragma once

#include <QStringList>

#include <optional>

/// What the planetarium was started with.
struct CommandLine
{
    // Folders end with a slash; none where the option was not given.
    std::optional<QString> Data;     ///< folder of the shipped data
    std::optional<QString> User;     ///< folder of the user's place files
    std::optional<QString> Settings; ///< file, made when it is missing
    std::optional<QString> Terrain;  ///< terrain index file, empty for no terrain
    bool IsDeveloper = false;

    /// What to print in place of running: help and version with status 0, a mistake with Mistaken.
    QString Message;
    int Status = 0;

    static constexpr int Mistaken = 2;

    /// `arguments` begin with the name of the program. Folders and files that must be there are looked for.
    [[nodiscard]] static CommandLine Parse(const QStringList& arguments);
};
