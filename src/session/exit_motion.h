#pragma once

#include "session/layer.h"

#include <optional>
#include <vector>

namespace ks {

// The farewell show of the main window, worked out in advance: the window folds up to a thin bar, drops
// onto the task bar, bounces on it ever higher at ever smaller steps while it drifts to the right, and
// falls off the bottom of the screen. All lengths are twips, counted at a fixed 15 to the pixel.

struct TwipSize {
    double width = 0;
    double height = 0;
};

struct TwipRect {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    friend bool operator==(const TwipRect&, const TwipRect&) = default;
};

enum class MoveKind {
    Collapse, // the fold, first in height, then in width
    Restore,  // a minimised or maximised window is shown normal again; the geometry stays
    Reshape,  // the bar gets its last shape: no height (the platform's minimum), 4000 twips wide
    Bounce,   // a move of the fall onto the task bar or of the rise from it
    Fall,     // the final fall off the screen
};

// One change of the window. `box` is the whole geometry after the change. When `letEventsRun` is set,
// pending events are handled once before the change is made. `repeat` counts the same change made that
// many times in a row: a window that the platform holds at its minimum size goes on folding in place.
struct WindowMove {
    MoveKind kind = MoveKind::Collapse;
    TwipRect box;
    bool letEventsRun = false;
    int repeat = 1;
};

// One pass of the bounce: the fall onto the task bar at `step` and the rise towards `peak`.
struct BouncePass {
    int peak = 0;
    int step = 0;
    int fallMoves = 0;
    int riseMoves = 0;
    double lowestTop = 0;  // where the fall stopped
    double highestTop = 0; // where the rise stopped (the same as lowestTop without a rise)
};

struct ExitMotion {
    std::vector<WindowMove> moves;
    int trayTop = 0; // the height at which the window bounces
    std::vector<BouncePass> passes;
    int finalStep = 0; // the step of the final fall
};

// The whole motion for a window at `window` on a screen of `screen`. `taskBarTopPixel` is the top edge of
// a task bar in pixels, or nothing when the desktop has none at the bottom; a top at 0 or less (a bar along the
// top edge) counts as none, and the window then bounces on the bottom edge of the screen. `minimum` is the smallest
// size the platform lets a window take; the fold stops there and sits still for the rest of its count.
ExitMotion planExitMotion(TwipSize screen, std::optional<int> taskBarTopPixel, TwipRect window, TwipSize minimum = {});

} // namespace ks
