#pragma once

#include "frame/platform.h"

#include <string>
#include <string_view>

namespace ks {

// Replaces the file at `path` with `bytes` so that a reader sees either the old file whole or the new one
// whole: a temporary file beside the target is written, flushed to disk, given the old file's
// permissions and renamed over the target. A symbolic link is kept and the file it points to replaced.
// On failure the old file is untouched and no temporary file is left.
OperationResult replaceFileAtomically(const std::string& path, std::string_view bytes);

} // namespace ks
