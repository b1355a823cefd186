#pragma once

#include "Platform/MacOS/NativeButton.h"
#include "Platform/MacOS/NativeViews.h"
#include "Platform/View.h"

#include <AppKit/AppKit.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// Shows a view and what lies in it by views of the system's, one for each, which it keeps in step.
/// Main thread only.
class HostedTree final : public ViewHost {
  public:
    /// By views of its own making. `views` must outlive this object.
    HostedTree(std::shared_ptr<View> root, NativeViews& views);

    /// By a button of the system's, which gives it its place and its size.
    HostedTree(std::shared_ptr<Button> root, NSButton* native, NativeViews& views);

    HostedTree(const HostedTree&) = delete;
    HostedTree& operator=(const HostedTree&) = delete;
    ~HostedTree() override;

    [[nodiscard]] NSView* native() const { return root_.native; }

    void viewChanged() override;
    [[nodiscard]] std::optional<Rect> rootOnScreen() const override;

  private:
    struct Node {
        std::shared_ptr<View> view;
        NSView* native = nil;
        bool isHosted = true; // by a view of our making
        std::unique_ptr<NativeButton> button;
        std::optional<Rect> frame; // the rest as the system was told last
        std::optional<double> alpha;
        std::optional<std::string> toolTip;
        std::vector<std::unique_ptr<Node>> within;
    };
    static Node hosted(std::shared_ptr<View> view);
    void begin();
    bool update(Node& node);
    bool updateWithin(Node& node);
    static void drawAgain(const Node& node);
    void letGo(Node& node);

    NativeViews& views_;
    Node root_;
};

} // namespace quillon
