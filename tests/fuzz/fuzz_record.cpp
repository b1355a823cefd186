#include "Hub/InstalledToolRecord.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto moment = quillon::parseInternetDateTime(text)) {
        require(quillon::parseInternetDateTime(quillon::internetDateTime(*moment)) == moment);
    }
    const auto records = quillon::decodeRecords(text);
    if (records) {
        const auto document = quillon::encodeRecords(*records);
        require(quillon::decodeRecords(document) == records);
        require(quillon::encodeRecords(*quillon::decodeRecords(document)) == document);
    }
    return 0;
}
