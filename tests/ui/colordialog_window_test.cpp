#include "ui/coloredit.h"

#include "scene/model.h"
#include "tests/support/coloredits.h"
#include "tests/support/widgets.h"
#include "view/frameloop.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

class ColorDialog : public ColorEdit
{
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

TEST_F(ColorDialog, HasAPageForEachFace)
{
    EditSide(0, 0, [](const ColorControls& controls) {
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

TEST_F(ColorDialog, HasAnOkAndACancelButton)
{
    EditSide(0, 0, [](const ColorControls& controls) {
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

TEST_F(ColorDialog, ShowsTheColoursOfTheSide)
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
    EditSide(0, 0, [](const ColorControls& controls) {
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

TEST_F(ColorDialog, ShowsWhatLiesOutsideTheRangeAsItsEnd)
{
    PaintSide(0, 0, -3, 0.5F, VISIBLE_BOTH); // -3 -2.5 -2 -1.5 ... , the back set from 1.5 on
    EditSide(0, 0, [](const ColorControls& controls) {
        EXPECT_EQ(GetChannels(controls.pages[0].selections[0]), (std::array{0, 0, 0, 0}));
        EXPECT_EQ(GetChannels(controls.pages[1].selections[0]),
                  (std::array{65535, 65535, 65535, 65535}));
    });
}

TEST_F(ColorDialog, ShowsWhichFacesAreVisible)
{
    for (int visibility = 0; visibility < 4; visibility++) {
        PaintSide(0, 0, 0.5F, 0, visibility);
        EditSide(0, 0, [visibility](const ColorControls& controls) {
            for (int i = 0; i < 2; i++) {
                const bool visible = (visibility >> i & 1) == 1;
                GtkToggleButton* check = GTK_TOGGLE_BUTTON(controls.pages[i].check);
                EXPECT_EQ(gtk_toggle_button_get_active(check) != FALSE, visible);
                EXPECT_EQ(gtk_widget_get_sensitive(controls.pages[i].box) != FALSE, visible);
                EXPECT_TRUE(gtk_widget_is_sensitive(controls.pages[i].check));
            }
        });
        EXPECT_EQ(shapes[0]->sides[0].visibility, visibility);
    }
}

} // namespace korvane
