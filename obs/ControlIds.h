#pragma once

/// Numbers of the observation-site dialog's template and of its controls.
namespace ObsId
{
inline constexpr int Template = 7300;

inline constexpr int MapPlaceholder = 7000;
inline constexpr int SliderMagnification = 7001;
inline constexpr int LabelSliderTop = 7063;
inline constexpr int LabelSliderBottom = 7064;
inline constexpr int EmbeddedEngine = 5001; ///< child number of the sky engine
inline constexpr int GlobeMap = 5002;       ///< child number of the globe map

inline constexpr int ComboPlanet = 7042;

inline constexpr int GroupLongitude = 7035;
inline constexpr int RadioEast = 7013;
inline constexpr int RadioWest = 7014;
inline constexpr int EditLngDeg = 7015;
inline constexpr int EditLngMin = 7016;
inline constexpr int EditLngSec = 7038;
inline constexpr int SpinLngDeg = 7017;
inline constexpr int SpinLngMin = 7018;
inline constexpr int SpinLngSec = 7039;

inline constexpr int GroupLatitude = 7037;
inline constexpr int RadioNorth = 7019;
inline constexpr int RadioSouth = 7020;
inline constexpr int EditLatDeg = 7021;
inline constexpr int EditLatMin = 7023;
inline constexpr int EditLatSec = 7040;
inline constexpr int SpinLatDeg = 7022;
inline constexpr int SpinLatMin = 7024;
inline constexpr int SpinLatSec = 7041;

inline constexpr int GroupAltitude = 7047;
inline constexpr int RadioAltAuto = 7048;
inline constexpr int RadioAltManual = 7049;
inline constexpr int EditAlt = 7025;
inline constexpr int SpinAlt = 7026;
inline constexpr int LabelAltUnit = 7046;

inline constexpr int GroupTz = 7036;
inline constexpr int RadioTzPlus = 7027;
inline constexpr int RadioTzMinus = 7028;
inline constexpr int EditTzHour = 7031;
inline constexpr int EditTzMin = 7033;
inline constexpr int SpinTzHour = 7032;
inline constexpr int SpinTzMin = 7034;
inline constexpr int LabelTzHour = 7044;
inline constexpr int LabelTzMin = 7045;

inline constexpr int GroupFeature = 7069;
inline constexpr int CheckFeatureFirst = 7070; ///< eight check boxes with successive numbers

inline constexpr int ButtonCommand = 7043;
inline constexpr int ButtonSetInit = 7030;
inline constexpr int ButtonReset = 7053;
inline constexpr int ButtonCity = 7029;
inline constexpr int ButtonClose = 1;
} // namespace ObsId
