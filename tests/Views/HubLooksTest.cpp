#include "support/ScreenLooks.h"

namespace quillon {
namespace {

constexpr const char* foreignTool = "tool.foreign";

/// A state of the hub, and how it comes about.
struct HubState {
    const char* name;
    std::function<void(ScreenFixture&)> show;
    bool isTrusted = true;
    const char* sheet = nullptr; // what lies below it is neither to be read nor apart from it
};

void select(ScreenFixture& hub, const char* id) { hub.simulated.store->setSelectedToolId(id); }

void removeTwo(ScreenFixture& hub) {
    hub.simulated.store->uninstall("tool.mediaControl");
    hub.simulated.store->uninstall("tool.volumeControl");
    hub.simulated.store->setEnabled("tool.desktopSwitcher", false);
    hub.simulated.pass(1);
    ScreenFixture::settle();
    hub.bringIntoView(*hub.button("Install", hub.card("Volume+")));
}

/// Only so many tools are on.
std::function<void(ScreenFixture&)> leaveOn(int count) {
    return [count](ScreenFixture& hub) {
        int left = count;
        for (const ToolCatalogItem& item : builtInCatalog()) {
            hub.simulated.store->setEnabled(item.id, left-- > 0);
        }
    };
}

const HubState states[] = {
    {"all-installed", [](ScreenFixture& /*hub*/) {}},
    {"marketplace", removeTwo},
    {"installing",
     [](ScreenFixture& hub) {
         hub.simulated.store->uninstall("tool.volumeControl");
         hub.simulated.pass(1);
         ScreenFixture::settle();
         hub.click(hub.button("Install", hub.card("Volume+")));
         hub.simulated.pass(0.1);
     }},
    {"removal", [](ScreenFixture& hub) { hub.click(hub.button("Remove", hub.card("Window+"))); },
     true, "Remove Window+?"},
    {"not-installed",
     [](ScreenFixture& hub) {
         hub.simulated.store->uninstall("tool.mediaControl");
         select(hub, "tool.mediaControl");
     }},
    {"not-loadable", [](ScreenFixture& hub) { select(hub, foreignTool); }},
    {"banner-1", leaveOn(1), false},
    {"banner-3", leaveOn(3), false},
    {"banner-5", leaveOn(5), false},
};

struct HubLooks : ScreenFixture, testing::WithParamInterface<HubState> {
    ScreenLooks looks{view};

    HubLooks() : ScreenFixture(GetParam().isTrusted) {}

    /// With a tool that some other version has installed, and a package that takes its time.
    void SetUp() override {
        auto catalog = builtInCatalog();
        for (ToolCatalogItem& item : catalog) {
            item.downloadURL = "https://example.org/package.bin";
        }
        simulated.desktop.urls.answer("http://localhost:8787/tools/catalog", 200,
                                      encodeCatalog(catalog));
        simulated.desktop.urls.answer("https://example.org/package.bin", 200, "abc", 1);
        if (std::string_view(GetParam().name) == "not-loadable") {
            simulated.desktop.files.put(
                *simulated.desktop.files.support / "com.pelorin.PelorinApp/installed-tools.json",
                {SimulatedFileManager::Kind::file,
                 encodeRecords({{.id = foreignTool, .version = "1", .isEnabled = true}})});
        }
        simulated.start();
        ScreenFixture::SetUp();
        GetParam().show(*this);
        settle();
        if (GetParam().sheet != nullptr) {
            looks.within = accessible(QAccessible::Dialog, GetParam().sheet);
        }
    }

    [[nodiscard]] static QString pictureName(const QString& more) {
        return QString("hub-%1-%2").arg(GetParam().name, more);
    }
};

TEST_P(HubLooks, TextsCanBeReadOnLightAndDark) {
    for (const bool dark : {false, true}) {
        SCOPED_TRACE(dark ? "dark" : "light");
        ScreenLooks::setPalette(dark);
        view.setColor(dark ? "#101012" : "#d8d8dc"); // around its corners
        for (const bool contrasts : {false, true}) {
            simulated.desktop.workspace.choose(
                {.shouldReduceMotion = true, .shouldIncreaseContrast = contrasts});
            settle();
            const QImage picture = view.grabWindow();
            ScreenLooks::keepPicture(picture, pictureName(QString(dark ? "dark" : "light") +
                                                          (contrasts ? "-contrast" : "")));
            looks.expectReadable(picture, contrasts && GetParam().sheet == nullptr ? 7 : 4.5);
        }
    }
}

TEST_P(HubLooks, NothingOverflowsOrOverlaps) {
    for (const bool mirrored : {false, true}) {
        QGuiApplication::setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
        settle();
        ScreenLooks::keepPicture(view.grabWindow(), pictureName(mirrored ? "mirrored" : "plain"));
        looks.expectNoOverlap();
        looks.expectNoMarkup();
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

INSTANTIATE_TEST_SUITE_P(States, HubLooks, testing::ValuesIn(states), [](const auto& state) {
    QString name = state.param.name;
    return name.remove('-').toStdString();
});

/// The same with texts that take more room. Names in a language are no keys to what is seen, so
/// only states that need none.
struct LongHubLooks : ScreenFixture {
    LongLanguage language;
    ScreenLooks looks{view};
};

TEST_F(LongHubLooks, NothingOverflowsOrOverlaps) {
    for (const bool mirrored : {false, true}) {
        QGuiApplication::setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
        for (const char* tool : {"settings", "tool.mediaControl"}) {
            simulated.store->uninstall("tool.mediaControl");
            simulated.trust(false);
            simulated.store->setSelectedToolId(tool);
            settle();
            ScreenLooks::keepPicture(
                view.grabWindow(), QString("hub-long-%1%2").arg(tool, mirrored ? "-mirrored" : ""));
            looks.expectNoOverlap();
        }
    }
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

} // namespace
} // namespace quillon
