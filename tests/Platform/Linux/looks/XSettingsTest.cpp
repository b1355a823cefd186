#include "Platform/Linux/looks/XSettings.h"
#include "Platform/Linux/looks/DesktopLooks.h"

#include <gtest/gtest.h>

#include <string>

namespace quillon {
namespace {

/// What a settings manager publishes, in either order of bytes.
class Published {
  public:
    explicit Published(bool isBigEndian = false) : isBigEndian_(isBigEndian) {
        bytes_ = std::string{isBigEndian ? '\1' : '\0', '\0', '\0', '\0'};
        number(7, 4); // how often they have changed
        bytes_.append(4, '\0');
    }

    Published& add(const std::string& name, std::int32_t value) {
        head(0, name);
        number(static_cast<std::uint32_t>(value), 4);
        return *this;
    }
    Published& add(const std::string& name, const std::string& value) {
        head(1, name);
        number(static_cast<std::uint32_t>(value.size()), 4);
        padded(value);
        return *this;
    }
    Published& addColor(const std::string& name) {
        head(2, name);
        bytes_.append(8, 'c');
        return *this;
    }
    Published& addUnknown(const std::string& name) {
        head(9, name);
        return *this;
    }

    [[nodiscard]] std::string bytes() const {
        Published whole = *this;
        whole.bytes_.erase(8, 4);
        const std::string rest = whole.bytes_.substr(8);
        whole.bytes_.resize(8);
        whole.number(count_, 4);
        return whole.bytes_ + rest;
    }
    [[nodiscard]] XSettings settings() const { return XSettings::parse(bytes()); }

  private:
    void number(std::uint32_t value, int length) {
        for (int i = 0; i < length; ++i) {
            const int at = isBigEndian_ ? length - 1 - i : i;
            bytes_ += static_cast<char>(value >> (8 * at) & 0xFFU);
        }
    }
    void padded(const std::string& text) {
        bytes_ += text;
        bytes_.append((4 - text.size() % 4) % 4, '\0');
    }
    void head(int type, const std::string& name) {
        ++count_;
        bytes_ += static_cast<char>(type);
        bytes_ += '\0';
        number(static_cast<std::uint32_t>(name.size()), 2);
        padded(name);
        number(7, 4);
    }

    bool isBigEndian_;
    std::string bytes_;
    std::uint32_t count_ = 0;
};

TEST(XSettings, NumbersAndTextsInEitherOrderOfBytes) {
    for (const bool isBigEndian : {false, true}) {
        const XSettings settings = Published(isBigEndian)
                                       .add("Gtk/EnableAnimations", 0)
                                       .addColor("Net/Colour")
                                       .add("Net/ThemeName", "Greybird")
                                       .add("Xft/DPI", -98304)
                                       .settings();
        EXPECT_EQ(settings.number("Gtk/EnableAnimations"), 0);
        EXPECT_EQ(settings.text("Net/ThemeName"), "Greybird");
        EXPECT_EQ(settings.number("Xft/DPI"), -98304);
        EXPECT_EQ(settings.text("Xft/DPI"), std::nullopt) << "it is no text";
        EXPECT_EQ(settings.number("Net/ThemeName"), std::nullopt);
        EXPECT_EQ(settings.text("Net/Colour"), std::nullopt);
    }
}

TEST(XSettings, CutOffAnywhereWhatWasWholeCounts) {
    const std::string whole =
        Published().add("a", 1).add("Net/ThemeName", "Adwaita").add("b", 2).bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const XSettings settings = XSettings::parse(whole.substr(0, length));
        EXPECT_EQ(settings.number("b"), std::nullopt);
        if (const auto theme = settings.text("Net/ThemeName")) {
            EXPECT_EQ(theme, "Adwaita");
            EXPECT_EQ(settings.number("a"), 1);
        }
    }
    EXPECT_EQ(XSettings::parse(whole).number("b"), 2);
}

TEST(XSettings, NothingBehindAKindThatIsNotKnown) {
    const XSettings settings = Published().add("a", 1).addUnknown("x").add("b", 2).settings();
    EXPECT_EQ(settings.number("a"), 1);
    EXPECT_EQ(settings.number("b"), std::nullopt);
}

std::optional<bool> isDark(const std::string& theme) {
    return lookOf(Published().add("Net/ThemeName", theme).settings()).isDark;
}

TEST(DesktopLook, DarkAsTheThemesNameSays) {
    EXPECT_EQ(isDark("Adwaita-dark"), true);
    EXPECT_EQ(isDark("Yaru-blue-Dark"), true);
    EXPECT_EQ(isDark("Mint-Y-Dark-Aqua"), true);
    EXPECT_EQ(isDark("HighContrastInverse"), true);
    EXPECT_EQ(isDark("Adwaita"), false);
    EXPECT_EQ(isDark("Arc-Darker"), false) << "its windows are light";
    EXPECT_EQ(isDark(""), std::nullopt);
    EXPECT_EQ(lookOf(XSettings()).isDark, std::nullopt);
}

TEST(DesktopLook, ContrastAndMotion) {
    const auto options = [](const Published& published) {
        return lookOf(published.settings()).options;
    };
    EXPECT_EQ(options(Published()), DisplayOptions());
    EXPECT_TRUE(options(Published().add("Net/ThemeName", "HighContrast")).shouldIncreaseContrast);
    EXPECT_FALSE(options(Published().add("Net/ThemeName", "Adwaita")).shouldIncreaseContrast);
    EXPECT_TRUE(options(Published().add("Gtk/EnableAnimations", 0)).shouldReduceMotion);
    EXPECT_FALSE(options(Published().add("Gtk/EnableAnimations", 1)).shouldReduceMotion);
}

} // namespace
} // namespace quillon
