#include "ui/coloredit.h"

#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "ui/input.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

using AllColors = std::array<float, colornumber>;

// The controls of a page.
struct PageControls {
    GtkWidget* box;
    GtkWidget* check;
    GtkWidget* tabtext;
    GtkWidget* frames[2]; // of the light and the shadow
    GtkWidget* selections[2];
    GtkWidget* acuitytext;
    GtkWidget* slider;
};

struct Controls {
    GtkWidget* dialog;
    GtkWidget* notebook;
    PageControls pages[2];
};

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

static Controls FindControls(GtkDialog* dialog)
{
    GtkWidget* notebook = GetChildren(gtk_dialog_get_content_area(dialog)).at(0);
    return {GTK_WIDGET(dialog), notebook, {FindPage(notebook, 0), FindPage(notebook, 1)}};
}

// Runs a command, does something with its dialog and answers it.
static void Edit(const std::function<void()>& command,
                 const std::function<void(const Controls&)>& work, int response)
{
    AnswerDialog([work, response](GtkDialog* dialog) {
        work(FindControls(dialog));
        gtk_dialog_response(dialog, response);
        return true;
    });
    command();
    EXPECT_EQ(csides, nullptr);
    EXPECT_EQ(csidenumber, 0);
    EXPECT_EQ(FindBrokenRule(), "");
}

static AllColors ColorsOf(const Side& side)
{
    AllColors colors;
    std::copy_n(side.colors, colornumber, colors.begin());
    return colors;
}

static Side& SideOf(int shape, int side)
{
    return shapes[shape]->sides[side];
}

// Gives a side of the scene colours that grow from `first` by `step`, and a visibility.
static void PaintSide(int shape, int side, float first, float step, int visibility)
{
    for (Shape** version : {shapes, round1, shapest, round1t}) {
        Side& painted = version[shape]->sides[side];
        painted.visibility = visibility;
        for (int k = 0; k < colornumber; k++) {
            painted.colors[k] = first + step * float(k);
        }
    }
}

// Every byte of what can be edited, of all sides in all versions.
static std::string GetLooksOfScene()
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

// True when all versions of a side have this look.
static bool HasLook(int shape, int side, const AllColors& colors, int visibility)
{
    return std::ranges::all_of(std::array{shapes, round1, shapest, round1t}, [&](Shape** version) {
        const Side& which = version[shape]->sides[side];
        return ColorsOf(which) == colors && which.visibility == visibility;
    });
}

// Shapes 0 (a square), 1 (a pyramid of five sides) and 2 (a triangle), of which the rows are 1, 2
// and 3. Every side has other colours.
class ColorEdit : public ::testing::Test
{
protected:
    void SetUp() override
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
    void TearDown() override
    {
        StartEmptyScene();
        StartView();
        ForgetPressedElements();
    }

    static void EditSide(int shape, int side, const std::function<void(const Controls&)>& work,
                         int response = GTK_RESPONSE_OK)
    {
        Edit([=] { GetColor("Color of side", shape, side); }, work, response);
    }
};

static void ExpectFrame(GtkWidget* frame, const char* text)
{
    EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(frame)), 5U);
    GtkWidget* label = gtk_frame_get_label_widget(GTK_FRAME(frame));
    EXPECT_STREQ(gtk_label_get_label(GTK_LABEL(label)), text);
    EXPECT_TRUE(gtk_label_get_use_markup(GTK_LABEL(label)));
    GtkWidget* alignment = GetChildren(frame).at(0);
    float values[4] = {};
    g_object_get(alignment, "xalign", &values[0], "yalign", &values[1], "xscale", &values[2],
                 "yscale", &values[3], nullptr);
    EXPECT_TRUE(std::ranges::equal(values, std::array{0.5F, 0.5F, 1.0F, 1.0F}));
    gboolean expand = TRUE;
    gboolean fill = FALSE;
    gtk_container_child_get(GTK_CONTAINER(gtk_widget_get_parent(frame)), frame, "expand", &expand,
                            "fill", &fill, nullptr);
    EXPECT_FALSE(expand);
    EXPECT_TRUE(fill);
}

