#pragma once

/// Numbers of the templates of the place-list dialogs and of their controls.

/// The boxes of a place's position: the same in the city list and in the place editor.
namespace CoordinateId
{
inline constexpr int RadioEast = 7110;
inline constexpr int RadioWest = 7111;
inline constexpr int EditLong1 = 7112;
inline constexpr int EditLong2 = 7113;
inline constexpr int EditLong3 = 7114;
inline constexpr int SpinLong1 = 7115;
inline constexpr int SpinLong2 = 7116;
inline constexpr int SpinLong3 = 7117;

inline constexpr int RadioNorth = 7120;
inline constexpr int RadioSouth = 7121;
inline constexpr int EditLat1 = 7122;
inline constexpr int EditLat2 = 7123;
inline constexpr int EditLat3 = 7124;
inline constexpr int SpinLat1 = 7125;
inline constexpr int SpinLat2 = 7126;
inline constexpr int SpinLat3 = 7127;

inline constexpr int EditAlt = 7130;
inline constexpr int SpinAlt = 7131;

inline constexpr int RadioPlus = 7140;
inline constexpr int RadioMinus = 7141;
inline constexpr int EditTzHour = 7142;
inline constexpr int EditTzMin = 7143;
inline constexpr int SpinTzHour = 7144;
inline constexpr int SpinTzMin = 7145;
} // namespace CoordinateId

/// The city list.
namespace CityId
{
inline constexpr int Template = 7301;

inline constexpr int Tree = 7100;
inline constexpr int ButtonSetInit = 7150;
inline constexpr int ButtonEdit = 7151;
inline constexpr int ButtonAdd = 7152;
inline constexpr int ButtonDel = 7153;
inline constexpr int ButtonReset = 7154;

inline constexpr int ButtonOk = 1;
inline constexpr int ButtonCancel = 2;
inline constexpr int ButtonHelp = 57670;
} // namespace CityId

/// The choice between a place and a folder to add.
namespace AddCityId
{
inline constexpr int Template = 7302;

inline constexpr int RadioCity = 7160;
inline constexpr int RadioFolder = 7161;

inline constexpr int ButtonOk = 1;
inline constexpr int ButtonCancel = 2;
inline constexpr int ButtonHelp = 57670;
} // namespace AddCityId

/// The place editor.
namespace EditCityId
{
inline constexpr int Template = 7303;

inline constexpr int EditName = 7170;
inline constexpr int ComboKind = 7171;

inline constexpr int ButtonOk = 1;
inline constexpr int ButtonCancel = 2;
inline constexpr int ButtonHelp = 57670;
} // namespace EditCityId

/// The folder editor.
namespace EditFolderId
{
inline constexpr int Template = 7304;

inline constexpr int EditName = 7180;

inline constexpr int ButtonOk = 1;
inline constexpr int ButtonCancel = 2;
inline constexpr int ButtonHelp = 57670;
} // namespace EditFolderId

/// The chooser of where a folder goes that was dropped on a folder.
namespace MoveToId
{
inline constexpr int Template = 7305;

inline constexpr int Icon = 7190;
inline constexpr int RadioAfter = 7191;
inline constexpr int RadioInto = 7192;

inline constexpr int ButtonOk = 1;
inline constexpr int ButtonCancel = 2;
} // namespace MoveToId
