#include "Replay/ReplayTools.h"

#include "Replay/StatementReader.h"
#include "Text/NearestWord.h"

#include <QMetaProperty>
#include <QVariant>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace quillon {

namespace {

struct ReplayTool {
    std::string_view id;
    const QMetaObject* managerClass;
    QObject& (*manager)(ToolManagers&);
};

QObject& windowSwitcher(ToolManagers& managers) { return managers.windowSwitcher(); }

constexpr std::array tools{
    ReplayTool{Tool4EdgesManager::toolId, &Tool4EdgesManager::staticMetaObject,
               [](ToolManagers& managers) -> QObject& { return managers.desktopSwitcher(); }},
    ReplayTool{WindowSwitcherManager::toolId, &WindowSwitcherManager::staticMetaObject,
               windowSwitcher},
    ReplayTool{ThreeFingerPress::toolId, &WindowSwitcherManager::staticMetaObject, windowSwitcher},
    ReplayTool{VolumeControlManager::toolId, &VolumeControlManager::staticMetaObject,
               [](ToolManagers& managers) -> QObject& { return managers.volumeControl(); }},
    ReplayTool{MediaControlManager::toolId, &MediaControlManager::staticMetaObject,
               [](ToolManagers& managers) -> QObject& { return managers.mediaControl(); }},
    ReplayTool{ScrollReverseManager::toolId, &ScrollReverseManager::staticMetaObject,
               [](ToolManagers& managers) -> QObject& { return managers.scrollReverse(); }},
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

ReplayTools::ReplayTools(Platform& platform, VolumeLevelReport levelReport)
    : managers_(platform, std::move(levelReport)) {
    for (auto& module :
         hubToolModules(managers_, [this](std::string_view id) { return on_.contains(id); })) {
        const std::string id = module.id;
        modules_.emplace(id, std::move(module));
    }
}

void ReplayTools::switchTool(std::string_view id, bool on) {
    const HubToolModule& module = modules_.find(id)->second;
    if (on) {
        on_.emplace(id);
        module.activate();
    } else {
        if (const auto record = on_.find(id); record != on_.end()) {
            on_.erase(record);
        }
        module.deactivate();
    }
}

void ReplayTools::setProperty(std::string_view id, std::string_view property,
                              const DefaultsObject& value) {
    QObject& object = toolWithId(id).manager(managers_);
    const QMetaProperty published = publishedProperty(*object.metaObject(), property);
    published.write(&object, valueFor(published, value));
}

} // namespace quillon
