#include "tests/monkey/dialogs.h"

#include "scene/locate.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/monkey/hands.h"
#include "tests/support/coloredits.h"
#include "tests/support/widgets.h"
#include "ui/coloredit.h"
#include "ui/input.h"
#include "ui/transform.h"
#include "view/picking.h"

#include <gtk/gtk.h>

#include <functional>
#include <iterator>

namespace korvane::testing
{

// Runs a command that opens a dialog, does something with it and accepts or cancels it.
static DialogUse UseDialog(std::mt19937& random, const std::string& name,
                           const std::function<void()>& command,
                           const std::function<void(GtkDialog*)>& work)
{
    const bool accepted = Choose(random, 3) != 0;
    AnswerDialog([=](GtkDialog* dialog) {
        work(dialog);
        gtk_dialog_response(dialog, accepted ? GTK_RESPONSE_OK : GTK_RESPONSE_CANCEL);
        return true;
    });
    command();
    return {name + (accepted ? " accepted" : " cancelled"), accepted};
}

// Between -1 and 1.
static double SomeOffset(std::mt19937& random)
{
    return 2 * Fraction(random) - 1;
}

static DialogUse Transform(std::mt19937& random)
{
    struct DialogTool {
        int number;
        double reach; // of a slider that is moved
        bool hastarget;
    };
    const bool overside = LocateSide(buttonpresssideactive).shape >= 0;
    const bool overshape = GetPressedShape() >= 0;
    const DialogTool tools[] = {{ROTATE_SIDE, 180, overside},   {SCALE_SIDE, 1, overside},
                                {ROTATE_SHAPE, 180, overshape}, {SCALE_SHAPE, 1, overshape},
                                {ROTATE_SELECTED, 180, true},   {SCALE_SELECTED, 1, true}};
    const DialogTool tool = tools[Choose(random, int(std::size(tools)))];
    const std::string name = "tool " + std::to_string(tool.number);
    const auto command = [=] { ActionType(nullptr, GINT_TO_POINTER(tool.number)); };
    if (!tool.hastarget) {
        command(); // puts down a tool that was taken up before
        return {name + " without a target", false};
    }
    return UseDialog(random, name, command, [&random, tool](GtkDialog* dialog) {
        const auto sliders = FindWidgets(GTK_WIDGET(dialog), GTK_TYPE_HSCALE);
        for (int moves = Choose(random, 4); moves > 0; moves--) {
            const int slider = Choose(random, int(sliders.size()));
            MoveSlider(sliders[std::size_t(slider)], tool.reach * SomeOffset(random));
        }
    });
}

static void ChangeSomeLook(std::mt19937& random, const PageControls& page)
{
    switch (Choose(random, 3)) {
    case 0:
        gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(page.check), Choose(random, 2));
        break;
    case 1:
        MoveSlider(page.slider, SomeOffset(random));
        break;
    default:
        SetColor(page.selections[Choose(random, 2)], guint16(Choose(random, 65536)),
                 guint16(Choose(random, 65536)), guint16(Choose(random, 65536)),
                 guint16(Choose(random, 65536)));
    }
}

static bool HasSelectedShapes()
{
    int count = 0;
    GetSelectedShapes(&count);
    return count > 0;
}

static DialogUse Color(std::mt19937& random)
{
    struct Command {
        const char* name;
        void (*run)();
        bool opens; // its dialog
    };
    const Command commands[] = {
        {"color of side", ColorSide, LocateSide(buttonpresssideactive).shape >= 0},
        {"color of shape", ColorShape, GetPressedShape() >= 0 || HasSelectedShapes()},
        {"color of selected", ColorSelected, HasSelectedShapes()},
    };
    const Command& command = commands[Choose(random, int(std::size(commands)))];
    if (!command.opens) {
        return {std::string("no ") + command.name, false};
    }
    return UseDialog(random, command.name, command.run, [&random](GtkDialog* dialog) {
        const ColorControls controls = FindColorControls(dialog);
        for (int changes = Choose(random, 4); changes > 0; changes--) {
            ChangeSomeLook(random, controls.pages[Choose(random, 2)]);
        }
    });
}

DialogUse UseSomeDialog(std::mt19937& random)
{
    return Choose(random, 3) == 0 ? Color(random) : Transform(random);
}

} // namespace korvane::testing
