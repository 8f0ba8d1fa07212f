#pragma once

#include "server/layer.h"

#include "frame/catalogue.h"
#include "frame/path_style.h"

#include <string>
#include <vector>

namespace ks {

class Program;

// The choice handler of the directory selector: QDIR and FGD are split anew from the chosen directory.
void splitChosenDirectory(Program& program);

// The change handler of QDIR, FGD and FFile: a set value turns the field white. QDIR and FGD count as set
// unless empty or "NONE"; FFile unless "NONE".
void whitenWhenSet(Program& program, FieldId field);

// One place where the mod's directory is looked for at start-up.
struct SearchPlace {
    std::string tested;    // the directory that must hold at least one plain file
    std::string drive;     // where the drive selector goes when it does
    std::string directory; // where the directory selector goes
};

// The places in the order they are tried. The Linux list names the user's home for the last one and leaves
// it out when the home is unknown.
std::vector<SearchPlace> kestrandSearchPlaces(PathStyle style, const std::string& home);

// The drive on which the search starts and where the selectors go when nothing is found.
std::string rootDrive(PathStyle style);

// Looks for the mod's directory in every place, moves the selectors to the first one found, or tells the
// operator that there is none and leaves the selectors on the root.
void findKestrandDirectory(Program& program);

} // namespace ks
