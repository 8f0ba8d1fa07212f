#pragma once

#include "server/layer.h"

#include <string>
#include <vector>

namespace ks {

// The one command line that hands a program its arguments on Windows, where a program gets its words by cutting
// that line up again. A word that is empty or holds a blank, a tab or a double quote goes between double quotes,
// a double quote in it and the backslashes before one or before the closing quote escaped, so that the C runtime
// and CommandLineToArgvW give back exactly the words given; any other word goes as it is. The program's own path
// is only put between double quotes when it holds a blank or a tab, as Windows reads the first word without
// escapes. ("C:\Quake II\quake2.exe", {"+set", "hostname", "My \"Best\" Server"}) gives
// "C:\Quake II\quake2.exe" +set hostname "My \"Best\" Server".
std::string windowsCommandLine(const std::string& program, const std::vector<std::string>& arguments);

} // namespace ks
