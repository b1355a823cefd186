// A Qt 6 window that prints a line for every scroll, button and key event it receives.
#include "ClientArguments.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPainter>
#include <QRasterWindow>
#include <QWheelEvent>

#include <bit>

namespace {

/// The X11 number of a Qt mouse button: 1 left, 2 middle, 3 right, 8 and more for the others.
int buttonNumber(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::MiddleButton:
        return 2;
    case Qt::RightButton:
        return 3;
    default:
        return 5 + std::countr_zero(static_cast<unsigned>(button));
    }
}

class Client : public QRasterWindow {
  protected:
    void wheelEvent(QWheelEvent* event) override {
        // Qt counts to the left; 0 - 0 rather than -0
        reportScroll(0 - event->angleDelta().x() / 120.0, event->angleDelta().y() / 120.0);
    }

    void mousePressEvent(QMouseEvent* event) override { report("press", event->button()); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { report("press", event->button()); }
    void mouseReleaseEvent(QMouseEvent* event) override { report("release", event->button()); }

    void keyPressEvent(QKeyEvent* event) override {
        std::printf("key %s\n", qPrintable(QKeySequence(event->key()).toString()));
        std::fflush(stdout);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(QRect(QPoint(), size()), Qt::lightGray);
        if (!ready_) {
            ready_ = true;
            std::printf("ready %d %d %d %d\n", x(), y(), width(), height());
            std::fflush(stdout);
        }
    }

  private:
    static void report(const char* what, Qt::MouseButton button) {
        std::printf("%s %d\n", what, buttonNumber(button));
        std::fflush(stdout);
    }

    bool ready_ = false;
};

} // namespace

int main(int argc, char** argv) {
    // Otherwise Qt gathers events until it has time, and counts and latencies would be its own.
    QGuiApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    const QGuiApplication application(argc, argv);
    const auto arguments = readClientArguments(argc, argv);
    if (!arguments) {
        return 2;
    }
    Client client;
    client.setTitle(QString::fromUtf8(arguments->title));
    client.setFlag(Qt::FramelessWindowHint);
    client.setGeometry(arguments->x, arguments->y, arguments->width, arguments->height);
    client.show();
    return QGuiApplication::exec();
}
