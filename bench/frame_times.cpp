// What each frame costs the main thread while the hub opens, slides, is scrolled and dragged, and
// how far apart frames are: one that costs more than a frame's time is seen late. Shows the hub in
// a window of its own, over a simulated desktop; frame_cost.py runs it.
//
//   frame_times        prints a JSON object: by movement, milliseconds of processor time from one
//                      frame to the next ("cost"), and milliseconds that passed ("between"); under
//                      "memory" the resident KiB after each round through all screens

#include "Platform/Linux/windows/PopoverWindow.h"
#include "Views/Screens.h"
#include "support/SimulatedHub.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <cstdio>
#include <functional>
#include <utility>

#include <ctime>
#include <unistd.h>

namespace quillon {
namespace {

constexpr int rounds = 20;
constexpr int memoryRounds = 50;
constexpr int movesOfDrag = 60;
constexpr int timeBetweenMoves = 4; // milliseconds, of a mouse that reports 250 times a second
constexpr int restTime = 60;        // milliseconds without a frame that end a movement
const QString tools[] = {"tool.windowSwitcher",  "tool.mediaControl",  "tool.trackpadMiddleClick",
                         "tool.desktopSwitcher", "tool.volumeControl", "tool.scrollReverse"};

void wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

double processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Watches a window's frames. What happens from one to the next is of the latter.
class Frames : public QObject {
  public:
    explicit Frames(QQuickWindow& window) {
        connect(&window, &QQuickWindow::frameSwapped, this, [this] {
            const double now = processorTime();
            cost_.append(now - spent_);
            spent_ = now;
            if (last_.isValid()) {
                between_.append(static_cast<double>(last_.nsecsElapsed()) / 1e6);
            }
            last_.start();
        });
    }

    void begin() {
        last_.invalidate();
        spent_ = processorTime();
    }

    /// Until nothing moves any more.
    void rest() const {
        QElapsedTimer still;
        still.start();
        while ((!last_.isValid() || last_.elapsed() < restTime) && still.elapsed() < 2000) {
            wait(5);
        }
    }

    [[nodiscard]] QJsonObject take() {
        return {{"cost", std::exchange(cost_, {})}, {"between", std::exchange(between_, {})}};
    }

  private:
    QElapsedTimer last_;
    double spent_ = 0;
    QJsonArray cost_;
    QJsonArray between_;
};

double residentKiB() {
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nan("");
    }
    return file.readAll().split(' ').at(1).toDouble() * static_cast<double>(sysconf(_SC_PAGESIZE)) /
           1024;
}

QQuickItem* find(QQuickItem* from, const std::function<bool(QQuickItem&)>& test) {
    if (!from->isVisible()) {
        return nullptr;
    }
    if (test(*from)) {
        return from;
    }
    for (QQuickItem* child : from->childItems()) {
        if (QQuickItem* found = find(child, test)) {
            return found;
        }
    }
    return nullptr;
}

struct Bench {
    SimulatedHub simulated;
    PopoverWindow window{
        {screenUrl("ContentView"), {{"hub", QVariant::fromValue(simulated.hub.get())}}}};
    Frames frames{window};
    QJsonObject results;

    void movement(const QString& name, const std::function<void()>& act) {
        frames.begin();
        act();
        frames.rest();
        merge(name, frames.take());
    }

    void merge(const QString& name, const QJsonObject& more) {
        QJsonObject all = results[name].toObject();
        for (const char* key : {"cost", "between"}) {
            QJsonArray values = all[key].toArray();
            for (const auto& value : more[key].toArray()) {
                values.append(value);
            }
            all[key] = values;
        }
        results[name] = all;
    }

    void openAndClose() {
        movement("opening", [&] { window.show(); });
        window.hide();
        frames.rest();
        (void)frames.take();
        window.show();
        frames.rest();
        (void)frames.take();
    }

    void slide(const QString& tool) {
        movement("to a tool", [&] { simulated.hub->customize(tool); });
        movement("back", [&] { simulated.hub->showTools(); });
    }

    void drag() {
        simulated.hub->customize("tool.volumeControl");
        frames.rest();
        QQuickItem* slider = find(window.rootObject(), [](QQuickItem& item) {
            return item.property("thumb").isValid() && item.property("track").isValid();
        });
        if (slider == nullptr) {
            qFatal("frame_times: there is no slider");
        }
        (void)frames.take();
        const QPointF start = slider->mapToScene(QPointF(40, slider->height() / 2));
        movement("dragging", [&] {
            QTest::mousePress(&window, Qt::LeftButton, {}, start.toPoint());
            for (int move = 0; move < movesOfDrag; ++move) {
                QTest::mouseMove(&window, (start + QPointF(move * 4, 0)).toPoint());
                wait(timeBetweenMoves);
            }
            QTest::mouseRelease(&window, Qt::LeftButton, {}, start.toPoint());
        });
        simulated.hub->showTools();
        frames.rest();
        (void)frames.take();
    }

    void scroll() {
        const QPointF middle(window.width() / 2.0, window.height() / 2.0);
        const auto notch = [&](int amount) {
            QWheelEvent event(middle, window.mapToGlobal(middle.toPoint()), {}, {0, amount},
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&window, &event);
            wait(timeBetweenMoves * 4);
        };
        movement("scrolling", [&] {
            for (int i = 0; i < 8; ++i) {
                notch(-120);
            }
            for (int i = 0; i < 8; ++i) {
                notch(120);
            }
        });
    }

    QJsonArray memory() {
        QJsonArray all;
        for (int round = 0; round < memoryRounds; ++round) {
            window.show();
            for (const QString& tool : tools) {
                simulated.hub->customize(tool);
                frames.rest();
                simulated.hub->showTools();
                frames.rest();
            }
            window.hide();
            wait(restTime);
            (void)frames.take();
            all.append(residentKiB());
        }
        return all;
    }
};

int run() {
    Bench bench;
    bench.window.warmUp();
    for (int round = 0; round < rounds; ++round) {
        bench.openAndClose();
        for (const QString& tool : tools) {
            bench.slide(tool);
        }
        bench.drag();
        bench.scroll();
        bench.window.hide();
    }
    bench.results["memory"] = bench.memory();
    std::puts(QJsonDocument(bench.results).toJson(QJsonDocument::Compact).constData());
    return 0;
}

} // namespace
} // namespace quillon

int main(int argc, char** argv) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    return quillon::run();
}
