// A GTK program that shows modal dialogs of the layer. Exit status 0 if its own loop went on meanwhile.

#include "ModalRounds.h"

#include <glib-unix.h>
#include <gtk/gtk.h>

namespace {

ModalRounds g_rounds;
int g_nStatus = 1;

gboolean OnReadable(gint /*descriptor*/, GIOCondition /*condition*/, gpointer /*data*/) {
    veldan::Desktop::Get().Dispatch();
    return G_SOURCE_CONTINUE;
}

gboolean OnTick(gpointer area) {
    gtk_widget_queue_draw(GTK_WIDGET(area));
    g_rounds.Tick();
    return G_SOURCE_CONTINUE;
}

gboolean OnDraw(GtkWidget* /*area*/, cairo_t* /*cr*/, gpointer /*data*/) {
    g_rounds.Painted();
    return G_SOURCE_CONTINUE;
}

gboolean OnStart(gpointer /*data*/) {
    g_nStatus = g_rounds.Run();
    gtk_main_quit();
    return G_SOURCE_REMOVE;
}

}  // namespace

int main(int argc, char** argv) {
    gtk_init(&argc, &argv);
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWidget* area = gtk_drawing_area_new();
    gtk_container_add(GTK_CONTAINER(window), area);
    g_signal_connect(area, "draw", G_CALLBACK(OnDraw), nullptr);
    gtk_widget_show_all(window);

    veldan::Desktop& desktop = veldan::Desktop::Get();
    desktop.SetWaitFunction([] {
        g_main_context_iteration(nullptr, 1);
        return !g_rounds.Quits();
    });
    g_unix_fd_add(desktop.Descriptor(), G_IO_IN, OnReadable, nullptr);
    g_timeout_add(5, OnTick, area);
    g_idle_add(OnStart, nullptr);
    gtk_main();
    return g_nStatus;
}
