#pragma once

#include "Platform/MacOS/NativeViews.h"
#include "Platform/MacOS/PopoverContent.h"
#include "Platform/Popover.h"
#include "Platform/RunLoop.h"

#include <AppKit/AppKit.h>

#include <memory>
#include <string>
#include <utility>

namespace quillon {

/// A popover of the system's. Its content is made when the program is first idle after the popover
/// was made, or when it is first shown, and kept.
class MacPopover final : public Popover {
  public:
    /// `views` must outlive this object.
    MacPopover(NativeViews& views, PopoverContents contents, std::string_view screen,
               std::function<void()> escaped);
    MacPopover(const MacPopover&) = delete;
    MacPopover& operator=(const MacPopover&) = delete;
    ~MacPopover() override;

    void setBehavior(PopoverBehavior behavior) override;
    [[nodiscard]] bool isShown() const override;

    /// An anchor that is in no window has no place where a popover could hang: nothing is shown.
    void show(const View& anchor, RectEdge preferredEdge) override;

    void close() override;
    void makeKeyWindow() override;
    [[nodiscard]] bool hasAttachedSheet() const override;

    /// Makes the content, if there is none yet.
    void prepare();

    /// To be called when it has closed, whatever has closed it.
    void closed();

    /// Expires with it.
    [[nodiscard]] std::weak_ptr<bool> alive() const { return alive_; }

  private:
    [[nodiscard]] NSWindow* window() const { return [[controller_ view] window]; }
    void takeSize();

    NativeViews& views_;
    PopoverContents contents_;
    std::string screen_;
    std::function<void()> escaped_;
    NSPopover* popover_;
    NSViewController* controller_;
    id listener_; // to what the popover tells
    std::unique_ptr<PopoverContent> content_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

class MacPopovers final : public Popovers {
  public:
    /// All of them must outlive this object and its popovers.
    MacPopovers(RunLoop& runLoop, NativeViews& views, PopoverContents contents)
        : runLoop_(runLoop), views_(views), contents_(std::move(contents)) {}

    std::unique_ptr<Popover> make(std::string_view screen, std::function<void()> escaped) override;

  private:
    RunLoop& runLoop_;
    NativeViews& views_;
    PopoverContents contents_;
};

} // namespace quillon
