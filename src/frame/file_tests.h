#pragma once

#include "frame/layer.h"

#include <string>

namespace ks {

// The file tests of the machine the program runs on, written once for the platforms of the launcher and of kscfg.
// A path is in the file system's encoding (UTF-8 on Windows, where the system gets it in UTF-16).
namespace file_tests {

// A plain file (not a directory) of that name exists; a link counts as what it names.
bool isPlainFile(const std::string& path);
// A plain file that is not hidden: on POSIX systems its name does not begin with a dot, on Windows it lacks the
// hidden attribute.
bool isVisiblePlainFile(const std::string& path);
bool isDirectory(const std::string& path);
// The directory lists at least one plain file, hidden or not; false for a missing or unreadable one.
bool hasPlainFile(const std::string& directory);
// Every user of the machine may read the file: the mode bit for others on POSIX systems; never on Windows, whose
// rights are no mode bits.
bool readableByOthers(const std::string& path);

} // namespace file_tests

} // namespace ks
