#include "scene/scenefile.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/dialogdoubles.h"
#include "tests/support/invariants.h"
#include "tests/support/scenetexts.h"
#include "tests/support/shapes.h"
#include "tests/support/tempfolder.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <memory>
#include <random>
#include <string>

namespace korvane
{

using namespace korvane::testing;

// Opens damaged files; whatever comes of it, the scene is whole and can be written.
class HostileScene : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
        ForgetDialogs();
    }

    void Open(const std::string& text)
    {
        const std::string path = folder / "hostile.mrt";
        WriteText(path, text);
        ForgetDialogs();
        ::testing::internal::CaptureStdout();
        OpenMrt(path.c_str());
        output = ::testing::internal::GetCapturedStdout();
        ASSERT_EQ(FindBrokenRule(), "") << text;
        ShapeSave(sink.get(), 0);
    }

    struct FileCloser {
        void operator()(FILE* file) const
        {
            std::fclose(file);
        }
    };

    // Opens a file and expects so many shapes and this in the status bar.
    void ExpectLosses(const std::string& text, int kept, const std::string& told)
    {
        Open(text);
        EXPECT_EQ(shapenumber, kept);
        EXPECT_EQ(statustext, told);
        EXPECT_TRUE(errors.empty());
    }

    const TempFolder folder;
    const std::unique_ptr<FILE, FileCloser> sink{std::fopen("/dev/null", "w")};
    std::string output; // what the last Open has printed
};

// A scene as the program saves it, with the comments that its files have.
static std::string SavedScene()
{
    StartEmptyScene();
    const TempFolder folder;
    const int a = AddTreeIter(0, NODE_FOLDER, CopyText("a"));
    const int b = AddTreeIter(a, NODE_FOLDER, CopyText("b"));
    OwnedShape pyramid = Pyramid();
    korvane::testing::SetVertexes(pyramid.get(), {0, 4});
    AddToScene(std::move(pyramid), "pyramid", b);
    AddToScene(Square(), "square");
    SaveMrt((folder / "x.mrt").c_str());
    NewMrt();
    return ReadText(folder / "x.mrt");
}

// Calls `open` with the text in which each number in turn is replaced.
template <class Opener>
static void ReplaceEachNumber(const std::string& text, const std::string& replacement, Opener open)
{
    for (std::size_t i = 0; i < text.size(); i++) {
        const bool starts =
            std::isdigit(text[i]) != 0 && (i == 0 || std::isalnum(text[i - 1]) == 0);
        if (starts) {
            const std::size_t end = text.find_first_not_of("0123456789,", i);
            open(text.substr(0, i) + replacement + text.substr(end));
        }
    }
}

TEST_F(HostileScene, SurvivesAFileThatEndsAnywhere)
{
    const std::string text = SavedScene();
    const std::size_t lasttoken = text.find_last_of(" \n", text.size() - 2) + 1;
    for (std::size_t length = 0; length < text.size(); length++) {
        Open(text.substr(0, length));
        if (HasFatalFailure()) {
            return;
        }
        const bool told = !errors.empty() || !statustext.empty();
        EXPECT_EQ(told, length <= lasttoken) << length; // no token is missing from then on
    }
}

TEST_F(HostileScene, LoadsAllThatIsWholeInATruncatedFile)
{
    const std::string text = SavedScene();
    Open(text.substr(0, text.find("Name:\n/square") + 40));
    EXPECT_EQ(shapenumber, 1);
    EXPECT_STREQ(treeiters[3].name, "pyramid");
    EXPECT_EQ(statustext, "1 damaged shape is left out");
}

TEST_F(HostileScene, TellsHowManyShapesAreMissing)
{
    const std::string first = SceneHead(3) + "/a\n\n" + TriangleBlock("/a/x");
    const std::string sentence = "2 of 3 shapes are missing or incomplete: the file ends too early";
    ExpectLosses(first, 1, sentence);
    EXPECT_EQ(output, sentence + "\n");
    ExpectLosses(first + "Name:", 1, sentence); // the second has no name yet
    ExpectLosses(first + TriangleBlock("/y"), 2,
                 "1 of 3 shapes is missing or incomplete: the file ends too early");
    ExpectLosses(first + TriangleBlock("/y") + TriangleBlock("/z"), 3, "");
    EXPECT_EQ(output, "");
    ExpectLosses(SceneHead(1), 0, "1 of 1 shape is missing or incomplete: the file ends too early");
    ExpectLosses(SceneHead(0), 0, "");
}

TEST_F(HostileScene, TellsDamagedAndMissingShapesInOneLine)
{
    const std::string block = TriangleBlock("/y");
    const std::string points = block.substr(0, block.find("TriangleNumber"));
    ExpectLosses(SceneHead(4) + TriangleBlock("/x") + points, 1,
                 "1 damaged shape is left out. 2 of 4 shapes are missing or incomplete: "
                 "the file ends too early");
    EXPECT_EQ(output, "Shape /y is left out: it has no side\n"
                      "2 of 4 shapes are missing or incomplete: the file ends too early\n");
}

