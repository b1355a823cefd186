#include "Platform/Linux/x11/WindowManager.h"

#include "Platform/Linux/session/ConfigHome.h"
#include "Platform/Linux/x11/X11Properties.h"

#include <QString>
#include <QXmlStreamReader>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

namespace quillon {

namespace {

/// Where openbox looks for its configuration, in this order: the file it was told of, the user's,
/// the system's.
std::vector<std::filesystem::path> openboxConfigurationFiles(const X11Connection& connection) {
    std::vector<std::filesystem::path> files;
    if (const auto told = text(connection, connection.root(), connection.atom("_OB_CONFIG_FILE"))) {
        files.emplace_back(*told);
    }
    std::vector<std::filesystem::path> folders{configHome()};
    const char* set = std::getenv("XDG_CONFIG_DIRS");
    std::istringstream system(set != nullptr && *set != '\0' ? set : "/etc/xdg");
    for (std::string folder; std::getline(system, folder, ':');) {
        folders.emplace_back(folder);
    }
    for (const auto& folder : folders) {
        files.push_back(folder / "openbox" / "rc.xml");
    }
    return files;
}

std::string openboxConfiguration(const X11Connection& connection) {
    for (const auto& path : openboxConfigurationFiles(connection)) {
        if (std::ifstream file(path, std::ios::binary); file) {
            return {std::istreambuf_iterator<char>(file), {}};
        }
    }
    return {};
}

/// The text of the children "to" and "wrap" of an <action name="GoToDesktop">.
struct GoToDesktop {
    QString to;
    bool wrap = true; // what openbox assumes when it is not said
};

GoToDesktop readAction(QXmlStreamReader& xml) {
    GoToDesktop action;
    while (xml.readNextStartElement()) {
        const QString name = xml.name().toString();
        const QString value = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        if (name == QLatin1String("to")) {
            action.to = value;
        } else if (name == QLatin1String("wrap")) {
            action.wrap = value != QLatin1String("no") && value != QLatin1String("false");
        }
    }
    return action;
}

} // namespace

std::string windowManagerName(const X11Connection& connection) {
    const auto check =
        cardinal(connection, connection.root(), connection.atom("_NET_SUPPORTING_WM_CHECK"));
    if (!check) {
        return {};
    }
    std::string name = text(connection, *check, connection.atom("_NET_WM_NAME")).value_or("");
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

RowEnd rowEndOf(const X11Connection& connection, const std::string& name) {
    if (name.starts_with("openbox")) {
        return rowEndOfOpenboxConfiguration(openboxConfiguration(connection));
    }
    if (name.starts_with("icewm") || name.starts_with("fluxbox")) {
        return RowEnd::wrapList;
    }
    if (name.starts_with("xfwm4")) {
        return RowEnd::wrapRow;
    }
    return RowEnd::stop;
}

RowEnd rowEndOfOpenboxConfiguration(const std::string& xml) {
    QXmlStreamReader reader(QString::fromStdString(xml));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement ||
            reader.name() != QLatin1String("action") ||
            reader.attributes().value(QLatin1String("name")) != QLatin1String("GoToDesktop")) {
            continue;
        }
        const GoToDesktop action = readAction(reader);
        if (action.to == QLatin1String("left")) {
            return action.wrap ? RowEnd::wrapRow : RowEnd::stop;
        }
    }
    return RowEnd::stop;
}

} // namespace quillon
