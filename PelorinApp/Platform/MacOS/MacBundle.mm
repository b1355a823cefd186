#include "Platform/MacOS/MacBundle.h"

#include "Platform/FileManager.h"
#include "Platform/MacOS/NSStrings.h"

#import <Foundation/Foundation.h>

namespace quillon {

namespace {
constexpr const char* builtInIdentifier = "com.pelorin.PelorinApp";
}

std::string MacBundle::identifier() const {
    std::string identifier = utf8Text([[NSBundle mainBundle] bundleIdentifier]);
    return isEntryName(identifier) ? identifier : builtInIdentifier;
}

std::optional<std::string> MacBundle::infoString(std::string_view key) const {
    NSString* name = nativeString(key);
    id value = name == nil ? nil : [[NSBundle mainBundle] objectForInfoDictionaryKey:name];
    return [value isKindOfClass:[NSString class]]
               ? std::optional(utf8Text(static_cast<NSString*>(value)))
               : std::nullopt;
}

} // namespace quillon
