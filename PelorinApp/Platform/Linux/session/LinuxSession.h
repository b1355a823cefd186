#pragma once

#include "Platform/Diagnostics.h"
#include "Platform/Linux/files/LinuxFileManager.h"
#include "Platform/Linux/http/CurlUrlSession.h"
#include "Platform/Linux/session/ConfigHome.h"
#include "Platform/Linux/session/FileBundle.h"
#include "Platform/Linux/session/FileUserDefaults.h"
#include "Platform/Linux/session/QtRunLoop.h"

namespace quillon {

/// The services that need no display. A QCoreApplication must exist first.
struct LinuxSession {
    explicit LinuxSession(Diagnostics& lines) : diagnostics(lines) {}
    LinuxSession(const LinuxSession&) = delete;
    LinuxSession& operator=(const LinuxSession&) = delete;
    ~LinuxSession() = default;

    Diagnostics& diagnostics;
    FileBundle bundle{diagnostics};
    QtRunLoop runLoop;
    LinuxFileManager files;
    CurlUrlSession urls{runLoop, "Quillon/" + bundle.infoString("version").value_or("0")};
    FileUserDefaultsStores userDefaults{configHome(), bundle.identifier(), runLoop, diagnostics};
};

} // namespace quillon
