#pragma once

#include <QString>

/// Texts of the module by number.
namespace StringTable
{
inline constexpr int DeletePlace = 7201;  ///< %1 the place
inline constexpr int DeleteFolder = 7202; ///< %1 the folder
inline constexpr int SectionCity = 7217;
inline constexpr int SectionObs = 7219;
inline constexpr int SectionAddCity = 7221;
inline constexpr int SectionEditCity = 7223;
inline constexpr int SectionEditFolder = 7225;
inline constexpr int ConsoleCommands = 7227; ///< this and the next three belong to the host's command window
inline constexpr int ConsoleCommand = 7228;
inline constexpr int ConsoleEnable = 7229;
inline constexpr int SectionCommand = 7230;
inline constexpr int AltitudeRange = 7232;   ///< %s body, %.0f lower bound, %.0f upper bound
inline constexpr int LongitudeRange = 7233;  ///< %d lower bound, %d upper bound
inline constexpr int MoveAfterFolder = 7234; ///< %s the folder
inline constexpr int MoveIntoFolder = 7235;  ///< %s the folder
inline constexpr int NewPlaceName = 7236;
inline constexpr int SectionMapple = 7242;
inline constexpr int SectionMappleFind = 7243;

/// The text of a number; empty when there is none.
[[nodiscard]] QString Load(int id);
} // namespace StringTable
