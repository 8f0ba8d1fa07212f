#pragma once

#include "forms/layer.h"

#include <QString>
#include <QStringList>
#include <QtPlugin>

#include <cstdint>

namespace ks {

// The launcher's sounds. They come from a module of their own (kslaunch-sound), which the desktop program
// loads at the first sound, after the splash's first frame: the sound libraries are many and would otherwise be
// loaded before anything is shown.
class SoundOutput {
public:
    virtual ~SoundOutput() = default;
    virtual std::uint32_t deviceCount() = 0;
    // Plays the file without waiting for it; a sound still playing stops.
    virtual void play(const QString& file) = 0;
};

// Where the sound module may stand for a program in `programDirectory`, the likeliest first: beside the program
// (the build tree, Windows) and in the library directory of its installation.
QStringList soundModuleFiles(const QString& programDirectory);

} // namespace ks

#define KS_SOUND_OUTPUT_IID "org.example.kestrand.kslaunch.SoundOutput/1"
Q_DECLARE_INTERFACE(ks::SoundOutput, KS_SOUND_OUTPUT_IID)
