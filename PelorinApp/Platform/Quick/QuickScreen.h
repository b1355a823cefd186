#pragma once

#include <QUrl>
#include <QVariantMap>

#include <functional>
#include <string_view>

namespace quillon {

/// A Quick item to be shown in a window: where it is, and what its properties are from the start.
struct QuickScreen {
    QUrl url;
    QVariantMap properties;
};

/// Answers the item of a screen's name, when it is about to be made.
using QuickScreens = std::function<QuickScreen(std::string_view name)>;

} // namespace quillon
