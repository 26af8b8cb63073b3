#include "ui/viewtoggles.h"

#include "scene/model.h"
#include "scene/treeselection.h"
#include "ui/dialogs.h"
#include "view/backgroundpicture.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtk/gtk.h>

#include <cstdint>

namespace korvane
{

void BgShape(GtkToggleToolButton* button, void* mode)
{
    if (gtk_toggle_tool_button_get_active(button)) {
        mainview.bgshape = GPOINTER_TO_INT(mode);
    }
}

void ShowShape(GtkToggleToolButton* button, void* mode)
{
    if (gtk_toggle_tool_button_get_active(button)) {
        mainview.showshape = GPOINTER_TO_INT(mode);
    }
}

static void SetTarget(int8_t& fade, bool on)
{
    fade = int8_t(on ? fade | fadetarget : fade & ~fadetarget);
}

void Gradient(GtkToggleToolButton* button)
{
    SetTarget(mainview.gradientfade, gtk_toggle_tool_button_get_active(button));
}

void SmallCube(GtkToggleToolButton* button)
{
    SetTarget(mainview.smallcubefade, gtk_toggle_tool_button_get_active(button));
}

void CenterLines(GtkToggleToolButton* button)
{
    SetTarget(mainview.centerlinesfade, gtk_toggle_tool_button_get_active(button));
}

void Perspective(GtkToggleToolButton* button)
{
    SetTarget(mainview.perspective, gtk_toggle_tool_button_get_active(button));
}

void ImageBg(GtkToggleToolButton* button)
{
    if (!gtk_toggle_tool_button_get_active(button)) {
        SetTarget(mainview.imagefade, false);
        return;
    }
    const Block<char[]> name = FileDialog(FILE_OPENIMAGE);
    if (name != nullptr && SetBackgroundPicture(&mainview, gtk_image_new_from_file(name.get()))) {
        SetTarget(mainview.imagefade, true);
    } else {
        gtk_toggle_tool_button_set_active(button, FALSE);
    }
}

void OnlySelected(GtkToggleToolButton* button)
{
    mainview.onlyselected = gtk_toggle_tool_button_get_active(button) ? 1 : 0;
    for (int i = 0; i < shapenumber; i++) {
        if (mainview.onlyselected != 0) {
            selected[i] = static_cast<unsigned char>(selected[i] & ~selectedshown);
        } else {
            selected[i] |= selectedshown;
        }
    }
    if (mainview.onlyselected != 0) {
        for (int i = 0; i < treeselectednumber; i++) {
            SetSelected(treeselected[i]);
        }
    }
    rdstate |= redrawwanted;
}

} // namespace korvane
