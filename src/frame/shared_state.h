#pragma once

#include <cstdint>
#include <string>

namespace ks {

// State that several commands share for the length of the run.
struct SharedState {
    std::string SplitPath;   // the path to be split
    std::string SplitResult; // result of the last split
    std::string ProgramFile; // a file beside the program: a sound cue, the help file
    std::uint32_t SoundDevices = 0;
    std::string FileToCheck;
    std::int16_t FileExists = 0;  // -1 found, 0 not found
    std::int16_t ConfigSaved = 0; // 1 once a file was written in this run
    std::int16_t ReadingQDIR = 0; // 1 while the reader applies a qdir line
    std::string CompanionFile;
    std::string QuoteBuffer;
    std::string SavedIP;
    double ProgramVersion = 0;
};

} // namespace ks
