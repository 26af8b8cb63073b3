#include "tests/monkey/monkey.h"

#include "geometry/construction.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/treeedit.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/monkey/dialogs.h"
#include "tests/monkey/fingerprint.h"
#include "tests/monkey/hands.h"
#include "tests/support/invariants.h"
#include "tests/support/rowdrag.h"
#include "tests/support/shapes.h"
#include "tests/support/widgets.h"
#include "ui/transform.h"
#include "ui/viewmenus.h"
#include "view/cameraflight.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>

namespace korvane::testing
{

static constexpr int stepsperscene = 150;
static constexpr int manypoints = 400; // a scene that has grown to this is given up

struct Monkey {
    explicit Monkey(unsigned seed) : random(seed), free(seed % 4 == 0)
    {
    }

    std::mt19937 random;
    bool free;                      // it also does what leaves no undo step
    std::vector<std::string> steps; // since the last fresh scene
    std::string first;              // the fingerprint of that scene
    int left = 0;                   // steps to go until the next fresh scene
    std::string broken;             // a rule that a step has seen broken
};

static std::string Tell(const char* what, const Place& place)
{
    char text[80];
    std::snprintf(text, sizeof text, "%s %.9g %.9g", what, double(place[0]), double(place[1]));
    return text;
}

static std::string LeftClick(Monkey& monkey)
{
    const Place place = SomePlace(monkey.random);
    Click(place, 1);
    FinishFlight();
    return Tell("left click", place);
}

// A polygon in one go, closed on one of its points: clicks alone seldom come to that.
static std::string DrawPolygon(Monkey& monkey)
{
    PressKey(GDK_n);
    const int number = 3 + Choose(monkey.random, 4);
    std::vector<Place> places;
    for (int i = 0; i < number; i++) {
        places.push_back(AnywhereOnScreen(monkey.random));
        Click(places.back(), 1);
    }
    Click(places[std::size_t(Choose(monkey.random, number - 1))], 1);
    return Tell("polygon", places.front()) + " of " + std::to_string(number);
}

// A chain from a point of a shape to another.
static std::string DrawChain(Monkey& monkey)
{
    if (activepointnumber == 0 || newpointnumber > 0) {
        return "no chain";
    }
    const Place start = OnSomePoint(monkey.random);
    Click(start, 1);
    const int inner = Choose(monkey.random, 3);
    for (int i = 0; i < inner; i++) {
        Click(Mix(start, AnywhereOnScreen(monkey.random), 0.3), 1);
    }
    for (int tries = 0; tries < 20 && newpointnumber > 0; tries++) {
        const int point = Choose(monkey.random, activepointnumber);
        if (activepoints[point].active != 0) {
            Click(OnRecord(point), 1);
        }
    }
    return Tell("chain", start) + " over " + std::to_string(inner);
}

static std::string MiddleClick(Monkey& monkey)
{
    const Place place = SomePlace(monkey.random);
    Click(place, 2);
    return Tell("middle click", place);
}

static std::string LeftDrag(Monkey& monkey)
{
    const Place from = SomePlace(monkey.random);
    const Place to =
        Mix(from, AnywhereOnScreen(monkey.random), Choose(monkey.random, 2) == 0 ? 0.1 : 0.5);
    MoveTo(from);
    Press(from, 1);
    const int steps = 1 + Choose(monkey.random, 4);
    for (int i = 1; i <= steps; i++) {
        MoveTo(Mix(from, to, double(i) / steps));
    }
    Release(to, 1);
    return Tell("drag", from) + Tell(" to", to);
}

static std::string MiddleDrag(Monkey& monkey)
{
    const Place to = Mix({0, 0, 0}, AnywhereOnScreen(monkey.random), 0.2);
    MoveTo({0, 0, 0});
    Press({0, 0, 0}, 2);
    MoveTo(to);
    Release(to, 2);
    return Tell("pan", to);
}

static std::string Turn(Monkey& monkey)
{
    const Place from = AnywhereOnScreen(monkey.random);
    const Place to = AnywhereOnScreen(monkey.random);
    MouseRotate(from[0], from[1], to[0], to[1]);
    return Tell("turn", from) + Tell(" to", to);
}

static std::string Wheel(Monkey& monkey)
{
    const Place place = SomePlace(monkey.random);
    MoveTo(place);
    const bool in = mainview.scale < 0.5F || (mainview.scale < 4 && Choose(monkey.random, 2) == 0);
    Scroll(place, in);
    return Tell(in ? "wheel in" : "wheel out", place);
}

// The items that edit, of whichever menu has been popped up.
static GtkWidget* ChooseItem(Monkey& monkey)
{
    const bool first = Choose(monkey.random, 2) == 0;
    const std::array<std::array<GtkWidget*, 3>, 3> menus = {
        {{pointmenu, menuvertex, menupointdel},
         {stripemenu, menuedge, menustripedel},
         {sidemenu, menuborder, menuduplicate}}};
    for (const auto& menu : menus) {
        if (gtk_widget_get_visible(menu[0])) {
            return first ? menu[1] : menu[2];
        }
    }
    return nullptr;
}

static void CloseMenus()
{
    for (GtkWidget* menu : {pointmenu, stripemenu, sidemenu, bgmenu, bgmenu2}) {
        gtk_menu_popdown(GTK_MENU(menu));
    }
}

static std::string RightClick(Monkey& monkey)
{
    const Place place = SomePlace(monkey.random);
    Click(place, 3);
    GtkWidget* item = ChooseItem(monkey);
    CloseMenus();
    if (item == nullptr) {
        return Tell("right click", place);
    }
    const char* label = gtk_menu_item_get_label(GTK_MENU_ITEM(item));
    gtk_menu_item_activate(GTK_MENU_ITEM(item));
    return Tell(label, place);
}

// A side swept along a path of a few clicks, open or closed.
static std::string Sweep(Monkey& monkey)
{
    if (activesidenumber == 0) {
        return "no sweep";
    }
    const Place place = OnSomeSide(monkey.random);
    Click(place, 3);
    const bool overside = gtk_widget_get_visible(sidemenu);
    CloseMenus();
    if (!overside) {
        return Tell("missed a side", place);
    }
    gtk_menu_item_activate(GTK_MENU_ITEM(menuduplicate));
    const int clicks = 1 + Choose(monkey.random, 3);
    for (int i = 0; i < clicks; i++) {
        Click(Mix(place, AnywhereOnScreen(monkey.random), 0.6), 1);
    }
    std::vector<Place> ends;
    for (int i = 0; i < activepointnumber; i++) {
        if (activepoints[i].active != 0) {
            ends.push_back(OnRecord(i));
        }
    }
    const bool closed = !ends.empty() && Choose(monkey.random, 2) == 0;
    const Place end = closed ? ends[std::size_t(Choose(monkey.random, int(ends.size())))] : place;
    Click(end, closed ? 1 : 3);
    return Tell(closed ? "closed sweep" : "sweep", place) + Tell(" to", end);
}

// A tool of a context menu.
static std::string TakeUpTool(Monkey& monkey)
{
    static constexpr std::array<int, 3> tools = {MOVE_SIDE, MOVE_SHAPE, MOVE_SELECTED};
    const int tool = tools[std::size_t(Choose(monkey.random, int(tools.size())))];
    const Place place = SomePlace(monkey.random);
    Click(place, 3);
    CloseMenus();
    ActionType(nullptr, GINT_TO_POINTER(tool));
    return "tool " + std::to_string(tool) + Tell(" at", place);
}

static std::string MoveWithTool(Monkey& monkey)
{
    const std::string told = TakeUpTool(monkey);
    return told + ": " + LeftDrag(monkey);
}

static std::string UseDialog(Monkey& monkey)
{
    const bool aims = activesidenumber > 0 && Choose(monkey.random, 2) == 0;
    const Place place = aims ? OnSomeSide(monkey.random) : SomePlace(monkey.random);
    Click(place, 3);
    CloseMenus();
    const std::string before = GetFingerprint();
    const DialogUse use = UseSomeDialog(monkey.random);
    if (!use.accepted && GetFingerprint() != before) {
        monkey.broken = "a dialog that is not accepted changes nothing";
    }
    return Tell(use.told.c_str(), place);
}

static std::string Select(Monkey& monkey)
{
    if (Choose(monkey.random, 3) == 0) {
        gtk_tree_selection_unselect_all(tselection);
        return "select nothing";
    }
    const int node = 1 + Choose(monkey.random, treeiternumber - 1);
    if (node < treeiternumber) {
        SelectRow(node);
    }
    return "select node " + std::to_string(node);
}

static std::string AddFolder(Monkey&)
{
    CreateTreeIter(NODE_FOLDER, CopyText("folder"));
    return "new folder";
}

static std::string Rename(Monkey&)
{
    if (treeselectednumber == 1) {
        AnswerDialog(GTK_RESPONSE_OK);
        RenameSelected();
    }
    return "rename";
}

static std::string DragSomeRow(Monkey& monkey)
{
    const int node = 1 + Choose(monkey.random, treeiternumber - 1);
    const int goal = 1 + Choose(monkey.random, treeiternumber - 1);
    if (node >= treeiternumber) {
        return "no row to drag";
    }
    GtkTreePath* path = gtk_tree_model_get_path(GTK_TREE_MODEL(store), &treeiters[goal].iter);
    if (Choose(monkey.random, 2) == 0) {
        gtk_tree_path_append_index(path, 0); // into it
    }
    DragRow(node, path);
    gtk_tree_path_free(path);
    return "drag row " + std::to_string(node) + " to " + std::to_string(goal);
}

static std::string ChooseKey(Monkey& monkey)
{
    static constexpr std::array<unsigned, 16> keys = {
        GDK_c, GDK_v, GDK_x, GDK_Delete, GDK_z, GDK_y, GDK_z,        GDK_BackSpace,
        GDK_n, GDK_n, GDK_n, GDK_plus,   GDK_f, GDK_g, GDK_KP_Enter, GDK_Left};
    const unsigned key = keys[std::size_t(Choose(monkey.random, int(keys.size())))];
    PressKey(key);
    if (Choose(monkey.random, 3) != 0) {
        FinishFlight();
    }
    return std::string("key ") + gdk_keyval_name(key);
}

static std::string PressKeyWithTool(Monkey& monkey)
{
    const std::string told = TakeUpTool(monkey);
    return told + ": " + ChooseKey(monkey);
}

static std::string PressKeyInADrag(Monkey& monkey)
{
    const Place from = SomePlace(monkey.random);
    const Place to = AnywhereOnScreen(monkey.random);
    MoveTo(from);
    Press(from, 1);
    MoveTo(Mix(from, to, 0.3));
    const std::string told = ChooseKey(monkey);
    MoveTo(to);
    Release(to, 1);
    return told + Tell(" in a drag", from) + Tell(" to", to);
}

static std::string ClickThroughSpace(Monkey& monkey)
{
    PressKey(GDK_space);
    const std::string told = LeftClick(monkey);
    LetGoOfSpace();
    return "with space held: " + told;
}

static std::string Wait(Monkey& monkey)
{
    const int ticks = 1 + Choose(monkey.random, 20);
    for (int i = 0; i < ticks; i++) {
        PlayCamera();
        runtime++;
    }
    return "wait " + std::to_string(ticks);
}

static OwnedShape MakeSomeShape(Monkey& monkey)
{
    static constexpr std::array<OwnedShape (*)(), 9> catalogue = {
        Cube, TrianglePrism, Pyramid, Tetrahedron, Square, ConcaveL, Star, FlatTriangle, Cube};
    OwnedShape shape = catalogue[std::size_t(Choose(monkey.random, int(catalogue.size())))]();
    const Place shift = AnywhereOnScreen(monkey.random);
    for (int i = 0; i < shape->pointnumber; i++) {
        for (int k = 0; k < 3; k++) {
            shape->points[i][k] = shape->points[i][k] * 0.35F + shift[std::size_t(k)] * 0.5F;
        }
    }
    CompleteShape(shape.get());
    return shape;
}

static void StartScene(Monkey& monkey)
{
    NewMrt();
    const int number = 1 + Choose(monkey.random, 3);
    for (int i = 0; i < number; i++) {
        AddToScene(MakeSomeShape(monkey), "start");
    }
    RefreshView();
    ChangeActives();
    monkey.steps.clear();
    monkey.first = GetFingerprint();
    monkey.left = stepsperscene;
}

static std::string FindBrokenRuleOfBodies()
{
    std::string broken = FindBrokenRule();
    for (int i = 0; i < shapenumber && broken.empty(); i++) {
        if (shapes[i]->sidenumber > 1) {
            broken = FindBrokenRuleOfClosedBody(*shapes[i]);
        }
    }
    return broken;
}

// Undoes or redoes until `arrived`, a flight and a restored state being a call each.
static std::string Walk(void (*step)(), bool (*arrived)(), const std::string& name)
{
    for (int calls = 4 * pnumber + 4; !arrived(); calls--) {
        if (calls == 0) {
            return name + " comes to its end";
        }
        step();
        FinishFlight();
        const std::string broken = FindBrokenRuleOfBodies();
        if (!broken.empty()) {
            return name + ": " + broken;
        }
    }
    return "";
}

static std::string GoToLastState()
{
    return Walk(
        PopRedo, [] { return pindex + 1 >= pnumber; }, "redo");
}

static std::string GoBackAndForth(const Monkey& monkey)
{
    DelNewPoints();
    FinishFlight();
    std::string broken = GoToLastState();
    const std::string last = GetFingerprint();
    if (broken.empty()) {
        broken = Walk(
            PopUndo, [] { return pindex == 0; }, "undo");
    }
    const std::string first = GetFingerprint();
    if (broken.empty()) {
        broken = GoToLastState();
    }
    if (!broken.empty() || monkey.free) {
        return broken;
    }
    if (first != monkey.first) {
        return "undoing everything gives the first scene";
    }
    return GetFingerprint() == last ? "" : "redoing everything gives the last scene";
}

struct Action {
    int weight;
    std::string (*take)(Monkey&);
    bool leavesstep = true; // false: a change that undo does not know
};

static constexpr std::array actions = {
    Action{6, LeftClick},
    Action{4, DrawPolygon},
    Action{12, DrawChain},
    Action{6, MiddleClick},
    Action{10, LeftDrag},
    Action{2, MiddleDrag},
    Action{5, Turn},
    Action{2, Wheel},
    Action{10, RightClick},
    Action{5, MoveWithTool},
    Action{2, UseDialog},
    Action{8, Sweep},
    Action{3, Select},
    Action{8, ChooseKey},
    Action{2, ClickThroughSpace},
    Action{3, PressKeyWithTool},
    Action{4, PressKeyInADrag},
    Action{3, Wait},
    Action{2, AddFolder, false},
    Action{1, Rename, false},
    Action{6, DragSomeRow, false},
};

static const Action& ChooseAction(Monkey& monkey)
{
    int total = 0;
    for (const Action& action : actions) {
        total += monkey.free || action.leavesstep ? action.weight : 0;
    }
    int ticket = Choose(monkey.random, total); // those without a step stand at the end
    const Action* chosen = actions.data();
    while (ticket >= chosen->weight) {
        ticket -= chosen->weight;
        chosen++;
    }
    return *chosen;
}

static int CountPoints()
{
    int number = 0;
    for (int i = 0; i < shapenumber; i++) {
        number += shapes[i]->pointnumber;
    }
    return number;
}

static void TakeAction(Monkey& monkey, bool telling)
{
    const Action& action = ChooseAction(monkey);
    const std::string before = telling ? GetFingerprint() : "";
    monkey.steps.push_back(action.take(monkey));
    if (telling) {
        const char mark = GetFingerprint() != before ? '*' : ' ';
        std::fprintf(stderr, "%c %s\n", mark, monkey.steps.back().c_str());
    }
    monkey.left--;
}

static std::string TakeStep(Monkey& monkey, bool telling)
{
    TakeAction(monkey, telling);
    std::string broken = monkey.broken.empty() ? FindBrokenRuleOfBodies() : monkey.broken;
    if (broken.empty() && (monkey.left <= 0 || CountPoints() > manypoints)) {
        broken = GoBackAndForth(monkey);
        if (broken.empty()) {
            StartScene(monkey);
        }
    }
    return broken;
}

Wandering Wander(unsigned seed, int number, bool telling)
{
    Monkey monkey(seed);
    StartScene(monkey);
    std::string broken;
    for (int i = 0; i < number && broken.empty(); i++) {
        broken = TakeStep(monkey, telling);
    }
    return {broken, monkey.steps};
}

} // namespace korvane::testing
