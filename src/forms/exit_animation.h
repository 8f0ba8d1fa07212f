#pragma once

#include "forms/layer.h"

#include <chrono>
#include <functional>
#include <optional>

class QWidget;

namespace ks {

// How long the show takes, whatever the machine's speed: the fold, the bounces and the final fall each have a
// share of it, and moves that fall behind their time are passed over.
struct ExitPacing {
    std::chrono::milliseconds fold{700};
    std::chrono::milliseconds bounce{1500};
    std::chrono::milliseconds fall{300};
};

// The top edge of a task bar at the bottom of the window's screen in pixels: the bottom of the screen's
// available area when that lies above the screen's bottom edge; nothing when the desktop keeps none there.
std::optional<int> taskBarTop(const QWidget& window);

// Plays the farewell of the main window: the start sound, then the fold, the bounces on the task bar and the
// fall off the screen. Pending events are handled once between moves, so the window stays painted. The
// window is left below the screen; ending the program is the caller's.
void playExitAnimation(QWidget& window, const std::function<void()>& startSound, const ExitPacing& pacing = {});

} // namespace ks
