#include "Views/CoreTexts.h"
#include "support/ScreenLooks.h"

#include <QRegularExpression>

namespace quillon {
namespace {

struct Translation : ScreenFixture {
    /// What is seen on all screens, in their order.
    QStringList textsOfAllScreens() {
        view.setSource({});
        simulated.store.reset();
        simulated.desktop.accessibility.trusted = false;
        simulated.start();
        show();
        const ScreenLooks looks{view};
        QStringList found;
        const auto take = [&] {
            settle();
            looks.expectNoOverlap();
            found += texts();
        };
        take();
        for (const ToolCatalogItem& item : builtInCatalog()) {
            simulated.store->setSelectedToolId(item.id);
            take();
        }
        simulated.store->setSelectedToolId("settings");
        simulated.store->uninstall("tool.mediaControl");
        take();
        simulated.store->setSelectedToolId("tool.mediaControl");
        take();
        return found;
    }
};

/// What is neither a name nor a number nor a unit.
bool isLanguage(const QString& text) {
    return text != "Quillon" && !text.endsWith('+') && !text.endsWith(" px") &&
           text.contains(QRegularExpression("[A-Za-z]{2}"));
}

TEST_F(Translation, NoEnglishIsLeftOnTheScreens) {
    const QStringList english = textsOfAllScreens();
    const auto german = installTranslation(QLocale("de_DE"));
    ASSERT_NE(german, nullptr);
    const QStringList translated = textsOfAllScreens();
    ASSERT_EQ(translated.size(), english.size());
    for (qsizetype i = 0; i < english.size(); ++i) {
        EXPECT_EQ(translated[i] != english[i], isLanguage(english[i]))
            << translated[i].toStdString() << " | " << english[i].toStdString();
    }
    EXPECT_GT(english.size(), 120);
}

TEST_F(Translation, WhatIsSaidOutsideOfTheScreensHasItsTexts) {
    const auto translator = installTranslation(QLocale("de_DE"));
    for (const char* text : shellTexts) {
        const QString german = QCoreApplication::translate("Shell", text);
        EXPECT_TRUE(german != text || german == "OK") << text;
    }
    QStringList listed;
    for (const char* text : toolTexts) {
        EXPECT_NE(QCoreApplication::translate("Tools", text), text);
        listed.append(text);
    }
    for (const ToolCatalogItem& item : builtInCatalog()) {
        EXPECT_TRUE(listed.contains(QString::fromStdString(item.subtitle))) << item.subtitle;
    }
    for (const HubToolModule& module : hubToolDescriptions()) {
        EXPECT_TRUE(listed.contains(QString::fromStdString(module.subtitle))) << module.subtitle;
    }
}

TEST_F(Translation, OnlyLanguagesThatThereAre) {
    EXPECT_EQ(installTranslation(QLocale("en_GB")), nullptr);
    EXPECT_EQ(installTranslation(QLocale("ja_JP")), nullptr);
    EXPECT_NE(installTranslation(QLocale("de_AT")), nullptr);
}

} // namespace
} // namespace quillon
