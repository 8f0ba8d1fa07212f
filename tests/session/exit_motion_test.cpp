#include "session/exit_motion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iomanip>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

using namespace ks;

namespace {

// A 1024 x 768 pixel screen and the main window of 640 x 480 pixels somewhere on it.
constexpr TwipSize kScreen{15360, 11520};
constexpr TwipRect kWindow{3000, 2000, 9600, 7200};

// Each pass as "PEAK STEP FALL-MOVES RISE-MOVES LOWEST-TOP HIGHEST-TOP".
std::vector<std::string> passesOf(const ExitMotion& motion) {
    std::vector<std::string> out;
    for (const BouncePass& p : motion.passes) {
        std::ostringstream pass;
        pass << std::setprecision(12) << p.peak << ' ' << p.step << ' ' << p.fallMoves << ' ' << p.riseMoves << ' '
             << p.lowestTop << ' ' << p.highestTop;
        out.push_back(pass.str());
    }
    return out;
}

std::vector<WindowMove> movesOf(const ExitMotion& motion, MoveKind kind) {
    std::vector<WindowMove> found;
    std::copy_if(motion.moves.begin(), motion.moves.end(), std::back_inserter(found),
                 [kind](const WindowMove& move) { return move.kind == kind; });
    return found;
}

int timesMade(const std::vector<WindowMove>& moves) {
    int total = 0;
    for (const WindowMove& move : moves)
        total += move.repeat;
    return total;
}

} // namespace

TEST(ExitMotion, FoldsTheWindowCentredToABarThenBouncesFivePassesOnTheTaskBarAndFallsOffInTheSixthLettingEventsRun) {
    const ExitMotion motion = planExitMotion(kScreen, 740, kWindow);
    EXPECT_EQ(motion.trayTop, 11100);

    const std::vector<WindowMove> fold = movesOf(motion, MoveKind::Collapse);
    ASSERT_EQ(fold.size(), 719u + 1 + 959);
    // Height first: 10 twips a step, kept centred, until it is at most 11; then a bar 30 high.
    EXPECT_EQ(fold[0].box, (TwipRect{3000, 2165, 9600, 7190}));
    EXPECT_EQ(fold[718].box, (TwipRect{3000, 5755, 9600, 10}));
    EXPECT_EQ(fold[719].box, (TwipRect{3000, 5755, 9600, 30}));
    EXPECT_FALSE(fold[719].letEventsRun);
    // Then the width, centred the same way; no fixed width follows.
    EXPECT_EQ(fold[720].box, (TwipRect{2885, 5755, 9590, 30}));
    EXPECT_EQ(fold.back().box, (TwipRect{7675, 5755, 10, 30}));

    // The bar's last shape: no height first, then 4000 wide; it stays where the fold left it.
    const std::vector<WindowMove> reshape = movesOf(motion, MoveKind::Reshape);
    ASSERT_EQ(reshape.size(), 2u);
    EXPECT_EQ(reshape[0].box, (TwipRect{7675, 5755, 10, 0}));
    EXPECT_EQ(reshape[1].box, (TwipRect{7675, 5755, 4000, 0}));

    EXPECT_EQ(passesOf(motion), (std::vector<std::string>{"7100 75 72 55 11155 7030", "8100 73 56 42 11118 8052",
                                                          "9100 71 43 29 11105 9046", "10100 69 30 15 11116 10081",
                                                          "11100 67 16 1 11153 11086", "12100 65 1 0 11151 11151"}));

    EXPECT_EQ(motion.finalStep, 65);
    EXPECT_EQ(movesOf(motion, MoveKind::Fall).size(), 230u);
    // 142 rising moves drift the bar 15 twips each to the right.
    EXPECT_EQ(motion.moves.back().box, (TwipRect{7675 + 142 * 15, 26101, 4000, 0}));

    // Events run before every fold step but the bar's height of 30 and before every bounce, not in the fall.
    std::vector<MoveKind> order;
    int quietFoldMoves = 0;
    for (const WindowMove& move : motion.moves) {
        if (order.empty() || order.back() != move.kind) order.push_back(move.kind);
        if (move.kind == MoveKind::Collapse)
            quietFoldMoves += move.letEventsRun ? 0 : 1;
        else
            EXPECT_EQ(move.letEventsRun, move.kind == MoveKind::Bounce);
    }
    EXPECT_EQ(quietFoldMoves, 1);
    EXPECT_EQ(order, (std::vector<MoveKind>{MoveKind::Collapse, MoveKind::Restore, MoveKind::Reshape, MoveKind::Bounce,
                                            MoveKind::Fall}));
}

