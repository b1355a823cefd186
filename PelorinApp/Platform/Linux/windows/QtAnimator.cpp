#include "Platform/Linux/windows/QtAnimator.h"

#include <QEasingCurve>
#include <QPointF>
#include <QTimer>
#include <QVariantAnimation>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace quillon {

namespace {

QEasingCurve easing(TimingCurve curve) {
    QEasingCurve bezier(QEasingCurve::BezierSpline);
    switch (curve) {
    case TimingCurve::easeInEaseOut:
        bezier.addCubicBezierSegment(QPointF(0.42, 0), QPointF(0.58, 1), QPointF(1, 1));
        break;
    }
    return bezier;
}

} // namespace

/// One change of one view's alpha. Its end has a timer of its own, since it comes also when there
/// is nothing left to change.
class QtAnimator::Fade {
  public:
    Fade(const std::shared_ptr<View>& view, double alpha, double seconds, TimingCurve curve,
         std::function<void()> completion)
        : view_(view), alpha_(alpha), completion_(std::move(completion)) {
        const auto duration =
            std::chrono::milliseconds(std::llround(std::max(0.0, seconds) * 1000));
        steps_.setDuration(static_cast<int>(duration.count()));
        steps_.setEasingCurve(easing(curve));
        steps_.setStartValue(view->alphaValue());
        steps_.setEndValue(alpha);
        QObject::connect(&steps_, &QVariantAnimation::valueChanged, &steps_,
                         [this](const QVariant& value) { step(value.toDouble()); });
        end_.setSingleShot(true);
        end_.setTimerType(Qt::PreciseTimer);
        end_.setInterval(duration);
    }

    void start(std::function<void()> ended) {
        QObject::connect(&end_, &QTimer::timeout, &end_, std::move(ended));
        end_.start();
        if (end_.interval() > 0) {
            steps_.start();
        }
    }

    [[nodiscard]] bool changes(const View& view) const {
        return !overridden_ && view_.lock().get() == &view;
    }

    [[nodiscard]] bool isRunning() const { return steps_.state() == QAbstractAnimation::Running; }

    void leaveView() {
        overridden_ = true;
        steps_.stop();
    }

    /// The last value, and what is to be called.
    std::function<void()> end() {
        steps_.stop();
        if (!overridden_) {
            step(alpha_);
        }
        return std::move(completion_);
    }

  private:
    void step(double alpha) {
        if (const auto view = view_.lock()) {
            view->setAlphaValue(alpha);
        } else {
            steps_.stop();
        }
    }

    std::weak_ptr<View> view_;
    double alpha_;
    std::function<void()> completion_;
    bool overridden_ = false;
    QVariantAnimation steps_;
    QTimer end_;
};

QtAnimator::QtAnimator() = default;
QtAnimator::~QtAnimator() = default;

void QtAnimator::animateAlpha(const std::shared_ptr<View>& view, double alpha, double seconds,
                              TimingCurve curve, std::function<void()> completion) {
    stop(*view);
    fades_.push_back(std::make_unique<Fade>(view, alpha, seconds, curve, std::move(completion)));
    Fade& fade = *fades_.back();
    fade.start([this, &fade] { finished(fade); });
}

void QtAnimator::setAlphaWithoutAnimation(View& view, double alpha) {
    stop(view);
    view.setAlphaValue(alpha);
}

int QtAnimator::running() const {
    return static_cast<int>(std::count_if(fades_.begin(), fades_.end(),
                                          [](const auto& fade) { return fade->isRunning(); }));
}

void QtAnimator::stop(const View& view) {
    for (const auto& fade : fades_) {
        if (fade->changes(view)) {
            fade->leaveView();
        }
    }
}

void QtAnimator::finished(const Fade& fade) {
    const auto found = std::find_if(fades_.begin(), fades_.end(),
                                    [&](const auto& one) { return one.get() == &fade; });
    // Kept to the end of this call: the completion may begin another, or destroy the animator.
    const std::unique_ptr<Fade> ending = std::move(*found);
    fades_.erase(found);
    if (const auto completion = ending->end()) {
        completion();
    }
}

} // namespace quillon
