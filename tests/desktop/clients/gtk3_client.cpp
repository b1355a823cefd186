// A GTK 3 window that prints a line for every scroll, button and key event it receives, and on
// request for whatever else the pointer does to it.
#include "ClientArguments.h"

#include <gtk/gtk.h>

namespace {

gboolean onScroll(GtkWidget*, GdkEventScroll* event, gpointer) {
    const bool derived = gdk_event_get_pointer_emulated(reinterpret_cast<GdkEvent*>(event)) != 0;
    switch (event->direction) {
    case GDK_SCROLL_UP:
        reportScroll(0, 1, derived);
        break;
    case GDK_SCROLL_DOWN:
        reportScroll(0, -1, derived);
        break;
    case GDK_SCROLL_LEFT:
        reportScroll(-1, 0, derived);
        break;
    case GDK_SCROLL_RIGHT:
        reportScroll(1, 0, derived);
        break;
    case GDK_SCROLL_SMOOTH: // GTK counts downwards; 0 - 0 rather than -0
        reportScroll(event->delta_x, 0 - event->delta_y);
        break;
    }
    return TRUE;
}

gboolean onButton(GtkWidget*, GdkEventButton* event, gpointer all) {
    const auto button = std::to_string(event->button);
    if (event->type == GDK_BUTTON_PRESS || event->type == GDK_BUTTON_RELEASE) {
        report((event->type == GDK_BUTTON_PRESS ? "press " : "release ") + button);
    } else if (all != nullptr && event->type == GDK_2BUTTON_PRESS) {
        report("double " + button);
    }
    return TRUE;
}

gboolean onMotion(GtkWidget*, GdkEventMotion* event, gpointer) {
    report("motion " + exactly(event->x_root) + ' ' + exactly(event->y_root));
    return TRUE;
}

gboolean onCrossing(GtkWidget*, GdkEventCrossing* event, gpointer) {
    report(event->type == GDK_ENTER_NOTIFY ? "enter" : "leave");
    return TRUE;
}

gboolean onKey(GtkWidget*, GdkEventKey* event, gpointer) {
    report(std::string("key ") + gdk_keyval_name(event->keyval));
    return TRUE;
}

gboolean onMapped(GtkWidget* widget, GdkEvent*, gpointer) {
    int x = 0;
    int y = 0;
    GdkWindow* window = gtk_widget_get_window(widget);
    gdk_window_get_origin(window, &x, &y);
    std::printf("ready %d %d %d %d\n", x, y, gdk_window_get_width(window),
                gdk_window_get_height(window));
    std::fflush(stdout);
    return FALSE;
}

} // namespace

int main(int argc, char** argv) {
    gtk_init(&argc, &argv);
    const auto arguments = readClientArguments(argc, argv);
    if (!arguments) {
        return 2;
    }
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(window), arguments->title);
    gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
    gtk_window_set_default_size(GTK_WINDOW(window), arguments->width, arguments->height);
    gtk_window_move(GTK_WINDOW(window), arguments->x, arguments->y);
    gtk_widget_add_events(window, GDK_SCROLL_MASK | GDK_SMOOTH_SCROLL_MASK | GDK_BUTTON_PRESS_MASK |
                                      GDK_BUTTON_RELEASE_MASK | GDK_KEY_PRESS_MASK);
    g_signal_connect(window, "scroll-event", G_CALLBACK(onScroll), nullptr);
    const gpointer all = arguments->all ? window : nullptr;
    g_signal_connect(window, "button-press-event", G_CALLBACK(onButton), all);
    g_signal_connect(window, "button-release-event", G_CALLBACK(onButton), all);
    if (arguments->all) {
        gtk_widget_add_events(window, GDK_POINTER_MOTION_MASK | GDK_ENTER_NOTIFY_MASK |
                                          GDK_LEAVE_NOTIFY_MASK);
        g_signal_connect(window, "motion-notify-event", G_CALLBACK(onMotion), nullptr);
        g_signal_connect(window, "enter-notify-event", G_CALLBACK(onCrossing), nullptr);
        g_signal_connect(window, "leave-notify-event", G_CALLBACK(onCrossing), nullptr);
    }
    g_signal_connect(window, "key-press-event", G_CALLBACK(onKey), nullptr);
    g_signal_connect(window, "map-event", G_CALLBACK(onMapped), nullptr);
    g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
    gtk_widget_realize(window);
    // Otherwise GTK gathers events until the next frame, and counts and latencies would be its own.
    gdk_window_set_event_compression(gtk_widget_get_window(window), FALSE);
    gtk_widget_show(window);
    gtk_main();
}