TEST(ExitMotion, AFractionalLengthIsRoundedBeforeItIsHalved) {
    // 11520 - 7190.4 = 4329.6 becomes 4330, and half of it is the top.
    const ExitMotion motion = planExitMotion(kScreen, 740, {3000, 2000, 9600, 7200.4});
    EXPECT_EQ(motion.moves.front().box.top, 2165);
}

TEST(ExitMotion, WithoutATaskBarAtTheBottomTheBarBouncesOnTheScreensLowerEdge) {
    for (const std::optional<int> taskBar : {std::optional<int>{}, std::optional<int>{0}, std::optional<int>{-20}}) {
        SCOPED_TRACE(taskBar ? *taskBar : 9999);
        const ExitMotion motion = planExitMotion(kScreen, taskBar, kWindow);
        EXPECT_EQ(motion.trayTop, 11520);
        EXPECT_EQ(passesOf(motion),
                  (std::vector<std::string>{"7520 75 77 54 11530 7480", "8520 73 56 42 11568 8502",
                                            "9520 71 43 29 11555 9496", "10520 69 30 16 11566 10462",
                                            "11520 67 16 1 11534 11467", "12520 65 1 0 11532 11532"}));
        EXPECT_EQ(motion.moves.back().box.top, 26547);
    }
}

TEST(ExitMotion, AWindowAlreadyBelowTheFirstPeakRisesNoHigherThanItStood) {
    // A task bar 268 pixels tall: the folded bar at 5755 stands below 7500 - 4000.
    const ExitMotion motion = planExitMotion(kScreen, 500, kWindow);
    EXPECT_EQ(motion.trayTop, 7500);
    EXPECT_EQ(passesOf(motion),
              (std::vector<std::string>{"5755 75 24 24 7555 5755", "6755 73 24 11 7507 6704", "7755 71 12 0 7556 7556",
                                        "8755 69 0 0 7556 7556", "9755 67 0 0 7556 7556", "10755 65 0 0 7556 7556"}));
    EXPECT_EQ(motion.moves.back().box.top, 22506);
}

TEST(ExitMotion, OnAScreenLowerThan10000TwipsThePassesRunOnWithoutMovementUntilThePeakReaches10000) {
    // 640 x 480 pixels; the window of 400 x 300 pixels.
    const ExitMotion motion = planExitMotion({9600, 7200}, std::nullopt, {1000, 1000, 6000, 4500});
    EXPECT_EQ(motion.trayTop, 7200);
    EXPECT_EQ(passesOf(motion),
              (std::vector<std::string>{"3595 75 49 49 7270 3595", "4595 73 50 37 7245 4544", "5595 71 38 24 7242 5538",
                                        "6595 69 25 10 7263 6573", "7595 67 10 0 7243 7243", "8595 65 0 0 7243 7243",
                                        "9595 63 0 0 7243 7243", "10595 61 0 0 7243 7243"}));
    EXPECT_EQ(motion.finalStep, 61);
    EXPECT_EQ(motion.moves.back().box.top, 22249);
}

