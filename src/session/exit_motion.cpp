#include "session/exit_motion.h"

#include <algorithm>
#include <cmath>

namespace ks {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr double kFoldStep = 10;        // taken off the height or width per step of the fold
constexpr double kFoldDone = 11;        // a height or width at or below this ends its fold
constexpr double kBarHeight = 30;       // the height once the vertical fold is over
constexpr int kFirstBounce = 4000;      // first bounce height above the task bar
constexpr double kBarWidth = 4000;      // the width of the bouncing bar
constexpr int kFirstStep = 75;          // distance of one move in the first pass
constexpr int kPeakRise = 1000;         // the next bounce ends this much lower
constexpr int kStepFall = 2;            // the next pass moves by this much less
constexpr int kStepAfterZero = 5;       // the step once it has reached 0 or less
constexpr int kLowestFinalPeak = 10000; // the bouncing ends only at a peak of at least this
constexpr int kDrift = 15;              // rightward drift per rising move
constexpr int kFinalDrop = 15000;       // how far below the task bar the final fall goes

// Rounds to a whole number as the window's own twip arithmetic does: a half goes to the even neighbour.
long long toWhole(double value) {
    const double down = std::floor(value);
    const double rest = value - down;
    long long whole = static_cast<long long>(down);
    if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) ++whole;
    return whole;
}

// The offset that centres a length in a span: the difference made whole, halved, the remainder dropped.
double centred(double span, double length) { return static_cast<double>(toWhole(span - length) / 2); }

// Lengths beyond any screen (a hundred million twips) or not numbers at all are taken as the nearest sane value.
double sane(double value) { return std::isfinite(value) ? std::clamp(value, -1e8, 1e8) : 0; }

class Recorder {
public:
    explicit Recorder(TwipRect box) : box_(box) {}

    TwipRect& box() { return box_; }
    std::vector<WindowMove>& moves() { return moves_; }

    void record(MoveKind kind, bool letEventsRun) {
        if (!moves_.empty()) {
            WindowMove& last = moves_.back();
            if (last.kind == kind && last.letEventsRun == letEventsRun && last.box == box_) {
                ++last.repeat;
                return;
            }
        }
        moves_.push_back({kind, box_, letEventsRun, 1});
    }

private:
    TwipRect box_;
    std::vector<WindowMove> moves_;
};

// Folds one side of the window in steps of 10 twips, at most `length / 2` times, keeping it centred.
void fold(Recorder& recorder, double TwipRect::*length, double TwipRect::*offset, double span, double minimum) {
    TwipRect& box = recorder.box();
    const double count = box.*length / 2;
    for (int i = 1; i <= count; ++i) {
        box.*length = std::max(box.*length - kFoldStep, minimum);
        box.*offset = centred(span, box.*length);
        recorder.record(MoveKind::Collapse, true);
        if (box.*length <= kFoldDone) break;
    }
}

} // namespace

ExitMotion planExitMotion(TwipSize screen, std::optional<int> taskBarTopPixel, TwipRect window, TwipSize minimum) {
    screen = {sane(screen.width), sane(screen.height)};
    minimum = {std::max(sane(minimum.width), 0.0), std::max(sane(minimum.height), 0.0)};
    window = {sane(window.left), sane(window.top), std::max(sane(window.width), minimum.width),
              std::max(sane(window.height), minimum.height)};

    Recorder recorder(window);
    TwipRect& box = recorder.box();

    fold(recorder, &TwipRect::height, &TwipRect::top, screen.height, minimum.height);
    box.height = std::max(kBarHeight, minimum.height);
    recorder.record(MoveKind::Collapse, false);
    fold(recorder, &TwipRect::width, &TwipRect::left, screen.width, minimum.width);
    recorder.record(MoveKind::Restore, false);

    ExitMotion motion;
    motion.trayTop = taskBarTopPixel && *taskBarTopPixel > 0 ? *taskBarTopPixel * kTwipsPerPixel
                                                             : static_cast<int>(toWhole(screen.height));
    const int trayTop = motion.trayTop;
    int peak = trayTop - kFirstBounce;
    if (box.top > peak) peak = static_cast<int>(toWhole(box.top));

    int step = kFirstStep;
    box.height = minimum.height;
    recorder.record(MoveKind::Reshape, false);
    box.width = std::max(kBarWidth, minimum.width);
    recorder.record(MoveKind::Reshape, false);

    for (;;) {
        BouncePass pass{peak, step};
        for (; box.top < trayTop; ++pass.fallMoves) {
            box.top += step;
            recorder.record(MoveKind::Bounce, true);
        }
        pass.lowestTop = box.top;
        for (; box.top > peak; ++pass.riseMoves) {
            box.top -= step;
            box.left += kDrift;
            recorder.record(MoveKind::Bounce, true);
        }
        pass.highestTop = box.top;
        motion.passes.push_back(pass);
        if (box.top >= trayTop && peak >= kLowestFinalPeak) break;
        peak += kPeakRise;
        step -= kStepFall;
        if (step <= 0) step = kStepAfterZero;
    }

    motion.finalStep = step;
    while (box.top < static_cast<double>(trayTop) + kFinalDrop) {
        box.top += step;
        recorder.record(MoveKind::Fall, false);
    }
    motion.moves = std::move(recorder.moves());
    return motion;
}

} // namespace ks
