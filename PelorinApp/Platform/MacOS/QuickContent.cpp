#include "Platform/MacOS/QuickContent.h"

#include <bit>
#include <utility>

namespace quillon {

QuickContent::QuickContent(const QuickScreen& screen, PopoverContentHandlers handlers)
    : view_(screen) {
    QObject::connect(&view_, &ScreenView::escaped, &view_, std::move(handlers.escaped));
    QObject::connect(&view_, &ScreenView::sizeChanged, &view_, std::move(handlers.resized));
}

void* QuickContent::nativeView() { return std::bit_cast<void*>(view_.winId()); }

Size QuickContent::size() const {
    return {static_cast<double>(view_.width()), static_cast<double>(view_.height())};
}

} // namespace quillon
