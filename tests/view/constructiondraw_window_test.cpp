#include "view/constructiondraw.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/arrays.h"
#include "tests/support/glwindow.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

using Places = std::vector<std::array<float, 3>>;

// A pixel is 0.005 view units; markers are four pixels wide. The scene is empty, so that the active
// points are those of the construction: the centres, then the new points.
class ConstructionDrawing : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyView();
    }

    void TearDown() override
    {
        StartEmptyView();
    }

    static void Copy(const Places& places, float (*&world)[3], float (*&screen)[3], int& number)
    {
        number = int(places.size());
        world = NewArray<float[3]>(number);
        screen = NewArray<float[3]>(number);
        for (int i = 0; i < number; i++) {
            std::copy_n(places[std::size_t(i)].data(), 3, world[i]);
        }
    }

    static void Construct(const Places& centers, const Places& points)
    {
        Copy(centers, centerpoints, rcenterpoints, centernumber);
        Copy(points, newpoints, rotated, newpointnumber);
        FreeArray(activepoints);
        activepointnumber = centernumber + newpointnumber;
        activepoints = NewArray<ActiveElement>(activepointnumber);
        for (int i = 0; i < activepointnumber; i++) {
            activepoints[i].active = 1;
            activepoints[i].type = ELEMENT_POINT;
            activepoints[i].element =
                i < centernumber ? rcenterpoints[i] : rotated[i - centernumber];
        }
    }

    Picture Draw()
    {
        return window.Draw([] { ConstructionDraw(&mainview); });
    }

    GlWindow window{200, 200};
};

TEST_F(ConstructionDrawing, DrawsNothingWhenNothingIsConstructed)
{
    gmouse[0] = gmouse[1] = 0;
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0, 0), cleared);
}

TEST_F(ConstructionDrawing, ProjectsTheNewPoints)
{
    Construct({}, {{0.2F, 0.1F, 0}});
    mainview.scale = 2;
    EXPECT_EQ(Draw().AtView(0.404, 0.196), MakePixel(0.4, 1, 0.4));
    EXPECT_FLOAT_EQ(rotated[0][0], 0.4F);
    EXPECT_FLOAT_EQ(rotated[0][1], 0.2F);
}

TEST_F(ConstructionDrawing, ColorsNewPointsByTheirState)
{
    Construct({}, {{-0.3F, 0.3F, 0}, {-0.1F, 0.3F, 0}, {0.1F, 0.3F, 0}, {0.3F, 0.3F, 0}});
    activepoints[0].active = 0;
    activepoints[2].fade = 10; // 0.4 + 0.6 * 0.75
    activepoints[3].fade = fadefull;
    const Picture picture = Draw();
    const double above = 0.306; // the path runs through the middles
    EXPECT_EQ(picture.AtView(-0.3, above), MakePixel(0.4, 0.4, 0.4));
    EXPECT_EQ(picture.AtView(-0.1, above), MakePixel(0.4, 1, 0.4));
    EXPECT_EQ(picture.AtView(0.1, above), MakePixel(0.85, 1, 0.85));
    EXPECT_EQ(picture.AtView(0.3, above), MakePixel(1, 1, 1));
    EXPECT_GT(picture.AtView(0.3125, 0.3125).red, 200); // a tick of the hovered one
    EXPECT_EQ(picture.AtView(-0.0875, 0.3125), cleared);
}

TEST_F(ConstructionDrawing, JoinsNewPointsByADarkBlueLine)
{
    Construct({}, {{-0.2475F, 0.0025F, 0}, {0.2525F, 0.0025F, 0}});
    const Pixel pixel = Draw().AtView(0.0025, 0.0025);
    EXPECT_LT(pixel.red, 20);
    EXPECT_NEAR(pixel.blue, 51, 15);
}

TEST_F(ConstructionDrawing, LeadsALineToThePlacementPosition)
{
    Construct({}, {{-0.2475F, 0.0025F, 0}});
    gmouse[0] = 0.2525F;
    gmouse[1] = 0.0025F;
    EXPECT_LT(Draw().AtView(0.0025, 0.0025).red, 65); // grey 0.2
    keyspace = 1;
    EXPECT_EQ(Draw().AtView(0.0025, 0.0025), cleared);
}

TEST_F(ConstructionDrawing, LeadsALineToThePointUnderTheMouse)
{
    Construct({}, {{-0.2475F, -0.2475F, 0}, {-0.2475F, 0.0025F, 0}});
    gmouse[0] = 0.2525F;
    gmouse[1] = 0.0025F;
    float point[3] = {-0.2475F, 0.2525F, 0};
    ActiveElement record = {1, 1, 0, 0, ELEMENT_POINT, {}, point};
    activepointer = &record;
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0.0025, 0.0025), cleared);
    EXPECT_LT(picture.AtView(-0.2475, 0.1525).red, 65);
    record.type = ELEMENT_CUBEFACE;
    EXPECT_LT(Draw().AtView(0.0025, 0.0025).red, 65);
    activepointer = nullptr;
}

