#include "tests/support/transformscene.h"

#include "scene/model.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/widgets.h"
#include "ui/transform.h"
#include "view/mainview.h"
#include "view/picking.h"

namespace korvane::testing
{

std::vector<GtkWidget*> GetSliders(GtkDialog* dialog)
{
    return FindWidgets(GTK_WIDGET(dialog), GTK_TYPE_HSCALE);
}

void Slide(GtkDialog* dialog, std::size_t slider, double value)
{
    MoveSlider(GetSliders(dialog)[slider], value);
}

void TransformScene::SetUp()
{
    PointerTest::SetUp();
    AddToScene(CubeOfHalfEdge(0.1F), "first");
    AddToScene(CubeOfHalfEdge(0.1F), "second");
    AddToScene(MakeFlatShape({{0.2F, 0.1F, 0}, {0.4F, 0.1F, 0}, {0.4F, 0.2F, 0}, {0.2F, 0.2F, 0}}),
               "square");
    RefreshView();
    ForgetPressedElements();
}

void TransformScene::TearDown()
{
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(mainview.action, TOOL_NONE);
    SelectNodes({});
    ForgetPressedElements();
}

void Open(int tool, int response, const std::function<void(GtkDialog*)>& look)
{
    bool opened = false;
    AnswerDialog([&](GtkDialog* dialog) {
        opened = true;
        look(dialog);
        gtk_dialog_response(dialog, response);
        return true;
    });
    ActionType(nullptr, GINT_TO_POINTER(tool));
    EXPECT_TRUE(opened);
}

} // namespace korvane::testing
