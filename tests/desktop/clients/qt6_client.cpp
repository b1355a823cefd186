// A Qt 6 window that prints a line for every scroll, button and key event it receives, and on
// request for whatever else the pointer does to it.
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
  public:
    explicit Client(bool all) : all_(all) {}

  protected:
    void wheelEvent(QWheelEvent* event) override {
        // Qt counts to the left; 0 - 0 rather than -0
        reportScroll(0 - event->angleDelta().x() / 120.0, event->angleDelta().y() / 120.0);
    }

    void mousePressEvent(QMouseEvent* event) override { button("press", event); }
    void mouseReleaseEvent(QMouseEvent* event) override { button("release", event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { // comes after its second press
        if (all_) {
            button("double", event);
        }
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (all_) {
            report("motion " + exactly(event->globalPosition().x()) + ' ' +
                   exactly(event->globalPosition().y()));
        }
    }

    bool event(QEvent* event) override {
        if (all_ && (event->type() == QEvent::Enter || event->type() == QEvent::Leave)) {
            report(event->type() == QEvent::Enter ? "enter" : "leave");
        }
        return QRasterWindow::event(event);
    }

    void keyPressEvent(QKeyEvent* event) override {
        report("key " + QKeySequence(event->key()).toString().toStdString());
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
    static void button(const char* what, const QMouseEvent* event) {
        report(what + (' ' + std::to_string(buttonNumber(event->button()))));
    }

    bool all_;
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
    Client client(arguments->all);
    client.setTitle(QString::fromUtf8(arguments->title));
    client.setFlag(Qt::FramelessWindowHint);
    client.setGeometry(arguments->x, arguments->y, arguments->width, arguments->height);
    client.show();
    return QGuiApplication::exec();
}
