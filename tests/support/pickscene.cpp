#include "tests/support/pickscene.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/shapes.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <iterator>

namespace korvane::testing
{

static const MainView startview = mainview; // before any test has changed it

void StartPickScene()
{
    newsign = duplicatesign = keyspace = 0;
    newpointnumber = centernumber = 0;
    DeleteAllShapes();
    mainview = startview;
    width = height = 600;
    std::fill_n(mouse, 3, 0.0F);
    std::fill(std::begin(activebgcube), std::end(activebgcube), ActiveElement{});
    std::fill_n(&cubepoints[0][0], 72, 9.0F);
}

int AddSquare(float left, float bottom, float size, float z)
{
    const float right = left + size, top = bottom + size;
    AddShape(MakeFlatShape({{left, bottom, z}, {right, bottom, z}, {right, top, z}, {left, top, z}})
                 .release());
    return shapenumber - 1;
}

int AddSlope(float left, float bottom, float size, float z)
{
    const float right = left + size, top = bottom + size;
    AddShape(
        MakeFlatShape({{left, bottom, -z}, {right, bottom, -z}, {right, top, z}, {left, top, z}})
            .release());
    return shapenumber - 1;
}

void ProjectAndPick()
{
    SetActives();
    TransferAllShape();
    ChangeActives();
}

const ActiveElement* FindAt(float x, float y)
{
    mouse[0] = x;
    mouse[1] = y;
    mouse[2] = 0;
    SearchActive();
    return activepointer;
}

const ActiveElement* PointOf(int square, int corner)
{
    return &activepoints[4 * square + corner];
}
const ActiveElement* StripeOf(int square)
{
    return &activestripes[square];
}
const ActiveElement* SideOf(int square)
{
    return &activesides[square];
}

void AppendActivePoint(float* point, unsigned char active)
{
    GrowArray(activepoints, activepointnumber, activepointnumber + 1);
    activepoints[activepointnumber].type = ELEMENT_POINT;
    activepoints[activepointnumber].active = active;
    activepoints[activepointnumber].element = point;
    activepointnumber++;
}

void SetFace(int face, float left, float bottom, float size)
{
    const float right = left + size, top = bottom + size;
    const float corners[4][3] = {
        {left, top, -0.9F}, {left, bottom, -0.9F}, {right, bottom, -0.9F}, {right, top, -0.9F}};
    std::copy_n(&corners[0][0], 12, cubepoints[4 * face]);
    activebgcube[face].active = 1;
}

} // namespace korvane::testing
