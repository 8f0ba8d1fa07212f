#pragma once

#include "config/layer.h"

#include "config/record_reader.h"

#include <chrono>
#include <string>

namespace ks {

// An exclusive hold on a configuration file for one read-change-write, so that two writers that each change
// another setting cannot both start from the old file and lose one change.
//
// The hold is a lock on the file itself (flock), which every writer of kscfg takes before it reads the file and
// keeps until the new file has been renamed over it. A writer that waited for an old file finds, once it holds
// the lock, that the path names another file now: it lets go and takes the lock of the new one, so the hold is
// always on the file that the path names. A lock does not keep other programs from writing (an editor, the
// launcher's Save); it orders the writers that take it.
class ConfigLock {
public:
    enum class Outcome {
        Held,    // the file is held
        Busy,    // another writer held it for the whole wait
        Missing, // there is no file at the path
        Failed,  // it could not be opened or locked; reason() says why
    };

    // Takes the hold on the regular file at `path`, waiting up to `wait` while another writer has it.
    ConfigLock(const std::string& path, std::chrono::milliseconds wait);
    ~ConfigLock();
    ConfigLock(const ConfigLock&) = delete;
    ConfigLock& operator=(const ConfigLock&) = delete;

    Outcome outcome() const { return outcome_; }
    // Why the file could not be held, in the words of RecordReader::reason().
    const std::string& reason() const { return reason_; }
    // The bytes of the held file.
    FileBytes read() const;

private:
    std::string path_;
    int fd_ = -1;
    Outcome outcome_ = Outcome::Failed;
    std::string reason_;
};

} // namespace ks
