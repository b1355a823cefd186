// The program's shell with a screen of the test's own in its hub: what its screens do not do yet
// can be seen on a real desktop all the same.
#include "AppDelegate.h"
#include "Platform/Linux/LinuxPlatform.h"
#include "Platform/Linux/session/EndSignals.h"
#include "Platform/Linux/session/LinuxSession.h"
#include "Platform/Posix/StandardOutput.h"

#include <QApplication>

int main(int argc, char** argv) {
    using namespace quillon;
    if (argc != 2) {
        return 2;
    }
    const QUrl screen = QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1]));
    blockEndSignals();
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quillon"));
    StandardOutput output;
    LinuxSession session(output);
    LinuxPlatform platform(session, [screen](std::string_view) { return QuickScreen{screen, {}}; });
    Platform::setCurrent(&platform.services());
    const auto delegate = AppDelegate::create(
        platform.services(), [] {}, [] {});
    platform.services().application.setDelegate(delegate);
    return platform.run();
}
