#pragma once

/// Numbers of the road-map dialog's template, of its controls and of the message it gets from its search window.
namespace MappleId
{
inline constexpr int Template = 7307;

inline constexpr int Map = 5241;
inline constexpr int MapPlaceholder = 7100;
inline constexpr int SliderZoom = 7101;
inline constexpr int TextSite = 7102;
inline constexpr int ButtonCenter = 7103;
inline constexpr int ButtonFind = 7104;
inline constexpr int ButtonRead = 7105;
inline constexpr int ButtonClose = 2;
inline constexpr int ButtonHelp = 57670;

/// A match was chosen as the observation site; second parameter: `double*` to two numbers, x and y, in milliseconds of
/// arc, read before the message returns.
inline constexpr int MessageFindSelectPos = 0x187D;
} // namespace MappleId

/// Numbers of the search window's template and of its controls.
namespace MappleFindId
{
inline constexpr int Template = 7308;

inline constexpr int LabelSearchChar = 7120;
inline constexpr int EditSearchChar = 7121;
inline constexpr int GroupRule = 7122;
inline constexpr int RadioAddressKey = 7123; ///< the radios have successive numbers
inline constexpr int RadioLandMark = 7124;
inline constexpr int ListResult = 7125;
inline constexpr int ButtonSearch = 7126;
inline constexpr int ButtonMoveMap = 7127;
inline constexpr int ButtonSetObs = 7128;
inline constexpr int ButtonClose = 1;
inline constexpr int ButtonHelp = 57670;
} // namespace MappleFindId
