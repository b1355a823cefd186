#include "Platform/Linux/session/DefaultsDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <variant>

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using quillon::DefaultsDamage;
    using quillon::DefaultsDocument;

    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto read = DefaultsDocument::parse(text);
    if (const auto* damage = std::get_if<DefaultsDamage>(&read)) {
        require(!damage->reason.empty() && damage->reason.size() < 256);
        return 0;
    }
    // What is accepted is written so that it reads the same, values and texts.
    const auto& document = std::get<DefaultsDocument>(read);
    const auto again = DefaultsDocument::parse(document.serialise());
    require(std::holds_alternative<DefaultsDocument>(again));
    require(std::get<DefaultsDocument>(again) == document);

    // A change alters its own key and no other.
    DefaultsDocument changed = document;
    require(changed.set("fuzz", 40.0) != DefaultsDocument::Change::refused);
    const auto readChanged = DefaultsDocument::parse(changed.serialise());
    require(std::holds_alternative<DefaultsDocument>(readChanged));
    require(std::get<DefaultsDocument>(readChanged) == changed);
    require(*changed.object("fuzz") == quillon::DefaultsObject(40.0));
    changed.remove("fuzz");
    DefaultsDocument without = document;
    without.remove("fuzz");
    require(changed == without);
    return 0;
}
