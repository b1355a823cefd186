#pragma once

#include "Platform/MacOS/HostedTree.h"
#include "Platform/MacOS/NativeViews.h"
#include "Platform/StatusBar.h"

#include <AppKit/AppKit.h>

#include <memory>

namespace quillon {

/// The button that the system gives to a status item: as large as the system has made it.
class MacStatusButton final : public Button {
  public:
    explicit MacStatusButton(NSStatusBarButton* native) : native_(native) {}

    [[nodiscard]] Rect bounds() const override;
    [[nodiscard]] Size fittingSize() const override;
    [[nodiscard]] ButtonCell* cell() override;

    [[nodiscard]] NSStatusBarButton* native() const { return native_; }

  private:
    NSStatusBarButton* native_;
    ButtonCell cell_;
};

class MacStatusItem final : public StatusItem {
  public:
    /// `views` must outlive this object.
    MacStatusItem(NSStatusItem* item, NativeViews& views);
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;
    ~MacStatusItem() override;

    void setVisible(bool visible) override { [item_ setVisible:visible]; }
    void setLength(double length) override { [item_ setLength:length]; }
    [[nodiscard]] std::shared_ptr<Button> button() override;
    [[nodiscard]] std::shared_ptr<View> customView() const override { return customView_; }
    void setCustomView(std::shared_ptr<View> view) override;

  private:
    NativeViews& views_;
    NSStatusItem* item_;
    std::shared_ptr<MacStatusButton> button_;
    std::shared_ptr<View> customView_;
    std::unique_ptr<HostedTree> tree_; // of the one that is shown
};

class MacStatusBar final : public StatusBar {
  public:
    /// `views` must outlive this object and its items.
    explicit MacStatusBar(NativeViews& views) : views_(views) {}

    std::shared_ptr<StatusItem> statusItem(double length) override;
    [[nodiscard]] double thickness() const override;

  private:
    NativeViews& views_;
};

} // namespace quillon
