#include "Platform/Linux/x11/AtomBatch.h"

#include "Platform/Linux/x11/X11Connection.h"

#include <cstdint>
#include <vector>

namespace quillon {

void internAtoms(xcb_connection_t* connection, std::span<const WantedAtom> wanted) {
    std::vector<xcb_intern_atom_cookie_t> asked;
    asked.reserve(wanted.size());
    for (const auto& [name, atom] : wanted) {
        asked.push_back(
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const XcbOwned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, asked[i], nullptr));
        *wanted[i].second = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

} // namespace quillon
