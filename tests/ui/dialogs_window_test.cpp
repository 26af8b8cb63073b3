#include "ui/dialogs.h"

#include "tests/support/widgets.h"
#include "ui/input.h"

#include <gdk/gdkkeysyms.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

using Strings = std::vector<std::string>;

static Strings GetButtons(GtkDialog* dialog)
{
    Strings labels;
    for (GtkWidget* button : GetChildren(gtk_dialog_get_action_area(dialog))) {
        labels.push_back(GetText(gtk_button_get_label(GTK_BUTTON(button))));
    }
    return labels;
}

static int GetDialogNumber()
{
    int number = 0;
    GList* windows = gtk_window_list_toplevels();
    for (GList* place = windows; place != nullptr; place = place->next) {
        number += GTK_IS_DIALOG(place->data) ? 1 : 0;
    }
    g_list_free(windows);
    return number;
}

static GtkMessageType GetMessageType(GtkDialog* dialog)
{
    GtkMessageType type = GTK_MESSAGE_OTHER;
    g_object_get(dialog, "message-type", &type, nullptr);
    return type;
}

static std::string GetMessage(GtkDialog* dialog)
{
    char* text = nullptr;
    gboolean markup = TRUE;
    g_object_get(dialog, "text", &text, "use-markup", &markup, nullptr);
    const std::string message = text;
    g_free(text);
    return markup == TRUE ? "markup: " + message : message;
}

TEST(ErrorDialog, ShowsItsTextAsItIsAboveOneCloseButton)
{
    GtkWidget* window = ShowMainWindow();
    AnswerDialog([window](GtkDialog* dialog) {
        EXPECT_EQ(GetMessageType(dialog), GTK_MESSAGE_ERROR);
        EXPECT_EQ(GetMessage(dialog), "100%s of <b> lost %d");
        EXPECT_EQ(GetButtons(dialog), Strings{"gtk-close"});
        EXPECT_EQ(gtk_window_get_transient_for(GTK_WINDOW(dialog)), GTK_WINDOW(window));
        EXPECT_TRUE(gtk_window_get_destroy_with_parent(GTK_WINDOW(dialog)));
        gtk_dialog_response(dialog, GTK_RESPONSE_CLOSE);
        return true;
    });
    ErrorDialog("100%s of <b> lost %d");
    EXPECT_EQ(GetDialogNumber(), 0);
}

TEST(ErrorDialog, NeedsNoMainWindow)
{
    GtkWidget* window = mainwindow;
    mainwindow = nullptr;
    AnswerDialog([](GtkDialog* dialog) {
        EXPECT_EQ(gtk_window_get_transient_for(GTK_WINDOW(dialog)), nullptr);
        gtk_dialog_response(dialog, GTK_RESPONSE_CLOSE);
        return true;
    });
    ErrorDialog("Can't open the scene!");
    mainwindow = window;
    EXPECT_EQ(GetDialogNumber(), 0);
}

TEST(QuestionDialog, AsksForYesOrNo)
{
    ShowMainWindow();
    AnswerDialog([](GtkDialog* dialog) {
        EXPECT_EQ(GetMessageType(dialog), GTK_MESSAGE_QUESTION);
        EXPECT_EQ(GetMessage(dialog), "50% sure?");
        EXPECT_EQ(GetButtons(dialog), (Strings{"gtk-yes", "gtk-no"})); // from the right
        gtk_dialog_response(dialog, GTK_RESPONSE_NO);
        return true;
    });
    EXPECT_EQ(QuestionDialog("50% sure?"), 0);
}

TEST(QuestionDialog, IsOneForYesAlone)
{
    ShowMainWindow();
    AnswerDialog(GTK_RESPONSE_YES);
    EXPECT_EQ(QuestionDialog("Sure?"), 1);
    AnswerDialog(GTK_RESPONSE_DELETE_EVENT); // the close button of the window manager
    EXPECT_EQ(QuestionDialog("Sure?"), 0);
    EXPECT_EQ(GetDialogNumber(), 0);
}