static void ExpectSlider(GtkWidget* slider)
{
    GtkAdjustment* adjustment = gtk_range_get_adjustment(GTK_RANGE(slider));
    EXPECT_EQ(gtk_adjustment_get_lower(adjustment), 0);
    EXPECT_EQ(gtk_adjustment_get_upper(adjustment), 1);
    EXPECT_EQ(gtk_adjustment_get_step_increment(adjustment), 0.01);
    EXPECT_EQ(gtk_adjustment_get_page_increment(adjustment), 0.1);
    EXPECT_EQ(gtk_adjustment_get_page_size(adjustment), 0);
    EXPECT_TRUE(GTK_IS_HSCALE(slider));
    EXPECT_TRUE(gtk_scale_get_draw_value(GTK_SCALE(slider)));
    EXPECT_EQ(gtk_scale_get_value_pos(GTK_SCALE(slider)), GTK_POS_RIGHT);
    EXPECT_EQ(gtk_scale_get_digits(GTK_SCALE(slider)), 3);
}

static void ExpectPage(const PageControls& page, const char* tabtext)
{
    EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(page.box)), 5U);
    ExpectFrame(page.frames[0], "<b> Light: </b>");
    ExpectFrame(page.frames[1], "<b> Shadow: </b>");
    for (int i = 0; i < 2; i++) {
        GtkColorSelection* selection = GTK_COLOR_SELECTION(page.selections[i]);
        EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(selection)), 5U);
        EXPECT_TRUE(gtk_color_selection_get_has_opacity_control(selection));
        EXPECT_EQ(gtk_color_selection_get_has_palette(selection) != FALSE, i == 1);
    }
    EXPECT_STREQ(gtk_label_get_label(GTK_LABEL(page.acuitytext)), "<b> Acuity: </b>");
    ExpectSlider(page.slider);
    EXPECT_TRUE(GTK_IS_CHECK_BUTTON(page.check));
    EXPECT_STREQ(gtk_label_get_label(GTK_LABEL(page.tabtext)), tabtext);
    EXPECT_TRUE(gtk_label_get_use_markup(GTK_LABEL(page.tabtext)));
    EXPECT_TRUE(gtk_label_get_use_underline(GTK_LABEL(page.tabtext)));
    EXPECT_EQ(gtk_box_get_spacing(GTK_BOX(gtk_widget_get_parent(page.check))), 2);
    EXPECT_TRUE(gtk_widget_get_mapped(page.check)); // the tab is seen
}

TEST_F(ColorEdit, HasAPageForEachFace)
{
    EditSide(0, 0, [](const Controls& controls) {
        GtkWindow* window = GTK_WINDOW(controls.dialog);
        EXPECT_STREQ(gtk_window_get_title(window), "Color of side");
        EXPECT_TRUE(gtk_window_get_modal(window));
        EXPECT_FALSE(gtk_window_get_resizable(window));
        EXPECT_TRUE(gtk_window_get_skip_taskbar_hint(window));
        EXPECT_TRUE(gtk_window_get_skip_pager_hint(window));
        EXPECT_EQ(gtk_window_get_type_hint(window), GDK_WINDOW_TYPE_HINT_MENU);
        EXPECT_EQ(int(GDK_WINDOW_TYPE_HINT_MENU), 2);
        GtkNotebook* notebook = GTK_NOTEBOOK(controls.notebook);
        EXPECT_EQ(gtk_notebook_get_tab_pos(notebook), GTK_POS_LEFT);
        EXPECT_TRUE(gtk_notebook_get_show_border(notebook));
        ASSERT_EQ(gtk_notebook_get_n_pages(notebook), 2);
        ExpectPage(controls.pages[0], "<b> Front\n visibility </b>");
        ExpectPage(controls.pages[1], "<b> Back\n visibility </b>");
        EXPECT_EQ(getcvbox1, controls.pages[0].box);
        EXPECT_EQ(getcvbox2, controls.pages[1].box);
    });
}

TEST_F(ColorEdit, HasAnOkAndACancelButton)
{
    EditSide(0, 0, [](const Controls& controls) {
        GtkWidget* area = gtk_dialog_get_action_area(GTK_DIALOG(controls.dialog));
        std::vector<std::string> labels;
        std::vector<int> responses;
        for (GtkWidget* button : GetChildren(area)) {
            labels.emplace_back(gtk_button_get_label(GTK_BUTTON(button)));
            responses.push_back(
                gtk_dialog_get_response_for_widget(GTK_DIALOG(controls.dialog), button));
        }
        std::ranges::sort(labels);
        std::ranges::sort(responses);
        EXPECT_EQ(labels, (std::vector<std::string>{"gtk-cancel", "gtk-ok"}));
        EXPECT_EQ(responses, (std::vector<int>{GTK_RESPONSE_CANCEL, GTK_RESPONSE_OK}));
    });
}

