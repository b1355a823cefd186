#include "Platform/Linux/x11/WindowManager.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

std::string configuration(const std::string& action) {
    return R"(<?xml version="1.0"?><openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard>)"
           R"(<keybind key="A-Tab"><action name="NextWindow"/></keybind>)"
           R"(<keybind key="C-A-Left">)" +
           action + "</keybind></keyboard></openbox_config>";
}

TEST(OpenboxConfiguration, WrapOfTheActionToTheLeft) {
    EXPECT_EQ(rowEndOfOpenboxConfiguration(configuration(
                  R"(<action name="GoToDesktop"><to>left</to><wrap>no</wrap></action>)")),
              RowEnd::stop);
    EXPECT_EQ(rowEndOfOpenboxConfiguration(configuration(
                  R"(<action name="GoToDesktop"><to>left</to><wrap>yes</wrap></action>)")),
              RowEnd::wrapRow);
    EXPECT_EQ(rowEndOfOpenboxConfiguration(
                  configuration(R"(<action name="GoToDesktop"><to>left</to></action>)")),
              RowEnd::wrapRow)
        << "openbox wraps when it is not told";
}

TEST(OpenboxConfiguration, OtherDirectionsSayNothing) {
    EXPECT_EQ(rowEndOfOpenboxConfiguration(configuration(
                  R"(<action name="GoToDesktop"><to>up</to><wrap>yes</wrap></action>)"
                  R"(<action name="GoToDesktop"><to>left</to><wrap>no</wrap></action>)")),
              RowEnd::stop);
}

TEST(OpenboxConfiguration, MissingOrDamagedFileMeansStop) {
    EXPECT_EQ(rowEndOfOpenboxConfiguration(""), RowEnd::stop);
    EXPECT_EQ(rowEndOfOpenboxConfiguration("<a><b></a>"), RowEnd::stop);
    EXPECT_EQ(rowEndOfOpenboxConfiguration(std::string("\0\xff\x01", 3)), RowEnd::stop);
}

} // namespace
} // namespace quillon
