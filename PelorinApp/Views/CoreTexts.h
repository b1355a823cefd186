#pragma once

#include <QtGlobal>

namespace quillon {

/// Texts of layers that know no toolkit, for the translators' tools: whoever shows one looks it up
/// by its English, in these contexts. What is not listed is shown as it is.
inline constexpr const char* toolTexts[] = {
    QT_TRANSLATE_NOOP("Tools", "Scroll near edges to cycle windows"),
    QT_TRANSLATE_NOOP("Tools", "Edge click gestures for media keys"),
    QT_TRANSLATE_NOOP("Tools", "Scroll near edges to switch desktops"),
    QT_TRANSLATE_NOOP("Tools", "Edge scroll controls system volume"),
    QT_TRANSLATE_NOOP("Tools", "3-finger press maps to middle click"),
    QT_TRANSLATE_NOOP("Tools", "Flip scroll direction for trackpad and mouse independently"),
    QT_TRANSLATE_NOOP("Tools", "Scroll near screen edges to cycle windows"),
    QT_TRANSLATE_NOOP("Tools", "Edge scrolling controls volume"),
    QT_TRANSLATE_NOOP("Tools", "Play/pause and track changes from edge clicks"),
};
inline constexpr const char* shellTexts[] = {
    QT_TRANSLATE_NOOP("Shell", "Open Quillon — Right-click for menu"),
    QT_TRANSLATE_NOOP("Shell", "Check for Updates..."),
    QT_TRANSLATE_NOOP("Shell", "Launch at Login"),
    QT_TRANSLATE_NOOP("Shell", "Support"),
    QT_TRANSLATE_NOOP("Shell", "Quit"),
    QT_TRANSLATE_NOOP("Shell", "Could Not Update Launch at Login"),
    QT_TRANSLATE_NOOP("Shell", "Updates are not configured"),
    QT_TRANSLATE_NOOP("Shell", "Could not check for updates"),
    QT_TRANSLATE_NOOP("Shell", "Open Release Page"),
    QT_TRANSLATE_NOOP("Shell", "Later"),
    QT_TRANSLATE_NOOP("Shell", "OK"),
};

} // namespace quillon
