// What the dialogs of the transform tools hold. The toolkit does not tell the marks of a slider, so
// this program is linked with a function of its own in the place of the one that adds them.
#include "tests/support/transformscene.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "ui/transform.h"
#include "view/picking.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

using TransformDialogs = TransformScene;

struct SliderMark {
    void* slider;
    double value;
    int position;
    std::string markup;
};

static std::vector<SliderMark> marks; // in the order in which they were added

extern "C" {
void __real_gtk_scale_add_mark(GtkScale*, double, GtkPositionType, const char*);
void __wrap_gtk_scale_add_mark(GtkScale*, double, GtkPositionType, const char*);
}

void __wrap_gtk_scale_add_mark(GtkScale* slider, double value, GtkPositionType position,
                               const char* markup)
{
    marks.push_back({slider, value, position, GetText(markup)});
    __real_gtk_scale_add_mark(slider, value, position, markup);
}

using Markups = std::array<const char*, 9>;

// From -180 to 180.
static constexpr Markups anglemarkups = {"<small><small>-180°</small></small>",
                                         "<small><small><small>-135°</small></small></small>",
                                         "<small><small>-90°</small></small>",
                                         "<small><small><small>-45°</small></small></small>",
                                         "<small>0°</small>",
                                         "<small><small><small>45°</small></small></small>",
                                         "<small><small>90°</small></small>",
                                         "<small><small><small>135°</small></small></small>",
                                         "<small><small>180°</small></small>"};

// From -4 to 4. They are no angles and look as if they were.
static constexpr Markups exponentmarkups = {"<small><small>-4°</small></small>",
                                            "<small><small><small>-3°</small></small></small>",
                                            "<small><small>-2°</small></small>",
                                            "<small><small><small>-1°</small></small></small>",
                                            "<small>0°</small>",
                                            "<small><small><small>1°</small></small></small>",
                                            "<small><small>2°</small></small>",
                                            "<small><small><small>3°</small></small></small>",
                                            "<small><small>4°</small></small>"};

// The marks of a slider from `first` on, `step` apart, all below it.
static void ExpectMarks(GtkWidget* slider, double first, double step, const Markups& markups)
{
    std::vector<SliderMark> own;
    std::ranges::copy_if(marks, std::back_inserter(own),
                         [slider](const SliderMark& mark) { return mark.slider == slider; });
    ASSERT_EQ(own.size(), markups.size());
    for (std::size_t i = 0; i < own.size(); i++) {
        EXPECT_EQ(own[i].value, first + step * double(i));
        EXPECT_EQ(own[i].position, GTK_POS_BOTTOM);
        EXPECT_EQ(own[i].markup, markups[i]);
    }
}

struct DialogLook {
    int tool;
    const char* title;
    int code; // of the first slider
};

static void ExpectPlainDialog(GtkDialog* dialog, const DialogLook& look)
{
    GtkWindow* window = GTK_WINDOW(dialog);
    EXPECT_STREQ(gtk_window_get_title(window), look.title);
    EXPECT_TRUE(gtk_window_get_modal(window));
    EXPECT_FALSE(gtk_window_get_resizable(window));
    EXPECT_TRUE(gtk_window_get_skip_taskbar_hint(window));
    EXPECT_TRUE(gtk_window_get_skip_pager_hint(window));
    EXPECT_EQ(gtk_window_get_type_hint(window), GDK_WINDOW_TYPE_HINT_NORMAL);
    EXPECT_EQ(gtk_window_get_transient_for(window), GTK_WINDOW(mainwindow));
    const auto buttons = GetChildren(gtk_dialog_get_action_area(dialog));
    ASSERT_EQ(buttons.size(), 2U);
    for (GtkWidget* button : buttons) {
        const std::string label = GetText(gtk_button_get_label(GTK_BUTTON(button)));
        const int response = gtk_dialog_get_response_for_widget(dialog, button);
        EXPECT_EQ(label, response == GTK_RESPONSE_OK ? "gtk-ok" : "gtk-cancel");
    }
}

