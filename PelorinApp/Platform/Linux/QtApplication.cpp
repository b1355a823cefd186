#include "Platform/Linux/QtApplication.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <utility>

namespace quillon {

QtApplication::QtApplication(const CurrentEvent& currentEvent) : currentEvent_(currentEvent) {
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &receiver_,
                     [this](Qt::ApplicationState state) { tellIfActive(state); });
    // What starts at login is the login item's affair, not the session manager's.
    QObject::connect(
        qGuiApp, &QGuiApplication::saveStateRequest, &receiver_,
        [](QSessionManager& manager) { manager.setRestartHint(QSessionManager::RestartNever); },
        Qt::DirectConnection);
}

void QtApplication::setDelegate(std::weak_ptr<ApplicationDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void QtApplication::setActivationPolicy(ActivationPolicy /*policy*/) {}

std::optional<EventType> QtApplication::currentEvent() const {
    const auto& action = currentEvent_.get();
    return action ? std::optional(action->type) : std::nullopt;
}

void QtApplication::terminate(Sender* /*sender*/) {
    QCoreApplication::exit(0); // the event loop ends when what runs now has come to its end
}

void QtApplication::finishLaunching() {
    if (const auto delegate = delegate_.lock()) {
        QGuiApplication::setQuitOnLastWindowClosed(
            delegate->applicationShouldTerminateAfterLastWindowClosed());
        delegate->applicationDidFinishLaunching();
    }
}

void QtApplication::reopen() {
    if (const auto delegate = delegate_.lock()) {
        delegate->applicationShouldHandleReopen();
    }
}

void QtApplication::willTerminate() {
    if (const auto delegate = delegate_.lock()) {
        delegate->applicationWillTerminate();
    }
}

void QtApplication::tellIfActive(Qt::ApplicationState state) {
    if (const auto delegate = delegate_.lock(); delegate && state == Qt::ApplicationActive) {
        delegate->applicationDidBecomeActive();
    }
}

} // namespace quillon
