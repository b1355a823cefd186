#include "Platform/MacOS/MacImages.h"

#include "Platform/MacOS/NativeLooks.h"

#include <string>
#include <utility>

namespace quillon {

namespace {

std::optional<Image> ifThere(Image image) {
    @autoreleasepool {
        return nativeImage(image) == nil ? std::nullopt : std::optional(std::move(image));
    }
}

} // namespace

std::optional<Image> MacImages::named(std::string_view name) const {
    return ifThere({.name = std::string(name)});
}

std::optional<Image> MacImages::systemSymbol(std::string_view name,
                                             std::string_view accessibilityDescription) const {
    return ifThere({.name = std::string(name),
                    .accessibilityDescription = std::string(accessibilityDescription),
                    .isSymbol = true});
}

} // namespace quillon
