#pragma once

#include <QString>

/// What an installer would do for the road map.
namespace Components
{
/// Enters the road-map control, which is in this program, and the map's data of the shipped folder into the record of
/// installed components. What is entered already stays; data that are not there are not entered.
void Install(const QString& dataFolder);
} // namespace Components
