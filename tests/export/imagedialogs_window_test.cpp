// "Create image..." in the main window: its dialogs, and the file.
#include "export/image.h"

#include "export/imagepreview.h"
#include "tests/support/filetypist.h"
#include "tests/support/imagemaking.h"
#include "tests/support/paintedshapes.h"
#include "tests/support/pngfile.h"
#include "tests/support/tempfolder.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "ui/input.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace korvane
{

using namespace korvane::testing;

static void StepMainWindow()
{
    ReDraw(FindWidget(ShowMainWindow(), GTK_TYPE_DRAWING_AREA), nullptr);
}

static std::vector<std::string> GetButtons(GtkDialog* dialog)
{
    std::vector<std::string> labels;
    for (GtkWidget* button : GetChildren(gtk_dialog_get_action_area(dialog))) {
        labels.emplace_back(gtk_button_get_label(GTK_BUTTON(button)));
    }
    return labels; // from the right
}

// The only box of a dialog, in which `content` stands.
static void ExpectBox(GtkDialog* dialog, GtkWidget* content, int space)
{
    GtkWidget* box = gtk_widget_get_parent(content);
    ASSERT_TRUE(GTK_IS_VBOX(box));
    EXPECT_EQ(gtk_widget_get_parent(box), gtk_dialog_get_content_area(dialog));
    EXPECT_TRUE(gtk_box_get_homogeneous(GTK_BOX(box)));
    EXPECT_EQ(gtk_box_get_spacing(GTK_BOX(box)), space);
    EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(box)), unsigned(space));
}

static void ExpectImageDialog(GtkDialog* dialog, const char* title)
{
    GtkWindow* window = GTK_WINDOW(dialog);
    EXPECT_STREQ(gtk_window_get_title(window), title);
    EXPECT_TRUE(gtk_window_get_modal(window));
    EXPECT_FALSE(gtk_window_get_resizable(window));
    EXPECT_TRUE(gtk_window_get_skip_taskbar_hint(window));
    EXPECT_TRUE(gtk_window_get_skip_pager_hint(window));
    EXPECT_EQ(gtk_window_get_transient_for(window), GTK_WINDOW(mainwindow));
}

using Labels = std::vector<std::string>;

class ImageDialogs : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartEmptyScene();
        HandleEvents();
    }

    const TempFolder folder;
};

static void ExpectProgressDialog(GtkDialog* dialog)
{
    ExpectImageDialog(dialog, "Progress");
    EXPECT_EQ(GetButtons(dialog), Labels{"gtk-cancel"});
    EXPECT_NE(gtk_dialog_get_widget_for_response(dialog, GTK_RESPONSE_CANCEL), nullptr);
    EXPECT_EQ(gtk_window_get_type_hint(GTK_WINDOW(dialog)), GDK_WINDOW_TYPE_HINT_SPLASHSCREEN);
    GtkWindowPosition position = GTK_WIN_POS_NONE;
    g_object_get(dialog, "window-position", &position, nullptr);
    EXPECT_EQ(position, GTK_WIN_POS_CENTER_ON_PARENT);
    GtkAllocation allocation;
    gtk_widget_get_allocation(GTK_WIDGET(dialog), &allocation);
    EXPECT_EQ(allocation.width, 300);
    ASSERT_TRUE(GTK_IS_PROGRESS_BAR(ciprogress));
    ExpectBox(dialog, ciprogress, 10);
}

