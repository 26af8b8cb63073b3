#include "tests/support/clipboardscene.h"

#include "scene/clipboard.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <algorithm>

namespace korvane::testing
{

void EmptyTheClipboard()
{
    SelectRows({});
    CopySelected();
}

std::string GetCopiedNames()
{
    std::string text;
    for (int i = 0; i < copyiternumber; i++) {
        text += (i > 0 ? " " : "") + std::string(copyiters[i].name);
    }
    return text;
}

void TurnCamera(float scale, int8_t perspective)
{
    const float rotation[9] = {0, 0, 1, 1, 0, 0, 0, 1, 0};
    std::copy_n(rotation, 9, mainview.rotation);
    std::copy_n(rotation, 9, mainview.freerotation);
    mainview.center[0] = 0.25F;
    mainview.scale = scale;
    mainview.perspective = perspective;
    RefreshView();
}

void Clipboard::SetUp()
{
    ShowMainWindow();
    StartEmptyScene();
    StartView();
    a = AddFolder("a");
    b = AddFolder("b", a);
    e = AddFolder("e");
    deep = AddShapeRow(FlatTriangle(), "deep", b);
    leaf = AddShapeRow(Pyramid(), "leaf", a);
    box = AddShapeRow(Cube(), "box", 0);
    square = AddShapeRow(Square(), "square", 0);
    SelectRows({});
    RefreshView();
    rdstate = 0;
}

void Clipboard::TearDown()
{
    EXPECT_EQ(FindBrokenRule(), "");
    StartEmptyScene();
    EmptyTheClipboard();
    StartView();
}

void Clipboard::Copy(const std::vector<int>& nodes)
{
    SelectRows(nodes);
    CopySelected();
}

void Clipboard::Paste(const std::vector<int>& selection)
{
    SelectRows(selection);
    PasteSelected();
    EXPECT_EQ(FindBrokenRule(), "");
}

} // namespace korvane::testing