static std::array<int, 4> GetChannels(GtkWidget* selection)
{
    GdkColor color;
    gtk_color_selection_get_current_color(GTK_COLOR_SELECTION(selection), &color);
    return {color.red, color.green, color.blue,
            gtk_color_selection_get_current_alpha(GTK_COLOR_SELECTION(selection))};
}

TEST_F(ColorEdit, ShowsTheColoursOfTheSide)
{
    // f * 65535 + 0.5, cut off: 0, 0.25, 0.5 and 1 give 0, 16384, 32768 and 65535.
    const float light[] = {0, 0.25F, 0.5F, 1};
    const float shadow[] = {1, 0.5F, 0.25F, 0};
    for (Shape** version : {shapes, round1, shapest, round1t}) {
        float* colors = version[0]->sides[0].colors;
        std::copy_n(light, 4, colors + FRONT_LIGHT);
        std::copy_n(shadow, 4, colors + FRONT_SHADOW);
        std::copy_n(shadow, 4, colors + BACK_LIGHT);
        std::copy_n(light, 4, colors + BACK_SHADOW);
        colors[FRONT_ACUITY] = 0.25F;
        colors[BACK_ACUITY] = 0.75F;
    }
    EditSide(0, 0, [](const Controls& controls) {
        const std::array rising = {0, 16384, 32768, 65535};
        const std::array falling = {65535, 32768, 16384, 0};
        EXPECT_EQ(GetChannels(controls.pages[0].selections[0]), rising);
        EXPECT_EQ(GetChannels(controls.pages[0].selections[1]), falling);
        EXPECT_EQ(GetChannels(controls.pages[1].selections[0]), falling);
        EXPECT_EQ(GetChannels(controls.pages[1].selections[1]), rising);
        EXPECT_EQ(gtk_range_get_value(GTK_RANGE(controls.pages[0].slider)), 0.25);
        EXPECT_EQ(gtk_range_get_value(GTK_RANGE(controls.pages[1].slider)), 0.75);
    });
}

TEST_F(ColorEdit, ShowsWhatLiesOutsideTheRangeAsItsEnd)
{
    PaintSide(0, 0, -3, 0.5F, VISIBLE_BOTH); // -3 -2.5 -2 -1.5 ... , the back set from 1.5 on
    EditSide(0, 0, [](const Controls& controls) {
        EXPECT_EQ(GetChannels(controls.pages[0].selections[0]), (std::array{0, 0, 0, 0}));
        EXPECT_EQ(GetChannels(controls.pages[1].selections[0]),
                  (std::array{65535, 65535, 65535, 65535}));
    });
}

TEST_F(ColorEdit, ShowsWhichFacesAreVisible)
{
    for (int visibility = 0; visibility < 4; visibility++) {
        PaintSide(0, 0, 0.5F, 0, visibility);
        EditSide(0, 0, [visibility](const Controls& controls) {
            for (int i = 0; i < 2; i++) {
                const bool visible = (visibility >> i & 1) == 1;
                GtkToggleButton* check = GTK_TOGGLE_BUTTON(controls.pages[i].check);
                EXPECT_EQ(gtk_toggle_button_get_active(check) != FALSE, visible);
                EXPECT_EQ(gtk_widget_get_sensitive(controls.pages[i].box) != FALSE, visible);
                EXPECT_TRUE(gtk_widget_is_sensitive(controls.pages[i].check));
            }
        });
        EXPECT_EQ(SideOf(0, 0).visibility, visibility);
    }
}

TEST_F(ColorEdit, ChangesNothingByShowing)
{
    PaintSide(0, 0, 1.0F / 3, 0.011F, VISIBLE_FRONT); // between the steps of the controls
    const std::string before = GetLooksOfScene();
    EditSide(0, 0, [&](const Controls&) { EXPECT_EQ(GetLooksOfScene(), before); });
    EXPECT_EQ(GetLooksOfScene(), before);
}

