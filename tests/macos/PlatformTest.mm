#include "FakeAccessibility.h"
#include "FakeAudio.h"
#include "FakeDefaults.h"
#include "FakeDesktop.h"
#include "FakeDispatch.h"
#include "FakeEvents.h"
#include "FakeInstallation.h"
#include "FakeNativeEvents.h"
#include "FakeScripts.h"
#include "FakeTimers.h"
#include "Foundation.h"
#include "Platform/MacOS/MacPlatform.h"
#include "Platform/MacOS/QuickContent.h"
#include "Tools/Edges/ScrollReverseManager.h"
#include "Tools/Edges/Tool4EdgesManager.h"
#include "Tools/Edges/VolumeControlManager.h"
#include "Tools/Pointer/MediaControlManager.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

#include <memory>
#include <string>
#include <vector>

namespace quillon {
namespace {

using namespace fakes;

/// The toolkit's application, which screens need, while the tests run.
class Toolkit final : public testing::Environment {
  public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
    }
    void TearDown() override { application_ = nullptr; }

  private:
    char name_[5] = "test";
    char* arguments_[2] = {name_, nullptr};
    int argumentCount_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

const auto* const toolkit = testing::AddGlobalTestEnvironment(new Toolkit);

/// The tools on the services of macOS, on a screen whose left edge the pointer is at.
class PlatformTest : public testing::Test {
  protected:
    PlatformTest() {
        fakeAccessibility().reset();
        fakeAudio().reset();
        fakeDefaults().reset();
        fakeDesktop().reset();
        fakeDispatch().reset();
        fakeEvents().reset();
        fakeInstallation().reset();
        fakeNativeEvents().reset();
        fakeScripts().reset();
        fakeTimers().reset();
        fakeDesktop().screens = {{{0, 0}, {1440, 900}}};
        movePointer(5);
        platform = std::make_unique<MacPlatform>([](std::string_view) { return QuickScreen{}; });
        Platform::setCurrent(&platform->services());
    }
    ~PlatformTest() override {
        settle();
        Platform::setCurrent(nullptr);
    }

    static void movePointer(double x) {
        fakeNativeEvents().mouseLocation = {x, 450};
        fakeEvents().pointer = {x, 450};
    }
    static void store(const char* key) {
        fakeDefaults().setObject("", key, (void*)[NSNumber numberWithBool:YES]);
    }
    static void settle() {
        int ran = 0;
        do {
            ran = fakeDispatch().main.run() + fakeDispatch().global.run();
        } while (ran > 0);
    }
    /// Also what waits for a time.
    static void pass() {
        settle();
        fakeDispatch().runAfters();
        settle();
    }
    static void scrollSeen(double delta) {
        fakeNativeEvents().happen(
            {.type = kCGEventScrollWheel, .scrollingDeltaY = delta, .deltaY = delta});
    }

    static std::vector<long> keyWords() {
        std::vector<long> words;
        for (const auto& request : fakeNativeEvents().otherEventRequests) {
            words.push_back(request.data1);
        }
        return words;
    }

