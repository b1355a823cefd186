// What holds for any number of applications, whichever is in front and whatever is excluded.

#include "support/SwitcherBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace quillon {
namespace {

struct SomeDesktop : SwitcherBench {
    explicit SomeDesktop(unsigned seed) : random(seed) {}
    std::mt19937 random;

    int pick(int from, int to) { return std::uniform_int_distribution(from, to)(random); }

    /// Some applications, of which some share a name, and some are excluded.
    void openSome() {
        static const std::vector<std::string> names{"Mail", "mail", "Ärger", "Term", "Xcode", "Z"};
        const int count = pick(0, 9);
        for (int process = 1; process <= count; ++process) {
            const std::string& name =
                names[static_cast<std::size_t>(pick(0, static_cast<int>(names.size()) - 1))];
            open(process, name);
            owners_[process] = name;
        }
        QStringList excluded;
        for (const auto& name : {"MAIL", "term"}) {
            if (pick(0, 2) == 0) {
                excluded.append(name);
            }
        }
        manager->setExcludedAppNames(excluded);
        manager->setExcludeXcode(pick(0, 1) == 0);
    }

    /// Said anew, without the code under test.
    [[nodiscard]] std::vector<ProcessId> allowed() const {
        std::vector<std::pair<std::string, ProcessId>> sorted;
        for (const auto& [process, name] : owners_) {
            const bool isExcluded = std::any_of(
                excluded().begin(), excluded().end(), [&, owner = name](const QString& entry) {
                    return entry.toLower() == QString::fromStdString(owner).toLower();
                });
            if (!isExcluded && (name != "Xcode" || !manager->excludeXcode())) {
                sorted.emplace_back(name, process);
            }
        }
        std::sort(sorted.begin(), sorted.end());
        std::vector<ProcessId> processes;
        for (const auto& [name, process] : sorted) {
            processes.push_back(process);
        }
        return processes;
    }
    [[nodiscard]] const QStringList& excluded() const {
        excluded_ = manager->excludedAppNames();
        return excluded_;
    }

    /// The application that one step brought forward, 0 when none.
    ProcessId step(bool next) {
        actions.clear();
        next ? manager->switchToNextWindow() : manager->switchToPreviousWindow();
        const auto activated = take("activate");
        EXPECT_LE(activated.size(), 1U);
        return activated.empty() ? 0 : std::stoi(activated.front());
    }

    std::shared_ptr<WindowSwitcherManager> manager = startAtEdge();

  private:
    std::map<ProcessId, std::string> owners_;
    mutable QStringList excluded_;
};

/// Whatever the desktop is like.
template <class Property>
void onManyDesktops(const Property& property) {
    for (unsigned seed = 1; seed < 120; ++seed) {
        SCOPED_TRACE(seed);
        SomeDesktop desktop(seed);
        desktop.openSome();
        property(desktop, desktop.allowed());
    }
}

TEST(WindowCycleProperty, NeverActivatesAnExcludedOne) {
    onManyDesktops([](SomeDesktop& here, const std::vector<ProcessId>& candidates) {
        for (int i = 0; i < 20; ++i) {
            if (here.pick(0, 3) == 0) {
                here.desktop.windows.setFront(here.pick(1, 12), std::nullopt);
            }
            const ProcessId activated = here.step(here.pick(0, 1) == 0);
            const auto times = std::count(candidates.begin(), candidates.end(), activated);
            EXPECT_EQ(times, candidates.size() < 2 ? 0 : 1) << activated;
        }
    });
}

TEST(WindowCycleProperty, FewerThanTwoAreNoCycle) {
    onManyDesktops([](SomeDesktop& here, const std::vector<ProcessId>& candidates) {
        if (candidates.size() < 2) {
            EXPECT_EQ(here.step(true), 0);
            EXPECT_EQ(here.step(false), 0);
        }
    });
}

TEST(WindowCycleProperty, NextThenPreviousReturns) {
    onManyDesktops([](SomeDesktop& here, const std::vector<ProcessId>& candidates) {
        const std::size_t count = candidates.size();
        for (std::size_t i = 0; count > 1 && i < count; ++i) {
            here.desktop.windows.setFront(candidates[i], std::nullopt);
            EXPECT_EQ(here.step(true), candidates[(i + 1) % count]);
            EXPECT_EQ(here.step(false), candidates[i]);
            EXPECT_EQ(here.step(false), candidates[(i + count - 1) % count]);
        }
    });
}

TEST(WindowCycleProperty, OnceAroundVisitsEachInOrder) {
    onManyDesktops([](SomeDesktop& here, const std::vector<ProcessId>& candidates) {
        if (candidates.size() < 2) {
            return;
        }
        here.desktop.windows.setFront(candidates.back(), std::nullopt);
        for (const ProcessId expected : candidates) {
            EXPECT_EQ(here.step(true), expected);
        }
    });
}

TEST(WindowCycleProperty, FromAnApplicationThatIsNoCandidateItGoesOnFromTheLastTarget) {
    onManyDesktops([](SomeDesktop& here, const std::vector<ProcessId>& candidates) {
        if (candidates.size() < 2) {
            return;
        }
        here.desktop.windows.setFront(candidates.front(), std::nullopt);
        const ProcessId target = here.step(true);
        here.desktop.windows.setFront(1000, std::nullopt);
        EXPECT_EQ(here.step(true), candidates[2 % candidates.size()]) << "after " << target;
    });
}

} // namespace
} // namespace quillon
