#pragma once

#include "server/layer.h"

#include <string_view>

namespace ks {

class Program;

// The mod's pages and the maintainer's address.
inline constexpr std::string_view kDocsPage = "http://kestrand.example.org/kestrand/ksdocs.htm";
inline constexpr std::string_view kWebSite = "http://kestrand.example.org/kestrand";
inline constexpr std::string_view kBugMail = "mailto:bugs@kestrand.example.org";

// Failures of these commands are left to the viewer, browser or mail program: none has a message.
void openHelp(Program& program);
void openDocsPage(Program& program);
void openWebSite(Program& program);
void writeBugReport(Program& program);

} // namespace ks
