#include "forms/startup_trace.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHash>
#include <QSet>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace ks {

namespace {

std::FILE* traceFile() {
    static std::FILE* const file = [] {
        const char* path = std::getenv("KS_STARTUP_TRACE");
        return path && *path ? std::fopen(path, "a") : nullptr;
    }();
    return file;
}

long long monotonicNanoseconds() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// A window's contents reach the screen while the window handles its expose or update request: the widgets
// paint into the backing store and the store is flushed before the handling returns. The watch lets the
// window handle the event first and then looks whether its top-level widget was painted on the way.
class FrameWatch : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Paint:
            if (auto* widget = qobject_cast<QWidget*>(watched); widget && widget->isWindow())
                if (QWindow* window = widget->windowHandle(); window && !framed_.contains(window))
                    painted_.insert(window, widget->objectName());
            return false;
        case QEvent::Expose:
        case QEvent::UpdateRequest: {
            auto* window = qobject_cast<QWindow*>(watched);
            if (!window || framed_.contains(window)) return false;
            const bool handled = watched->event(event);
            if (painted_.contains(window)) {
                framed_.insert(window);
                const QString name = painted_.take(window);
                const QByteArray step = "frame " + (name.isEmpty() ? QByteArray("unnamed") : name.toUtf8());
                traceStartupStep(step.constData());
            }
            return handled;
        }
        default:
            return false;
        }
    }

private:
    QHash<QWindow*, QString> painted_; // painted, not yet counted
    QSet<QWindow*> framed_;            // first frame written
};

} // namespace

void traceStartup() {
    if (!traceFile() || !QCoreApplication::instance()) return;
    QCoreApplication::instance()->installEventFilter(new FrameWatch(QCoreApplication::instance()));
}

void traceStartupStep(const char* step) {
    if (std::FILE* file = traceFile()) {
        std::fprintf(file, "%s %lld\n", step, monotonicNanoseconds());
        std::fflush(file);
    }
}

} // namespace ks
