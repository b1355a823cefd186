#include "Platform/Linux/applications/AskedWindow.h"

#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <string>

namespace quillon {

namespace {

// In units of four bytes.
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

AskedWindow::AskedWindow(const WindowLink& link, xcb_window_t window)
    : link_(link), window_(window), state_(link, window),
      geometry_(xcb_get_geometry(link.get(), window)),
      corner_(xcb_translate_coordinates(link.get(), window, link.root(), 0, 0)),
      frame_(ask(link.atoms().frameExtents, 4)), shadow_(ask(link.atoms().shadowExtents, 4)),
      type_(ask(link.atoms().type, mostStates)), process_(ask(link.atoms().process, 1)),
      machine_(ask(link.atoms().machine, longestName)),
      class_(ask(link.atoms().windowClass, longestName)),
      applicationId_(ask(link.atoms().applicationId, longestName)) {}

std::optional<WindowFacts> AskedWindow::answer() const {
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

AskedProperty AskedWindow::ask(xcb_atom_t property, std::uint32_t longest) const {
    return {link_.get(), window_, property, longest};
}

std::optional<PixelRect> AskedWindow::interior() const {
    const XcbOwned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(link_.get(), geometry_, nullptr));
    const XcbOwned<xcb_translate_coordinates_reply_t> corner(
        xcb_translate_coordinates_reply(link_.get(), corner_, nullptr));
    if (!size || !corner) {
        return std::nullopt;
    }
    return PixelRect{corner->dst_x, corner->dst_y, size->width, size->height};
}

} // namespace quillon