TEST_F(ColorEdit, HoldsEachSideInItsFourVersions)
{
    Edit([] { GetColor("Color of shape", 1, -1); },
         [](const Controls&) {
             ASSERT_EQ(csidenumber, 4 * 5);
             for (int k = 0; k < 5; k++) {
                 EXPECT_EQ(csides[4 * k], &shapes[1]->sides[k]);
                 EXPECT_EQ(csides[4 * k + 1], &round1[1]->sides[k]);
                 EXPECT_EQ(csides[4 * k + 2], &shapest[1]->sides[k]);
                 EXPECT_EQ(csides[4 * k + 3], &round1t[1]->sides[k]);
             }
         },
         GTK_RESPONSE_CANCEL);
}

TEST_F(ColorEdit, AppliesTheMeanOfAllSidesAtOnce)
{
    for (int k = 0; k < 5; k++) {
        PaintSide(1, k, 0.125F * float(k), 0, k == 0 ? VISIBLE_BACK : VISIBLE_BOTH);
    }
    PaintSide(1, 4, 1, 0, VISIBLE_BOTH); // 0, 1/8, 2/8, 3/8 and 1: their mean is 0.35
    AllColors mean;
    mean.fill(0.35F);
    const AllColors other = ColorsOf(SideOf(0, 0));
    rdstate = 0;
    Edit([] { GetColor("Color of shape", 1, -1); },
         [&](const Controls& controls) {
             for (int k = 0; k < 5; k++) {
                 EXPECT_TRUE(HasLook(1, k, mean, VISIBLE_BACK)); // the first side's visibility
             }
             EXPECT_EQ(ColorsOf(SideOf(0, 0)), other); // not one of them
             EXPECT_EQ(GetChannels(controls.pages[0].selections[0]),
                       (std::array{22937, 22937, 22937, 22937})); // 22937.25 + 0.5
             EXPECT_FALSE(gtk_widget_get_sensitive(controls.pages[0].box));
         },
         GTK_RESPONSE_OK);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    for (int k = 0; k < 5; k++) {
        EXPECT_TRUE(HasLook(1, k, mean, VISIBLE_BACK));
    }
}

static void SetColor(GtkWidget* selection, guint16 red, guint16 green, guint16 blue, guint16 alpha)
{
    GdkColor color = {0, red, green, blue};
    gtk_color_selection_set_current_color(GTK_COLOR_SELECTION(selection), &color);
    gtk_color_selection_set_current_alpha(GTK_COLOR_SELECTION(selection), alpha);
}

// Moves a slider as a key or the mouse does.
static void MoveSlider(GtkWidget* slider, double value)
{
    gboolean handled = TRUE;
    g_signal_emit_by_name(slider, "change-value", GTK_SCROLL_JUMP, value, &handled);
}

// Changes everything that can be changed.
static void ChangeAll(const Controls& controls)
{
    for (const PageControls& page : controls.pages) {
        SetColor(page.selections[0], 65535, 0, 13107, 26214);
        SetColor(page.selections[1], 0, 39321, 52428, 65535);
        MoveSlider(page.slider, 0.625);
        gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(page.check), FALSE);
    }
}

// 13107 is a fifth of 65535.
static const AllColors changed = {1, 0, 0.2F, 0.4F, 0, 0.6F, 0.8F, 1, 0.625F,
                                  1, 0, 0.2F, 0.4F, 0, 0.6F, 0.8F, 1, 0.625F};

TEST_F(ColorEdit, ShowsEveryChangeAtOnce)
{
    EditSide(1, 2, [](const Controls& controls) {
        ChangeAll(controls);
        EXPECT_TRUE(HasLook(1, 2, changed, VISIBLE_NOT));
    });
    EXPECT_TRUE(HasLook(1, 2, changed, VISIBLE_NOT));
    EXPECT_NE(ColorsOf(SideOf(1, 1)), changed); // beside it
}

TEST_F(ColorEdit, PutsEachColourInItsPlace)
{
    const int places[2][2] = {{FRONT_LIGHT, FRONT_SHADOW}, {BACK_LIGHT, BACK_SHADOW}};
    for (int face = 0; face < 2; face++) {
        for (int kind = 0; kind < 2; kind++) {
            PaintSide(0, 0, 0.5F, 0, VISIBLE_BOTH);
            AllColors expected = ColorsOf(SideOf(0, 0));
            const int place = places[face][kind];
            expected[std::size_t(place)] = 1;
            expected[std::size_t(place) + 1] = 0;
            expected[std::size_t(place) + 2] = 0.2F;
            expected[std::size_t(place) + 3] = 0.4F;
            EditSide(0, 0, [&](const Controls& controls) {
                rdstate = 0;
                SetColor(controls.pages[face].selections[kind], 65535, 0, 13107, 26214);
                EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
                EXPECT_TRUE(HasLook(0, 0, expected, VISIBLE_BOTH));
            });
        }
    }
}

