#pragma once

#include <string_view>

namespace veldan {

// Control ids of the menu, the most entries of each sort that keep apart from the next, and the names of the groups
// that the menu itself rewrites.

inline constexpr int kFirstItemID = 1000;
inline constexpr int kMostItems = 2997;
inline constexpr int kScrollUpID = 3998;
inline constexpr int kScrollDownID = 3999;
inline constexpr int kFirstGroupID = 4000;
inline constexpr int kMostGroups = 549;
inline constexpr int kFirstRecentID = 4550;
inline constexpr int kMostRecentRows = 50;
inline constexpr int kFirstUserDefineID = 4600;
inline constexpr int kMostUserDefineRows = 2900;
inline constexpr int kAddButtonID = 7500;

inline constexpr std::string_view kRecentFolder = "Recent";
inline constexpr std::string_view kUserDefineFolder = "UserDefine";

}  // namespace veldan
