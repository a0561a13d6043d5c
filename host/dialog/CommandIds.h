#pragma once

/// Numbers of the command window's template and of its controls.
namespace CommandId
{
inline constexpr int Template = 7306;

inline constexpr int ComboCommand = 7090;
inline constexpr int LabelAnswer = 7091;
inline constexpr int EditAnswer = 7092;
inline constexpr int CheckSave = 7093;

inline constexpr int ButtonOk = 1;
inline constexpr int ButtonCancel = 2;
inline constexpr int ButtonHelp = 57670;
} // namespace CommandId
