#pragma once

#include "config/layer.h"

#include "frame/platform.h"

#include <string>
#include <string_view>

namespace ks {

// The messages of the file commands.
inline constexpr std::string_view kFileWarningTitle = "Kestrand Launcher File Warning";

// Open: the file cannot be read; the file was not written by the launcher.
MessageBoxRequest noSuchFileMessage();
MessageBoxRequest foreignFileMessage();
// Save without a file name.
MessageBoxRequest criticalSettingsMissingMessage();
// Save and Save As over an existing file.
MessageBoxRequest replaceFileQuestion();
// Exit before anything was saved in this run.
MessageBoxRequest unsavedWorkQuestion();
// Save could not write the file.
MessageBoxRequest writeFailedMessage(const std::string& path, const std::string& reason);

} // namespace ks
