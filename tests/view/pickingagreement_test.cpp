// Picking leaves most elements out before it tests them; whatever the scene, it must find what a
// plain loop over all of them finds.
#include "view/picking.h"

#include "geometry/construction.h"
#include "geometry/rotation.h"
#include "scene/model.h"
#include "tests/support/pickscene.h"
#include "tests/support/plainsearch.h"
#include "tests/support/shapes.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <set>

namespace korvane
{

using namespace korvane::testing;

// Sides through random points. The points lie on a coarse grid, so that many elements meet in one
// place, at one depth, on one line.
static OwnedShape MakeRandomShape(std::mt19937& random, int points, int sides)
{
    std::uniform_int_distribution<int> coordinate(-12, 12), corners(3, 5), any(0, points - 1);
    Points cloud;
    for (int i = 0; i < points; i++) {
        cloud.push_back({float(coordinate(random)) / 32, float(coordinate(random)) / 32,
                         float(coordinate(random) / 4) / 8});
    }
    Outlines outlines;
    for (int i = 0; i < sides; i++) {
        std::set<int> chosen;
        const std::size_t number = std::size_t(corners(random));
        while (chosen.size() < number) {
            chosen.insert(any(random));
        }
        outlines.emplace_back(chosen.begin(), chosen.end());
        std::shuffle(outlines.back().begin(), outlines.back().end(), random);
    }
    return MakeShape(cloud, outlines);
}

static void MakeRandomScene(std::mt19937& random)
{
    StartPickScene();
    for (int face = 0; face < 6; face++) {
        SetFace(face, -0.4F + 0.1F * float(face), -0.3F, 0.3F);
    }
    const int number = int(random() % 4) + 1;
    for (int i = 0; i < number; i++) {
        const int points = int(random() % 40) + 5;
        AddShape(MakeRandomShape(random, points, int(random() % 30) + 1).release());
        if (random() % 4 == 0) {
            selected[i] = selectedshown; // not marked: no points, no stripes
        }
    }
    ProjectAndPick();
}

static void TurnRandomly(std::mt19937& random)
{
    const float directions[3][3] = {{1, 0, 0}, {0.6F, 0, 0.8F}, {0.36F, 0.48F, 0.8F}};
    VectorRotate(reinterpret_cast<float(*)[3]>(mainview.rotation), directions[random() % 3],
                 directions[random() % 3]);
    mainview.perspective = int8_t(random() % 2 == 0 ? 0 : fadedone);
    mainview.scale = random() % 2 == 0 ? 1.0F : 1.25F;
    mainview.linesfade = random() % 8 == 0 ? 0 : fadefull;
    mainview.sidesfade = random() % 8 == 0 ? 0 : fadefull;
    TransferAllShape();
    ChangeActives();
}

static void ExpectPlainAnswerAt(float x, float y, std::array<int, 6>& counts)
{
    mouse[0] = x;
    mouse[1] = y;
    mouse[2] = 0;
    const PlainSearch plain = SearchPlainly();
    SearchActive();
    ASSERT_EQ(activepointer, plain.found) << x << " " << y;
    if (plain.found == nullptr) {
        counts[5]++;
        return;
    }
    ASSERT_EQ(mouse[2], plain.place[2]) << x << " " << y;
    ASSERT_TRUE(std::equal(plain.place.begin(), plain.place.end(), activepointer->position));
    ASSERT_EQ(activepointer->hover, 1);
    counts[std::size_t(plain.found->type)]++;
}

TEST(SearchActive, AgreesWithAPlainLoopOverEveryElement)
{
    std::array<int, 6> counts = {}; // by type, and of places without any
    std::mt19937 random(11);
    for (int scene = 0; scene < 12; scene++) {
        MakeRandomScene(random);
        for (int view = 0; view < 5; view++) {
            for (int i = 0; i < 21 * 21; i++) { // places of the points' grid, and between them
                const float step = view % 2 == 0 ? 1.0F / 32 : 0.049F;
                ExpectPlainAnswerAt(float(i % 21 - 10) * step, float(i / 21 - 10) * step, counts);
            }
            TurnRandomly(random);
        }
    }
    EXPECT_GT(counts[ELEMENT_CUBEFACE], 100);
    EXPECT_GT(counts[ELEMENT_POINT], 100);
    EXPECT_GT(counts[ELEMENT_STRIPE], 100);
    EXPECT_GT(counts[ELEMENT_SIDE], 100);
    EXPECT_GT(counts[5], 100);
}

TEST(SearchActive, AgreesWithAPlainLoopDuringAConstruction)
{
    std::array<int, 6> counts = {};
    std::mt19937 random(12);
    for (int scene = 0; scene < 6; scene++) {
        MakeRandomScene(random);
        SetActivesOff();
        newsign = 1;
        keyspace = char(scene % 2);
        for (int k = 0; k < activepointnumber; k += 3) {
            activepoints[k].active = 1;
        }
        float points[3][3] = {{0, 0, 0}, {0.125F, 0, 0.5F}, {0.13F, 0, -0.5F}};
        newpointnumber = 3;
        for (float* point : points) {
            AppendActivePoint(point, 1);
        }
        for (int i = 0; i < 21 * 21; i++) {
            ExpectPlainAnswerAt(float(i % 21 - 10) / 32, float(i / 21 - 10) / 32, counts);
        }
    }
    EXPECT_GT(counts[ELEMENT_POINT], 10);
    EXPECT_GT(counts[ELEMENT_SIDE], 10);
}

} // namespace korvane
