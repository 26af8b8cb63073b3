#include "tests/support/coloredits.h"

#include "scene/model.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "ui/coloredit.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>

namespace korvane::testing
{

static PageControls FindPage(GtkWidget* notebook, int place)
{
    PageControls page = {};
    page.box = gtk_notebook_get_nth_page(GTK_NOTEBOOK(notebook), place);
    const auto tab = GetChildren(gtk_notebook_get_tab_label(GTK_NOTEBOOK(notebook), page.box));
    page.check = tab.at(0);
    page.tabtext = tab.at(1);
    const auto parts = GetChildren(page.box);
    for (std::size_t i = 0; i < 2; i++) {
        page.frames[i] = parts.at(i);
        page.selections[i] = GetChildren(GetChildren(parts[i]).at(0)).at(0);
    }
    const auto row = GetChildren(parts.at(2));
    page.acuitytext = row.at(0);
    page.slider = row.at(1);
    return page;
}

ColorControls FindColorControls(GtkDialog* dialog)
{
    GtkWidget* notebook = GetChildren(gtk_dialog_get_content_area(dialog)).at(0);
    return {GTK_WIDGET(dialog), notebook, {FindPage(notebook, 0), FindPage(notebook, 1)}};
}

void EditColors(const std::function<void()>& command,
                const std::function<void(const ColorControls&)>& work, int response)
{
    AnswerDialog([work, response](GtkDialog* dialog) {
        work(FindColorControls(dialog));
        gtk_dialog_response(dialog, response);
        return true;
    });
    command();
    EXPECT_EQ(csides, nullptr);
    EXPECT_EQ(csidenumber, 0);
    EXPECT_EQ(FindBrokenRule(), "");
}

std::array<int, 4> GetChannels(GtkWidget* selection)
{
    GdkColor color;
    gtk_color_selection_get_current_color(GTK_COLOR_SELECTION(selection), &color);
    return {color.red, color.green, color.blue,
            gtk_color_selection_get_current_alpha(GTK_COLOR_SELECTION(selection))};
}

void SetColor(GtkWidget* selection, guint16 red, guint16 green, guint16 blue, guint16 alpha)
{
    GdkColor color = {0, red, green, blue};
    gtk_color_selection_set_current_color(GTK_COLOR_SELECTION(selection), &color);
    gtk_color_selection_set_current_alpha(GTK_COLOR_SELECTION(selection), alpha);
}

AllColors ColorsOf(const Side& side)
{
    AllColors colors;
    std::copy_n(side.colors, colornumber, colors.begin());
    return colors;
}

void PaintSide(int shape, int side, float first, float step, int visibility)
{
    for (Shape** version : {shapes, round1, shapest, round1t}) {
        Side& painted = version[shape]->sides[side];
        painted.visibility = visibility;
        for (int k = 0; k < colornumber; k++) {
            painted.colors[k] = first + step * float(k);
        }
    }
}

std::string GetLooksOfScene()
{
    std::string bytes;
    for (Shape** version : {shapes, round1, shapest, round1t}) {
        for (int i = 0; i < shapenumber; i++) {
            for (int k = 0; k < version[i]->sidenumber; k++) {
                const Side& side = version[i]->sides[k];
                bytes.append(reinterpret_cast<const char*>(side.colors), sizeof side.colors);
                bytes.append(reinterpret_cast<const char*>(&side.visibility), sizeof(int));
            }
        }
    }
    return bytes;
}

bool HasLook(int shape, int side, const AllColors& colors, int visibility)
{
    return std::ranges::all_of(std::array{shapes, round1, shapest, round1t}, [&](Shape** version) {
        const Side& which = version[shape]->sides[side];
        return ColorsOf(which) == colors && which.visibility == visibility;
    });
}

void ColorEdit::SetUp()
{
    ShowMainWindow();
    StartEmptyScene();
    StartView();
    AddToScene(Square(), "square");
    AddToScene(Pyramid(), "pyramid");
    AddToScene(FlatTriangle(), "triangle");
    for (int i = 0; i < shapenumber; i++) {
        for (int k = 0; k < shapes[i]->sidenumber; k++) {
            PaintSide(i, k, 0.1F * float(i + 1) + 0.03F * float(k), 0.01F, VISIBLE_BOTH);
        }
    }
    SelectRows({});
    RefreshView();
    ForgetPressedElements();
    rdstate = 0;
}

void ColorEdit::TearDown()
{
    StartEmptyScene();
    StartView();
    ForgetPressedElements();
}

void ColorEdit::EditSide(int shape, int side, const std::function<void(const ColorControls&)>& work,
                         int response)
{
    EditColors([=] { GetColor("Color of side", shape, side); }, work, response);
}

} // namespace korvane::testing
