#include "Platform/MacOS/MacLoginItem.h"

#include "Platform/MacOS/NSStrings.h"

#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

namespace quillon {

namespace {

constexpr const char* tooOld = "Launch at Login requires macOS 13 or later.";

std::string reason(NSError* error) {
    return error == nil ? "The system gives no reason." : utf8Text([error localizedDescription]);
}

} // namespace

bool MacLoginItem::isSupported() const {
    if (@available(macOS 13.0, *)) {
        return true;
    }
    return MissingLoginItem().isSupported();
}

bool MacLoginItem::isEnabled() const {
    if (@available(macOS 13.0, *)) {
        return [[SMAppService mainAppService] status] == SMAppServiceStatusEnabled;
    }
    return MissingLoginItem().isEnabled();
}

std::optional<std::string> MacLoginItem::registerService() {
    if (@available(macOS 13.0, *)) {
        NSError* error = nil;
        return [[SMAppService mainAppService] registerAndReturnError:&error]
                   ? std::nullopt
                   : std::optional(reason(error));
    }
    return MissingLoginItem().registerService();
}

std::optional<std::string> MacLoginItem::unregisterService() {
    if (@available(macOS 13.0, *)) {
        NSError* error = nil;
        return [[SMAppService mainAppService] unregisterAndReturnError:&error]
                   ? std::nullopt
                   : std::optional(reason(error));
    }
    return MissingLoginItem().unregisterService();
}

bool MissingLoginItem::isSupported() const { return false; }

bool MissingLoginItem::isEnabled() const { return false; }

std::optional<std::string> MissingLoginItem::registerService() { return tooOld; }

std::optional<std::string> MissingLoginItem::unregisterService() { return tooOld; }

} // namespace quillon
