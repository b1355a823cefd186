#pragma once

#include <span>
#include <string_view>
#include <utility>

#include <xcb/xcb.h>

namespace quillon {

/// The name of an atom, and where the atom is to be put.
using WantedAtom = std::pair<std::string_view, xcb_atom_t*>;

/// Asks for all before it hears any: waits for the server once. XCB_ATOM_NONE where the server is
/// gone.
void internAtoms(xcb_connection_t* connection, std::span<const WantedAtom> wanted);

} // namespace quillon
