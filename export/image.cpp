#include "export/image.h"

#include "export/imagepreview.h"
#include "scene/filereplacement.h"
#include "ui/dialogs.h"
#include "ui/modaldialog.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtk/gtk.h>

#include <cstdio>
#include <vector>

namespace korvane
{

static void SetContent(const Dialog& dialog, GtkWidget* content, int space)
{
    GtkWidget* box = gtk_vbox_new(TRUE, space);
    gtk_container_set_border_width(GTK_CONTAINER(box), guint(space));
    gtk_container_add(GTK_CONTAINER(box), content);
    gtk_container_add(GetContentOf(dialog), box);
    gtk_widget_show_all(box);
}

static Dialog MakeProgressDialog()
{
    Dialog dialog = MakeFixedDialog("Progress", nullptr);
    GtkWindow* window = GTK_WINDOW(dialog.get());
    gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_SPLASHSCREEN);
    gtk_window_set_position(window, GTK_WIN_POS_CENTER_ON_PARENT);
    gtk_widget_set_size_request(dialog.get(), 300, -1);
    ciprogress = gtk_progress_bar_new();
    SetContent(dialog, ciprogress, 10);
    return dialog;
}

// Lets the frame loop make the image. False when it was cancelled: only the last step clears
// cisign, so any other end of the dialog is a cancel, as is an answer that comes together with that
// step.
static bool MakeImage()
{
    const Dialog dialog = MakeProgressDialog();
    cisign = 1;
    rdstate |= redrawwanted;
    const int response = gtk_dialog_run(GTK_DIALOG(dialog.get()));
    ciprogress = nullptr;
    if (response == GTK_RESPONSE_NONE && cisign == 0) {
        return true;
    }
    cisign = 0;
    CreateImageProgress();
    rdstate |= redrawwanted;
    return false;
}

int DrawImage(GtkWidget* widget, GdkEventExpose* /*event*/)
{
    const std::vector<unsigned char> preview = MakePreview(imagebuffer);
    gdk_draw_rgb_image(gtk_widget_get_window(widget), gtk_widget_get_style(widget)->black_gc, 0, 0,
                       previewwidth, previewheight, GDK_RGB_DITHER_NONE, preview.data(),
                       previewwidth * 3);
    return TRUE;
}

static Dialog MakePreviewDialog()
{
    Dialog dialog = MakeFixedDialog("Image preview", GTK_STOCK_SAVE);
    GtkWidget* area = gtk_drawing_area_new();
    gtk_widget_set_size_request(area, previewwidth, previewheight);
    g_signal_connect(area, "expose_event", G_CALLBACK(DrawImage), nullptr);
    SetContent(dialog, area, 5);
    return dialog;
}

// Packs the whole picture before the file is touched.
static bool WritePng(const char* name)
{
    char* bytes = nullptr;
    gsize size = 0;
    const bool packed = gdk_pixbuf_save_to_buffer(imagepixbuf, &bytes, &size, "png", nullptr,
                                                  "compression", "9", nullptr) != FALSE;
    const bool written =
        packed && ReplaceFile(name, [&](FILE* file) { std::fwrite(bytes, 1, size, file); });
    g_free(bytes);
    return written;
}

static void SaveImage()
{
    const Block<char[]> name = FileDialog(FILE_SAVEIMAGE);
    if (name != nullptr && !WritePng(name.get())) {
        PrintStatusBar(" Can't save the image!");
    }
}

static void ShowPreview()
{
    const Dialog dialog = MakePreviewDialog();
    if (gtk_dialog_run(GTK_DIALOG(dialog.get())) == GTK_RESPONSE_OK) {
        SaveImage();
    }
}

void CreateImage()
{
    if (MakeImage()) {
        ShowPreview();
    }
    FreeImage();
}

} // namespace korvane
