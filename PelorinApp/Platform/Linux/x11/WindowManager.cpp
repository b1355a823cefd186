#include "Platform/Linux/x11/WindowManager.h"

#include "Platform/Linux/x11/X11Properties.h"

#include <QString>
#include <QXmlStreamReader>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>

namespace quillon {

namespace {

std::string openboxConfiguration(const X11Connection& connection) {
    const auto path = text(connection, connection.root(), connection.atom("_OB_CONFIG_FILE"));
    if (!path) {
        return {};
    }
    std::ifstream file(*path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
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