static void ExpectSlider(GtkWidget* slider, double reach, double step, int digits, int code)
{
    double lower, upper, stepincrement;
    GtkAdjustment* adjustment = gtk_range_get_adjustment(GTK_RANGE(slider));
    g_object_get(adjustment, "lower", &lower, "upper", &upper, "step-increment", &stepincrement,
                 nullptr);
    EXPECT_EQ(lower, -reach);
    EXPECT_EQ(upper, reach);
    EXPECT_EQ(stepincrement, step);
    EXPECT_EQ(gtk_range_get_value(GTK_RANGE(slider)), 0);
    EXPECT_EQ(gtk_scale_get_digits(GTK_SCALE(slider)), digits);
    int requested;
    gtk_widget_get_size_request(slider, &requested, nullptr);
    EXPECT_EQ(requested, 360);
    EXPECT_TRUE(
        IsConnected(slider, "change-value", G_CALLBACK(ScaleChangeValue), GINT_TO_POINTER(code)));
}

static GtkWidget* GetBox(GtkDialog* dialog)
{
    return GetChildren(gtk_dialog_get_content_area(dialog))[0];
}

static void ExpectRow(GtkWidget* row, const char* markup)
{
    ASSERT_TRUE(GTK_IS_HBOX(row));
    const auto parts = GetChildren(row);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_STREQ(gtk_label_get_label(GTK_LABEL(parts[0])), markup);
    EXPECT_TRUE(gtk_label_get_use_markup(GTK_LABEL(parts[0])));
    EXPECT_TRUE(GTK_IS_HSCALE(parts[1]));
}

TEST_F(TransformDialogs, OfferThreeAnglesToTurnBy)
{
    buttonpresssideactive = 8;
    const DialogLook looks[] = {{ROTATE_SIDE, "Rotate side", 1},
                                {ROTATE_SHAPE, "Rotate shape", 4},
                                {ROTATE_SELECTED, "Rotate selected", 7}};
    for (const DialogLook& look : looks) {
        SCOPED_TRACE(look.title);
        marks.clear();
        Open(look.tool, GTK_RESPONSE_CANCEL, [&](GtkDialog* dialog) {
            ExpectPlainDialog(dialog, look);
            GtkBox* box = GTK_BOX(GetBox(dialog));
            EXPECT_TRUE(gtk_box_get_homogeneous(box));
            EXPECT_EQ(gtk_box_get_spacing(box), 10);
            EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(box)), 10U);
            const auto rows = GetChildren(GTK_WIDGET(box));
            ASSERT_EQ(rows.size(), 3U);
            ExpectRow(rows[0], "<b> X axis: </b>");
            ExpectRow(rows[1], "<b> Y axis: </b>");
            ExpectRow(rows[2], "<b> Z axis: </b>");
            for (int i = 0; i < 3; i++) {
                GtkWidget* slider = GetSliders(dialog)[std::size_t(i)];
                ExpectSlider(slider, 180, 0.1, 1, look.code + i);
                ExpectMarks(slider, -180, 45, anglemarkups);
            }
        });
    }
}

// The title is the same for all three.
TEST_F(TransformDialogs, OfferFourExponentsToScaleBy)
{
    buttonpresssideactive = 8;
    const DialogLook looks[] = {{SCALE_SIDE, "Scale selected", 10},
                                {SCALE_SHAPE, "Scale selected", 14},
                                {SCALE_SELECTED, "Scale selected", 18}};
    for (const DialogLook& look : looks) {
        SCOPED_TRACE(look.tool);
        marks.clear();
        Open(look.tool, GTK_RESPONSE_CANCEL, [&](GtkDialog* dialog) {
            ExpectPlainDialog(dialog, look);
            GtkBox* box = GTK_BOX(GetBox(dialog));
            EXPECT_FALSE(gtk_box_get_homogeneous(box));
            EXPECT_EQ(gtk_box_get_spacing(box), 0);
            EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(box)), 10U);
            const auto rows = GetChildren(GTK_WIDGET(box));
            ASSERT_EQ(rows.size(), 5U);
            ExpectRow(rows[0], "<b> A: </b>");
            EXPECT_TRUE(GTK_IS_HSEPARATOR(rows[1]));
            ExpectRow(rows[2], "<b> X: </b>");
            ExpectRow(rows[3], "<b> Y: </b>");
            ExpectRow(rows[4], "<b> Z: </b>");
            for (int i = 0; i < 4; i++) {
                GtkWidget* slider = GetSliders(dialog)[std::size_t(i)];
                ExpectSlider(slider, 4, 0.01, 2, look.code + i);
                ExpectMarks(slider, -4, 1, exponentmarkups);
            }
        });
    }
}

} // namespace korvane
