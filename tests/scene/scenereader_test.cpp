#include "scene/scenereader.h"

#include "tests/support/invariants.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace korvane
{

using testing::FindBrokenRuleOfShape;
using testing::SceneHead;
using testing::SideLook;
using testing::SmallScene;
using testing::TriangleBlock;

// "name<parent" for every folder.
static std::vector<std::string> FoldersOf(const SceneDraft& draft)
{
    std::vector<std::string> folders;
    for (const FolderDraft& folder : draft.folders) {
        folders.push_back(folder.name + "<" + std::to_string(folder.parent));
    }
    return folders;
}

// "name<folder" for every shape.
static std::vector<std::string> ShapesOf(const SceneDraft& draft)
{
    std::vector<std::string> names;
    for (const ShapeDraft& shape : draft.shapes) {
        names.push_back(shape.name + "<" + std::to_string(shape.folder));
    }
    return names;
}

using Names = std::vector<std::string>;

// A scene of the folder lines alone.
static Names FoldersFrom(const std::string& lines)
{
    return FoldersOf(ReadScene(SceneHead(0) + lines));
}

// A scene of one shape after the folder lines.
static Names PlaceOf(const std::string& path, const std::string& lines)
{
    return ShapesOf(ReadScene(SceneHead(1) + lines + "\n" + TriangleBlock(path)));
}

// A shape of four points with a list of marks and the outlines of its sides, as a file has it.
static std::string Block(const std::string& vertexes, const std::vector<std::string>& sides)
{
    std::string text = "Name: /block\nPointNumber: 4 Points: 0 0 0 1 0 0 1 1 0 0 1 0\n" + vertexes +
                       "TriangleNumber: 0 Triangles:\nSideNumber: " + std::to_string(sides.size()) +
                       " Sides:\n";
    for (const std::string& side : sides) {
        const auto count = 1 + std::count(side.begin(), side.end(), ' ');
        text += "PointNumber: " + std::to_string(count) + " Points: " + side +
                "\nTriangleNumber: 7 Triangles:";
        for (long i = 2; i < count; i++) {
            text += " 99";
        }
        text += "\n" + SideLook();
    }
    return text;
}

static std::vector<int> MarksFrom(const std::string& vertexes)
{
    const SceneDraft draft = ReadScene(SceneHead(1) + Block(vertexes, {"0 1 2 3"}));
    const Shape& shape = *draft.shapes.at(0).shape;
    EXPECT_EQ(shape.vertexes == nullptr, shape.vertexnumber == 0);
    return {shape.vertexes, shape.vertexes + shape.vertexnumber};
}

static std::string FaultOf(const std::string& block)
{
    const SceneDraft draft = ReadScene(SceneHead(2) + block + TriangleBlock("/after"));
    EXPECT_EQ(ShapesOf(draft), Names({"after<-1"})); // the rest is read
    return draft.dropped.size() == 1 ? draft.dropped[0].path + ": " + draft.dropped[0].reason : "";
}

TEST(ReadScene, AcceptsTheHeader)
{
    EXPECT_TRUE(ReadScene("Korvane v1.0 ShapeNumber: 0 Folders:").isscene);
    EXPECT_TRUE(ReadScene("Korvane v1.0 ShapeNumber: 0 Folders:").hasfolders);
}

TEST(ReadScene, JoinsTheHeaderAtFixedPlaces)
{
    // "KorvaneX" ends at place 8, where "v1", which begins at 7, has its second letter
    EXPECT_TRUE(ReadScene("KorvaneX v1.0 ShapeNumber: 0 Folders:").isscene);
    // "v1x" at 7 ends where "0" at 9 begins
    EXPECT_TRUE(ReadScene("KorvaneXYZ v1x.0y ShapeNumber: 0 Folders:").isscene);
    EXPECT_FALSE(ReadScene("Korvan v1.0 ShapeNumber: 0 Folders:").isscene);
    EXPECT_FALSE(ReadScene("Korvane v.0 ShapeNumber: 0 Folders:").isscene);
    EXPECT_FALSE(ReadScene("Korvane v1.0 Shapenumber: 0 Folders:").isscene);
    EXPECT_FALSE(ReadScene("Korvane v1.1 ShapeNumber: 0 Folders:").isscene);
    EXPECT_FALSE(ReadScene("Korvane v1.0").isscene);
    EXPECT_FALSE(ReadScene("").isscene);
}

TEST(ReadScene, TakesAHeaderThatIsWrittenTogether)
{
    EXPECT_TRUE(ReadScene("Korvanev10ShapeNumber v1 0 ShapeNumber 0 Folders").isscene);
}

TEST(ReadScene, WantsTheFoldersAfterTheShapeCount)
{
    const SceneDraft draft = ReadScene("Korvane v1.0 ShapeNumber: 1 Name: /a");
    EXPECT_TRUE(draft.isscene);
    EXPECT_FALSE(draft.hasfolders);
    EXPECT_FALSE(ReadScene("Korvane v1.0 ShapeNumber:").hasfolders);
}

TEST(ReadScene, NestsFolders)
{
    EXPECT_EQ(FoldersFrom("/a\n//b\n/c\n"), Names({"a<-1", "b<0", "c<-1"}));
}

TEST(ReadScene, PutsAFolderBelowTheNewestOneThatIsALevelHigher)
{
    // c is no longer below the folder of the line before, but b is the newest of depth 2
    EXPECT_EQ(FoldersFrom("/a\n//b\n/c\n///d\n//e\n///f\n"),
              Names({"a<-1", "b<0", "c<-1", "d<1", "e<2", "f<4"}));
}

TEST(ReadScene, PutsAFolderWithoutItsParentAtTheTop)
{
    EXPECT_EQ(FoldersFrom("///a\n////b\n"), Names({"a<-1", "b<0"}));
}

TEST(ReadScene, EndsTheFoldersAtAnotherTokenOrTheEnd)
{
    EXPECT_EQ(FoldersFrom("/a\nb\n/c\n"), Names({"a<-1"}));
    EXPECT_EQ(FoldersFrom("/a"), Names({"a<-1"}));
    EXPECT_EQ(FoldersFrom(std::string(3000, '/')), Names({"<-1"}));
}

TEST(ReadScene, FindsAShapesFolderByItsPath)
{
    EXPECT_EQ(PlaceOf("/top", "/a\n//b\n"), Names({"top<-1"}));
    EXPECT_EQ(PlaceOf("/a/x", "/a\n//b\n"), Names({"x<0"}));
    EXPECT_EQ(PlaceOf("/a/b/x", "/a\n//b\n"), Names({"x<1"}));
    EXPECT_EQ(PlaceOf("/a/b/x", "/a\n/a\n//b\n"), Names({"x<2"})); // /a/b is below the second a
    EXPECT_EQ(PlaceOf("/a/x", "/a\n//b\n/a\n"), Names({"x<0"}));   // the first of equal folders
}

TEST(ReadScene, PutsAShapeWithoutItsFolderAtTheTop)
{
    EXPECT_EQ(PlaceOf("/c/x", "/a\n"), Names({"x<-1"}));
    EXPECT_EQ(PlaceOf("a/x", "/a\n"), Names({"x<-1"}));
    EXPECT_EQ(PlaceOf("x", "/a\n"), Names({"x<-1"}));
    EXPECT_EQ(PlaceOf("/", "/a\n"), Names({"<-1"}));
}

TEST(ReadScene, ReadsAShapeInFull)
{
    const SceneDraft draft = ReadScene(SmallScene());
    EXPECT_FALSE(draft.mismatched);
    EXPECT_TRUE(draft.dropped.empty());
    ASSERT_EQ(ShapesOf(draft), Names({"body<1", "leaf<0", "top<-1"}));

    const Shape& body = *draft.shapes[0].shape;
    EXPECT_EQ(body.pointnumber, 4);
    EXPECT_EQ(body.points[3][0], 1);
    EXPECT_EQ(body.points[3][1], -1);
    EXPECT_EQ(body.points[3][2], -1);
    ASSERT_EQ(body.vertexnumber, 1);
    EXPECT_EQ(body.vertexes[0], 2);
    EXPECT_EQ(body.trianglenumber, 4);
    EXPECT_EQ(body.sidenumber, 4);

    const Side& side = body.sides[2];
    EXPECT_EQ(std::vector<int>(side.points, side.points + side.pointnumber),
              std::vector<int>({0, 3, 2}));
    EXPECT_EQ(side.trianglenumber, 1);
    EXPECT_EQ(side.visibility, VISIBLE_FRONT);
    EXPECT_EQ(std::vector<float>(side.colors, side.colors + colornumber),
              std::vector<float>({0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1, 0.7F, 0.7F, 0.7F, 1,
                                  0.1F, 0.1F, 0.1F, 1, 0.5F}));
}

TEST(ReadScene, KnowsThreeWordsOfVisibility)
{
    for (const auto& [word, visibility] : std::vector<std::pair<std::string, int>>{
             {"frontback", 3}, {"front", 1}, {"back", 2}, {"invisible", 0}, {"Front", 0}}) {
        std::string text = TriangleBlock("/x");
        text.replace(text.find("frontback"), 9, word);
        const SceneDraft draft = ReadScene(SceneHead(1) + text);
        EXPECT_EQ(draft.shapes.at(0).shape->sides[0].visibility, visibility) << word;
    }
}

TEST(ReadScene, TakesNoMarksWithoutTheirBlock)
{
    EXPECT_EQ(MarksFrom(""), std::vector<int>());
    EXPECT_EQ(MarksFrom("VertexNumber: 0 Vertexes: "), std::vector<int>());
}

TEST(ReadScene, SortsTheMarksAndTakesEachOnce)
{
    EXPECT_EQ(MarksFrom("VertexNumber: 4 Vertexes: 3 1 3 0 "), std::vector<int>({0, 1, 3}));
}

TEST(ReadScene, DropsAMarkOutsideThePointsAlone)
{
    EXPECT_EQ(MarksFrom("VertexNumber: 3 Vertexes: 4 1 -1 "), std::vector<int>({1}));
    EXPECT_EQ(MarksFrom("VertexNumber: 1 Vertexes: 2147483647 "), std::vector<int>());
}

TEST(ReadScene, CountsTheTrianglesOfASideByItsOutline)
{
    // the file claims 7 triangles for the side and names triangles that do not exist
    const SceneDraft draft = ReadScene(SceneHead(1) + Block("", {"0 1 2 3", "0 1 2"}));
    const Shape& shape = *draft.shapes.at(0).shape;
    EXPECT_EQ(shape.sides[0].trianglenumber, 2);
    EXPECT_EQ(shape.sides[1].trianglenumber, 1);
    EXPECT_EQ(shape.trianglenumber, 3);
}

TEST(ReadScene, DropsAShapeWithoutASide)
{
    EXPECT_EQ(FaultOf(Block("", {})), "/block: it has no side");
}

TEST(ReadScene, DropsAShapeWithASideOfTwoPoints)
{
    EXPECT_EQ(FaultOf(Block("", {"0 1 2", "0 1"})), "/block: a side has fewer than three points");
}

TEST(ReadScene, DropsAShapeWithAPointThatIsNotThere)
{
    EXPECT_EQ(FaultOf(Block("", {"0 1 4"})), "/block: a side names a point that is not there");
    EXPECT_EQ(FaultOf(Block("", {"0 -1 2"})), "/block: a side names a point that is not there");
}

TEST(ReadScene, ReadsANumberThatIsNotFiniteAsZero)
{
    std::string text = TriangleBlock("/x");
    text.replace(text.find("1\t0\t0"), 5, "1e999\tnan\t-inf");
    const SceneDraft draft = ReadScene(SceneHead(1) + text);
    const Shape& shape = *draft.shapes.at(0).shape;
    EXPECT_EQ(shape.points[1][0], 0);
    EXPECT_EQ(shape.points[1][1], 0);
    EXPECT_EQ(shape.points[1][2], 0);
}

TEST(ReadScene, NotesAKeywordThatDoesNotMatchAndGoesOn)
{
    std::string text = SmallScene();
    text.replace(text.find("Triangles"), 9, "Tribangles");
    const SceneDraft draft = ReadScene(text);
    EXPECT_TRUE(draft.mismatched);
    EXPECT_EQ(draft.shapes.size(), 3U);
}

TEST(ReadScene, EndsTheShapesWithTheFileOrTheirCount)
{
    const std::string block = TriangleBlock("/x");
    EXPECT_EQ(ReadScene(SceneHead(2147483647) + block + block).shapes.size(), 2U);
    EXPECT_EQ(ReadScene(SceneHead(1) + block + block).shapes.size(), 1U);
    EXPECT_EQ(ReadScene(SceneHead(0) + block).shapes.size(), 0U);
    EXPECT_EQ(ReadScene(SceneHead(-3) + block).shapes.size(), 0U);
}

// A list whose count says too much takes what is left of the file and no more memory than that.
TEST(ReadScene, EndsEveryListWithTheFile)
{
    const std::string start = SceneHead(1) + "Name: /x PointNumber: ";
    for (const std::string& rest :
         {std::string("2147483647 Points: 1 2 3 4"),
          std::string("0 Points: VertexNumber: 2147483647 Vertexes: 1 2"),
          std::string("0 Points: TriangleNumber: 2147483647 Triangles: 1 2"),
          std::string("0 Points: TriangleNumber: 0 Triangles: SideNumber: 2147483647 Sides:")}) {
        const SceneDraft draft = ReadScene(start + rest);
        ASSERT_EQ(draft.dropped.size(), 1U) << rest;
        EXPECT_STREQ(draft.dropped[0].reason, "it has no side") << rest;
    }
}

TEST(ReadScene, KeepsTheSidesThatTheFileStillHas)
{
    std::string text = TriangleBlock("/x");
    text.replace(text.find("SideNumber: 1"), 13, "SideNumber: 2147483647");
    const SceneDraft draft = ReadScene(SceneHead(1) + text);
    EXPECT_EQ(draft.shapes.at(0).shape->sidenumber, 1);
}

TEST(ReadScene, RepeatsTheLastTokenAtTheEnd)
{
    const std::string text = SceneHead(1) + TriangleBlock("/x");
    const SceneDraft draft =
        ReadScene(text.substr(0, text.rfind("0,1 0,1 0,1"))); // after 0,7 ... 1
    const float* colors = draft.shapes.at(0).shape->sides[0].colors;
    EXPECT_EQ(colors[BACK_LIGHT], 0.7F);
    EXPECT_EQ(colors[BACK_SHADOW], 1);
    EXPECT_EQ(colors[BACK_ACUITY], 1);
}

TEST(ReadScene, ReadsEqualFoldersInLinearMemory)
{
    // the folders' paths together would be 2000 times 20000 letters
    std::string text = SceneHead(1) + "/" + std::string(2000, 'x') + "\n";
    for (int i = 0; i < 20000; i++) {
        text += "//y\n";
    }
    const SceneDraft draft = ReadScene(text + TriangleBlock("/" + std::string(2000, 'x') + "/y/z"));
    EXPECT_EQ(draft.folders.size(), 20001U);
    EXPECT_EQ(ShapesOf(draft), Names({"z<1"}));
}

TEST(DeriveLoadedShape, MakesEveryShapeWhole)
{
    const SceneDraft draft = ReadScene(SmallScene());
    for (const ShapeDraft& entry : draft.shapes) {
        DeriveLoadedShape(entry.shape.get());
        EXPECT_EQ(FindBrokenRuleOfShape(*entry.shape), "") << entry.name;
        EXPECT_GT(entry.shape->edgenumber, 0);
        EXPECT_GT(entry.shape->normalnumber, 0);
        EXPECT_GT(entry.shape->stripenumber, 0);
    }
}

} // namespace korvane
