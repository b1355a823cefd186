#include "Replay/ReplayTools.h"

#include "Replay/NearestWord.h"
#include "Replay/StatementReader.h"
#include "Tools/Edges/Tool4EdgesManager.h"
#include "Tools/Pointer/WindowSwitcherManager.h"

#include <QMetaProperty>
#include <QVariant>

#include <algorithm>
#include <array>
#include <string>

namespace quillon {

namespace {

struct ReplayTool {
    std::string_view id;
    const QMetaObject* managerClass;
    std::shared_ptr<QObject> (*create)(Platform&);
    void (*activate)(QObject&);
    void (*deactivate)(QObject&, bool partnerIsOn);
    std::string_view partner = {}; // the other tool that the manager serves
};

template <class Manager>
std::shared_ptr<QObject> create(Platform& platform) {
    return Manager::create(platform);
}

bool mayMonitor(const EdgeToolManager& manager) {
    return manager.isEnabled() && manager.hasAccessibilityPermission();
}

void activateScrolling(QObject& object) {
    auto& manager = static_cast<EdgeScrollManager&>(object);
    manager.setIsEnabled(true);
    if (mayMonitor(manager) && !manager.hasEventTap()) {
        manager.startMonitoring();
    }
}

void disable(QObject& object, bool /*partnerIsOn*/) {
    static_cast<EdgeToolManager&>(object).setIsEnabled(false);
}

void restart(EdgeToolManager& manager) {
    if (mayMonitor(manager)) {
        manager.stopMonitoring();
        manager.startMonitoring();
    }
}

/// Switches the manager off unless it still serves the other tool.
void leaveToPartner(QObject& object, bool partnerIsOn) {
    auto& manager = static_cast<EdgeToolManager&>(object);
    if (partnerIsOn) {
        restart(manager);
    } else {
        manager.setIsEnabled(false);
    }
}

void activateThreeFingerPress(QObject& object) {
    auto& manager = static_cast<WindowSwitcherManager&>(object);
    manager.setThreeFingerGestureEnabled(true);
    manager.setIsEnabled(true);
    restart(manager);
}

void deactivateThreeFingerPress(QObject& object, bool partnerIsOn) {
    static_cast<WindowSwitcherManager&>(object).setThreeFingerGestureEnabled(false);
    leaveToPartner(object, partnerIsOn);
}

constexpr std::array tools{
    ReplayTool{Tool4EdgesManager::toolId, &Tool4EdgesManager::staticMetaObject,
               create<Tool4EdgesManager>, activateScrolling, disable},
    ReplayTool{WindowSwitcherManager::toolId, &WindowSwitcherManager::staticMetaObject,
               create<WindowSwitcherManager>, activateScrolling, leaveToPartner,
               ThreeFingerPress::toolId},
    ReplayTool{ThreeFingerPress::toolId, &WindowSwitcherManager::staticMetaObject,
               create<WindowSwitcherManager>, activateThreeFingerPress, deactivateThreeFingerPress,
               WindowSwitcherManager::toolId},
};

const ReplayTool* toolWithId(std::string_view id) {
    const auto* const found =
        std::find_if(tools.begin(), tools.end(), [&](const auto& tool) { return tool.id == id; });
    return found == tools.end() ? nullptr : found;
}

/// The manager's own property of this name. Those of every QObject are not published ones.
QMetaProperty publishedProperty(const QMetaObject& managerClass, std::string_view name) {
    const int index = managerClass.indexOfProperty(std::string(name).c_str());
    const bool isPublished = index >= QObject::staticMetaObject.propertyCount();
    return isPublished ? managerClass.property(index) : QMetaProperty();
}

/// The value in the property's own type, or an invalid variant when it is of another one.
QVariant valueFor(const QMetaProperty& property, const DefaultsObject& value) {
    if (const bool* flag = std::get_if<bool>(&value);
        flag && property.typeId() == QMetaType::Bool) {
        return *flag;
    }
    if (const double* number = std::get_if<double>(&value);
        number && property.typeId() == QMetaType::Double) {
        return *number;
    }
    if (const auto* list = std::get_if<StringList>(&value);
        list && property.typeId() == QMetaType::QStringList) {
        QStringList strings;
        for (const auto& string : *list) {
            strings.append(QString::fromStdString(string));
        }
        return strings;
    }
    return {};
}

std::string_view valueKind(const QMetaProperty& property) {
    switch (property.typeId()) {
    case QMetaType::Bool:
        return "true or false";
    case QMetaType::QStringList:
        return "a list of texts";
    default:
        return "a number";
    }
}

std::string unknownPropertyMessage(const ReplayTool& tool, const std::string& name) {
    std::vector<std::string_view> names;
    for (int i = QObject::staticMetaObject.propertyCount(); i < tool.managerClass->propertyCount();
         ++i) {
        names.emplace_back(tool.managerClass->property(i).name());
    }
    return std::string(tool.id) + " has no property " + inQuotes(name) +
           nearestWordHint(name, names);
}

class ToolCheck {
  public:
    void operator()(const ToolSwitch& toolSwitch) { find(toolSwitch.tool); }
    void operator()(const TapDrop& drop) { find(drop.tool); }
    void operator()(const PropertyChange& change) {
        if (const ReplayTool* tool = find(change.tool)) {
            check(*tool, change);
        }
    }
    template <class Action>
    void operator()(const Action& /*namesNoTool*/) {}

