#pragma once

#include "Platform/Linux/tray/FakeTray.h"
#include "Platform/Linux/tray/TrayBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace quillon {

constexpr double paintedSeconds = 0.3;

/// A view that draws a label and counts how often.
struct Level final : Button {
    mutable int draws = 0;
    void draw(DrawingContext& context) const override {
        ++draws;
        context.drawLabel("8", {2, 2, 10, 14}, {.size = 14}, 1);
    }
};

/// A program with a status item, and a tray for it.
struct XEmbedBench : TrayBench {
    std::unique_ptr<FakeTray> tray;

    void dock(const FakeTray::Settings& settings = {}) {
        tray = std::make_unique<FakeTray>(settings);
        makeItem();
        ASSERT_TRUE(until([this] { return tray->hasItem() && item->button()->isInWindow(); }));
    }

    /// The program has seen and done all that has happened so far.
    void settle() {
        int turns = 0;
        tray->connection().sync();
        ASSERT_TRUE(until([&] { return ++turns > 4; }));
    }

    /// How bright what is drawn in the item is, 0…255: its brightest or darkest pixel.
    [[nodiscard]] int brightest() const {
        const QImage pixels = tray->itemPixels();
        int value = 0;
        for (int y = 0; y < pixels.height(); ++y) {
            for (int x = 0; x < pixels.width(); ++x) {
                value = std::max(value, qGray(pixels.pixel(x, y)));
            }
        }
        return value;
    }
    [[nodiscard]] int darkest() const {
        const QImage pixels = tray->itemPixels();
        int value = 255;
        for (int y = 0; y < pixels.height(); ++y) {
            for (int x = 0; x < pixels.width(); ++x) {
                value = std::min(value, qGray(pixels.pixel(x, y)));
            }
        }
        return value;
    }

    void setResources(const char* text) const {
        xcb_change_property(tray->connection().get(), XCB_PROP_MODE_REPLACE,
                            tray->connection().root(), XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(std::strlen(text)), text);
        tray->connection().sync();
    }

    /// The level view of this size in place of the button.
    std::shared_ptr<Level> showLevel(const Rect& frame, const Rect& levelFrame) {
        auto box = std::make_shared<View>();
        auto level = std::make_shared<Level>();
        box->setFrame(frame);
        level->setFrame(levelFrame);
        prepare(*level);
        box->addSubview(level);
        item->setCustomView(box);
        return level;
    }
};

} // namespace quillon