TEST(QuestionDialog, OutlivesADialogThatIsTakenAway)
{
    ShowMainWindow();
    AnswerDialog([](GtkDialog* dialog) {
        gtk_widget_destroy(GTK_WIDGET(dialog)); // as when the main window goes
        return true;
    });
    EXPECT_EQ(QuestionDialog("Sure?"), 0);
}

// The dialog takes the release of the button.
TEST(ErrorDialog, EndsADrag)
{
    ShowMainWindow();
    for (const PointerState state : {LEFT_DOWN, LEFT_DRAG, MIDDLE_DRAG}) {
        mstate = state;
        AnswerDialog(GTK_RESPONSE_CLOSE);
        ErrorDialog("Can't save the scene!");
        EXPECT_EQ(mstate, POINTER_IDLE);
    }
}

static GtkWidget* GetEntry(GtkDialog* dialog)
{
    return FindWidget(GTK_WIDGET(dialog), GTK_TYPE_ENTRY);
}

static std::string GetNameGiven(const std::string& typed, int response = GTK_RESPONSE_OK)
{
    AnswerDialog([=](GtkDialog* dialog) {
        gtk_entry_set_text(GTK_ENTRY(GetEntry(dialog)), typed.c_str());
        gtk_dialog_response(dialog, response);
        return true;
    });
    const Block<char[]> name = GetName("Rename", "New name:", "old");
    return name == nullptr ? "nothing" : name.get();
}

static void ExpectEntryStartsAllSelected(GtkWidget* entry, const char* text)
{
    EXPECT_STREQ(gtk_entry_get_text(GTK_ENTRY(entry)), text);
    int from = -1;
    int to = -1;
    EXPECT_TRUE(gtk_editable_get_selection_bounds(GTK_EDITABLE(entry), &from, &to));
    EXPECT_EQ(from, 0);
    EXPECT_EQ(to, int(std::string(text).size()));
    EXPECT_TRUE(gtk_widget_has_focus(entry) || gtk_widget_is_focus(entry));
}

TEST(GetName, ShowsAPromptAboveAnEntryWithItsTextSelected)
{
    GtkWidget* window = ShowMainWindow();
    AnswerDialog([window](GtkDialog* dialog) {
        EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(dialog)), "Rename");
        EXPECT_TRUE(gtk_window_get_modal(GTK_WINDOW(dialog)));
        EXPECT_TRUE(gtk_window_get_destroy_with_parent(GTK_WINDOW(dialog)));
        EXPECT_EQ(gtk_window_get_transient_for(GTK_WINDOW(dialog)), GTK_WINDOW(window));
        EXPECT_EQ(GetButtons(dialog), (Strings{"gtk-ok", "gtk-cancel"})); // from the right
        GtkWidget* box = GetChildren(gtk_dialog_get_content_area(dialog)).at(0);
        EXPECT_EQ(gtk_box_get_spacing(GTK_BOX(box)), 5);
        EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(box)), 5U);
        GtkWidget* labels = GetChildren(box).at(0);
        EXPECT_TRUE(gtk_box_get_homogeneous(GTK_BOX(labels)));
        EXPECT_STREQ(gtk_label_get_text(GTK_LABEL(GetChildren(labels).at(0))), "New name:");
        EXPECT_STREQ(gtk_label_get_text(GTK_LABEL(GetChildren(labels).at(1))), " ");
        ExpectEntryStartsAllSelected(GetChildren(box).at(1), "old");
        gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    EXPECT_EQ(GetName("Rename", "New name:", "old"), nullptr);
    EXPECT_EQ(GetDialogNumber(), 0);
}

TEST(GetName, HandsOverWhatWasTyped)
{
    ShowMainWindow();
    EXPECT_EQ(GetNameGiven("south tower / 2"), "south tower / 2");
}

TEST(GetName, TakesNoMoreThan255Characters)
{
    ShowMainWindow();
    EXPECT_EQ(GetNameGiven(std::string(256, 'a')), std::string(255, 'a'));
}