TEST_F(ColorEdit, KeepsAcuityInItsRange)
{
    struct {
        double value;
        float front;
    } const rows[] = {{0.25, 0.25F}, {-0.5, 0}, {1.75, 1}, {0, 0}, {1, 1}};
    EditSide(0, 0, [&](const Controls& controls) {
        for (const auto& row : rows) {
            rdstate = 0;
            MoveSlider(controls.pages[0].slider, row.value);
            EXPECT_EQ(SideOf(0, 0).colors[FRONT_ACUITY], row.front);
            EXPECT_EQ(round1t[0]->sides[0].colors[FRONT_ACUITY], row.front);
            EXPECT_EQ(gtk_range_get_value(GTK_RANGE(controls.pages[0].slider)), double(row.front));
            EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
        }
        MoveSlider(controls.pages[1].slider, 0.125);
        EXPECT_EQ(SideOf(0, 0).colors[BACK_ACUITY], 0.125F);
        EXPECT_EQ(SideOf(0, 0).colors[FRONT_ACUITY], 1);
    });
}

TEST_F(ColorEdit, GreysOutThePageOfAFaceThatIsNotVisible)
{
    EditSide(1, 0, [](const Controls& controls) {
        for (int i = 0; i < 2; i++) {
            GtkToggleButton* check = GTK_TOGGLE_BUTTON(controls.pages[i].check);
            rdstate = 0;
            gtk_toggle_button_set_active(check, FALSE);
            EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
            EXPECT_FALSE(gtk_widget_get_sensitive(controls.pages[i].box));
            EXPECT_TRUE(gtk_widget_get_sensitive(controls.pages[1 - i].box));
            const int left = i == 0 ? VISIBLE_BACK : VISIBLE_FRONT;
            EXPECT_TRUE(HasLook(1, 0, ColorsOf(SideOf(1, 0)), left));
            gtk_toggle_button_set_active(check, TRUE);
            EXPECT_TRUE(gtk_widget_get_sensitive(controls.pages[i].box));
            EXPECT_TRUE(HasLook(1, 0, ColorsOf(SideOf(1, 0)), VISIBLE_BOTH));
        }
    });
}

TEST_F(ColorEdit, ComesBackToTheBitWhenItIsNotAccepted)
{
    const std::string before = GetLooksOfScene();
    for (int response : {GTK_RESPONSE_CANCEL, GTK_RESPONSE_DELETE_EVENT}) {
        rdstate = 0;
        Edit([] { GetColor("Color of selected", -1, -1); }, ChangeAll, response);
        EXPECT_EQ(GetLooksOfScene(), before);
        EXPECT_EQ(pnumber, 0);
        EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    }
}

TEST_F(ColorEdit, ComesBackWhenTheDialogIsTakenAway)
{
    const std::string before = GetLooksOfScene();
    AnswerDialog([](GtkDialog* dialog) {
        ChangeAll(FindControls(dialog));
        gtk_widget_destroy(GTK_WIDGET(dialog)); // as when the main window goes
        return true;
    });
    GetColor("Color of side", 0, 0);
    EXPECT_EQ(GetLooksOfScene(), before);
    EXPECT_EQ(csidenumber, 0);
}

TEST_F(ColorEdit, IsOneUndoStepOfItsShape)
{
    const std::string before = GetLooksOfScene();
    Edit([] { GetColor("Color of shape", 1, -1); }, ChangeAll, GTK_RESPONSE_OK);
    const std::string after = GetLooksOfScene();
    EXPECT_NE(after, before);
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].kind, 0);
    Undo();
    EXPECT_EQ(GetLooksOfScene(), before);
    EXPECT_EQ(pindex, 0);
    Redo();
    EXPECT_EQ(GetLooksOfScene(), after);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(ColorEdit, IsOneUndoStepOfTheSceneForTheSelection)
{
    const std::string before = GetLooksOfScene();
    SelectRows({1, 3});
    Edit(ColorSelected, ChangeAll, GTK_RESPONSE_OK);
    const std::string after = GetLooksOfScene();
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].kind, 1);
    EXPECT_TRUE(HasLook(0, 0, changed, VISIBLE_NOT));
    EXPECT_TRUE(HasLook(2, 0, changed, VISIBLE_NOT));
    EXPECT_NE(ColorsOf(SideOf(1, 0)), changed); // not selected
    Undo();
    EXPECT_EQ(GetLooksOfScene(), before);
    Redo();
    EXPECT_EQ(GetLooksOfScene(), after);
    EXPECT_EQ(FindBrokenRule(), "");
}

