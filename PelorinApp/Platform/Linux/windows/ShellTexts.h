#pragma once

#include <QCoreApplication>
#include <QString>

#include <string>

namespace quillon {

/// What the program says outside of its screens, in the user's language where there is a
/// translation.
inline QString translated(const std::string& english) {
    return QCoreApplication::translate("Shell", english.c_str());
}

} // namespace quillon
