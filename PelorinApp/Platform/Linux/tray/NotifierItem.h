#pragma once

#include "Platform/Linux/tray/NotifierAdaptor.h"
#include "Platform/Linux/tray/NotifierWatcher.h"
#include "Platform/Linux/tray/TrayPlace.h"
#include "Platform/Linux/tray/TrayScreen.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace quillon {

/// The status item on the session's bus, for desktops that draw such items themselves and tell
/// nobody where. Main thread only.
class NotifierItem final : public TrayPlace, private NotifierHandler {
  public:
    /// All that is given must outlive this object.
    NotifierItem(RunLoop& runLoop, NotifierWatcher& watcher, TrayScreen& screen,
                 TrayContent& content);
    ~NotifierItem() override;

    /// Whether the item is to be there. Calling it again after the watcher has changed tells the
    /// new one.
    void setOffered(bool offered);

    /// To be called when an X server has come or gone, or its windows have.
    void samplePanel();

    void contentChanged() override;

    /// The panel-high square around the last activation; before the first, around the pointer while
    /// that is in a panel, since what it does there may well be done to the item.
    [[nodiscard]] std::optional<Rect> onScreen() const override;
    [[nodiscard]] std::optional<Size> size() const override { return std::nullopt; }
    [[nodiscard]] std::optional<Rect> panelOnScreen() const override;
    [[nodiscard]] bool isVertical() const override;

  private:
    [[nodiscard]] NotifierPixmaps pixmaps() const override;
    [[nodiscard]] QString toolTip() const override;
    void activated(int x, int y) override;
    void contextMenuRequested(int x, int y) override;

    void withdraw();
    void samplePanel(const std::vector<PixelRect>& docks);
    void click(EventType type, QPoint told);

    /// What is known of the item's place, or guessed before its first activation.
    struct Spot {
        std::optional<PixelRect> square;
        std::optional<PixelRect> panel;
    };
    [[nodiscard]] Spot spot() const;
    [[nodiscard]] std::optional<PixelRect> mainPanel(const std::vector<PixelRect>& docks) const;
    [[nodiscard]] PixelRect squareIn(const std::optional<PixelRect>& panel, QPoint place) const;
    [[nodiscard]] QImage picture(int side) const;

    RunLoop& runLoop_;
    NotifierWatcher& watcher_;
    TrayScreen& screen_;
    TrayContent& content_;
    QString name_; // on the bus; empty while the item is not offered
    std::unique_ptr<QObject> object_;
    NotifierAdaptor* adaptor_ = nullptr;
    QImage shown_;
    QString shownToolTip_;
    double panelLuminance_ = 0; // most panels are dark
    Spot known_;                // as of the last activation
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

/// The square of an item in a panel, as wide as the panel is thick, around a place in it. Where
/// there is no panel, it is `usual` wide. All in pixels.
[[nodiscard]] PixelRect squareAround(QPoint place, const std::optional<PixelRect>& panel,
                                     int usual);

} // namespace quillon
