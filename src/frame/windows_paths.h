#pragma once

#include "frame/layer.h"

// Paths and texts as the Windows system calls take them. The program keeps every path as UTF-8 bytes; the calls
// of the wide (W) family take UTF-16, and a path in the long form, "\\?\C:\..." or "\\?\UNC\server\...", may be
// up to 32,767 characters where the plain form stops at 260. Only on Windows.

#include <string>
#include <string_view>

namespace ks {

// UTF-16 for UTF-8 bytes; a byte that is no UTF-8 becomes the replacement character.
std::wstring wideText(std::string_view utf8);

// UTF-8 for UTF-16 text.
std::string utf8Text(std::wstring_view wide);

// The path made whole from the current directory, its slashes turned to backslashes and "." and ".." taken out,
// in the long form when it names a drive or a share. A device name ("NUL", "C:\temp\CON") gives the device's
// own path, "\\.\NUL", which is never in the long form.
std::wstring systemPath(std::string_view utf8);

// Whether a path from systemPath names a device rather than a file: it begins with "\\.\".
bool isDevicePath(std::wstring_view path);

// A long-form path back in the form the operator writes it: "\\?\C:\x" as "C:\x", "\\?\UNC\s\x" as "\\s\x".
std::wstring shortForm(std::wstring_view path);

// The errno that stands nearest to a Windows error code (GetLastError), so that a failure reads as it does on
// other systems: "No such file or directory", "Permission denied".
int errnoOf(unsigned long windowsError);

// The words for a Windows error code, as errnoOf gives them.
std::string reasonOfWindowsError(unsigned long windowsError);

} // namespace ks
