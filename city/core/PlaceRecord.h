#pragma once

#include "host/text/PlaceListFormat.h"

class CPlaceItem;

/// A place of the list. Its name is as read from the list; afterwards the item's text counts.
struct CCityList : PlaceValues
{
    CPlaceItem* Item = nullptr; ///< the tree item that shows the place; set by the loader only
    int TagIndex = 0;           ///< folder table index of the folder it was loaded into; set by the loader only

    /// Takes over all but the name; who the place is stays.
    void SetValues(const PlaceValues& other);
};

/// A folder of the list.
struct CTagList
{
    CPlaceItem* Item = nullptr; ///< null for the root
    int Level = 0;              ///< 0 the root, 1 a folder directly under it
    QString Name;
};

/// A place's values in one line without its name, as the overlay carries them. Numbers are in the C locale.
namespace PlaceData
{
[[nodiscard]] QString Format(const PlaceValues& place);

/// Reads all but the name; an empty field, and every field after it, reads as 0.
void Parse(const QString& data, PlaceValues& place);
} // namespace PlaceData
