// What holds for any number of applications, whichever is in front and whatever is excluded.

#include "support/SwitcherBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace quillon {
namespace {

struct WindowCycleProperty : testing::TestWithParam<unsigned>, SwitcherBench {
    std::mt19937 random{GetParam()};

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
            const bool isExcluded =
                std::any_of(excluded().begin(), excluded().end(), [&](const QString& entry) {
                    return entry.toLower() == QString::fromStdString(name).toLower();
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

TEST_P(WindowCycleProperty, NeverActivatesAnExcludedOne) {
    openSome();
    const auto candidates = allowed();
    for (int i = 0; i < 20; ++i) {
        if (pick(0, 3) == 0) {
            desktop.windows.setFront(pick(1, 12), std::nullopt);
        }
        const ProcessId activated = step(pick(0, 1) == 0);
        if (candidates.size() < 2) {
            EXPECT_EQ(activated, 0);
        } else {
            EXPECT_EQ(std::count(candidates.begin(), candidates.end(), activated), 1) << activated;
        }
    }
}

TEST_P(WindowCycleProperty, NextThenPreviousReturns) {
    openSome();
    const auto candidates = allowed();
    if (candidates.size() < 2) {
        return;
    }
    for (const ProcessId start : candidates) {
        desktop.windows.setFront(start, std::nullopt);
        const ProcessId other = step(true);
        EXPECT_NE(other, start);
        EXPECT_EQ(step(false), start);
        EXPECT_EQ(step(false),
                  candidates[(static_cast<std::size_t>(std::distance(
                                  candidates.begin(),
                                  std::find(candidates.begin(), candidates.end(), start))) +
                              candidates.size() - 1) %
                             candidates.size()]);
    }
}

TEST_P(WindowCycleProperty, OnceAroundVisitsEachInOrder) {
    openSome();
    const auto candidates = allowed();
    if (candidates.size() < 2) {
        return;
    }
    desktop.windows.setFront(candidates.back(), std::nullopt);
    for (const ProcessId expected : candidates) {
        EXPECT_EQ(step(true), expected);
    }
}

TEST_P(WindowCycleProperty, FromAnApplicationThatIsNoCandidateItGoesOnFromTheLastTarget) {
    openSome();
    const auto candidates = allowed();
    if (candidates.size() < 2) {
        return;
    }
    desktop.windows.setFront(candidates.front(), std::nullopt);
    const ProcessId target = step(true);
    desktop.windows.setFront(1000, std::nullopt);
    EXPECT_EQ(step(true), candidates[2 % candidates.size()]) << "after " << target;
}

INSTANTIATE_TEST_SUITE_P(Desktops, WindowCycleProperty, testing::Range(1U, 120U));

} // namespace
} // namespace quillon
