#include "Hub/ToolCatalogItem.h"

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
    const auto catalog = quillon::decodeCatalog({reinterpret_cast<const char*>(data), size});
    if (catalog) {
        const auto document = quillon::encodeCatalog(*catalog);
        require(quillon::decodeCatalog(document) == catalog);
        require(quillon::encodeCatalog(*quillon::decodeCatalog(document)) == document);
    }
    return 0;
}
