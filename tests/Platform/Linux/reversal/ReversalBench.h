#pragma once

#include "Platform/Linux/reversal/ScrollReversal.h"
#include "Platform/Linux/x11/AtomBatch.h"
#include "Platform/Linux/x11/DeviceButtons.h"
#include "Platform/Simulated/SimulatedDesktop.h"
#include "support/XServer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillon {

/// Devices on a real X server that are to scroll the other way. Its mouse has no driver's
/// properties of its own: tests may give it some.
struct ReversalBench : testing::Test {
    static constexpr ConstantRewrite none{};
    static constexpr ConstantRewrite mice{true, false};
    static constexpr ConstantRewrite touchpads{false, true};
    static constexpr ConstantRewrite both{true, true};

    XServer server;
    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    std::vector<std::string> lines;
    SimulatedDiagnostics diagnostics{
        [this](std::string_view, const std::string& text) { lines.push_back(text); }};
    ReversedDevices reversed;
    XClient client;
    std::unique_ptr<ScrollReversal> reversal =
        std::make_unique<ScrollReversal>(diagnostics, reversed);

    static constexpr const char* natural = "libinput Natural Scrolling Enabled";
    static constexpr const char* before = "Quillon Scrolling Before";
    using Numbers = std::vector<std::int32_t>;

    std::vector<PointerSlave> slaves() { return queryPointerSlaves(client.connection()); }

    /// 0 for none.
    xcb_input_device_id_t device(const std::string& wanted) {
        for (const auto& slave : slaves()) {
            if (slave.name == wanted) {
                return slave.id;
            }
        }
        return 0;
    }
    xcb_input_device_id_t injected() { return device("Virtual core XTEST pointer"); }
    xcb_input_device_id_t mouse() { return device("Xvfb mouse"); }

    /// The one that the client's input goes to.
    xcb_input_device_id_t pointer() { return queryPointerDevices(client.connection(), {}).master; }

    /// A second one, which brings along a device to inject by.
    void addPointer() {
        struct {
            xcb_input_add_master_t change{XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER, 4, 6, 1, 1};
            char name[8] = {'s', 'e', 'c', 'o', 'n', 'd', 0, 0};
        } add;
        xcb_input_xi_change_hierarchy(
            client.connection().get(), 1,
            reinterpret_cast<const xcb_input_hierarchy_change_t*>(&add.change));
        client.connection().sync();
    }

    ButtonMap map(xcb_input_device_id_t of) { return buttonMap(client.connection(), of); }
    void setMap(xcb_input_device_id_t of, const ButtonMap& map) {
        const XcbOwned<xcb_input_set_device_button_mapping_reply_t> reply(
            xcb_input_set_device_button_mapping_reply(
                client.connection().get(),
                xcb_input_set_device_button_mapping(
                    client.connection().get(), static_cast<std::uint8_t>(of),
                    static_cast<std::uint8_t>(map.size()), map.data()),
                nullptr));
        ASSERT_TRUE(reply);
        ASSERT_EQ(reply->status, XCB_MAPPING_STATUS_SUCCESS);
    }

    /// The map with these in the place of its first.
    static ButtonMap with(ButtonMap map, const ButtonMap& first) {
        std::copy(first.begin(), first.end(), map.begin());
        return map;
    }
    static ButtonMap wheelSwapped(const ButtonMap& map) {
        ButtonMap swapped = map;
        for (auto& button : swapped) {
            button = button == 4 ? 5 : button == 5 ? 4 : button == 6 ? 7 : button == 7 ? 6 : button;
        }
        return swapped;
    }

    std::optional<Numbers> numbers(xcb_input_device_id_t of, const char* property) {
        return deviceNumbers(client.connection(), of, client.connection().atom(property));
    }
    void setFlags(xcb_input_device_id_t of, const char* property, std::vector<std::uint8_t> value) {
        const std::size_t count = value.size();
        value.resize((count + 3) / 4 * 4); // the library reads whole words
        set(of, property, 8, count, value.data());
    }
    void setNumbers(xcb_input_device_id_t of, const char* property, const Numbers& value) {
        set(of, property, 32, value.size(), value.data());
    }
    void set(xcb_input_device_id_t of, const char* property, std::uint8_t format, std::size_t count,
             const void* value) {
        xcb_input_xi_change_property(client.connection().get(), of, XCB_PROP_MODE_REPLACE, format,
                                     client.connection().atom(property), XCB_ATOM_INTEGER,
                                     static_cast<std::uint32_t>(count), value);
        client.connection().sync();
    }

    bool waitForNumbers(xcb_input_device_id_t of, const char* property, const Numbers& value) {
        return waitUntil([&] { return numbers(of, property) == value; });
    }
    bool waitForMap(xcb_input_device_id_t of, const ButtonMap& value) {
        return waitUntil([&] { return map(of) == value; });
    }

    /// What the client gets of one notch by the injecting device: the button, 0 for none.
    int notch(std::uint8_t button) {
        const auto seen = client.buttons().size();
        client.pressWheel(button);
        if (!waitUntil([&] { return client.buttons().size() >= seen + 2; })) {
            return 0;
        }
        const auto& got = client.buttons();
        const std::string number = got[seen].substr(got[seen].find(' ') + 1);
        EXPECT_EQ(got[seen], "press " + number);
        EXPECT_EQ(got[seen + 1], "release " + number);
        EXPECT_EQ(got.size(), seen + 2);
        return std::stoi(number);
    }
};

} // namespace quillon
