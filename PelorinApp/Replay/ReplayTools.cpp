#include "Replay/ReplayTools.h"

#include "Replay/NearestWord.h"
#include "Replay/StatementReader.h"
#include "Tools/Edges/ScrollReverseManager.h"
#include "Tools/Edges/Tool4EdgesManager.h"
#include "Tools/Edges/VolumeControlManager.h"
#include "Tools/Pointer/MediaControlManager.h"
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

void activate(QObject& object) {
    auto& manager = static_cast<EdgeToolManager&>(object);
    manager.setIsEnabled(true);
    manager.restartIfNeeded(false);
}

/// Its switching on starts it, and says so, also when there is nothing to restart.
void activateMediaControl(QObject& object) {
    static_cast<MediaControlManager&>(object).setIsEnabled(true);
}

void switchScrollReverse(ScrollReverseManager& manager, bool on) {
    manager.setIsEnabled(on);
    if (on) {
        manager.startMonitoring();
    } else {
        manager.stopMonitoring();
    }
}

void activateScrollReverse(QObject& object) {
    switchScrollReverse(static_cast<ScrollReverseManager&>(object), true);
}

void deactivateScrollReverse(QObject& object, bool /*partnerIsOn*/) {
    switchScrollReverse(static_cast<ScrollReverseManager&>(object), false);
}

void disable(QObject& object, bool /*partnerIsOn*/) {
    static_cast<EdgeToolManager&>(object).setIsEnabled(false);
}

/// Switches the manager off unless it still serves the other tool.
void leaveToPartner(QObject& object, bool partnerIsOn) {
    auto& manager = static_cast<EdgeToolManager&>(object);
    if (partnerIsOn) {
        manager.restartIfNeeded(true);
    } else {
        manager.setIsEnabled(false);
    }
}

void activateThreeFingerPress(QObject& object) {
    auto& manager = static_cast<WindowSwitcherManager&>(object);
    manager.setThreeFingerGestureEnabled(true);
    manager.setIsEnabled(true);
    manager.restartIfNeeded(true);
}

void deactivateThreeFingerPress(QObject& object, bool partnerIsOn) {
    static_cast<WindowSwitcherManager&>(object).setThreeFingerGestureEnabled(false);
    leaveToPartner(object, partnerIsOn);
}

constexpr std::array tools{
    ReplayTool{Tool4EdgesManager::toolId, &Tool4EdgesManager::staticMetaObject,
               create<Tool4EdgesManager>, activate, disable},
    ReplayTool{WindowSwitcherManager::toolId, &WindowSwitcherManager::staticMetaObject,
               create<WindowSwitcherManager>, activate, leaveToPartner, ThreeFingerPress::toolId},
    ReplayTool{ThreeFingerPress::toolId, &WindowSwitcherManager::staticMetaObject,
               create<WindowSwitcherManager>, activateThreeFingerPress, deactivateThreeFingerPress,
               WindowSwitcherManager::toolId},
    ReplayTool{VolumeControlManager::toolId, &VolumeControlManager::staticMetaObject,
               create<VolumeControlManager>, activate, disable},
    ReplayTool{MediaControlManager::toolId, &MediaControlManager::staticMetaObject,
               create<MediaControlManager>, activateMediaControl, disable},
    ReplayTool{ScrollReverseManager::toolId, &ScrollReverseManager::staticMetaObject,
               create<ScrollReverseManager>, activateScrollReverse, deactivateScrollReverse},
};

static_assert(std::ranges::all_of(toolIds, [](std::string_view id) {
    return std::ranges::find(tools, id, &ReplayTool::id) != tools.end();
}));

const ReplayTool& toolWithId(std::string_view id) {
    return *std::ranges::find(tools, id, &ReplayTool::id);
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
    void operator()(const PropertyChange& change) { check(toolWithId(change.tool.id), change); }
    template <class Action>
    void operator()(const Action& /*setsNothing*/) {}

    [[nodiscard]] std::optional<TraceError> error() && { return std::move(error_); }

  private:
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

std::optional<TraceError> checkProperties(const Trace& trace) {
    ToolCheck check;
    for (const TimedAction& timed : trace.actions) {
        std::visit(check, timed.action);
    }
    return std::move(check).error();
}

QObject& ReplayTools::manager(std::string_view id) {
    const ReplayTool& tool = toolWithId(id);
    for (const auto& [managerClass, manager] : managers_) {
        if (managerClass == tool.managerClass) {
            return *manager;
        }
    }
    const auto made = tool.create(platform_);
    if (auto* volumeControl = qobject_cast<VolumeControlManager*>(made.get())) {
        volumeControl->setLevelReport(levelReport_);
    }
    return *managers_.emplace_back(tool.managerClass, made).second;
}

void ReplayTools::switchTool(std::string_view id, bool on) {
    const ReplayTool& tool = toolWithId(id);
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
