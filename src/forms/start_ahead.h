#pragma once

#include "forms/splash_picture_cache.h"

#include <future>
#include <thread>
#include <utility>

namespace ks {

// The part of the launcher's start that runs on a thread beside the main thread, so that the splash reaches the
// screen sooner.
//
// Made first thing in main, before the application object, it reads the machine's font configuration and the
// splash's pictures and first frame kept from an earlier run while the application connects to the display. Once the
// application exists, it checks the kept name band against the fonts and draws what was not kept, while the main thread
// lays out the splash's texts.
class StartAhead {
public:
    explicit StartAhead(SplashPictureCache cache = SplashPictureCache());
    ~StartAhead();
    StartAhead(const StartAhead&) = delete;
    StartAhead& operator=(const StartAhead&) = delete;

    // Waits until the font configuration has been read and lets the thread draw. Call it once, after the
    // application object has been made and before the first text is laid out.
    void applicationReady();
    // Waits for the pictures and hands them over; once only, after applicationReady.
    SplashPictures takeSplashPictures();
    // The first frame kept from an earlier run, or none; once only, after applicationReady.
    SplashPictureCache::KeptFrame takeKeptFrame() { return std::move(keptFrame_); }
    // Keeps the frame for the next run.
    void keepFrame(const SplashPictureCache::KeptFrame& frame) const { cache_.writeFrame(frame); }

private:
    void run();

    const SplashPictureCache cache_;
    std::promise<void> fontsRead_;
    std::promise<bool> goOn_; // false when the application never came
    std::promise<SplashPictures> pictures_;
    SplashPictureCache::KeptFrame keptFrame_; // read before fontsRead_ is set
    bool wentOn_ = false;
    std::thread thread_;
};

} // namespace ks