// What the file still has of a shape stays, but the shape is not told as whole.
TEST_F(HostileScene, TellsAShapeThatLacksItsLastSides)
{
    const std::string block = TetrahedronBlock("/body");
    const std::string sides = block.substr(0, block.rfind("PointNumber")); // three of four
    ExpectLosses(SceneHead(1) + sides, 1,
                 "1 of 1 shape is missing or incomplete: the file ends too early");
    EXPECT_EQ(shapes[0]->sidenumber, 3);
    const std::string colors = block.substr(0, block.rfind("0,5")); // one number lacks
    ExpectLosses(SceneHead(3) + TriangleBlock("/x") + colors, 2,
                 "2 of 3 shapes are missing or incomplete: the file ends too early");
    EXPECT_EQ(shapes[1]->sidenumber, 4);
}

TEST_F(HostileScene, RepeatsNoCountThatCannotBeTrue)
{
    const std::string rest = " missing or incomplete: the file ends too early";
    ExpectLosses(SceneHead(2147483647) + TriangleBlock("/x"), 1, "The file ends too early");
    EXPECT_EQ(output, "The file ends too early\n");
    // 2147483647 / 90 bytes is 23860929.4
    ExpectLosses(SceneHead(23860930) + TriangleBlock("/x"), 1, "The file ends too early");
    ExpectLosses(SceneHead(23860929) + TriangleBlock("/x"), 1,
                 "23860928 of 23860929 shapes are" + rest);
}

TEST_F(HostileScene, SurvivesAnyNumberInThePlaceOfAnother)
{
    const std::string text = SavedScene();
    for (const char* number : {"-1", "0", "2147483647", "4294967297", "wild", "1e999", "nan",
                               "-inf", "", "#", "3,4e38", "-3,4e38", "1e-45"}) {
        ReplaceEachNumber(text, number, [&](const std::string& changed) { Open(changed); });
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(HostileScene, SurvivesAMissingFinalLineFeed)
{
    std::string text = SavedScene();
    while (text.back() == '\n') {
        text.pop_back();
    }
    Open(text);
    EXPECT_EQ(shapenumber, 2);
    EXPECT_EQ(statustext, "");
}

TEST_F(HostileScene, SurvivesAnEndlessComment)
{
    const std::string text = SavedScene();
    Open(text + "# no line feed");
    EXPECT_EQ(shapenumber, 2);
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        Open(text.substr(0, at) + "#" + text.substr(at + 1));
    }
}

TEST_F(HostileScene, SurvivesATokenOfAMegabyte)
{
    const std::string longtoken(1 << 20, 'x');
    std::string text = SavedScene();
    Open(longtoken);
    Open(text + longtoken);
    EXPECT_EQ(shapenumber, 2);
    text.replace(text.find("/square"), 7, "/" + longtoken);
    Open(text);
    EXPECT_EQ(shapenumber, 2);
    EXPECT_EQ(std::string(treeiters[4].name), longtoken.substr(0, tokensize - 2));
    text = SavedScene();
    text.replace(text.find("//b"), 3, "//" + longtoken);
    Open(text);
    EXPECT_EQ(shapenumber, 2);
    EXPECT_EQ(treeiters[3].parent, 0); // the pyramid's folder is not found
}

TEST_F(HostileScene, SurvivesFoldersThatSkipLevels)
{
    for (const char* lines : {"///a\n/b\n//c\n//////d\n", "//\n/\n///\n", "/a/b\n//c\n//d/e/\n"}) {
        Open(SceneHead(1) + lines + TriangleBlock("/b/c/x"));
        EXPECT_EQ(shapenumber, 1);
    }
}

TEST_F(HostileScene, SurvivesFoldersAsDeepAsATokenCanSay)
{
    std::string lines;
    for (std::size_t depth = 1; depth <= 2100; depth++) {
        lines += std::string(depth, '/') + "x\n";
    }
    WriteText(folder / "deep.mrt", SceneHead(1) + lines + TriangleBlock("/x/x/y"));
    EXPECT_EQ(OpenMrt((folder / "deep.mrt").c_str()), 0);
    EXPECT_EQ(treeiternumber, 1 + 2100 + 1);
    EXPECT_EQ(treeiters[2101].parent, 2);
    EXPECT_EQ(SaveMrt((folder / "saved.mrt").c_str()), 0);
}

TEST_F(HostileScene, SurvivesDegenerateSides)
{
    for (const char* outline : {"0\t0\t0", "0\t1\t0", "2\t2\t1"}) {
        std::string text = TriangleBlock("/x");
        text.replace(text.find("0\t1\t2\t\n\nTri"), 5, outline);
        Open(SceneHead(1) + text);
        EXPECT_EQ(shapenumber, 1) << outline;
    }
}

// Coordinates whose squares and sums leave the range of a float.
TEST_F(HostileScene, SurvivesTheGreatestCoordinates)
{
    std::string text = TriangleBlock("/x");
    text.replace(text.find("0\t0\t0\t#0.\n1\t0\t0\t#1.\n0\t1\t0\t"), 26,
                 "3,4e38 -3,4e38 0 #0.\n-3,4e38 3,4e38 0 #1.\n3,4e38 3,4e38 3,4e38 ");
    Open(SceneHead(1) + text);
    EXPECT_EQ(shapenumber, 1);
}

TEST_F(HostileScene, SurvivesBytesThatAreNoText)
{
    std::mt19937 random(4);
    const std::string text = SavedScene();
    std::uniform_int_distribution<std::size_t> place(0, text.size() - 1);
    for (int i = 0; i < 2000; i++) {
        std::string changed = text;
        for (int k = 0; k < 8; k++) {
            changed[place(random)] = char(random());
        }
        Open(changed);
        if (HasFatalFailure()) {
            return;
        }
    }
}

} // namespace korvane
