#include "tests/support/widgets.h"

#include "ui/mainwindow.h"

#include <gtest/gtest.h>

#include <cstring>

namespace korvane::testing
{

static constexpr int patience = 1000;     // tries
static constexpr unsigned int pause = 20; // milliseconds between them: twenty seconds in all

GtkWidget* ShowMainWindow()
{
    static GtkWidget* window = nullptr;
    if (window == nullptr) {
        window = GetMainWindow();
        gtk_widget_show_all(window);
        HandleEvents();
    }
    return window;
}

void HandleEvents()
{
    gdk_display_sync(gdk_display_get_default());
    while (gtk_events_pending()) {
        gtk_main_iteration();
    }
}

bool HandleEventsUntil(const std::function<bool()>& condition)
{
    for (int i = 0; i < patience; i++) {
        HandleEvents();
        if (condition()) {
            return true;
        }
        g_usleep(pause * 1000);
    }
    return false;
}

std::vector<GtkWidget*> GetChildren(GtkWidget* container)
{
    std::vector<GtkWidget*> children;
    GList* list = gtk_container_get_children(GTK_CONTAINER(container));
    for (GList* place = list; place != nullptr; place = place->next) {
        children.push_back(GTK_WIDGET(place->data));
    }
    g_list_free(list);
    return children;
}

struct Search {
    GType type;
    std::vector<GtkWidget*> found;
};

static void SearchWidget(GtkWidget* widget, gpointer data)
{
    Search& search = *static_cast<Search*>(data);
    if (G_TYPE_CHECK_INSTANCE_TYPE(widget, search.type)) {
        search.found.push_back(widget);
    } else if (GTK_IS_CONTAINER(widget)) {
        gtk_container_forall(GTK_CONTAINER(widget), SearchWidget, data);
    }
}

std::vector<GtkWidget*> FindWidgets(GtkWidget* root, GType type)
{
    Search search{type, {}};
    SearchWidget(root, &search);
    return search.found;
}

GtkWidget* FindWidget(GtkWidget* root, GType type)
{
    const auto found = FindWidgets(root, type);
    return found.empty() ? nullptr : found.front();
}

void MoveSlider(GtkWidget* slider, double value)
{
    gboolean handled = FALSE;
    g_signal_emit_by_name(slider, "change-value", GTK_SCROLL_JUMP, value, &handled);
}

std::string GetText(const char* text)
{
    return text == nullptr ? "" : text;
}

bool IsConnected(void* object, const char* signal, GCallback handler, void* data)
{
    const auto match =
        GSignalMatchType(G_SIGNAL_MATCH_ID | G_SIGNAL_MATCH_FUNC | G_SIGNAL_MATCH_DATA);
    const guint id = g_signal_lookup(signal, G_OBJECT_TYPE(object));
    return g_signal_handler_find(object, match, id, 0, nullptr, reinterpret_cast<gpointer>(handler),
                                 data) != 0;
}

bool AreAlike(const GdkPixbuf* a, const GdkPixbuf* b)
{
    if (gdk_pixbuf_get_width(a) != gdk_pixbuf_get_width(b) ||
        gdk_pixbuf_get_height(a) != gdk_pixbuf_get_height(b) ||
        gdk_pixbuf_get_byte_length(a) != gdk_pixbuf_get_byte_length(b)) {
        return false;
    }
    return std::memcmp(gdk_pixbuf_read_pixels(a), gdk_pixbuf_read_pixels(b),
                       gdk_pixbuf_get_byte_length(a)) == 0;
}

bool IsIcon(const GdkPixbuf* picture, const std::string& name)
{
    const std::string path = std::string(KORVANE_SOURCE_DIR) + "/icons/" + name;
    GdkPixbuf* icon = gdk_pixbuf_new_from_file(path.c_str(), nullptr);
    if (picture == nullptr || icon == nullptr) {
        return false;
    }
    const bool alike = AreAlike(picture, icon);
    g_object_unref(icon);
    return alike;
}

static GtkDialog* FindDialog()
{
    GtkDialog* found = nullptr;
    GList* windows = gtk_window_list_toplevels();
    for (GList* place = windows; place != nullptr; place = place->next) {
        if (GTK_IS_DIALOG(place->data) && gtk_widget_get_mapped(GTK_WIDGET(place->data))) {
            found = GTK_DIALOG(place->data);
        }
    }
    g_list_free(windows);
    return found;
}

struct Answer {
    std::function<bool(GtkDialog*)> give;
    int tries;
};

static gboolean TryAnswer(gpointer data)
{
    Answer& answer = *static_cast<Answer*>(data);
    GtkDialog* dialog = FindDialog();
    bool done = dialog != nullptr && answer.give(dialog);
    if (!done && ++answer.tries == patience) {
        ADD_FAILURE() << (dialog == nullptr ? "no dialog came" : "the dialog was not answered");
        if (dialog != nullptr) {
            gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        }
        done = true;
    }
    return done ? FALSE : TRUE;
}

static void ForgetAnswer(gpointer data)
{
    delete static_cast<Answer*>(data);
}

void AnswerDialog(std::function<bool(GtkDialog*)> answer)
{
    g_timeout_add_full(G_PRIORITY_DEFAULT, pause, TryAnswer, new Answer{std::move(answer), 0},
                       ForgetAnswer);
}

void AnswerDialog(int response)
{
    AnswerDialog([response](GtkDialog* dialog) {
        gtk_dialog_response(dialog, response);
        return true;
    });
}

} // namespace korvane::testing
