#include "scene/scenewriter.h"

#include "scene/model.h"
#include "scene/textbuffer.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <numeric>
#include <string>

namespace korvane
{

using testing::MakeRawShape;
using testing::SetVertexes;

static std::string TextOf(const std::function<void(TextBuffer&)>& write)
{
    char* bytes = nullptr;
    std::size_t length = 0;
    FILE* file = open_memstream(&bytes, &length);
    TextBuffer text(file);
    write(text);
    FlushText(text);
    std::fclose(file);
    std::string result(bytes, length);
    std::free(bytes);
    return result;
}

static std::string BlockOf(const Shape& shape)
{
    return TextOf([&](TextBuffer& text) { WriteShapeBlock(text, "/a/box", shape); });
}

// What stands between two pieces of a text, the first included.
static std::string CutOut(const std::string& text, const std::string& from, const std::string& to)
{
    const std::size_t begin = text.find(from);
    return text.substr(begin, text.find(to, begin) - begin);
}

static const std::string tildes = "#" + std::string(70, '~') + "\n\n";
static const std::string dashes = "#" + std::string(70, '-') + "\n";

static std::string Pairs()
{
    std::string line = "#";
    for (int i = 0; i < 35; i++) {
        line += "- ";
    }
    return line + "\n";
}

// A shape whose triangles are filled by hand: a square of two.
static OwnedShape HandMadeSquare()
{
    OwnedShape shape =
        MakeRawShape({{0, 0, 0}, {0.5F, 0, 0}, {0.5F, -0.25F, 1}, {0, 100, 1}}, {{0, 1, 2, 3}});
    const int corners[2][3] = {{3, 0, 1}, {1, 2, 3}};
    for (int i = 0; i < 2; i++) {
        std::copy_n(corners[i], 3, shape->triangles[i].points);
        shape->sides[0].triangles[i] = i;
    }
    const float colors[colornumber] = {1, 0.5F, 0.25F, 1, 0, 0, 0, 0.125F, 1,
                                       0, 0,    1,     1, 1, 0, 0, 0.75F,  0.5F};
    std::copy_n(colors, colornumber, shape->sides[0].colors);
    return shape;
}

// A shape of `number` points, all of them marked, whose one side has them all.
static OwnedShape Polygon(int number)
{
    testing::Points points;
    std::vector<int> outline(static_cast<std::size_t>(number));
    std::iota(outline.begin(), outline.end(), 0);
    points.resize(outline.size());
    OwnedShape shape = MakeRawShape(points, {outline});
    std::iota(shape->sides[0].triangles, shape->sides[0].triangles + number - 2, 0);
    SetVertexes(shape.get(), outline);
    return shape;
}

TEST(WriteHeader, WritesTheFirstLines)
{
    const std::string text = TextOf([](TextBuffer& t) { WriteHeader(t, 12); });
    EXPECT_EQ(text, "Korvane v1.0\n\n#Created by Mirtal v1.0\n\n" + tildes +
                        "ShapeNumber: 12\n\nFolders:\n\n");
}

TEST(WriteFolderLine, WritesAsManySlashesAsTheDepth)
{
    EXPECT_EQ(TextOf([](TextBuffer& t) { WriteFolderLine(t, "b", 2); }), "//b\n");
}

TEST(WriteShapeBlock, WritesEveryLineOfAShape)
{
    EXPECT_EQ(BlockOf(*HandMadeSquare()),
              tildes + "Name:\n/a/box\n\n" +
                  "PointNumber: 4\nPoints:\n"
                  "0\t0\t0\t#0.\n"
                  "0,5\t0\t0\t#1.\n"
                  "0,5\t-0,25\t1\t#2.\n"
                  "0\t100\t1\t#3.\n" +
                  dashes + "TriangleNumber: 2\nTriangles:\n3\t0\t1\t#0.\n1\t2\t3\t#1.\n" + dashes +
                  "SideNumber: 1\nSides:\n" + Pairs() +
                  "PointNumber: 4\nPoints:\n0\t1\t2\t3\t\n\n"
                  "TriangleNumber: 2\nTriangles:\n0\t1\t\n\n"
                  "Visibility: frontback\n\n"
                  "Colors:\n"
                  "1,000000 0,500000 0,250000 1,000000\n"
                  "0,000000 0,000000 0,000000 0,125000\n"
                  "1,000000\n"
                  "0,000000 0,000000 1,000000 1,000000\n"
                  "1,000000 0,000000 0,000000 0,750000\n"
                  "0,500000\n");
}

TEST(WriteShapeBlock, WritesTheMarksBetweenPointsAndTriangles)
{
    const OwnedShape shape = HandMadeSquare();
    SetVertexes(shape.get(), {1, 3});
    EXPECT_EQ(CutOut(BlockOf(*shape), "0\t100", "TriangleNumber"),
              "0\t100\t1\t#3.\n" + dashes + "VertexNumber: 2\nVertexes:\n1\t3\t\n" + dashes);
}

TEST(WriteShapeBlock, LeavesAnEmptyRowAfterTenValues)
{
    const std::string text = BlockOf(*Polygon(10));
    EXPECT_EQ(CutOut(text, "VertexNumber", "TriangleNumber"),
              "VertexNumber: 10\nVertexes:\n0\t1\t2\t3\t4\t5\t6\t7\t8\t9\t\n\n" + dashes);
    EXPECT_EQ(CutOut(text, Pairs(), "Visibility"),
              Pairs() + "PointNumber: 10\nPoints:\n0\t1\t2\t3\t4\t5\t6\t7\t8\t9\t\n\n\n"
                        "TriangleNumber: 8\nTriangles:\n0\t1\t2\t3\t4\t5\t6\t7\t\n\n");
}

TEST(WriteShapeBlock, BreaksRowsAfterTenValues)
{
    const std::string text = BlockOf(*Polygon(12));
    EXPECT_EQ(CutOut(text, "VertexNumber", "TriangleNumber"),
              "VertexNumber: 12\nVertexes:\n0\t1\t2\t3\t4\t5\t6\t7\t8\t9\t\n10\t11\t\n" + dashes);
    EXPECT_EQ(CutOut(text, Pairs(), "Visibility"),
              Pairs() + "PointNumber: 12\nPoints:\n0\t1\t2\t3\t4\t5\t6\t7\t8\t9\t\n10\t11\t\n\n"
                        "TriangleNumber: 10\nTriangles:\n0\t1\t2\t3\t4\t5\t6\t7\t8\t9\t\n\n\n");
}

TEST(WriteShapeBlock, HasAWordForEachVisibility)
{
    const OwnedShape shape = HandMadeSquare();
    const char* const lines[] = {"Visibility: invisible\n\n", "Visibility: front\n\n",
                                 "Visibility: back\n\n", "Visibility: frontback\n\n"};
    for (int visibility = 0; visibility < 4; visibility++) {
        shape->sides[0].visibility = visibility;
        EXPECT_EQ(CutOut(BlockOf(*shape), "Visibility", "Colors"), lines[visibility]);
    }
}

TEST(WriteShapeBlock, HasNoWordForAVisibilityWithOtherBits)
{
    const OwnedShape shape = HandMadeSquare();
    for (const int visibility : {4, 7, -1}) {
        shape->sides[0].visibility = visibility;
        EXPECT_EQ(CutOut(BlockOf(*shape), "Visibility", "1,0"), "Visibility: Colors:\n");
    }
}

// The text passes through a buffer that is smaller than it is.
TEST(WriteShapeBlock, WritesAShapeOfManyPoints)
{
    constexpr int number = 20000;
    const OwnedShape shape = Polygon(number);
    std::string points = "PointNumber: 20000\nPoints:\n";
    for (int i = 0; i < number; i++) {
        shape->points[i][1] = float(i);
        points += "0\t" + std::to_string(i) + "\t0\t#" + std::to_string(i) + ".\n";
    }
    EXPECT_EQ(CutOut(BlockOf(*shape), "PointNumber", "#-"), points);
}

TEST(GetNameForFile, KeepsNamesOfTokenCharacters)
{
    for (const char* name : {"box", "Left-Wing", "7,5", "-", ","}) {
        EXPECT_EQ(GetNameForFile(name, "shape"), name);
    }
}

TEST(GetNameForFile, PutsADashForEachCharacterThatTheFormatCannotCarry)
{
    EXPECT_EQ(GetNameForFile("left wing", "shape"), "left-wing");
    EXPECT_EQ(GetNameForFile("a/b_c.d#e", "shape"), "a-b-c-d-e");
    EXPECT_EQ(GetNameForFile("line\nbreak\t\x01", "shape"), "line-break--");
}

TEST(GetNameForFile, CountsCharactersAndNotTheirBytes)
{
    EXPECT_EQ(GetNameForFile("t\xc3\xa9te", "shape"), "t-te");
    EXPECT_EQ(GetNameForFile("\xe2\x82\xac", "shape"), "-");
    EXPECT_EQ(GetNameForFile("\xf0\x9f\x8d\xb7x", "shape"), "-x");
}

TEST(GetNameForFile, PutsADashForBytesThatAreNoCharacter)
{
    EXPECT_EQ(GetNameForFile("\x80\x80", "shape"), "--");
    EXPECT_EQ(GetNameForFile("\xc3", "shape"), "-");
    EXPECT_EQ(GetNameForFile("\xe2\x82", "shape"), "-");
    EXPECT_EQ(GetNameForFile("\xe2x", "shape"), "-x");
    EXPECT_EQ(GetNameForFile("\xff\xfe", "shape"), "--");
}

TEST(GetNameForFile, SubstitutesAnEmptyName)
{
    EXPECT_EQ(GetNameForFile("", "folder"), "folder");
}

} // namespace korvane
