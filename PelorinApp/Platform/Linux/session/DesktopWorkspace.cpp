#include "Platform/Linux/session/DesktopWorkspace.h"

#include "Platform/Linux/session/DetachedProgram.h"
#include "Platform/Linux/session/SessionBus.h"

#include <QProcessEnvironment>
#include <QUrl>

#include <string>
#include <vector>

namespace quillon {

namespace {

constexpr std::string_view permissionsPage =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

bool isOpened(const QUrl& address) {
    const QString scheme = address.scheme();
    if (scheme == "http" || scheme == "https") {
        return !address.host().isEmpty();
    }
    return (scheme == "mailto" || scheme.startsWith("x-")) &&
           !address.toEncoded(QUrl::RemoveScheme).isEmpty();
}

std::vector<std::string> environmentOfSession() {
    auto environment = QProcessEnvironment::systemEnvironment();
    restoreSessionBus(environment);
    std::vector<std::string> texts;
    for (const QString& text : environment.toStringList()) {
        texts.push_back(text.toLocal8Bit().toStdString());
    }
    return texts;
}

} // namespace

void DesktopWorkspace::setDisplayOptions(DisplayOptions options) {
    if (std::exchange(options_, options) != options && changed_) {
        changed_();
    }
}

void DesktopWorkspace::open(std::string_view url) {
    if (url == permissionsPage) {
        showPermissions_();
        return;
    }
    const auto bytes = QByteArray(url.data(), static_cast<qsizetype>(url.size()));
    const auto text = QString::fromUtf8(bytes);
    const QUrl address(text, QUrl::StrictMode);
    if (text.toUtf8() != bytes || !address.isValid() || !isOpened(address)) {
        return;
    }
    const std::string encoded = address.toEncoded().toStdString();
    if (const auto failure = startDetached({"xdg-open", encoded}, environmentOfSession())) {
        diagnostics_.line("⚠️ Cannot open " + encoded + ": " + *failure);
    }
}

} // namespace quillon
