#include "PelorinAppApp.h"

#include "Tools/Edges/Tool4EdgesManager.h"

namespace quillon {

void PelorinAppApp::launch() {
    Platform::current().diagnostics.line("🚀 App launched!");
    Tool4EdgesManager& desktopSwitcher = Tool4EdgesManager::shared();
    Platform::current().events.setPanicHandler(
        [&desktopSwitcher] { desktopSwitcher.switchOffForNow(); });
}

} // namespace quillon
