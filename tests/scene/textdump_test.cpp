#include "scene/textdump.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace korvane
{

using testing::MakeFlatShape;
using testing::MakeRawShape;

static const std::string tildes = "\n" + std::string(68, '~') + "\n";
static const std::string dashes = "\n" + std::string(68, '-') + "\n";

// A scene that lists one shape without taking it over, and a file that is gone afterwards.
class SaveShapeInTxtOf : public ::testing::Test
{
protected:
    ~SaveShapeInTxtOf() override
    {
        FreeArray(shapes);
        shapenumber = 0;
        std::filesystem::remove(path);
    }

    static void ListAlone(const OwnedShape& shape)
    {
        shapes = NewArray<Shape*>(1);
        shapes[0] = shape.get();
        shapenumber = 1;
    }

    std::string Dump(int index) const
    {
        EXPECT_EQ(SaveShapeInTxt(index, path.c_str()), 0);
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    const std::string path = ::testing::TempDir() + "korvane_textdump_" +
                             ::testing::UnitTest::GetInstance()->current_test_info()->name() +
                             ".txt";
};

TEST_F(SaveShapeInTxtOf, AShapeWithoutVertexesLeavesTheirSectionOut)
{
    const OwnedShape shape = MakeFlatShape({{0, 0, 0}, {1.5F, 0, 0}, {0, -2, 0.25F}});
    ListAlone(shape);
    EXPECT_EQ(Dump(0), "Pointnumber: 3\n\n"
                       "0: 0.000000, 0.000000, 0.000000\n"
                       "1: 1.500000, 0.000000, 0.000000\n"
                       "2: 0.000000, -2.000000, 0.250000\n" +
                           tildes +
                           "Trianglenumber: 1\n\n"
                           "0: 0, 1, 2\n" +
                           tildes + "Stripenumber: 1\n" + dashes +
                           "0: Pointnumber: 4\nPoints: 0, 1, 2, 0\n" + dashes + tildes +
                           "Sidenumber: 1\n" + dashes +
                           "0: Pointnumber: 3\nPoints: 0, 1, 2\n\n"
                           "0: Trianglenumber: 1\nTriangles: 0\n" +
                           dashes);
}

TEST_F(SaveShapeInTxtOf, SeveralSidesAndVertexesNumbersEveryItem)
{
    // Two triangles back to back: no point is met by three sides.
    const OwnedShape shape =
        MakeRawShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}, {2, 1, 0}});
    shape->triangles[0] = {{0, 1, 2}, {}, shape.get()};
    shape->triangles[1] = {{2, 1, 0}, {}, shape.get()};
    shape->sides[0].triangles[0] = 0;
    shape->sides[1].triangles[0] = 1;
    shape->stripenumber = 2;
    shape->stripes = NewArray<Stripe>(2);
    const int chain[] = {0, 1, 2};
    shape->stripes[0] = {3, CopyArray(chain, 3), shape.get()};
    shape->stripes[1] = {2, CopyArray(chain, 2), shape.get()};
    testing::SetVertexes(shape.get(), {0, 2});
    ListAlone(shape);
    EXPECT_EQ(Dump(0), "Pointnumber: 3\n\n"
                       "0: 0.000000, 0.000000, 0.000000\n"
                       "1: 1.000000, 0.000000, 0.000000\n"
                       "2: 0.000000, 1.000000, 0.000000\n" +
                           tildes + "Vertexnumber: 2\n\nVertexes: 0, 2\n" + tildes +
                           "Trianglenumber: 2\n\n"
                           "0: 0, 1, 2\n"
                           "1: 2, 1, 0\n" +
                           tildes + "Stripenumber: 2\n" + dashes +
                           "0: Pointnumber: 3\nPoints: 0, 1, 2\n" + dashes +
                           "1: Pointnumber: 2\nPoints: 0, 1\n" + dashes + tildes +
                           "Sidenumber: 2\n" + dashes +
                           "0: Pointnumber: 3\nPoints: 0, 1, 2\n\n"
                           "0: Trianglenumber: 1\nTriangles: 0\n" +
                           dashes +
                           "1: Pointnumber: 3\nPoints: 2, 1, 0\n\n"
                           "1: Trianglenumber: 1\nTriangles: 1\n" +
                           dashes);
}

TEST_F(SaveShapeInTxtOf, EmptyListsEndsTheirLinesAtOnce)
{
    const OwnedShape shape = MakeRawShape({}, {});
    FreeArray(shape->sides);
    shape->sidenumber = 1;
    shape->sides = NewArray<Side>(1); // no corner and no triangle, which no model shape has
    shape->stripenumber = 1;
    shape->stripes = NewArray<Stripe>(1);
    shape->stripes[0].points = NewArray<int>(0);
    ListAlone(shape);
    EXPECT_EQ(Dump(0), "Pointnumber: 0\n\n" + tildes + "Trianglenumber: 0\n\n" + tildes +
                           "Stripenumber: 1\n" + dashes + "0: Pointnumber: 0\nPoints: \n" + dashes +
                           tildes + "Sidenumber: 1\n" + dashes +
                           "0: Pointnumber: 0\nPoints: \n\n"
                           "0: Trianglenumber: 0\nTriangles: \n" +
                           dashes);
}

TEST_F(SaveShapeInTxtOf, NoSuchShapeWritesNoFile)
{
    const OwnedShape shape = MakeRawShape({{0, 0, 0}}, {});
    ListAlone(shape);
    for (const int index : {1, 2, -1}) {
        EXPECT_EQ(SaveShapeInTxt(index, path.c_str()), 0);
        EXPECT_FALSE(std::filesystem::exists(path)) << index;
    }
}

TEST_F(SaveShapeInTxtOf, AnyShapeReturnsWhenTheFileCannotBeCreated)
{
    const OwnedShape shape = MakeRawShape({{0, 0, 0}}, {});
    ListAlone(shape);
    const std::string nowhere = path + ".missing/dump.txt";
    EXPECT_EQ(SaveShapeInTxt(0, nowhere.c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(nowhere));
}

TEST_F(SaveShapeInTxtOf, AShapeReplacesAnOlderFile)
{
    const OwnedShape shape = MakeRawShape({{0, 0, 0}}, {});
    ListAlone(shape);
    std::ofstream(path) << std::string(10000, 'x');
    const std::string text = Dump(0);
    EXPECT_EQ(text.find('x'), std::string::npos);
    EXPECT_EQ(text.rfind("Pointnumber: 1\n", 0), 0U);
}

TEST(PrintOk, CountsFromZero)
{
    ::testing::internal::CaptureStdout();
    PrintOk();
    PrintOk();
    PrintOk();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "ok 0\nok 1\nok 2\n");
}

} // namespace korvane
