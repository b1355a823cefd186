#include "Platform/Linux/applications/WindowReader.h"

#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <map>
#include <utility>

#include <xcb/res.h>

namespace quillon {

namespace {

// In units of four bytes.
constexpr std::uint32_t mostWindows = 1 << 16;
constexpr std::uint32_t mostStates = 64;
constexpr std::uint32_t longestName = 256;

/// A window's names may be of the old kind, one byte each letter.
std::string utf8(std::string_view text) {
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    QStringDecoder decoder(QStringDecoder::Utf8);
    [[maybe_unused]] const QString decoded = decoder.decode(bytes);
    return decoder.hasError() ? QString::fromLatin1(bytes).toStdString() : std::string(text);
}

/// Up to the first NUL, which is taken off the text with it.
std::string takeString(std::string_view& text) {
    const auto end = std::min(text.find('\0'), text.size());
    std::string taken = utf8(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

std::string stringOf(const AskedProperty::Reply& reply) {
    std::string_view text = bytesOf(reply);
    return takeString(text);
}

Margins marginsOf(const AskedProperty::Reply& reply) {
    const auto values = valuesOf(reply);
    const auto at = [&](std::size_t i) { return static_cast<std::int32_t>(values[i]); };
    return values.size() < 4 ? Margins{} : Margins{at(0), at(1), at(2), at(3)};
}

std::optional<std::uint32_t> firstOf(const AskedProperty::Reply& reply) {
    const auto values = valuesOf(reply);
    return values.empty() ? std::nullopt : std::optional(values.front());
}

bool contains(std::span<const std::uint32_t> values, xcb_atom_t atom) {
    return std::find(values.begin(), values.end(), atom) != values.end();
}

WindowKind kindOf(std::span<const std::uint32_t> types, const WindowAtoms& atoms) {
    // The best first; those that we do not know are for others.
    for (const xcb_atom_t type : types) {
        for (const auto& [atom, kind] : atoms.kinds) {
            if (atom == type) {
                return kind;
            }
        }
    }
    return WindowKind::ordinary;
}

/// All that is asked about one window.
class AskedWindow {
  public:
    AskedWindow(const WindowLink& link, xcb_window_t window)
        : link_(link), window_(window), state_(link, window),
          geometry_(xcb_get_geometry(link.get(), window)),
          corner_(xcb_translate_coordinates(link.get(), window, link.root(), 0, 0)),
          frame_(ask(link.atoms().frameExtents, 4)), shadow_(ask(link.atoms().shadowExtents, 4)),
          type_(ask(link.atoms().type, mostStates)), process_(ask(link.atoms().process, 1)),
          machine_(ask(link.atoms().machine, longestName)),
          class_(ask(link.atoms().windowClass, longestName)),
          applicationId_(ask(link.atoms().applicationId, longestName)) {}

    /// Nothing when it is gone.
    [[nodiscard]] std::optional<WindowFacts> answer() const {
        const auto state = state_.answer();
        WindowFacts facts;
        facts.id = window_;
        facts.client = link_.clientOf(window_);
        facts.interior = interior();
        facts.frame = marginsOf(frame_.reply());
        facts.shadow = marginsOf(shadow_.reply());
        facts.kind = kindOf(valuesOf(type_.reply()), link_.atoms());
        if (const auto process = firstOf(process_.reply()); process && *process != 0) {
            facts.claimedProcess = static_cast<ProcessId>(*process);
        }
        facts.machine = stringOf(machine_.reply());
        const auto names = class_.reply();
        std::string_view text = bytesOf(names);
        facts.instance = takeString(text);
        facts.className = takeString(text);
        facts.applicationId = stringOf(applicationId_.reply());
        if (!state) {
            return std::nullopt;
        }
        facts.state = *state;
        return facts;
    }

  private:
    [[nodiscard]] AskedProperty ask(xcb_atom_t property, std::uint32_t longest) const {
        return {link_.get(), window_, property, longest};
    }

    [[nodiscard]] std::optional<PixelRect> interior() const {
        const XcbOwned<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(link_.get(), geometry_, nullptr));
        const XcbOwned<xcb_translate_coordinates_reply_t> corner(
            xcb_translate_coordinates_reply(link_.get(), corner_, nullptr));
        if (!size || !corner) {
            return std::nullopt;
        }
        return PixelRect{corner->dst_x, corner->dst_y, size->width, size->height};
    }

    const WindowLink& link_;
    xcb_window_t window_;
    AskedState state_;
    xcb_get_geometry_cookie_t geometry_;
    xcb_translate_coordinates_cookie_t corner_;
    AskedProperty frame_, shadow_, type_, process_, machine_, class_, applicationId_;
};

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

AskedState::AskedState(const WindowLink& link, xcb_window_t window)
    : atoms_(link.atoms()), desktop_(link.get(), window, atoms_.desktop, 1),
      state_(link.get(), window, atoms_.state, mostStates),
      wmState_(link.get(), window, atoms_.wmState, 1) {}

std::optional<WindowState> AskedState::answer() const {
    constexpr std::uint32_t withdrawnState = 0;
    constexpr std::uint32_t iconicState = 3;
    const auto desktop = desktop_.reply();
    const auto states = state_.reply();
    const auto wmState = firstOf(wmState_.reply());
    if (!desktop || !states) {
        return std::nullopt;
    }
    const auto set = valuesOf(states);
    return WindowState{
        .desktop = firstOf(desktop),
        .isManaged = wmState && *wmState != withdrawnState,
        .isIconic = wmState == iconicState,
        .isHidden = contains(set, atoms_.hidden),
        .isShaded = contains(set, atoms_.shaded),
        .skipsTaskbar = contains(set, atoms_.skipTaskbar),
    };
}

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
        if (!contains(backToFront, window)) {
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
