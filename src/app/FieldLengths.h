#pragma once

/// How many characters the tables' text columns hold. Entry boxes are limited to them, so that nothing is cut in
/// silence.
namespace FieldLengths {

inline constexpr int login = 64;
inline constexpr int password = 64;
inline constexpr int name = 255;
inline constexpr int organisation = 255;
inline constexpr int telephone = 64;
inline constexpr int memberNumber = 64;
inline constexpr int reason = 500;
inline constexpr int activity = 255;
inline constexpr int itemName = 120;
inline constexpr int itemType = 64;
inline constexpr int itemKey = 16;

} // namespace FieldLengths
