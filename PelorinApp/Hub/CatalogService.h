#pragma once

#include "Hub/HubServices.h"
#include "Hub/ToolCatalogItem.h"

#include <functional>
#include <memory>
#include <string>

namespace quillon {

/// Knows what tools there are: it asks a server, and answers with the built-in list when that tells
/// nothing usable. Main thread only.
class CatalogService {
  public:
    /// Where the bundle's configuration names no server: one on the developer's own machine.
    static constexpr const char* developmentServer = "http://localhost:8787";

    /// A larger document is none.
    static constexpr std::size_t largestCatalog = std::size_t{8} << 20U; // bytes

    /// Documents are decoded on `queue`.
    CatalogService(const HubServices& services, std::shared_ptr<SerialQueue> queue);

    /// Never fails. `completion` is called once on the main thread, after this call has returned;
    /// not when this object goes first, or when another fetch is begun meanwhile.
    void fetchCatalog(std::function<void(ToolCatalog)> completion);

  private:
    void receive(UrlResult result);

    HubServices services_;
    std::shared_ptr<SerialQueue> queue_;
    std::unique_ptr<UrlTask> task_;
    std::shared_ptr<std::function<void(ToolCatalog)>> completion_; // what is queued holds it weakly
};

/// The address of a resource below a base address; nothing when the base is no address.
[[nodiscard]] std::optional<std::string> addressBelow(const std::string& base,
                                                      std::string_view path);

/// Whether a text is an address at all.
[[nodiscard]] bool isAddress(const std::string& text);

/// Whether an answer is an HTTP one of success.
[[nodiscard]] bool isSuccess(const UrlResponse& response);

} // namespace quillon
