#pragma once

#include "session/layer.h"

#include <span>
#include <string_view>

namespace ks {

class Program;

// One entry of the main window's menu bar. A top-level menu has level 0, its entries level 1; a separator has
// an empty caption. An entry of the View menu opens the companion file that its caption names.
struct MenuEntry {
    std::string_view name;
    std::string_view caption;
    int level;
    void (*command)(Program&) = nullptr; // null for top-level menus, separators and the companion files
    bool opensCompanionFile = false;
};

// The About entry shows the splash screen again, which is the windows' own business: it has no command here.
inline constexpr std::string_view kAboutEntry = "mnuHelpAbout";

// The whole menu tree in order.
std::span<const MenuEntry> mainMenu();

// Runs the command of an entry; gives false for an entry without one.
bool runMenuCommand(Program& program, const MenuEntry& entry);
// The same for the entry of that name.
bool runMenuCommand(Program& program, std::string_view name);

} // namespace ks