TEST_F(ImageDialogs, ShowTheProgressWithOneWayOut)
{
    AnswerDialog([](GtkDialog* dialog) {
        ExpectProgressDialog(dialog);
        EXPECT_NE(cisign, 0);
        Press(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    CreateImage();
    EXPECT_EQ(cisign, 0);
    EXPECT_EQ(imagebuffer, nullptr);
}

// What stands in the preview on the screen.
static std::vector<unsigned char> ReadPreview(GtkWidget* area)
{
    GdkPixbuf* shown = gdk_pixbuf_get_from_drawable(nullptr, gtk_widget_get_window(area), nullptr,
                                                    0, 0, 0, 0, previewwidth, previewheight);
    std::vector<unsigned char> pixels;
    for (int y = 0; y < previewheight; y++) {
        const unsigned char* row =
            gdk_pixbuf_get_pixels(shown) + y * gdk_pixbuf_get_rowstride(shown);
        pixels.insert(pixels.end(), row, row + previewwidth * 3);
    }
    g_object_unref(shown);
    return pixels;
}

static void ExpectPreviewDialog(GtkDialog* dialog)
{
    ExpectImageDialog(dialog, "Image preview");
    EXPECT_EQ(GetButtons(dialog), (Labels{"gtk-save", "gtk-cancel"}));
    EXPECT_NE(gtk_dialog_get_widget_for_response(dialog, GTK_RESPONSE_CANCEL), nullptr);
    EXPECT_NE(gtk_dialog_get_widget_for_response(dialog, GTK_RESPONSE_OK), nullptr);
    GtkWidget* area = FindWidget(GTK_WIDGET(dialog), GTK_TYPE_DRAWING_AREA);
    int areawidth = 0;
    int areaheight = 0;
    gtk_widget_get_size_request(area, &areawidth, &areaheight);
    EXPECT_EQ(areawidth, 640);
    EXPECT_EQ(areaheight, 512);
    ExpectBox(dialog, area, 5);
    EXPECT_TRUE(IsConnected(area, "expose_event", G_CALLBACK(DrawImage)));
    const std::vector<unsigned char> preview = MakePreview(imagebuffer);
    EXPECT_TRUE(HandleEventsUntil([&] { return ReadPreview(area) == preview; }));
}

TEST_F(ImageDialogs, ShowAPreviewOfTheFinishedImage)
{
    AddToScene(PlainSquareAt(0, 0, 0, {1, 0, 0, 0.5F}), "square");
    RunCreateImage(StepMainWindow, [](GtkDialog* dialog) {
        ExpectPreviewDialog(dialog);
        EXPECT_EQ(gdk_pixbuf_get_pixels(imagepixbuf), imagebuffer);
        EXPECT_EQ(gdk_pixbuf_get_rowstride(imagepixbuf), 5120);
        EXPECT_TRUE(gdk_pixbuf_get_has_alpha(imagepixbuf));
        Press(dialog, GTK_RESPONSE_CANCEL);
    });
    EXPECT_EQ(imagebuffer, nullptr);
    EXPECT_EQ(imagepixbuf, nullptr);
}

// Presses Save in the preview and types a name into the file dialog. Returns the image.
static Image SaveImageAs(const std::string& name)
{
    Image image;
    RunCreateImage(StepMainWindow, [&image, name](GtkDialog* preview) {
        image = CopyImage();
        Press(preview, GTK_RESPONSE_OK);
        AnswerDialog([typist = Typist(name)](GtkDialog* dialog) mutable {
            if (GetText(gtk_window_get_title(GTK_WINDOW(dialog))) != "Save image" ||
                !typist.Type(dialog)) {
                return false;
            }
            EXPECT_NE(imagebuffer, nullptr);
            Press(dialog, GTK_RESPONSE_OK);
            return true;
        });
    });
    return image;
}

static std::string GetStatus()
{
    GtkWidget* label =
        FindWidget(gtk_statusbar_get_message_area(GTK_STATUSBAR(statusbar)), GTK_TYPE_LABEL);
    return gtk_label_get_text(GTK_LABEL(label));
}

static void ExpectImageFile(const std::string& path)
{
    const PngLook look = ReadPng(path);
    EXPECT_TRUE(look.whole);
    EXPECT_EQ(look.width, 1280U);
    EXPECT_EQ(look.height, 1024U);
    EXPECT_EQ(look.depth, 8);
    EXPECT_EQ(look.colortype, 6);
    EXPECT_EQ(look.effort, 3); // "compression" is "9"
}

TEST_F(ImageDialogs, SaveThePictureWithItsAlphaChannel)
{
    SaveImageAs(folder / "picture"); // the extension is added
    ExpectImageFile(folder / "picture.png");
    EXPECT_EQ(imagebuffer, nullptr);
}

TEST_F(ImageDialogs, SaveEveryPixelOfTheImage)
{
    AddToScene(CheckeredSheet(3), "sheet");
    AddToScene(PlainSquareAt(0.2F, 0.1F, 0.1F, {1, 0, 0, 0.5F}), "square");
    const Image image = SaveImageAs(folder / "picture");
    const auto& pixels = image.pixels;
    std::set<int> alphas;
    for (std::size_t i = 3; i < pixels.size(); i += 4) {
        alphas.insert(pixels[i]);
    }
    EXPECT_GT(alphas.size(), 4U); // opaque, clear and empty, and edges between them
    EXPECT_TRUE(ReadPng(folder / "picture.png").pixels == pixels);
}

TEST_F(ImageDialogs, KeepThePictureThatIsReplaced)
{
    WriteText(folder / "picture.png", "another picture");
    SaveImageAs(folder / "picture.png");
    ExpectImageFile(folder / "picture.png");
    EXPECT_EQ(ReadText(folder / "picture.png~"), "another picture");
}

// A folder has the name already.
TEST_F(ImageDialogs, SayInTheStatusBarAloneThatAPictureCannotBeSaved)
{
    std::filesystem::create_directories(folder / "picture.png/full");
    SaveImageAs(folder / "picture");
    EXPECT_EQ(GetStatus(), " Can't save the image!");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "picture.png/full"));
    EXPECT_EQ(imagebuffer, nullptr);
    GdkEventMotion motion = {};
    motion.window = gtk_widget_get_window(FindWidget(ShowMainWindow(), GTK_TYPE_DRAWING_AREA));
    MouseMov(FindWidget(ShowMainWindow(), GTK_TYPE_DRAWING_AREA), &motion);
    EXPECT_NE(GetStatus(), " Can't save the image!");
}

} // namespace korvane
