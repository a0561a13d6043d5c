#pragma once

#include <QByteArray>
#include <QString>

/// What a line of a place list says.
struct PlaceValues
{
    QString Name;
    double Longitude = 0.0; ///< degrees, east positive
    double Latitude = 0.0;  ///< degrees, north positive
    double Altitude = 0.0;  ///< metres; a line holds whole ones
    double TimeZone = 0.0;  ///< hours east of UTC, standard time
    int IsAutoAltitude = 0; ///< 1: with a terrain model the altitude is the terrain's
    int IsUserEdited = 0;   ///< 1 once the user added or changed the place
    int Kind = 0;           ///< index in the globe map's list of landmark kinds
};

/// The lines of a place list: a head of lines that begin with the close mark, then folders, each with its places and
/// folders between a line with its name and a close line. Text is in code page 932, numbers are in the C locale.
namespace PlaceListFormat
{
inline constexpr char FolderMark = '@'; ///< as many as the folder is deep, the name behind them
inline constexpr char CloseMark = '#';
inline constexpr int NameWidth = 40; ///< bytes

/// Adds the line that opens a folder. `level` is 1 for a folder that is in no other.
void AppendFolder(QByteArray& lines, int level, const QString& name);

/// Adds the line that closes the folder that was opened last.
void AppendClose(QByteArray& lines);

/// Adds a place's line. The name is padded with blanks, or cut, to NameWidth bytes. The cut may split a double-byte
/// character, on purpose: the width is what readers of the file rely on.
void AppendPlace(QByteArray& lines, const QString& name, const PlaceValues& place);

/// The line's folder marks; 0 for a line that opens no folder.
[[nodiscard]] qsizetype CountMarks(QByteArrayView line);

/// Reads a place's line, without its line end, into `place`. False, with `place` unchanged, when the line has fewer
/// than eight fields. A number that cannot be read is 0.
[[nodiscard]] bool ParsePlace(QByteArrayView line, PlaceValues& place);

/// Whether a line of this text would be taken for a folder's or a close line.
[[nodiscard]] bool BeginsWithMark(QStringView text);

/// A name's text. What is no character becomes the question mark that the files would get for it, so that the overlay,
/// which is such a file, finds the name again.
[[nodiscard]] QString DecodeName(QByteArrayView bytes);
} // namespace PlaceListFormat
