#include "forms/exit_animation.h"

#include "session/exit_motion.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLayout>
#include <QScreen>
#include <QWidget>

#include <thread>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace ks {

namespace {

// The motion counts a fixed 15 twips to the pixel, as the window's own units did.
constexpr double kTwipsPerPixel = 15;

int toPixels(double twips) { return qRound(twips / kTwipsPerPixel); }

// The three phases of the show: the fold, the bounces, the final fall.
int phaseOf(MoveKind kind) { return kind == MoveKind::Bounce ? 1 : kind == MoveKind::Fall ? 2 : 0; }

// Puts the window's outer frame at the box: the frame's corner where the box says, the inside so much smaller
// as the frame takes.
void place(QWidget& window, const TwipRect& box) {
    const QRect frame = window.frameGeometry();
    const QRect inside = window.geometry();
    const int extraWidth = frame.width() - inside.width();
    const int extraHeight = frame.height() - inside.height();
    window.move(toPixels(box.left), toPixels(box.top));
    window.resize(std::max(1, toPixels(box.width) - extraWidth), std::max(1, toPixels(box.height) - extraHeight));
}

} // namespace

std::optional<int> taskBarTop(const QWidget& window) {
    const QScreen* screen = window.screen();
    if (!screen) return std::nullopt;
    const QRect all = screen->geometry();
#ifdef Q_OS_WIN
    // The task bar is the shell's window of the class Shell_TrayWnd; a bar at the top of the screen counts as none.
    RECT bar{};
    if (const HWND tray = FindWindowW(L"Shell_TrayWnd", nullptr); tray && GetWindowRect(tray, &bar)) {
        const int top = qRound(bar.top / screen->devicePixelRatio()) - all.y();
        return top > 0 ? std::optional<int>(top) : std::nullopt;
    }
#endif
    const QRect available = screen->availableGeometry();
    const int bottom = available.y() + available.height();
    if (bottom < all.y() + all.height()) return bottom - all.y();
    return std::nullopt;
}

void playExitAnimation(QWidget& window, const std::function<void()>& startSound, const ExitPacing& pacing) {
    if (startSound) startSound();

    // The fixed size of the window gives way to the motion.
    if (QLayout* layout = window.layout()) layout->setSizeConstraint(QLayout::SetNoConstraint);
    window.setMinimumSize(1, 1);
    window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);

    const QScreen* screen = window.screen();
    const QRect all = screen ? screen->geometry() : QRect(0, 0, 1024, 768);
    const QRect frame = window.frameGeometry();
    const TwipSize screenSize{all.width() * kTwipsPerPixel, all.height() * kTwipsPerPixel};
    const TwipRect start{(frame.x() - all.x()) * kTwipsPerPixel, (frame.y() - all.y()) * kTwipsPerPixel,
                         frame.width() * kTwipsPerPixel, frame.height() * kTwipsPerPixel};
    // No window is less than a pixel high or wide.
    const ExitMotion motion = planExitMotion(screenSize, taskBarTop(window), start, {kTwipsPerPixel, kTwipsPerPixel});

    // Each move is due at its share of its phase's time; one that is late is passed over when the next move
    // carries on the same motion, since every move gives the whole geometry.
    const std::chrono::milliseconds budget[3] = {pacing.fold, pacing.bounce, pacing.fall};
    const std::chrono::milliseconds phaseStart[3] = {std::chrono::milliseconds(0), pacing.fold,
                                                     pacing.fold + pacing.bounce};
    int phaseMoves[3] = {0, 0, 0};
    for (const WindowMove& move : motion.moves)
        ++phaseMoves[phaseOf(move.kind)];
    int doneInPhase[3] = {0, 0, 0};
    QElapsedTimer clock;
    clock.start();
    for (std::size_t i = 0; i < motion.moves.size(); ++i) {
        const WindowMove& move = motion.moves[i];
        const int phase = phaseOf(move.kind);
        const auto due = phaseStart[phase] + budget[phase] * ++doneInPhase[phase] / phaseMoves[phase];
        if (move.letEventsRun)
            for (int pass = 0; pass < move.repeat; ++pass)
                QCoreApplication::processEvents();
        if (move.kind == MoveKind::Restore) {
            if (window.isMinimized() || window.isMaximized()) window.showNormal();
            continue;
        }
        const auto now = std::chrono::milliseconds(clock.elapsed());
        const bool sameNext = i + 1 < motion.moves.size() && phaseOf(motion.moves[i + 1].kind) == phase;
        if (now > due && sameNext && move.kind != MoveKind::Reshape) continue;
        place(window, move.box);
        // The final fall lets no command of the operator run; only the window's own moves go out to the screen.
        if (!move.letEventsRun) QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (due > now) std::this_thread::sleep_for(due - now);
    }
}

} // namespace ks
