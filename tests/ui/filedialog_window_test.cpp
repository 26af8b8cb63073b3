// File dialogs, their answers typed. The remembered names live as long as the process, so each kind
// of file has a test of its own and the scene's, which four modes share, are told as one story.
#include "ui/dialogs.h"

#include "tests/support/filetypist.h"
#include "tests/support/widgets.h"
#include "ui/input.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

namespace fs = std::filesystem;

// A working directory of the test's own with a folder "examples" and files to choose, gone
// afterwards.
class FileDialogs : public ::testing::Test
{
protected:
    void SetUp() override
    {
        char name[] = "/tmp/korvane-files-XXXXXX";
        folder = fs::canonical(mkdtemp(name)).string();
        before = fs::current_path();
        fs::create_directory(folder + "/examples");
        fs::create_directory(folder + "/other");
        fs::current_path(folder);
        ShowMainWindow();
    }

    void TearDown() override
    {
        fs::current_path(before);
        fs::remove_all(folder);
    }

    std::string folder;
    fs::path before;
};

static std::string GetFolder(GtkDialog* dialog)
{
    return TakeText(gtk_file_chooser_get_current_folder(GetChooser(dialog)));
}

// Runs a file dialog, waits until it shows `start` (unless empty), types the path and accepts.
static std::string Choose(int mode, const std::string& path, const std::string& start = "")
{
    Typist typist(path);
    bool started = start.empty();
    AnswerDialog([=](GtkDialog* dialog) mutable {
        started = started || GetFolder(dialog) == start;
        if (!started || !typist.Type(dialog)) {
            return false;
        }
        Press(dialog, GTK_RESPONSE_OK);
        return true;
    });
    const Block<char[]> name = FileDialog(mode);
    return name == nullptr ? "nothing" : name.get();
}

