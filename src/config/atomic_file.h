#pragma once

#include "config/layer.h"

#include "frame/platform.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace ks {

// Replaces the file at `path` with `bytes` so that a reader sees either the old file whole or the new one
// whole: a temporary file in the target's directory is written, given the old file's owner, group and mode,
// flushed to disk and renamed over the target.
//
// - A symbolic link is kept and the file it points to replaced; a dangling link's file is created. A chain of
//   more than 40 links or a loop fails ("Too many levels of symbolic links"). In a sticky world-writable
//   directory such as /tmp a link is followed only when it belongs to this user or to the directory's owner.
// - What stands at the target must be a regular file: a directory ("it is a directory"), a device, a FIFO or a
//   socket ("it is not a regular file") is refused and left as it is. A read-only file is refused too.
// - Owner and group are kept where this process may set them (root can; the file's owner keeps its group when a
//   member of it), the mode always. A hard link is broken: the other names keep the old content. A file that
//   did not exist is created 0640 less the umask: a configuration holds the server's password.
// - The temporary file has no name while it is written (where the file system allows it) and then a short
//   one, ".ks" with 12 hex digits and ".tmp", whatever the length of the target's name. A save that is killed
//   leaves at most such a file behind; the next save in the directory removes those older than a minute.
//
// On Windows the same steps go through the system's wide calls, the path in UTF-16 and the long form: the target is
// looked at through a handle (a device such as NUL or CON, a directory and a read-only file are refused, a link leads
// to its file), and the flushed temporary file is moved over it with MoveFileExW; owners and modes do not apply.
//
// On failure the old file is untouched and no temporary file is left.
OperationResult replaceFileAtomically(const std::string& path, std::string_view bytes);

// Seams through which the tests replace steps of a save; a save uses the system calls while a seam is empty.
struct SaveHooks {
    // Writes up to `size` bytes to the temporary file and returns the count, or -1 with errno, as write(2).
    std::function<long(int fd, const void* data, std::size_t size)> write = nullptr;
    // Flushes the temporary file to disk; 0 or -1 with errno, as fsync(2).
    std::function<int(int fd)> flush = nullptr;
    // false: the temporary file has a name from the start, as on file systems without unnamed files.
    bool unnamedTemporary = true;
};

// Puts `hooks` in place for the saves that follow and returns the ones they replace. Only for tests.
SaveHooks setSaveHooksForTesting(SaveHooks hooks);

} // namespace ks
