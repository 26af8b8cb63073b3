#include "ui/dialogs.h"

#include "ui/input.h"
#include "ui/modaldialog.h"
#include "view/icons.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <cstring>
#include <string>
#include <string_view>

namespace korvane
{

GtkWidget* mainwindow = nullptr;
GtkWidget* statusbar = nullptr;

// The names that file dialogs remember, each kind its own; they live until the program ends.
// `scene` is at once the file to which a plain Save writes.
static Block<char[]> scene;
static Block<char[]> image;
static Block<char[]> obj;
static Block<char[]> png;
static bool returnpressed = false; // Return has gone down in the entry of GetName
static bool first = true;          // no open-scene dialog has yet started in the examples

// Shows a message and returns the response. The text is no format: a percent sign stays one.
static int RunMessage(GtkMessageType type, GtkButtonsType buttons, const char* text)
{
    const Dialog dialog = HoldDialog(gtk_message_dialog_new(
        GTK_WINDOW(mainwindow), GTK_DIALOG_DESTROY_WITH_PARENT, type, buttons, "%s", text));
    const int response = gtk_dialog_run(GTK_DIALOG(dialog.get()));
    mstate = POINTER_IDLE; // the release of a button pressed before the dialog came is lost
    return response;
}

void ErrorDialog(const char* text)
{
    RunMessage(GTK_MESSAGE_ERROR, GTK_BUTTONS_CLOSE, text);
}

int QuestionDialog(const char* text)
{
    const int response = RunMessage(GTK_MESSAGE_QUESTION, GTK_BUTTONS_YES_NO, text);
    return response == GTK_RESPONSE_YES ? 1 : 0;
}

struct FileKind {
    const char* title;
    GtkFileChooserAction action;
    const char* acceptbutton;
    const char* extension;     // forced on the chosen name; null for any kind of picture
    Block<char[]>* remembered; // the name to start beside, replaced by the chosen one
};

static const FileKind& GetFileKind(int mode)
{
    static const FileKind saving{"Save scene", GTK_FILE_CHOOSER_ACTION_SAVE, GTK_STOCK_SAVE, ".mrt",
                                 &scene};
    static const FileKind kinds[] = {
        {"Open scene", GTK_FILE_CHOOSER_ACTION_OPEN, GTK_STOCK_OPEN, ".mrt", &scene},
        {"Open image", GTK_FILE_CHOOSER_ACTION_OPEN, GTK_STOCK_OPEN, nullptr, &image},
        saving,
        saving,
        {"Export wavefront obj", GTK_FILE_CHOOSER_ACTION_SAVE, GTK_STOCK_SAVE, ".obj", &obj},
        {"Save image", GTK_FILE_CHOOSER_ACTION_SAVE, GTK_STOCK_SAVE, ".png", &png}};
    return kinds[mode];
}

static void AddFilter(GtkFileChooser* chooser, const FileKind& kind)
{
    GtkFileFilter* filter = gtk_file_filter_new();
    if (kind.extension == nullptr) {
        gtk_file_filter_set_name(filter, "Images");
        gtk_file_filter_add_pixbuf_formats(filter);
    } else {
        const std::string pattern = std::string("*") + kind.extension;
        gtk_file_filter_set_name(filter, pattern.c_str());
        gtk_file_filter_add_pattern(filter, pattern.c_str());
    }
    gtk_file_chooser_add_filter(chooser, filter);
}

// Where the examples are: beside a program that is run from its sources, else where they were
// installed.
static std::string GetExamplesFolder()
{
    const std::string folder = "examples";
    const bool ishere = g_file_test(folder.c_str(), G_FILE_TEST_IS_DIR);
    return ishere ? folder : datafolder + ("/" + folder);
}

// Starts the chooser beside the remembered file. Without one, the very first open-scene dialog
// starts in the examples, and every other in the working directory: left alone the chooser shows
// its recent files, where a typed name belongs to no folder.
static void SetStartFolder(GtkFileChooser* chooser, int mode)
{
    const Block<char[]>& remembered = *GetFileKind(mode).remembered;
    if (remembered != nullptr) {
        char* folder = g_path_get_dirname(remembered.get()); // the root stays "/"
        gtk_file_chooser_set_current_folder(chooser, folder);
        g_free(folder);
    } else if (mode == FILE_OPENSCENE && first) {
        first = false;
        gtk_file_chooser_set_current_folder(chooser, GetExamplesFolder().c_str());
    } else {
        gtk_file_chooser_set_current_folder(chooser, ".");
    }
}

// A double click or Enter on a file accepts it.
static void ChooserSignalFromFileDialog(GtkFileChooser*, GtkDialog* dialog)
{
    gtk_dialog_response(dialog, GTK_RESPONSE_OK);
}

static GtkFileChooser* AddChooser(const Dialog& dialog, int mode)
{
    const FileKind& kind = GetFileKind(mode);
    GtkWidget* widget = gtk_file_chooser_widget_new(kind.action);
    GtkFileChooser* chooser = GTK_FILE_CHOOSER(widget);
    gtk_widget_set_size_request(widget, 640, 400);
    AddFilter(chooser, kind);
    SetStartFolder(chooser, mode);
    g_signal_connect(chooser, "file-activated", G_CALLBACK(ChooserSignalFromFileDialog),
                     dialog.get());
    gtk_container_add(GetContentOf(dialog), widget);
    gtk_widget_show(widget);
    return chooser;
}

// Makes the chooser stop reading its folder, as its key for searching does. The toolkit looks half
// a second after it began to read at how far it came, and crashes when the chooser is gone by then.
static void StopReading(GtkFileChooser* chooser)
{
    GList* inside = gtk_container_get_children(GTK_CONTAINER(chooser));
    g_signal_emit_by_name(inside->data, "search-shortcut");
    g_list_free(inside);
}

// A copy of the name, with the extension unless it has it already, letter for letter.
static Block<char[]> CopyWithExtension(const char* name, const char* extension)
{
    const std::string_view text = name;
    Block<char[]> copy(NewArray<char>(int(text.size()) + 5)); // the extension and the final zero
    text.copy(copy.get(), text.size());
    if (extension != nullptr && !text.ends_with(extension)) {
        std::strcpy(copy.get() + text.size(), extension);
    }
    return copy;
}

// The name that the user chose; null without one.
static Block<char[]> GetChosenName(GtkFileChooser* chooser, int response)
{
    return Block<char[]>(response == GTK_RESPONSE_OK ? gtk_file_chooser_get_filename(chooser)
                                                     : nullptr);
}

// Asks until there is an answer that is no folder: a folder is entered, as the toolkit's own file
// dialogs do, for opening and saving alike.
static Block<char[]> RunChooser(const Dialog& dialog, GtkFileChooser* chooser)
{
    for (;;) {
        const int response = gtk_dialog_run(GTK_DIALOG(dialog.get()));
        if (response == GTK_RESPONSE_NONE) { // the main window has taken dialog and chooser along
            return nullptr;
        }
        Block<char[]> chosen = GetChosenName(chooser, response);
        if (chosen == nullptr || !g_file_test(chosen.get(), G_FILE_TEST_IS_DIR)) {
            StopReading(chooser);
            return chosen;
        }
        gtk_file_chooser_set_current_folder(chooser, chosen.get());
    }
}

static Block<char[]> AskForFile(int mode)
{
    const FileKind& kind = GetFileKind(mode);
    const Dialog dialog = MakeModalDialog(kind.title, kind.acceptbutton);
    gtk_dialog_set_default_response(GTK_DIALOG(dialog.get()), GTK_RESPONSE_OK); // Enter in the name
    const Block<char[]> chosen = RunChooser(dialog, AddChooser(dialog, mode));
    if (chosen == nullptr) {
        return nullptr;
    }
    // Deliberate: a name that is opened gets the extension too, so that "house" opens house.mrt.
    Block<char[]> name = CopyWithExtension(chosen.get(), kind.extension);
    *kind.remembered = CopyText(name.get());
    return name;
}

Block<char[]> FileDialog(int mode)
{
    if (mode == FILE_SAVESCENE && scene != nullptr) {
        return CopyText(scene.get());
    }
    Block<char[]> name = AskForFile(mode);
    mstate = POINTER_IDLE; // as after a message
    return name;
}

static gboolean SeeKeyPressInEntry(GtkWidget*, GdkEventKey* event)
{
    returnpressed = returnpressed || event->keyval == GDK_KEY_Return;
    return FALSE;
}

// Return accepts the name; every other key passes, and so does a Return that was pressed
// elsewhere, on the menu item that has opened the dialog.
static gboolean EntrySignalFromGetName(GtkWidget*, GdkEventKey* event, GtkDialog* dialog)
{
    if (event->keyval != GDK_KEY_Return || !returnpressed) {
        return FALSE;
    }
    gtk_dialog_response(dialog, GTK_RESPONSE_OK);
    return TRUE;
}

// A shape's path is one token of a scene file, whose reader keeps 2047 characters of it. Of names
// as long as this, those of six nested folders and of the shape fit.
static constexpr int longestname = 255;

static GtkEntry* AddNameEntry(const Dialog& dialog, const char* prompt, const char* text)
{
    GtkWidget* labels = gtk_hbox_new(TRUE, 0);
    gtk_container_add(GTK_CONTAINER(labels), gtk_label_new(prompt));
    gtk_container_add(GTK_CONTAINER(labels), gtk_label_new(" "));

    GtkWidget* entry = gtk_entry_new();
    gtk_entry_set_max_length(GTK_ENTRY(entry), longestname);
    gtk_entry_set_text(GTK_ENTRY(entry), text);
    gtk_editable_select_region(GTK_EDITABLE(entry), 0, -1);
    g_signal_connect(entry, "key-press-event", G_CALLBACK(SeeKeyPressInEntry), nullptr);
    g_signal_connect(entry, "key-release-event", G_CALLBACK(EntrySignalFromGetName), dialog.get());

    GtkWidget* box = gtk_vbox_new(FALSE, 5);
    gtk_container_set_border_width(GTK_CONTAINER(box), 5);
    gtk_container_add(GTK_CONTAINER(box), labels);
    gtk_container_add(GTK_CONTAINER(box), entry);
    gtk_container_add(GetContentOf(dialog), box);
    gtk_widget_show_all(box);
    return GTK_ENTRY(entry);
}

// Deliberate: as many bytes as the entry has characters, so that a name with multi-byte characters
// is cut short. A character that is cut in two goes altogether, since the tree shows only whole
// ones.
static Block<char[]> GetTextOfEntry(GtkEntry* entry)
{
    const int count = gtk_entry_get_text_length(entry);
    Block<char[]> name(NewArray<char>(count + 1));
    std::memcpy(name.get(), gtk_entry_get_text(entry), std::size_t(count));
    const char* end = nullptr;
    g_utf8_validate(name.get(), -1, &end);
    name[std::size_t(end - name.get())] = 0;
    return name[0] == 0 ? nullptr : std::move(name);
}

Block<char[]> GetName(const char* title, const char* prompt, const char* text)
{
    const Dialog dialog = MakeModalDialog(title, GTK_STOCK_OK);
    GtkEntry* entry = AddNameEntry(dialog, prompt, text);
    returnpressed = false;
    if (gtk_dialog_run(GTK_DIALOG(dialog.get())) != GTK_RESPONSE_OK) {
        return nullptr;
    }
    return GetTextOfEntry(entry);
}

void PrintStatusBar(const char* text)
{
    static bool empty = true; // no message has been shown yet
    static guint id = 0;
    if (statusbar == nullptr) { // before the window there is nobody to tell
        return;
    }
    GtkStatusbar* bar = GTK_STATUSBAR(statusbar);
    if (empty) {
        id = gtk_statusbar_get_context_id(bar, "Statusbar");
        gtk_statusbar_push(bar, id, " ");
        empty = false;
    }
    gtk_statusbar_pop(bar, id);
    gtk_statusbar_push(bar, id, text);
}

} // namespace korvane