TEST(GetName, IsNullWhenCancelledOrEmpty)
{
    ShowMainWindow();
    EXPECT_EQ(GetNameGiven("tower", GTK_RESPONSE_CANCEL), "nothing");
    EXPECT_EQ(GetNameGiven("tower", GTK_RESPONSE_DELETE_EVENT), "nothing");
    EXPECT_EQ(GetNameGiven(""), "nothing");
}

TEST(GetName, CopiesAsManyBytesAsTheEntryHasCharacters)
{
    ShowMainWindow();
    // \u00e9 has two bytes: four characters, six bytes; the first four bytes are both \u00e9.
    EXPECT_EQ(GetNameGiven("\u00e9\u00e9ab"), "\u00e9\u00e9");
    // Five characters, six bytes: the last letter is lost.
    EXPECT_EQ(GetNameGiven("kapu\u00e9"), "kapu");
    EXPECT_EQ(GetNameGiven("t\u00e9li"), "t\u00e9l");
}

TEST(GetName, LeavesOutACharacterThatIsCutInTwo)
{
    ShowMainWindow();
    EXPECT_EQ(GetNameGiven("n\u00e9"), "n");      // two bytes: n and the first half of \u00e9
    EXPECT_EQ(GetNameGiven("ab\u20ac"), "ab");    // three bytes: one of the three of the euro sign
    EXPECT_EQ(GetNameGiven("\u20ac"), "nothing"); // one byte, and no whole character
}

static void SendKey(GtkWidget* entry, GdkEventType type, guint key)
{
    GdkEvent* event = gdk_event_new(type);
    event->key.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(entry)));
    event->key.keyval = key;
    gtk_widget_event(entry, event);
    gdk_event_free(event);
}

static void ReleaseKey(GtkWidget* entry, guint key)
{
    SendKey(entry, GDK_KEY_RELEASE, key);
}

TEST(GetName, AcceptsWhenReturnIsReleasedInTheEntry)
{
    ShowMainWindow();
    AnswerDialog([](GtkDialog* dialog) {
        gtk_entry_set_text(GTK_ENTRY(GetEntry(dialog)), "gate");
        ReleaseKey(GetEntry(dialog), GDK_KEY_e);
        EXPECT_TRUE(gtk_widget_get_visible(GTK_WIDGET(dialog)));
        SendKey(GetEntry(dialog), GDK_KEY_PRESS, GDK_KEY_Return);
        EXPECT_TRUE(gtk_widget_get_visible(GTK_WIDGET(dialog)));
        ReleaseKey(GetEntry(dialog), GDK_KEY_Return);
        return true;
    });
    const Block<char[]> name = GetName("Rename", "New name:", "old");
    EXPECT_STREQ(name.get(), "gate");
}

// Chosen with Return, a menu item opens the dialog before the key is released.
TEST(GetName, IgnoresAReturnThatWasPressedElsewhere)
{
    ShowMainWindow();
    for (int round = 0; round < 2; round++) { // nor does the next dialog remember the first
        AnswerDialog([](GtkDialog* dialog) {
            ReleaseKey(GetEntry(dialog), GDK_KEY_Return);
            gtk_entry_set_text(GTK_ENTRY(GetEntry(dialog)), "late");
            SendKey(GetEntry(dialog), GDK_KEY_PRESS, GDK_KEY_Return);
            ReleaseKey(GetEntry(dialog), GDK_KEY_Return);
            return true;
        });
        const Block<char[]> name = GetName("Rename", "New name:", "old");
        EXPECT_STREQ(name.get(), "late");
    }
}

TEST(GetName, IgnoresOtherReleasedKeys)
{
    ShowMainWindow();
    AnswerDialog([](GtkDialog* dialog) {
        for (guint key : {GDK_KEY_e, GDK_KEY_KP_Enter, GDK_KEY_Escape, GDK_KEY_space}) {
            ReleaseKey(GetEntry(dialog), key);
        }
        gtk_dialog_response(dialog,
                            GTK_RESPONSE_CANCEL); // the first response is the one that counts
        return true;
    });
    EXPECT_EQ(GetName("Rename", "New name:", "old"), nullptr);
}
