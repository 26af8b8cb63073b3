// Where the first open-scene dialog starts when the working directory has no examples, which needs
// a process to itself.
#include "tests/support/filetypist.h"
#include "tests/support/tempfolder.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "view/icons.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using namespace korvane;
using namespace korvane::testing;

namespace fs = std::filesystem;

TEST(FileDialogs, StartInTheInstalledExamplesWithoutOthers)
{
    ShowMainWindow();
    const TempFolder folder;
    const std::string installed = folder / "share/korvane";
    fs::create_directories(installed + "/examples");
    datafolder = installed.c_str();
    fs::current_path(folder.GetPath());
    std::string start;
    AnswerDialog([&](GtkDialog* dialog) {
        start = TakeText(gtk_file_chooser_get_current_folder(GetChooser(dialog)));
        if (start.empty()) { // not yet there
            return false;
        }
        Press(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    EXPECT_EQ(FileDialog(FILE_OPENSCENE), nullptr);
    EXPECT_EQ(start, installed + "/examples");
    fs::current_path("/");
}