    [[nodiscard]] std::optional<TraceError> error() && { return std::move(error_); }

  private:
    const ReplayTool* find(const ToolName& name) {
        const ReplayTool* tool = toolWithId(name.id);
        if (tool == nullptr) {
            fail(name.position, "this build has no " + name.id);
        }
        return tool;
    }

    void check(const ReplayTool& tool, const PropertyChange& change) {
        const QMetaProperty property = publishedProperty(*tool.managerClass, change.property);
        if (!property.isValid()) {
            fail(change.propertyPosition, unknownPropertyMessage(tool, change.property));
        } else if (!property.isWritable()) {
            fail(change.propertyPosition, inQuotes(change.property) + " cannot be set");
        } else if (!valueFor(property, change.value).isValid()) {
            fail(change.valuePosition,
                 inQuotes(change.property) + " takes " + std::string(valueKind(property)));
        } else if (const double* number = std::get_if<double>(&change.value);
                   number && !isStorableNumber(*number)) {
            fail(change.valuePosition, "a number of this size cannot be stored");
        }
    }

    void fail(TracePosition position, std::string message) {
        if (!error_) {
            error_ = TraceError{position, std::move(message)};
        }
    }

    std::optional<TraceError> error_;
};

} // namespace

std::optional<TraceError> checkTools(const Trace& trace) {
    ToolCheck check;
    for (const ToolSwitch& toolSwitch : trace.tools) {
        check(toolSwitch);
    }
    for (const TimedAction& timed : trace.actions) {
        std::visit(check, timed.action);
    }
    return std::move(check).error();
}

QObject& ReplayTools::manager(std::string_view id) {
    const ReplayTool& tool = *toolWithId(id);
    for (const auto& [managerClass, manager] : managers_) {
        if (managerClass == tool.managerClass) {
            return *manager;
        }
    }
    return *managers_.emplace_back(tool.managerClass, tool.create(platform_)).second;
}

void ReplayTools::switchTool(std::string_view id, bool on) {
    const ReplayTool& tool = *toolWithId(id);
    if (on) {
        on_.emplace(id);
        tool.activate(manager(id));
    } else {
        if (const auto record = on_.find(id); record != on_.end()) {
            on_.erase(record);
        }
        tool.deactivate(manager(id), on_.contains(tool.partner));
    }
}

void ReplayTools::setProperty(std::string_view id, std::string_view property,
                              const DefaultsObject& value) {
    QObject& object = manager(id);
    const QMetaProperty published = publishedProperty(*object.metaObject(), property);
    published.write(&object, valueFor(published, value));
}

} // namespace quillon
