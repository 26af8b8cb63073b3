// Shapes and sides drawn by hand, judged by the saved scene and by the picture.
#include "scene/scenereader.h"
#include "tests/support/invariants.h"
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

using ViewPlace = std::array<double, 2>;

class Draw : public SceneJourney
{
protected:
    void ClickPlaces(const std::vector<ViewPlace>& places)
    {
        for (const ViewPlace& place : places) {
            Click(place[0], place[1]);
        }
    }

    void DrawPolygon(const std::vector<ViewPlace>& places)
    {
        journey.Key("n");
        ClickPlaces(places);
        Click(places[0][0], places[0][1]);
    }

    static void ExpectPolygon(const Shape& shape, const std::vector<ViewPlace>& places)
    {
        ASSERT_EQ(shape.pointnumber, int(places.size()));
        EXPECT_EQ(shape.sidenumber, 1);
        for (std::size_t i = 0; i < places.size(); i++) {
            ExpectPoint(shape, int(i), places[i][0], places[i][1], 0);
        }
    }

    // A place is painted otherwise than in the empty scene.
    bool IsPainted(const Screenshot& picture, double x, double y) const
    {
        return !(picture.At(X(x), Y(y)) == first.At(X(x), Y(y)));
    }
};

TEST_F(Draw, MakesATriangle)
{
    const std::vector<ViewPlace> places = {{-0.2, -0.1}, {0.2, -0.1}, {0.05, 0.25}};
    Start();
    DrawPolygon(places);
    const Screenshot drawn = LookWithoutPointer();
    EXPECT_TRUE(IsPainted(drawn, 0.02, 0.02));
    EXPECT_FALSE(IsPainted(drawn, -0.15, 0.15));
    SceneDraft saved = Save();
    ASSERT_EQ(saved.shapes.size(), 1U);
    EXPECT_EQ(saved.shapes[0].name, "shape");
    ExpectPolygon(*saved.shapes[0].shape, places);
}

TEST_F(Draw, MakesAConcavePolygon)
{
    const std::vector<ViewPlace> places = {{-0.3, -0.3}, {0.3, -0.3}, {0.3, -0.05},
                                           {0, -0.05},   {0, 0.3},    {-0.3, 0.3}};
    Start();
    DrawPolygon(places);
    const Screenshot drawn = LookWithoutPointer();
    EXPECT_TRUE(IsPainted(drawn, -0.15, -0.15));
    EXPECT_TRUE(IsPainted(drawn, -0.15, 0.15));
    EXPECT_TRUE(IsPainted(drawn, 0.15, -0.2));
    EXPECT_FALSE(IsPainted(drawn, 0.2, 0.15)); // what the corner leaves out
    ExpectPolygon(*SaveShape(), places);
}

TEST_F(Draw, LeavesOutThePointsBeforeTheOneThatClosesIt)
{
    const std::vector<ViewPlace> places = {
        {-0.4, 0}, {-0.3, 0.3}, {-0.1, -0.1}, {0.3, -0.1}, {0.1, 0.3}};
    Start();
    journey.Key("n");
    ClickPlaces(places);
    Click(-0.1, -0.1); // the sixth click, on the third point
    ExpectPolygon(*SaveShape(), {places[2], places[3], places[4]});
}

// Seen against the upper or lower wall the square is a line, and what is clicked beside it stands
// out of its plane.
TEST_F(Draw, RaisesAFlatPolygonIntoABody)
{
    Start();
    DrawPolygon({{-0.2, -0.2}, {0.2, -0.2}, {0.2, 0.2}, {-0.2, 0.2}});
    const Screenshot flat = LookWithoutPointer();
    journey.Click(X(0), first.height - 5);
    ASSERT_TRUE(WaitFor([&] { return flat.CountDifferences(journey.Look()) > 2000; }));
    journey.LookWhenStill();
    ClickPlaces({{-0.2, 0}, {-0.1, 0.2}, {0.1, 0.2}, {0.2, 0}});
    const auto shape = SaveShape();
    EXPECT_EQ(shape->sidenumber, 3);
    ASSERT_EQ(shape->pointnumber, 6);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
    for (int point : {4, 5}) {
        EXPECT_NEAR(std::abs(shape->points[point][0]), 0.1, 0.003);
        EXPECT_NEAR(std::abs(shape->points[point][1]), 0.2, 0.003); // above the nearer edge
        EXPECT_NEAR(std::abs(shape->points[point][2]), 0.2, 0.003);
    }
}

// The corners 4 and 6 lie across the side of the box that faces the viewer.
TEST_F(Draw, SplitsASideOfABody)
{
    Start(BoxScene());
    ClickPlaces({{0.1, 0.1}, {0.25, 0.13}, {0.3, 0.2}});
    const auto shape = SaveShape();
    EXPECT_EQ(shape->sidenumber, 7);
    ASSERT_EQ(shape->pointnumber, 9);
    ExpectPoint(*shape, 8, 0.25, 0.13, 0.05);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
}

TEST_F(Draw, TakesPointsBackWithTheMiddleButton)
{
    const std::vector<ViewPlace> places = {{-0.2, -0.1}, {0.2, -0.1}, {0.05, 0.25}};
    Start();
    journey.Key("n");
    ClickPlaces({places[0], {0.3, 0.3}, {0.4, 0}});
    Click(0.4, 0, 2);
    Click(0.4, 0, 2);
    ClickPlaces({places[1], places[2], places[0]});
    ExpectPolygon(*SaveShape(), places);
}

TEST_F(Draw, GivesAPolygonUpWithTheRightButton)
{
    Start();
    journey.Key("n");
    ClickPlaces({{-0.2, -0.1}, {0.2, -0.1}});
    EXPECT_GT(first.CountDifferences(LookWithoutPointer()), 100);
    Click(0.3, 0.3, 3);
    EXPECT_EQ(first.CountDifferences(LookWithoutPointer()), 0);
    EXPECT_FALSE(journey.HasMenu());
    EXPECT_EQ(Save().shapes.size(), 0U);
}

TEST_F(Draw, GivesANewSideUpWithTheRightButton)
{
    Start(BoxScene());
    ClickPlaces({{0.1, 0.1}, {-0.2, 0.2}});
    EXPECT_GT(first.CountDifferences(LookWithoutPointer()), 100);
    Click(0.3, 0.3, 3);
    EXPECT_EQ(first.CountDifferences(LookWithoutPointer()), 0);
    EXPECT_FALSE(journey.HasMenu());
    EXPECT_EQ(SaveShape()->sidenumber, 6);
}
