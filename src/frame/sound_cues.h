#pragma once

#include "frame/layer.h"

#include <string_view>

namespace ks {

// The launcher's sound cues, by the name of their file. The build makes each of them (tools/sounds) and puts them
// beside the launcher; data/CMakeLists.txt reads the names from here.
inline constexpr std::string_view kStartSound = "ks4a.wav";         // the splash, at start and by About; the farewell
inline constexpr std::string_view kFlagsButtonSound = "rail.wav";   // the flags dialog opens
inline constexpr std::string_view kWeaponsButtonSound = "bfg.wav";  // the weapon dialog opens
inline constexpr std::string_view kTabSound = "tab.wav";            // a tab is chosen
inline constexpr std::string_view kCloseButtonSound = "button.wav"; // a dialog's Close button

} // namespace ks
