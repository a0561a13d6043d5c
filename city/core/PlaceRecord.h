#pragma once

#include <QString>

class CPlaceItem;

/// A place of the list.
struct CCityList
{
    CPlaceItem* Item = nullptr; ///< the tree item that shows the place; set by the loader only
    int TagIndex = 0;           ///< folder table index of the folder it was loaded into; set by the loader only
    QString Name;               ///< as read from the list; afterwards the item's text counts
    double Longitude = 0.0;     ///< degrees, east positive
    double Latitude = 0.0;      ///< degrees, north positive
    double Altitude = 0.0;      ///< metres
    double TimeZone = 0.0;      ///< hours east of UTC
    int IsAutoAltitude = 0;     ///< 1: with a terrain model the altitude is the terrain's
    int IsUserEdited = 0;       ///< 1 once the user added or changed the place
    int Kind = 0;               ///< index in the globe map's list of landmark kinds

    /// Takes over Longitude to Kind; who the place is stays.
    void SetValues(const CCityList& other);
};

/// A folder of the list.
struct CTagList
{
    CPlaceItem* Item = nullptr; ///< null for the root
    int Level = 0;              ///< 0 the root, 1 a folder directly under it
    QString Name;
};

/// The text forms of a place record. Numbers are in the C locale, bytes in code page 932.
namespace PlaceFormat
{
inline constexpr int NameWidth = 40; ///< bytes

/// Adds the place's line of a list file, CR LF included; the name is padded with blanks, or cut, to NameWidth bytes.
/// The cut may split a double-byte character, on purpose: the width is what readers of the file rely on.
void AppendListLine(QByteArray& lines, const QString& name, const CCityList& place);

/// A name's text. What is no character becomes the question mark that the files would get for it, so that the overlay,
/// which is such a file, finds the name again.
[[nodiscard]] QString DecodeName(QByteArrayView bytes);

/// Reads the fields of a place line, without its line end, into Name to Kind of `place`. False, with the record
/// unchanged, when the line has fewer than eight fields.
[[nodiscard]] bool ParseListLine(QByteArrayView line, CCityList& place);

/// The values without the name, as the overlay carries them.
[[nodiscard]] QString DataString(const CCityList& place);

/// Reads a data string into Longitude to Kind of `place`; an empty field, and every field after it, reads as 0.
void ParseDataString(const QString& data, CCityList& place);
} // namespace PlaceFormat
