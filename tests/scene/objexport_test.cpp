#include "scene/objexport.h"

#include "scene/model.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

// Puts a shape in the place of a shape's rounded view copy, from which the export reads.
static void SetExported(int index, OwnedShape shape)
{
    DeleteShape(round1t[index]);
    round1t[index] = shape.release();
}

static std::string Export(const std::vector<int>& indices)
{
    char* bytes = nullptr;
    std::size_t length = 0;
    FILE* file = open_memstream(&bytes, &length);
    WriteObj(file, indices.data(), int(indices.size()));
    std::fclose(file);
    std::string text(bytes, length);
    std::free(bytes);
    return text;
}

class ObjExport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
    }
};

TEST_F(ObjExport, WritesATriangleLineByLine)
{
    AddToScene(FlatTriangle(), "t");
    SetExported(0, MakeFlatShape({{0.5F, 0.25F, 0.125F}, {1, 0, 0}, {0, 1, -1}}));
    // x, z and -y, each times ten
    EXPECT_EQ(Export({0}), "#Created by Korvane v1.0\n"
                           "mtllib untitled.mtl\n"
                           "v 5.000000 1.250000 -2.500000\n"
                           "v 10.000000 0.000000 -0.000000\n"
                           "v 0.000000 -10.000000 -10.000000\n"
                           "usemtl (null)\n"
                           "s off\n"
                           "f 1 2 3\n");
}

TEST_F(ObjExport, NumbersTheVerticesOfAllShapesOnwards)
{
    AddToScene(Square(), "a");
    AddToScene(ConcaveL(), "b");
    SetExported(0, Square());   // four points
    SetExported(1, ConcaveL()); // six points
    std::istringstream lines(Export({0, 1}));
    int vertices = 0;
    std::vector<int> used;
    for (std::string line; std::getline(lines, line);) {
        vertices += line.rfind("v ", 0) == 0 ? 1 : 0;
        int a = 0;
        int b = 0;
        int c = 0;
        if (std::sscanf(line.c_str(), "f %d %d %d", &a, &b, &c) == 3) {
            used.insert(used.end(), {a, b, c});
        }
    }
    EXPECT_EQ(vertices, 10);
    ASSERT_EQ(used.size(), 3U * (2 + 4)); // the square has two triangles, the L four
    EXPECT_TRUE(
        std::all_of(used.begin(), used.begin() + 6, [](int v) { return v >= 1 && v <= 4; }));
    EXPECT_TRUE(std::all_of(used.begin() + 6, used.end(), [](int v) { return v >= 5 && v <= 10; }));
}

TEST_F(ObjExport, WritesShapesInTheOrderGiven)
{
    AddToScene(FlatTriangle(), "a");
    AddToScene(FlatTriangle(), "b");
    SetExported(0, MakeFlatShape({{1, 0, 0}, {2, 0, 0}, {3, 1, 0}}));
    SetExported(1, MakeFlatShape({{7, 0, 0}, {8, 0, 0}, {9, 1, 0}}));
    const std::string text = Export({1, 0});
    EXPECT_LT(text.find("v 70.000000"), text.find("v 10.000000"));
}

TEST_F(ObjExport, WritesTheDigitsOfFormattedOutput)
{
    std::mt19937 random(7); // the same coordinates in every run
    std::uniform_real_distribution<float> mantissa(-1, 1);
    Points points;
    std::string expected;
    for (int i = 0; i < 3000; i++) {
        const float x = std::ldexp(mantissa(random), int(random() % 60) - 30);
        points.push_back({x, x / 3, -x});
        char line[200];
        std::snprintf(line, sizeof line, "v %f %f %f\n", 10.0 * x, 10.0 * -x, -10.0 * (x / 3));
        expected += line;
    }
    AddToScene(FlatTriangle(), "t");
    SetExported(0, MakeRawShape(points, {{0, 1, 2}}));
    EXPECT_NE(Export({0}).find(expected), std::string::npos);
}

TEST_F(ObjExport, OfNothingIsAFileWithoutFaces)
{
    EXPECT_EQ(Export({}), "#Created by Korvane v1.0\nmtllib untitled.mtl\nusemtl (null)\ns off\n");
}

} // namespace korvane