TEST(ExitMotion, AMinimumSizeStopsTheFoldWhichThenSitsStillForTheRestOfItsCount) {
    // The platform keeps a window at least 100 x 30 pixels.
    const ExitMotion motion = planExitMotion(kScreen, 740, kWindow, {1500, 450});
    const std::vector<WindowMove> fold = movesOf(motion, MoveKind::Collapse);
    // The height fold runs its whole count of 7200 / 2 steps; 675 of them move, the rest repeat the last.
    const auto heightFold = std::vector<WindowMove>(fold.begin(), fold.begin() + 675);
    EXPECT_EQ(timesMade(heightFold), 3600);
    EXPECT_EQ(heightFold.back().box, (TwipRect{3000, 5535, 9600, 450}));
    EXPECT_EQ(heightFold.back().repeat, 1 + 3600 - 675);
    // The bar of 30 twips stays at the minimum, and so does the width fold at 1500 after its 4800 steps.
    EXPECT_EQ(fold[675].box.height, 450);
    const auto widthFold = std::vector<WindowMove>(fold.begin() + 676, fold.end());
    EXPECT_EQ(timesMade(widthFold), 4800);
    EXPECT_EQ(widthFold.back().box, (TwipRect{6930, 5535, 1500, 450}));
    EXPECT_EQ(fold.size(), 675u + 1 + 810); // each held run is one element

    // No height means the minimum; the width becomes 4000.
    const std::vector<WindowMove> reshape = movesOf(motion, MoveKind::Reshape);
    EXPECT_EQ(reshape.back().box, (TwipRect{6930, 5535, 4000, 450}));
    EXPECT_EQ(motion.passes.front().lowestTop, 11160);
    EXPECT_EQ(motion.moves.back().box.top, 26106);
}

TEST(ExitMotion, OnEveryScreenAndFromEveryPlaceTheMotionEndsSoonFarBelowTheTaskBar) {
    const std::vector<TwipSize> screens = {{9600, 7200},   {12000, 9000},  {15360, 11520}, {19200, 16200},
                                           {28800, 16200}, {38400, 21600}, {57600, 32400}, {115200, 64800}};
    for (const TwipSize screen : screens) {
        const int heightPx = static_cast<int>(screen.height) / 15;
        // Task bars at the bottom, or none; a bar high up on the screen, or one pixel below its top edge.
        const std::optional<int> bottomBars[] = {std::nullopt, heightPx - 40, heightPx - 200};
        const std::optional<int> highBars[] = {heightPx / 2, 1};
        for (const TwipRect window : {TwipRect{0, 0, 9600, 7200}, TwipRect{-30000, -30000, 19200, 15360},
                                      TwipRect{screen.width, screen.height, 4500, 3000},
                                      TwipRect{1234.5, 987.25, 6001.5, 4499.5}, TwipRect{100, 200, 15, 15}}) {
            for (const TwipSize minimum : {TwipSize{}, TwipSize{1680, 510}}) {
                const auto check = [&](std::optional<int> taskBar, bool atBottom) {
                    SCOPED_TRACE(testing::Message()
                                 << screen.width << " x " << screen.height << ", task bar " << taskBar.value_or(-1)
                                 << ", window " << window.left << ", " << window.top << ", " << window.width << " x "
                                 << window.height << ", minimum " << minimum.width);
                    const ExitMotion motion = planExitMotion(screen, taskBar, window, minimum);
                    ASSERT_FALSE(motion.moves.empty());
                    EXPECT_LE(motion.moves.size(), 5000u);
                    EXPECT_LE(motion.passes.size(), 16u);
                    EXPECT_GE(motion.passes.back().peak, 10000);
                    const WindowMove& last = motion.moves.back();
                    EXPECT_GE(last.box.top, motion.trayTop + 15000);
                    if (!atBottom) return; // the bar may stand lower than that already
                    EXPECT_EQ(last.kind, MoveKind::Fall);
                    EXPECT_LT(last.box.top, motion.trayTop + 15000 + motion.finalStep);
                    EXPECT_GE(last.box.top, screen.height);
                };
                for (const std::optional<int> taskBar : bottomBars)
                    check(taskBar, true);
                for (const std::optional<int> taskBar : highBars)
                    check(taskBar, false);
            }
        }
    }
}