// Runs a file dialog, waits until it shows `start`, and cancels.
static void ExpectStartsIn(int mode, const std::string& start)
{
    AnswerDialog([&](GtkDialog* dialog) {
        if (GetFolder(dialog) != start) {
            return false;
        }
        Press(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    EXPECT_EQ(FileDialog(mode), nullptr);
}

struct Look {
    const char* title;
    GtkFileChooserAction action;
    const char* acceptbutton;
    const char* shown;  // a file that the filter shows
    const char* hidden; // and one that it does not
};

static bool IsShown(GtkFileFilter* filter, const std::string& name, const char* type)
{
    const auto contains =
        GtkFileFilterFlags(GTK_FILE_FILTER_DISPLAY_NAME | GTK_FILE_FILTER_MIME_TYPE);
    const GtkFileFilterInfo info{contains, nullptr, nullptr, name.c_str(), type};
    return gtk_file_filter_filter(filter, &info);
}

static void ExpectLook(GtkDialog* dialog, const Look& look)
{
    EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(dialog)), look.title);
    EXPECT_TRUE(gtk_window_get_modal(GTK_WINDOW(dialog)));
    EXPECT_TRUE(gtk_window_get_destroy_with_parent(GTK_WINDOW(dialog)));
    EXPECT_EQ(gtk_window_get_transient_for(GTK_WINDOW(dialog)), GTK_WINDOW(mainwindow));
    const auto buttons = GetChildren(gtk_dialog_get_action_area(dialog));
    ASSERT_EQ(buttons.size(), 2U); // listed from the right
    EXPECT_STREQ(gtk_button_get_label(GTK_BUTTON(buttons[0])), look.acceptbutton);
    EXPECT_STREQ(gtk_button_get_label(GTK_BUTTON(buttons[1])), "gtk-cancel");

    GtkFileChooser* chooser = GetChooser(dialog);
    EXPECT_EQ(gtk_file_chooser_get_action(chooser), look.action);
    int width = 0;
    int height = 0;
    gtk_widget_get_size_request(GTK_WIDGET(chooser), &width, &height);
    EXPECT_EQ(width, 640);
    EXPECT_EQ(height, 400);
    GSList* filters = gtk_file_chooser_list_filters(chooser);
    EXPECT_EQ(g_slist_length(filters), 1U);
    g_slist_free(filters);
    GtkFileFilter* filter = gtk_file_chooser_get_filter(chooser);
    EXPECT_TRUE(IsShown(filter, look.shown, "image/png"));
    EXPECT_FALSE(IsShown(filter, look.hidden, "text/plain"));
}

static void LookAtDialog(int mode, const Look& look)
{
    AnswerDialog([&](GtkDialog* dialog) {
        ExpectLook(dialog, look);
        Press(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    EXPECT_EQ(FileDialog(mode), nullptr);
}

TEST_F(FileDialogs, LookAsTheirModesSay)
{
    LookAtDialog(FILE_OPENIMAGE, {"Open image", GTK_FILE_CHOOSER_ACTION_OPEN, "gtk-open",
                                  "picture.png", "letter.txt"});
    LookAtDialog(FILE_EXPORTOBJ, {"Export wavefront obj", GTK_FILE_CHOOSER_ACTION_SAVE, "gtk-save",
                                  "model.obj", "model.mrt"});
    LookAtDialog(FILE_SAVEIMAGE,
                 {"Save image", GTK_FILE_CHOOSER_ACTION_SAVE, "gtk-save", "a.png", "a.obj"});
}

static const Look openlook{"Open scene", GTK_FILE_CHOOSER_ACTION_OPEN, "gtk-open", "a.mrt",
                           "a.obj"};
static const Look savelook{"Save scene", GTK_FILE_CHOOSER_ACTION_SAVE, "gtk-save", "a.mrt",
                           "a.obj"};

TEST_F(FileDialogs, ShareOneSceneNameAmongThem)
{
    ExpectStartsIn(FILE_SAVESCENEAS,
                   folder); // no name is remembered, and typed names need a folder
    ExpectStartsIn(FILE_OPENSCENE, folder + "/examples"); // the first time
    LookAtDialog(FILE_OPENSCENE, openlook);
    LookAtDialog(FILE_SAVESCENE, savelook); // without a name, Save asks as Save as does
    LookAtDialog(FILE_SAVESCENEAS, savelook);

    // Opening gives the extension too, and Save then writes there without asking.
    ASSERT_EQ(Choose(FILE_OPENSCENE, folder + "/other/house"), folder + "/other/house.mrt");
    EXPECT_STREQ(FileDialog(FILE_SAVESCENE).get(), (folder + "/other/house.mrt").c_str());
    ExpectStartsIn(FILE_OPENSCENE, folder + "/other");
    ExpectStartsIn(FILE_SAVESCENEAS, folder + "/other");

    EXPECT_EQ(Choose(FILE_SAVESCENEAS, folder + "/tower.mrt", folder + "/other"),
              folder + "/tower.mrt");
    EXPECT_STREQ(FileDialog(FILE_SAVESCENE).get(), (folder + "/tower.mrt").c_str());
    ExpectStartsIn(FILE_OPENSCENE, folder); // beside the scene, not in the examples

    EXPECT_EQ(Choose(FILE_OPENSCENE, "/tower"), "/tower.mrt");
    ExpectStartsIn(FILE_OPENSCENE, "/"); // the root's name is its own separator
}

TEST_F(FileDialogs, GiveAnExportTheExtensionObjLetterForLetter)
{
    EXPECT_EQ(Choose(FILE_EXPORTOBJ, folder + "/model"), folder + "/model.obj");
    EXPECT_EQ(Choose(FILE_EXPORTOBJ, folder + "/model.obj"), folder + "/model.obj");
    EXPECT_EQ(Choose(FILE_EXPORTOBJ, folder + "/MODEL.OBJ"), folder + "/MODEL.OBJ.obj");
    EXPECT_EQ(Choose(FILE_EXPORTOBJ, folder + "/model.mrt"), folder + "/model.mrt.obj");
    EXPECT_EQ(Choose(FILE_EXPORTOBJ, "/m"), "/m.obj"); // shorter than the extension
    ExpectStartsIn(FILE_EXPORTOBJ, "/");
}

TEST_F(FileDialogs, GiveAPictureTheExtensionPng)
{
    EXPECT_EQ(Choose(FILE_SAVEIMAGE, folder + "/other/view"), folder + "/other/view.png");
    EXPECT_EQ(Choose(FILE_SAVEIMAGE, folder + "/view.png", folder + "/other"),
              folder + "/view.png");
    ExpectStartsIn(FILE_SAVEIMAGE, folder);
}

TEST_F(FileDialogs, OpenAPictureUnderTheNameItHas)
{
    EXPECT_EQ(Choose(FILE_OPENIMAGE, folder + "/other/view.jpeg"), folder + "/other/view.jpeg");
    ExpectStartsIn(FILE_OPENIMAGE, folder + "/other");
}

TEST_F(FileDialogs, KeepTheRememberedNameWhenCancelled)
{
    EXPECT_EQ(Choose(FILE_SAVEIMAGE, folder + "/other/a.png"), folder + "/other/a.png");
    Typist typist(folder + "/b.png");
    AnswerDialog([&](GtkDialog* dialog) {
        if (!typist.Type(dialog)) {
            return false;
        }
        Press(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    EXPECT_EQ(FileDialog(FILE_SAVEIMAGE), nullptr);
    ExpectStartsIn(FILE_SAVEIMAGE, folder + "/other");
}

TEST_F(FileDialogs, AreEmptyHandedWithoutAName)
{
    AnswerDialog([&](GtkDialog* dialog) {
        gtk_file_chooser_unselect_all(GetChooser(dialog));
        Press(dialog, GTK_RESPONSE_OK);
        return true;
    });
    EXPECT_EQ(FileDialog(FILE_SAVEIMAGE), nullptr); // nothing was typed
    AnswerDialog(GTK_RESPONSE_DELETE_EVENT);
    EXPECT_EQ(FileDialog(FILE_SAVEIMAGE), nullptr);
}

TEST_F(FileDialogs, AcceptAFileThatIsActivated)
{
    std::ofstream(folder + "/other/model.obj") << "v 0 0 0\n";
    Typist typist(folder + "/other/model.obj");
    AnswerDialog([&](GtkDialog* dialog) {
        if (!typist.Type(dialog)) {
            return false;
        }
        g_signal_emit_by_name(GetChooser(dialog), "file-activated"); // a double click
        return true;
    });
    const Block<char[]> name = FileDialog(FILE_EXPORTOBJ);
    EXPECT_EQ(GetText(name.get()), folder + "/other/model.obj");
}

TEST_F(FileDialogs, AcceptANameByEnter)
{
    for (const int mode : {FILE_OPENIMAGE, FILE_SAVEIMAGE}) {
        Typist typist(folder + "/view.png");
        AnswerDialog([&](GtkDialog* dialog) {
            if (!typist.Type(dialog)) {
                return false;
            }
            GtkWindow* window = GTK_WINDOW(dialog);
            gtk_widget_activate(gtk_window_get_focus(window)); // the name's entry
            if (gtk_window_get_default_widget(window) == nullptr) {
                Press(dialog, GTK_RESPONSE_CANCEL); // nothing else would
            }
            return true;
        });
        EXPECT_EQ(GetText(FileDialog(mode).get()), folder + "/view.png");
    }
}

// Types a folder's path and accepts; once the dialog shows that folder, types a file's.
static std::string ChooseByWayOf(int mode, const std::string& way, const std::string& path)
{
    AnswerDialog([way, path, first = Typist(way), second = Typist(path),
                  entered = false](GtkDialog* dialog) mutable {
        if (!entered && first.Type(dialog)) {
            Press(dialog, GTK_RESPONSE_OK);
            entered = true;
        }
        if (!entered || GetFolder(dialog) != way || !second.Type(dialog)) {
            return false;
        }
        Press(dialog, GTK_RESPONSE_OK);
        return true;
    });
    const Block<char[]> name = FileDialog(mode);
    return GetText(name.get());
}

TEST_F(FileDialogs, EnterAFolderThatIsAccepted)
{
    const std::string other = folder + "/other";
    for (const int mode : {FILE_OPENIMAGE, FILE_SAVEIMAGE}) {
        EXPECT_EQ(ChooseByWayOf(mode, other, other + "/view.png"), other + "/view.png");
    }
    fs::create_directory(folder + "/other/house.mrt"); // no file either
    EXPECT_EQ(ChooseByWayOf(FILE_OPENIMAGE, other + "/house.mrt", folder + "/a.png"),
              folder + "/a.png");
}

static gboolean EndLoop(void* loop)
{
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return FALSE;
}

// The toolkit crashes in the second after a chooser that was still reading is destroyed.
TEST_F(FileDialogs, MayBeLeftWhileTheyReadOrSearch)
{
    for (const char* key : {"home-folder", "recent-shortcut", "search-shortcut"}) {
        AnswerDialog([=](GtkDialog* dialog) {
            GtkWidget* widget = GTK_WIDGET(dialog);
            g_signal_emit_by_name(FindWidget(widget, g_type_from_name("GtkFileChooserDefault")),
                                  key);
            Press(dialog, GTK_RESPONSE_CANCEL);
            return true;
        });
        EXPECT_EQ(FileDialog(FILE_OPENIMAGE), nullptr);
    }
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    g_timeout_add(1000, EndLoop, loop);
    g_main_loop_run(loop);
    g_main_loop_unref(loop);
}

TEST_F(FileDialogs, LeaveThePointerIdle)
{
    mstate = 3; // a drag whose release the dialog swallows
    AnswerDialog(GTK_RESPONSE_CANCEL);
    FileDialog(FILE_SAVEIMAGE);
    EXPECT_EQ(mstate, 0);
    mstate = 1;
    Choose(FILE_EXPORTOBJ, folder + "/model.obj");
    EXPECT_EQ(mstate, 0);
}
