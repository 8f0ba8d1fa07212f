#include "session/exit_motion.h"

#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace ks;

namespace {

std::ostream& operator<<(std::ostream& out, const TwipRect& box) {
    return out << box.left << ',' << box.top << ',' << box.width << ',' << box.height;
}

// The motion in a few lines: each run of moves of one kind, which let events run ("+") or not ("-"), as
// "KIND EVENTS ELEMENTS TIMES-MADE FIRST-BOX > LAST-BOX"; then each pass of the bounce as "pass PEAK STEP
// FALL-MOVES RISE-MOVES LOWEST-TOP HIGHEST-TOP".
std::string described(const ExitMotion& motion) {
    std::ostringstream out;
    out << "tray " << motion.trayTop << ", final step " << motion.finalStep << '\n';
    for (std::size_t first = 0, last; first < motion.moves.size(); first = last + 1) {
        const WindowMove& move = motion.moves[first];
        int made = move.repeat;
        for (last = first; last + 1 < motion.moves.size() && motion.moves[last + 1].kind == move.kind &&
                           motion.moves[last + 1].letEventsRun == move.letEventsRun;)
            made += motion.moves[++last].repeat;
        out << "CRSBF"[int(move.kind)] << (move.letEventsRun ? " + " : " - ") << last - first + 1 << ' ' << made << ' '
            << move.box << " > " << motion.moves[last].box << '\n';
    }
    for (const BouncePass& p : motion.passes)
        out << "pass " << p.peak << ' ' << p.step << ' ' << p.fallMoves << ' ' << p.riseMoves << ' ' << p.lowestTop
            << ' ' << p.highestTop << '\n';
    return out.str();
}

} // namespace

// The motion on a 1024 x 768 pixel screen for the main window of 640 x 480 pixels, and on a screen of 640 x 480
// pixels. The worked example, a task bar at pixel 740, comes first: the fold keeps the window centred, 10 twips a
// step, first in height down to at most 11 and then a bar 30 high, then in width; the bar bounces five passes on the
// task bar, 142 rising moves drifting it 15 twips each to the right, and falls off in the sixth, at step 65, to
// 26101. Events run before every move but the bar's height of 30 and the final fall.
TEST(ExitMotion, FoldsTheWindowToABarThatBouncesOnTheTaskBarAndFallsOffTheScreen) {
    constexpr TwipSize kScreen{15360, 11520};
    constexpr TwipRect kWindow{3000, 2000, 9600, 7200};
    const struct {
        const char* what;
        TwipSize screen;
        std::optional<int> taskBar;
        TwipRect window;
        TwipSize minimum;
    } cases[] = {
        {"the worked example", kScreen, 740, kWindow, {}},
        {"no task bar: the screen's lower edge", kScreen, std::nullopt, kWindow, {}},
        {"a task bar at the top counts as none", kScreen, 0, kWindow, {}},
        {"a task bar above the screen counts as none", kScreen, -20, kWindow, {}},
        {"a window below the first peak rises no higher than it stood", kScreen, 500, kWindow, {}},
        {"a minimum of 100 x 30 pixels holds the fold for the rest of its count", kScreen, 740, kWindow, {1500, 450}},
        {"a fractional height is made whole before it is halved", kScreen, 740, {3000, 2000, 9600, 7200.4}, {}},
        {"on a screen lower than 10000 the passes run on until the peak reaches it",
         {9600, 7200},
         std::nullopt,
         {1000, 1000, 6000, 4500},
         {}},
    };
    std::string all;
    for (const auto& c : cases)
        all += std::string("== ") + c.what + '\n' + described(planExitMotion(c.screen, c.taskBar, c.window, c.minimum));
    EXPECT_EQ(all, test::readBytes(std::string(KS_TEST_DATA) + "/exit_motion.txt"));
}
