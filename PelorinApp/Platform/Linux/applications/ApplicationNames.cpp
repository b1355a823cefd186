#include "Platform/Linux/applications/ApplicationNames.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace quillon {

namespace {

std::string lowerCase(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

/// As the file of an entry would be named for a window class with blanks in it.
std::string fileNameOf(std::string_view className) {
    std::string name = lowerCase(className);
    std::replace(name.begin(), name.end(), ' ', '-');
    return name;
}

std::string_view withoutFolders(std::string_view program) {
    return program.substr(program.find_last_of('/') + 1);
}

} // namespace

void ApplicationNames::add(std::string_view id, const DesktopEntry& entry) {
    if (!seen_.try_emplace(std::string(id), true).second ||
        entry.boolean("Hidden").value_or(false) ||
        entry.text("Type").value_or("Application") != "Application") {
        return;
    }
    const auto name = localizedName(entry);
    if (!name) {
        return;
    }
    const bool isListed = !entry.boolean("NoDisplay").value_or(false);
    keep(byId_, lowerCase(id), *name, isListed ? 1 : 0);
    if (const auto declared = entry.text("StartupWMClass"); declared && !declared->empty()) {
        keep(byClass_, lowerCase(*declared), *name, isListed ? 1 : 0);
    }
    const auto arguments = execArguments(entry.text("Exec").value_or(""));
    // In a terminal the window is the terminal's.
    if (!arguments.empty() && !entry.boolean("Terminal").value_or(false)) {
        // With an argument, the entry is more likely for some part of the program.
        const int plain = arguments.size() == 1 ? 2 : 0;
        keep(byProgram_, lowerCase(withoutFolders(arguments.front())), *name,
             plain + (isListed ? 1 : 0));
    }
}

void ApplicationNames::keep(Names& names, std::string_view key, const std::string& name, int rank) {
    const auto [at, isNew] = names.try_emplace(std::string(key), Named{name, rank});
    if (!isNew && at->second.rank < rank) {
        at->second = {name, rank};
    }
}

std::optional<std::string> ApplicationNames::localizedName(const DesktopEntry& entry) const {
    for (const std::string& locale : locales_) {
        if (auto name = entry.text("Name[" + locale + "]"); name && !name->empty()) {
            return name;
        }
    }
    auto name = entry.text("Name");
    return name && !name->empty() ? name : std::nullopt;
}

std::optional<std::string> ApplicationNames::find(std::string_view applicationId,
                                                  std::string_view instance,
                                                  std::string_view className) const {
    const auto in = [](const Names& names, const std::string& key) -> const std::string* {
        const auto found = key.empty() ? names.end() : names.find(key);
        return found == names.end() ? nullptr : &found->second.name;
    };
    // The instance first: one program may run several applications under one class.
    const std::string first = lowerCase(instance);
    const std::string second = lowerCase(className);
    for (const std::string* name :
         {in(byId_, lowerCase(applicationId)), in(byClass_, first), in(byClass_, second),
          in(byId_, fileNameOf(instance)), in(byId_, fileNameOf(className)), in(byProgram_, first),
          in(byProgram_, second)}) {
        if (name != nullptr) {
            return *name;
        }
    }
    return std::nullopt;
}

std::vector<std::string> localesOf(std::string_view locale) {
    const auto modifierAt = std::min(locale.find('@'), locale.size());
    const std::string modifier(locale.substr(modifierAt));
    locale = locale.substr(0, modifierAt);
    locale = locale.substr(0, locale.find('.'));
    const std::string language(locale.substr(0, locale.find('_')));
    if (language.empty() || language == "C" || language == "POSIX") {
        return {};
    }
    std::vector<std::string> places{std::string(locale)};
    if (language != places.front()) {
        places.push_back(language);
    }
    std::vector<std::string> endings;
    for (const std::string& place : places) {
        if (!modifier.empty()) {
            endings.push_back(place + modifier);
        }
        endings.push_back(place);
    }
    return endings;
}

std::vector<std::string> messageLocales() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
            return localesOf(value);
        }
    }
    return {};
}

} // namespace quillon
