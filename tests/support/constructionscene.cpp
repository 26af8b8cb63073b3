#include "tests/support/constructionscene.h"

#include "geometry/construction.h"
#include "geometry/creation.h"
#include "geometry/duplication.h"
#include "tests/support/camera.h"
#include "tests/support/widgets.h"
#include "ui/input.h"
#include "view/mainview.h"
#include "view/picking.h"

namespace korvane::testing
{

void ConstructionScene::SetUp()
{
    ShowMainWindow();
    StartView();
    mainview.bgshape = BACKGROUND_NONE;
    keyspace = 0;
    mstate = POINTER_IDLE;
}

void ConstructionScene::TearDown()
{
    EndNewShapeTool();
    StartView();
}

void ConstructionScene::PointAt(float x, float y)
{
    mouse[0] = gmouse[0] = x;
    mouse[1] = gmouse[1] = y;
    mouse[2] = 0;
    SearchActive();
}

void ConstructionScene::MakeAllPickable()
{
    const auto make = [](ActiveElement* records, int number) {
        for (int k = 0; k < number; k++) {
            records[k].active = 1;
        }
    };
    make(activepoints, activepointnumber - centernumber - newpointnumber);
    make(activestripes, activestripenumber);
    make(activesides, activesidenumber);
}

void ConstructionScene::TurnToTheSide()
{
    SetRotation({{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}});
    RefreshView();
}

int ConstructionScene::AddProjected(OwnedShape shape)
{
    return AddToView(std::move(shape));
}

static std::string GetMarksOf(const ActiveElement* records, int number)
{
    std::string marks;
    for (int i = 0; i < number; i++) {
        marks += records[i].active != 0 ? '1' : '0';
    }
    return marks;
}

std::string ConstructionScene::GetMarks()
{
    return GetMarksOf(GetNewPointRecords(), newpointnumber);
}

std::string ConstructionScene::GetMarksOfShape(int shapeindex)
{
    int first = 0;
    for (int i = 0; i < shapeindex; i++) {
        first += shapes[i]->pointnumber;
    }
    return GetMarksOf(activepoints + first, shapes[shapeindex]->pointnumber);
}

std::array<float, 3> PlaceOf(const Shape* shape, int point)
{
    const float* p = shape->points[point];
    return {p[0], p[1], p[2]};
}

} // namespace korvane::testing
