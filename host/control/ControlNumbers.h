#pragma once

#include <QMetaType>
#include <QtGlobal>

/// The numbers of the controls' methods, properties and events: the interface between the module and the controls.
namespace ControlNumber
{
/// The sky engine: one text in, one text out.
namespace Engine
{
inline constexpr int MethodCommand = 2;   ///< QString line -> QString answer
inline constexpr int PropertyActive = 1;  ///< bool
inline constexpr int EventMouseUp = -607; ///< short button, short shift state, int x, int y (the standard mouse-up)
inline constexpr int EventTouch = 9;      ///< quint32 kind, TouchInput*, int, int, int, int
inline constexpr unsigned TouchKindInput = 320;
inline constexpr unsigned TouchFlagUp = 4;
} // namespace Engine

/// The globe map.
namespace GlobeMap
{
inline constexpr int SetCenter = 4;              ///< double longitude, double latitude (degrees)
inline constexpr int GetCenter = 5;              ///< double* longitude, double* latitude
inline constexpr int SetObsPosition = 6;         ///< double longitude, double latitude
inline constexpr int Redraw = 8;                 ///< no argument
inline constexpr int SetZoom = 9;                ///< double 0.0 (whole globe) to 1.0 (2 degrees)
inline constexpr int Switch12 = 12;              ///< bool, a display option
inline constexpr int SetLandmarkFileExists = 16; ///< bool
inline constexpr int Switch18 = 18;              ///< bool, a display option
inline constexpr int SetLandmarkFile = 20;       ///< QString path
inline constexpr int FeatureCount = 22;          ///< -> int
inline constexpr int SetFeatureFlags = 23;       ///< quint64 address of an array of FeatureCount 32-bit integers
inline constexpr int FeatureName = 25;           ///< int kind -> QString
inline constexpr int ReloadUserPlaces = 26;      ///< bool
inline constexpr int Switch29 = 29;              ///< bool, a display option
inline constexpr int SetEclipsePath = 31;        ///< QString path data, empty for none
inline constexpr int SetBesselElementApply = 32; ///< bool
inline constexpr int SetEclipsePathColor = 33;   ///< quint32 0x00BBGGRR
inline constexpr int EventObsPosition = 8;       ///< double longitude, double latitude
inline constexpr int EventMagnification = 9;     ///< double magnification, 180 / view angle in degrees
} // namespace GlobeMap

/// The road map. Positions are in milliseconds of arc, longitude first.
namespace RoadMap
{
inline constexpr double MillisecondsPerDegree = 3'600'000.0;
inline constexpr int SetPosition = 1;        ///< bool mark, double x, double y
inline constexpr int Search = 2;             ///< bool facility, QString text -> bool started
inline constexpr int GetSearchResult = 3;    ///< -> qint64 number of a CRoadMapResults, 0 for none
inline constexpr int SetScale = 4;           ///< int denominator of the scale
inline constexpr int CenterMark = 5;         ///< no argument
inline constexpr int OpenFile = 6;           ///< QString path of a file of marks
inline constexpr int EventMouseUp = 1;       ///< double latitude, double longitude (degrees, in this order)
inline constexpr int EventLandMarkEnd = 2;   ///< int status of a facility search; 0 and 2: finished
inline constexpr int EventAddressKeyEnd = 3; ///< int status of an address search; 0 and 2: finished
} // namespace RoadMap
} // namespace ControlNumber

/// One touch of a touch event, as the engine hands it over.
struct TouchInput
{
    int X = 0;         ///< pixels in the control
    int Y = 0;         ///< pixels in the control
    quint32 Flags = 0; ///< bits; 4: the finger was lifted
};
Q_DECLARE_METATYPE(TouchInput*)
Q_DECLARE_METATYPE(double*)
