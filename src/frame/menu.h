#pragma once

#include <span>
#include <string_view>

namespace ks {

class Program;

// One entry of the main window's menu bar. A top-level menu has level 0, its entries level 1; a
// separator has an empty caption.
struct MenuEntry {
    std::string_view name;
    std::string_view caption;
    int level;
    void (*command)(Program&);       // null for top-level menus, separators and entries without a command
    bool opensCompanionFile = false; // the caption names a companion text file to open
};

// The whole menu tree in order.
std::span<const MenuEntry> mainMenu();

// Runs the command of the named entry; gives false for an entry without a command.
bool RunMenuCommand(Program& program, std::string_view name);

} // namespace ks
