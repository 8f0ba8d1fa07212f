#pragma once

#include "frame/path_style.h"

#include <string>
#include <vector>

namespace ks {

class Program;

// Gives the selectors and the three path fields of the main form their handlers.
void ConnectServer(Program& program);

// The drive selector moved: the directory selector goes to that drive's current directory.
void Drive2_Change(Program& program);
// The directory selector moved: QDIR and FGD are split from its path, except while the reader applies a
// qdir line.
void Dir2_Change(Program& program);
// A set FGD or QDIR (neither empty nor "NONE") turns white.
void FGD_Change(Program& program);
void QDIR_Change(Program& program);
// FFile turns white for anything but "NONE".
void FFile_Change(Program& program);

// One place where the mod's directory is looked for at start-up.
struct SearchPlace {
    std::string tested;    // the directory that must hold at least one plain file
    std::string drive;     // where the drive selector goes when it does
    std::string directory; // where the directory selector goes
};

// The places in the order they are tried. The Linux list names the user's home for the last one and leaves
// it out when the home is unknown.
std::vector<SearchPlace> KestrandSearchPlaces(PathStyle style, const std::string& home);

// The drive on which the search starts and where the selectors go when nothing is found.
std::string RootDrive(PathStyle style);

// Looks for the mod's directory in every place, moves the selectors to the first one found, or tells the
// operator that there is none and leaves the selectors on the root.
void FindKestrandDirectory(Program& program);

} // namespace ks
