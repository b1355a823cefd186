#pragma once

#include "Tools/Edges/EdgeToolManager.h"
#include "Tools/Edges/InputTap.h"
#include "Tools/Edges/NotchAccumulator.h"

#include <string_view>

namespace quillon {

/// An edge tool that consumes scrolling in its bands and acts on every so many notches.
class EdgeScrollManager : public EdgeToolManager {
    Q_OBJECT

  public:
    [[nodiscard]] bool hasEventTap() const { return scrollTap_.exists(); }

    void stopMonitoring() override;

    /// One scroll event in the band, on the main thread.
    void handleEdgeScroll(const ScrollSample& sample);

    [[nodiscard]] const NotchAccumulator& notches() const { return notches_; }

    /// The scroll tap's callback; userInfo is the EdgeScrollManager. Exactly one allocation for an
    /// event in the band, none for any other.
    static Event* tapCallback(EventType type, Event* event, void* userInfo);

  protected:
    /// `notchesPerAction` as it was stored under `notchesKey`.
    EdgeScrollManager(Platform& platform, UserDefaults& defaults, const EdgeToolTraits& traits,
                      std::string_view toolId, const char* notchesKey, double notchesPerAction);

    [[nodiscard]] double notchesPerAction() const { return notchesPerAction_; }

    /// Persists it; anything but a whole number of 1…10 is first made one. True when it is another
    /// than before.
    bool setNotchesPerAction(double notches);

    /// What stopping does with the notches gathered so far.
    virtual void forgetNotches() { notches_.reset(); }

    virtual void positiveAction() = 0;
    virtual void negativeAction() = 0;

    [[nodiscard]] bool hasSource() const override { return scrollTap_.exists(); }
    bool installSource() override;
    void removeSource() override { scrollTap_.remove(); }
    void bandChanged() override;

  private:
    std::string_view toolId_;
    const char* notchesKey_;
    double notchesPerAction_;
    InputTap scrollTap_;
    NotchAccumulator notches_;
};

} // namespace quillon
