#include "Platform/MacOS/NativeDrawing.h"

#include "Platform/MacOS/NativeLooks.h"
#include "Platform/MacOS/NativeText.h"

namespace quillon {

namespace {

class NativeDrawing final : public DrawingContext {
  public:
    [[nodiscard]] Size measure(std::string_view text, const Font& font) const override {
        const NSSize size = [nativeText(text)
            sizeWithAttributes:[NSDictionary dictionaryWithObject:nativeFont(font)
                                                           forKey:NSFontAttributeName]];
        return {size.width, size.height};
    }

    void drawLabel(std::string_view text, const Rect& rect, const Font& font,
                   double opacity) override {
        NSColor* const color = [[NSColor labelColor] colorWithAlphaComponent:opacity];
        [nativeText(text)
                drawInRect:nativeRect(rect)
            withAttributes:[NSDictionary
                               dictionaryWithObjectsAndKeys:nativeFont(font), NSFontAttributeName,
                                                            color, NSForegroundColorAttributeName,
                                                            nil]];
    }
};

} // namespace

void drawNatively(const View* view) {
    if (view != nullptr) {
        NativeDrawing context;
        view->draw(context);
    }
}

} // namespace quillon