static std::string title; // of the dialog that was cancelled
static int editedsides = 0;

static void Remember(const Controls& controls)
{
    title = gtk_window_get_title(GTK_WINDOW(controls.dialog));
    editedsides = csidenumber / 4;
}

TEST_F(ColorEdit, EditsTheSideThatWasPressed)
{
    buttonpresssideactive = 3; // the square's side is 0, the pyramid's are 1 to 5
    Edit(
        ColorSide,
        [](const Controls& controls) {
            Remember(controls);
            EXPECT_EQ(csides[0], &shapes[1]->sides[2]);
        },
        GTK_RESPONSE_CANCEL);
    EXPECT_EQ(title, "Color of side");
    EXPECT_EQ(editedsides, 1);
}

TEST_F(ColorEdit, EditsTheFirstSideWhenThePressedOneIsGone)
{
    buttonpresssideactive = 7; // of seven
    Edit(
        ColorSide,
        [](const Controls& controls) {
            Remember(controls);
            EXPECT_EQ(csides[0], &shapes[0]->sides[0]);
        },
        GTK_RESPONSE_CANCEL);
    EXPECT_EQ(editedsides, 1);
}

TEST_F(ColorEdit, IsNotOfferedWithoutASide)
{
    ColorSide(); // no side was pressed; a dialog would wait for ever
    StartEmptyScene();
    buttonpresssideactive = 7;
    ColorSide();
    ColorShape();
    ColorSelected();
    GetColor("Color of shape", 0, -1);
    EXPECT_EQ(pnumber, 0);
}

TEST_F(ColorEdit, EditsTheShapeOfWhatWasPressed)
{
    const auto getshape = [] {
        const Side* master = nullptr;
        Edit(
            ColorShape,
            [&](const Controls& controls) {
                Remember(controls);
                master = csides[0];
            },
            GTK_RESPONSE_CANCEL);
        EXPECT_EQ(title, "Color of shape");
        for (int i = 0; i < shapenumber; i++) {
            if (master->shape == shapes[i] && editedsides == shapes[i]->sidenumber) {
                return i;
            }
        }
        return -1;
    };
    buttonpresspointactive = 4; // the square has points 0 to 3, the pyramid 4 to 8
    EXPECT_EQ(getshape(), 1);
    buttonpressstripeactive = 0; // a stripe comes before a point
    EXPECT_EQ(getshape(), 0);
    buttonpresssideactive = 6; // and a side before both
    EXPECT_EQ(getshape(), 2);
}

TEST_F(ColorEdit, EditsTheSelectionWhenNothingWasPressed)
{
    SelectRows({1, 2});
    Edit(ColorShape, Remember, GTK_RESPONSE_CANCEL);
    EXPECT_EQ(title, "Color of shape");
    EXPECT_EQ(editedsides, 6); // of the square and the pyramid
}

TEST_F(ColorEdit, EditsAllShapesWhenNoneIsSelected)
{
    Edit(ColorSelected, Remember, GTK_RESPONSE_CANCEL);
    EXPECT_EQ(title, "Color of selected");
    EXPECT_EQ(editedsides, 7);
}

TEST_F(ColorEdit, EditsEachSideOnceWhenAFolderAndItsContentAreSelected)
{
    const int folder = AddFolder("folder");
    const int inner = AddFolder("inner", folder);
    AddToScene(Cube(), "cube", folder);
    SelectRows({folder, inner, inner + 1}); // the cube's entry stays beside the folder's
    ASSERT_EQ(GetSelection(), "folder cube");
    Edit(ColorSelected, Remember, GTK_RESPONSE_CANCEL);
    EXPECT_EQ(editedsides, 6);
}

} // namespace korvane