TEST_F(ConstructionDrawing, ColorsCentersByTheirState)
{
    Construct({{-0.3F, 0, 0}, {-0.1F, 0, 0}, {0.1F, 0, 0}, {0.3F, 0, 0}}, {});
    activepoints[0].active = 0;
    activepoints[2].fade = 10; // g = 0.4 + 0.6 * 0.75
    activepoints[3].fade = fadefull;
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(-0.3, 0.004), MakePixel(0.4, 0.4, 0.4));
    EXPECT_EQ(picture.AtView(-0.1, 0.004), MakePixel(1, 0.5, 0));
    EXPECT_EQ(picture.AtView(0.1, 0.004), MakePixel(1, 0.925, 0.85));
    EXPECT_EQ(picture.AtView(0.3, 0.004), MakePixel(1, 1, 1));
    EXPECT_GT(picture.AtView(0.3125, 0.0125).red, 200);
    EXPECT_EQ(picture.AtView(-0.0875, 0.0125), cleared);
}

TEST_F(ConstructionDrawing, FindsTheRecordsOfTheCentersBeforeThoseOfTheNewPoints)
{
    Construct({{-0.3F, 0, 0}}, {{0.3F, 0, 0}});
    keyspace = 1;
    activepoints[0].active = 0;
    Picture picture = Draw();
    EXPECT_EQ(picture.AtView(-0.3, 0.004), MakePixel(0.4, 0.4, 0.4));
    EXPECT_EQ(picture.AtView(0.3, 0.004), MakePixel(0.4, 1, 0.4));
    activepoints[0].active = 1;
    activepoints[1].active = 0;
    picture = Draw();
    EXPECT_EQ(picture.AtView(-0.3, 0.004), MakePixel(1, 0.5, 0));
    EXPECT_EQ(picture.AtView(0.3, 0.004), MakePixel(0.4, 0.4, 0.4));
}

TEST_F(ConstructionDrawing, LiftsMarkersInFrontOfTheirPoints)
{
    Construct({{-0.3F, 0, 0.1F}}, {{0.3F, 0, 0.1F}});
    gmouse[0] = 0.1F;
    gmouse[1] = -0.2F;
    newsign = 1;
    const Pixel sheet = MakePixel(1, 0, 0);
    const auto draw = [this](float depth) {
        return window.DrawAndCover([] { ConstructionDraw(&mainview); }, depth);
    };
    Picture picture = draw(0.1235F);
    EXPECT_FALSE(picture.AtView(-0.3, 0.004) == sheet);
    EXPECT_FALSE(picture.AtView(0.3, 0.004) == sheet);
    picture = draw(0.1245F);
    EXPECT_EQ(picture.AtView(-0.3, 0.004), sheet);
    EXPECT_EQ(picture.AtView(0.3, 0.004), sheet);
    EXPECT_FALSE(draw(-0.0005F).AtView(0.096, -0.204) == sheet); // the placement cursor at 0
    EXPECT_EQ(draw(0.0005F).AtView(0.096, -0.204), sheet);
}

TEST_F(ConstructionDrawing, ShowsWhereTheNextPointGoes)
{
    const Pixel cursor = MakePixel(1, 1, 0.4);
    gmouse[0] = 0.1F;
    gmouse[1] = -0.2F;
    newsign = 1;
    EXPECT_EQ(Draw().AtView(0.102, -0.198), cursor);
    keyspace = 1;
    EXPECT_EQ(Draw().AtView(0.102, -0.198), cleared);
    keyspace = 0;
    newsign = 0;
    duplicatesign = 1;
    EXPECT_EQ(Draw().AtView(0.102, -0.198), cursor);
}

TEST_F(ConstructionDrawing, HidesThePlacementCursorOverAPoint)
{
    gmouse[0] = 0.1F;
    gmouse[1] = -0.2F;
    newsign = 1;
    float point[3] = {0, 0, 0};
    ActiveElement record = {1, 1, 0, 0, ELEMENT_POINT, {}, point};
    activepointer = &record;
    EXPECT_EQ(Draw().AtView(0.102, -0.198), cleared);
    record.type = ELEMENT_STRIPE;
    EXPECT_EQ(Draw().AtView(0.102, -0.198), MakePixel(1, 1, 0.4));
    activepointer = nullptr;
}

} // namespace korvane
