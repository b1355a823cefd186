#include "Platform/Linux/updates/UpdateChoice.h"
#include "Platform/Linux/updates/Version.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>

namespace {

constexpr int longestText = 40;
constexpr std::size_t mostBytesOfACharacter = 4;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void checkText(std::string_view text) {
    const std::string plain = quillon::plainText(text, longestText);
    require(plain.size() <= mostBytesOfACharacter * longestText);
    for (const char c : plain) {
        require(static_cast<unsigned char>(c) >= ' ' && c != '\x7f');
    }
    require(quillon::plainText(plain, longestText) == plain);
}

void checkOrder(std::string_view left, std::string_view right) {
    const auto order = quillon::compareVersions(left, right);
    require((order < 0) == (quillon::compareVersions(right, left) > 0));
    require((order == 0) == (quillon::compareVersions(right, left) == 0));
    require(quillon::compareVersions(left, left) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    checkText(bytes);
    checkOrder(bytes.substr(0, size / 2), bytes.substr(size / 2));

    const auto parsed = quillon::parseAppcast(bytes);
    if (const auto* failure = std::get_if<quillon::FeedFailure>(&parsed)) {
        require(!failure->reason.empty() && failure->reason.size() <= 100);
        return 0;
    }
    const auto& appcast = std::get<quillon::Appcast>(parsed);
    const auto newest = quillon::newestVersion(appcast);
    if (newest) {
        require(quillon::isVersion(newest->version));
        require(newest->page.empty() || newest->page.starts_with("http://") ||
                newest->page.starts_with("https://"));
        checkText(newest->version);
    }
    for (const auto& item : appcast.items) {
        checkOrder(item.version, newest ? newest->version : item.shortVersion);
    }
    return 0;
}