    std::unique_ptr<MacPlatform> platform;
};

TEST_F(PlatformTest, ScrollingAtAnArmedEdgeSwitchesTheDesktop) {
    store("Tool4LeftEdge");
    const auto manager = Tool4EdgesManager::create(Platform::current());
    settle();
    const FakeEvents::Fields fourLines{{kCGScrollWheelEventDeltaAxis1, 4}};
    movePointer(700);
    EXPECT_TRUE(fakeEvents().scroll(fourLines));
    movePointer(5);
    EXPECT_FALSE(fakeEvents().scroll(fourLines));
    for (int i = 0; i < 3; ++i) {
        fakeEvents().scroll(fourLines);
    }
    settle();
    ASSERT_FALSE(fakeScripts().executed.empty());
    EXPECT_EQ(fakeScripts().executed[0],
              "tell application \"System Events\" to key code 123 using {control down}");
}

TEST_F(PlatformTest, ScrollingAtAnArmedEdgeWritesTheVolume) {
    constexpr AudioObjectID device = 77;
    constexpr FakeAudio::Place volume{device, fourCharCode("vmvc"), audioScopeOutput, 0};
    fakeAudio().set<AudioObjectID>({audioSystemObject, fourCharCode("dOut"), audioScopeGlobal, 0},
                                   device);
    fakeAudio().set(volume, 0.5F);
    store("Tool5LeftEdge");
    const auto manager = VolumeControlManager::create(Platform::current());
    settle();
    movePointer(700);
    scrollSeen(1);
    settle();
    EXPECT_EQ(fakeAudio().value<float>(volume), 0.5F);
    movePointer(5);
    scrollSeen(1);
    settle();
    EXPECT_FLOAT_EQ(fakeAudio().value<float>(volume).value(), 0.5025F);
}

TEST_F(PlatformTest, WithoutAVolumeTheKeyIsPosted) {
    store("Tool5LeftEdge");
    const auto manager = VolumeControlManager::create(Platform::current());
    settle();
    fakeTimers().uptime = 1;
    scrollSeen(1); // nothing can be read, which counts as silence
    pass();
    EXPECT_EQ(keyWords(), (std::vector<long>{0x00A00, 0x00B00}));
    EXPECT_EQ(fakeEvents().posts.size(), 2U);
}

TEST_F(PlatformTest, AClickAtAnArmedEdgePostsThePlayKey) {
    store("MediaControlLeftEdge");
    const auto manager = MediaControlManager::create(Platform::current());
    settle();
    fakeNativeEvents().happen({.type = kCGEventOtherMouseDown, .buttonNumber = 2});
    pass();
    EXPECT_EQ(keyWords(), (std::vector<long>{0x100A00, 0x100B00}));
    EXPECT_EQ(fakeEvents().posts.size(), 2U);
}

TEST_F(PlatformTest, WhatIsReversedIsWhatWasChosen) {
    store("ScrollReverseMouse");
    const auto manager = ScrollReverseManager::create(Platform::current());
    manager->setIsEnabled(true);
    settle();
    const FakeEvents::Fields ofTrackpad{{kCGScrollWheelEventDeltaAxis1, 2},
                                        {kCGScrollWheelEventFixedPtDeltaAxis1, 1.5},
                                        {kCGScrollWheelEventPointDeltaAxis1, 17}};
    EXPECT_TRUE(fakeEvents().scroll({{kCGScrollWheelEventDeltaAxis1, 3}}));
    EXPECT_TRUE(fakeEvents().scroll(ofTrackpad));
    manager->setReverseTrackpad(true);
    EXPECT_TRUE(fakeEvents().scroll(ofTrackpad));
    const auto& arrived = fakeEvents().arrived;
    ASSERT_EQ(arrived.size(), 3U);
    EXPECT_EQ(arrived[0].field(kCGScrollWheelEventDeltaAxis1), -3);
    for (const auto& [field, value] : ofTrackpad) {
        EXPECT_EQ(arrived[1].field(field), value) << field;
        EXPECT_EQ(arrived[2].field(field), -value) << field;
    }
}

TEST(QuickContentTest, IsAViewAsLargeAsItsScreen) {
    const TemporaryFolder folder;
    writeFile(folder.path() / "Small.qml", "import QtQuick\n"
                                           "Item { implicitWidth: 120; implicitHeight: 80\n"
                                           "property bool sheetAttached: false }\n");
    const QUrl url = QUrl::fromLocalFile(QString::fromStdString(folder.path() / "Small.qml"));
    QuickContent content({url, {{"sheetAttached", true}}}, {.escaped = [] {}, .resized = [] {}});
    EXPECT_EQ(content.size().width, 120);
    EXPECT_EQ(content.size().height, 80);
    EXPECT_TRUE(content.hasAttachedSheet());
    EXPECT_TRUE(content.nativeView() != nullptr);
}

} // namespace
} // namespace quillon
