#include "Platform/Linux/applications/WindowReader.h"

#include "Platform/Linux/applications/AskedWindow.h"

#include <algorithm>
#include <map>
#include <utility>

#include <xcb/res.h>

namespace quillon {

namespace {

constexpr std::uint32_t mostWindows = 1 << 16; // in units of four bytes

/// Whose processes the connections of some windows are.
class AskedProcesses {
  public:
    AskedProcesses(const WindowLink& link, const std::vector<xcb_window_t>& windows) : link_(link) {
        if (!link.knowsProcesses()) {
            return;
        }
        std::vector<std::uint32_t> clients;
        clients.reserve(windows.size());
        for (const xcb_window_t window : windows) {
            clients.push_back(link.clientOf(window));
        }
        std::sort(clients.begin(), clients.end());
        clients.erase(std::unique(clients.begin(), clients.end()), clients.end());
        std::vector<xcb_res_client_id_spec_t> specs;
        specs.reserve(clients.size());
        for (const std::uint32_t client : clients) {
            specs.push_back({client, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
        }
        cookie_ = xcb_res_query_client_ids(link.get(), static_cast<std::uint32_t>(specs.size()),
                                           specs.data());
    }

    /// To be called once. By connection.
    [[nodiscard]] std::map<std::uint32_t, ProcessId> answer() const {
        std::map<std::uint32_t, ProcessId> processes;
        if (!cookie_) {
            return processes;
        }
        const XcbOwned<xcb_res_query_client_ids_reply_t> reply(
            xcb_res_query_client_ids_reply(link_.get(), *cookie_, nullptr));
        if (!reply) {
            return processes;
        }
        for (auto each = xcb_res_query_client_ids_ids_iterator(reply.get()); each.rem > 0;
             xcb_res_client_id_value_next(&each)) {
            if (xcb_res_client_id_value_value_length(each.data) > 0) {
                processes[link_.clientOf(each.data->spec.client)] =
                    static_cast<ProcessId>(*xcb_res_client_id_value_value(each.data));
            }
        }
        return processes;
    }

  private:
    const WindowLink& link_;
    std::optional<xcb_res_query_client_ids_cookie_t> cookie_;
};

} // namespace

AskedStacking::AskedStacking(const WindowLink& link)
    : stacking_(link.get(), link.root(), link.atoms().clientListStacking, mostWindows),
      list_(link.get(), link.root(), link.atoms().clientList, mostWindows) {}

std::optional<std::vector<xcb_window_t>> AskedStacking::answer() const {
    const auto stacking = stacking_.reply();
    const auto list = list_.reply();
    const auto isSet = [](const AskedProperty::Reply& reply) {
        return reply && reply->format == 32;
    };
    if (!isSet(stacking) && !isSet(list)) {
        return std::nullopt;
    }
    const auto backToFront = valuesOf(stacking);
    std::vector<xcb_window_t> windows(backToFront.rbegin(), backToFront.rend());
    // Some publish the order only once it has changed; what is new is in front until then.
    for (const xcb_window_t window : valuesOf(list)) {
        if (std::find(backToFront.begin(), backToFront.end(), window) == backToFront.end()) {
            windows.insert(windows.begin(), window);
        }
    }
    return windows;
}

std::optional<DesktopFacts> readDesktop(const WindowLink& link) {
    xcb_connection_t* const x = link.get();
    const auto& atoms = link.atoms();
    const AskedStacking askedStacking(link);
    const AskedProperty askedDesktop(x, link.root(), atoms.currentDesktop, 1);
    const AskedProperty askedActive(x, link.root(), atoms.activeWindow, 1);
    const auto askedFocus = xcb_get_input_focus(x);
    auto listed = askedStacking.answer();
    DesktopFacts facts;
    facts.currentDesktop = firstOf(askedDesktop.reply());
    const xcb_window_t active = firstOf(askedActive.reply()).value_or(XCB_NONE);
    const XcbOwned<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(x, askedFocus, nullptr));
    if (!listed || !focus) {
        return std::nullopt;
    }
    // Of the focus, the first two numbers are no windows: nobody, and whoever has the pointer.
    facts.frontWindow = active != XCB_NONE ? active : focus->focus > 1 ? focus->focus : XCB_NONE;

    std::vector<xcb_window_t> windows = std::move(*listed);
    std::vector<AskedWindow> asked;
    asked.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        asked.emplace_back(link, window);
    }
    if (facts.frontWindow != XCB_NONE) {
        facts.frontClient = link.clientOf(facts.frontWindow);
        windows.push_back(facts.frontWindow);
    }
    const AskedProcesses askedProcesses(link, windows);
    // Waiting for the first answer alone would send no more than its question.
    xcb_flush(x);

    facts.windows.reserve(asked.size());
    for (const AskedWindow& each : asked) {
        if (auto window = each.answer()) {
            facts.windows.push_back(std::move(*window));
        }
    }
    const auto processes = askedProcesses.answer();
    const auto processOf = [&](std::uint32_t client) {
        const auto found = processes.find(client);
        return found == processes.end() ? std::nullopt : std::optional(found->second);
    };
    for (WindowFacts& window : facts.windows) {
        window.connectedProcess = processOf(window.client);
    }
    if (facts.frontClient) {
        facts.frontProcess = processOf(*facts.frontClient);
    }
    return link.isBroken() ? std::nullopt : std::optional(std::move(facts));
}

} // namespace quillon
