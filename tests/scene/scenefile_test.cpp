#include "scene/scenefile.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/support/dialogdoubles.h"
#include "tests/support/invariants.h"
#include "tests/support/scenetexts.h"
#include "tests/support/shapes.h"
#include "tests/support/tempfolder.h"
#include "tests/support/treetexts.h"
#include "ui/transform.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>

namespace korvane
{

using namespace korvane::testing;

using Errors = std::vector<std::string>;

static const Errors cannotopen{"Can't open the scene!"};
static const Errors cannotsave{"Can't save the scene!"};

class SceneFile : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
        ForgetDialogs();
        rdstate = 0;
    }

    // Opens a file with this text.
    int OpenText(const std::string& text) const
    {
        WriteText(folder / "opened.mrt", text);
        return OpenMrt((folder / "opened.mrt").c_str());
    }

    // The text of the file that the scene is saved to.
    std::string SavedText() const
    {
        EXPECT_EQ(SaveMrt((folder / "saved.mrt").c_str()), 0);
        return ReadText(folder / "saved.mrt");
    }

    // A scene with all kinds of shapes, in folders and beside them.
    static void BuildScene()
    {
        const int a = AddFolder("a");
        const int b = AddFolder("b", a);
        AddFolder("c"); // stays empty
        AddToScene(Cube(), "cube", b);
        AddToScene(Star(), "star", a);
        AddToScene(TrianglePrism(), "Prism");
        OwnedShape pyramid = Pyramid();
        korvane::testing::SetVertexes(pyramid.get(), {0, 1, 2, 3, 4});
        AddToScene(std::move(pyramid), "pyramid");
        AddToScene(Tetrahedron(), "body", a);
    }

    const TempFolder folder;
};

// The tree as indented lines, and how many sides each shape has.
static std::string TreeText(int folder = 0, int depth = 0)
{
    std::string text;
    for (int i = 0; i < treeiters[folder].childnumber; i++) {
        const int child = treeiters[folder].children[i];
        const TreeIter& node = treeiters[child];
        text += std::string(std::size_t(depth), ' ') + node.name;
        text += node.type == NODE_FOLDER
                    ? "/\n" + TreeText(child, depth + 1)
                    : " " + std::to_string(shapes[node.shapeindex]->sidenumber) + "\n";
    }
    return text;
}

TEST_F(SceneFile, OpensAScene)
{
    EXPECT_EQ(OpenText(SmallScene()), 0);
    EXPECT_EQ(errors, Errors());
    EXPECT_EQ(TreeText(), "a/\n b/\n  body 4\n leaf 1\ntop 1\n");
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(SceneFile, NumbersFoldersBeforeShapesInFileOrder)
{
    OpenText(SceneHead(2) + "/z\n/a\n" + TriangleBlock("/y") + TriangleBlock("/x"));
    ASSERT_EQ(treeiternumber, 5);
    EXPECT_STREQ(treeiters[1].name, "z");
    EXPECT_STREQ(treeiters[2].name, "a");
    EXPECT_STREQ(treeiters[3].name, "y");
    EXPECT_STREQ(treeiters[4].name, "x");
    EXPECT_EQ(treeiters[3].shapeindex, 0);
    EXPECT_EQ(treeiters[4].shapeindex, 1);
    EXPECT_EQ(TreeText(), "a/\nz/\nx 1\ny 1\n"); // shown in order
}

TEST_F(SceneFile, OpensAnEmptyScene)
{
    BuildScene();
    EXPECT_EQ(OpenText(SceneHead(0)), 0);
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(treeiternumber, 1);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(SceneFile, OpensFoldersWithoutShapes)
{
    EXPECT_EQ(OpenText(SceneHead(0) + "/a\n//b\n\n"), 0);
    EXPECT_EQ(TreeText(), "a/\n b/\n");
}

TEST_F(SceneFile, ReplacesTheSceneThatIsOpen)
{
    BuildScene();
    OpenText(SmallScene());
    EXPECT_EQ(TreeText(), "a/\n b/\n  body 4\n leaf 1\ntop 1\n");
    OpenText(SmallScene());
    EXPECT_EQ(TreeText(), "a/\n b/\n  body 4\n leaf 1\ntop 1\n");
}

TEST_F(SceneFile, ProjectsWhatItOpensAndAsksForARedraw)
{
    OpenText(SmallScene());
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    EXPECT_EQ(activepointnumber, 4 + 3 + 3);
    EXPECT_EQ(activesidenumber, 4 + 1 + 1);
    for (int i = 0; i < shapenumber; i++) {
        EXPECT_NE(showtable[i], SHOW_NOTHING) << i;
    }
}

// Every shape of this scene is a unit large, so it is drawn rounded and each of its elements can be
// picked at once, before any frame is drawn.
TEST_F(SceneFile, CanBePickedAsSoonAsItIsOpen)
{
    OpenText(SmallScene());
    for (int i = 0; i < shapenumber; i++) {
        EXPECT_EQ(showtable[i], SHOW_ROUNDED) << i;
    }
    for (int k = 0; k < activesidenumber; k++) {
        EXPECT_EQ(activesides[k].active, 1) << k;
    }
    for (int k = 0; k < activepointnumber; k++) {
        EXPECT_EQ(activepoints[k].active, 1) << k;
    }
}

TEST_F(SceneFile, LeavesTheSceneAloneWhenTheFileIsNone)
{
    BuildScene();
    const std::string before = SavedText();
    EXPECT_EQ(OpenText("Korvane v2.0\nShapeNumber: 0\nFolders:\n"), 1);
    EXPECT_EQ(errors, cannotopen);
    EXPECT_EQ(OpenText(""), 1);
    EXPECT_EQ(OpenMrt((folder / "none.mrt").c_str()), 1);
    EXPECT_EQ(OpenMrt(folder.GetPath().c_str()), 1);
    ASSERT_EQ(mkfifo((folder / "pipe.mrt").c_str(), 0600), 0);
    EXPECT_EQ(OpenMrt((folder / "pipe.mrt").c_str()), 1);
    EXPECT_EQ(errors.size(), 5U);
    EXPECT_EQ(SavedText(), before);
    EXPECT_EQ(rdstate, 0);
}

// Deliberate: by then the scene has been given up, as the format's reader always did.
TEST_F(SceneFile, IsEmptyWhenTheFoldersAreMissing)
{
    BuildScene();
    EXPECT_EQ(OpenText("Korvane v1.0\nShapeNumber: 1\nName:\n/x\n"), 1);
    EXPECT_EQ(errors, cannotopen);
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(treeiternumber, 1);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(SceneFile, TellsOfShapesThatAreLeftOut)
{
    std::string broken = TriangleBlock("/broken");
    broken.replace(broken.find("0\t1\t2\t\n"), 6, "0\t1\t3\t");
    ::testing::internal::CaptureStdout();
    EXPECT_EQ(OpenText(SceneHead(2) + broken + TriangleBlock("/whole")), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "Shape /broken is left out: a side names a point that is not there\n");
    EXPECT_EQ(statustext, "1 damaged shape is left out");
    EXPECT_EQ(errors, Errors());
    EXPECT_EQ(TreeText(), "whole 1\n");
    ::testing::internal::CaptureStdout();
    OpenText(SceneHead(2) + broken + broken);
    ::testing::internal::GetCapturedStdout();
    EXPECT_EQ(statustext, "2 damaged shapes are left out");
}

TEST_F(SceneFile, SaysNothingWhenAllShapesAreWhole)
{
    OpenText(SmallScene());
    EXPECT_EQ(statustext, "");
}

TEST_F(SceneFile, SaysNothingOfTheSceneThatWasThereBefore)
{
    statustext = " Only selected shapes are shown";
    OpenText(SmallScene());
    EXPECT_EQ(statustext, "");
    statustext = " Only selected shapes are shown";
    New();
    EXPECT_EQ(statustext, "");
}

TEST_F(SceneFile, SavesTheFoldersDepthFirst)
{
    BuildScene();
    const std::string text = SavedText();
    EXPECT_NE(text.find("ShapeNumber: 5\n\nFolders:\n\n/a\n//b\n/c\n\n#~~~"), std::string::npos);
}

TEST_F(SceneFile, SavesTheShapesInTreeOrder)
{
    BuildScene();
    const std::string text = SavedText();
    std::vector<std::string> paths;
    for (std::size_t at = text.find("Name:\n"); at != std::string::npos;
         at = text.find("Name:\n", at + 1)) {
        paths.push_back(text.substr(at + 6, text.find('\n', at + 6) - at - 6));
    }
    EXPECT_EQ(paths,
              std::vector<std::string>({"/a/b/cube", "/a/body", "/a/star", "/Prism", "/pyramid"}));
}

TEST_F(SceneFile, SavesAnEmptyScene)
{
    EXPECT_EQ(SavedText(), "Korvane v1.0\n\n#Created by Mirtal v1.0\n\n#" + std::string(70, '~') +
                               "\n\nShapeNumber: 0\n\nFolders:\n\n\n");
}

TEST_F(SceneFile, LoadsWhatItSavedAndSavesTheSameBytes)
{
    BuildScene();
    const std::string text = SavedText();
    const std::string tree = TreeText();
    EXPECT_EQ(OpenText(text), 0);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(TreeText(), tree);
    EXPECT_EQ(SavedText(), text);
}

TEST_F(SceneFile, CarriesAnyFloatAndColor)
{
    const float third = 1.0F / 3;
    OwnedShape shape =
        MakeFlatShape({{1e-30F, -third, 0}, {12345.678F, 0, third}, {0, 98765, 1e19F}});
    shape->sides[0].colors[0] = third;
    const std::vector<float> points(shape->points[0], shape->points[0] + 9);
    AddToScene(std::move(shape), "x");
    OpenText(SavedText());
    EXPECT_EQ(std::vector<float>(shapes[0]->points[0], shapes[0]->points[0] + 9), points);
    EXPECT_EQ(shapes[0]->sides[0].colors[0], 0.333333F);
}

// Deliberate: "+" is no token character, so from 1e20 on a number falls apart.
TEST_F(SceneFile, CannotCarryNumbersFromTenToTheTwentyOn)
{
    AddToScene(MakeFlatShape({{1e20F, 0, 0}, {1, 0, 0}, {0, 1, 0}}), "x");
    const std::string text = SavedText();
    EXPECT_NE(text.find("1,0000000200408773427e+20\t0\t0\t#0."), std::string::npos);
    OpenText(text);
    EXPECT_EQ(shapenumber, 0); // the points are out of step, and so is what follows them
}

TEST_F(SceneFile, WritesCommasWhateverTheLocale)
{
    BuildScene();
    const std::string text = SavedText();
    for (const char* locale : {"de_DE.UTF-8", "hu_HU.UTF-8", "C.UTF-8", "C"}) {
        if (std::setlocale(LC_ALL, locale) != nullptr) { // as far as they are installed
            EXPECT_EQ(SavedText(), text) << locale;
            EXPECT_EQ(OpenText(text), 0);
            EXPECT_EQ(SavedText(), text) << locale;
        }
    }
    std::setlocale(LC_ALL, "C");
}

TEST_F(SceneFile, KeepsTheRestReadableWhenANameCannotBeCarried)
{
    const int parent = AddFolder("my folder/one");
    AddToScene(Square(), "t\xc3\xa9te #1\nName:", parent);
    AddToScene(Square(), "", parent);
    AddFolder("");
    AddToScene(Cube(), "whole");
    const std::string text = SavedText();
    EXPECT_EQ(OpenText(text), 0);
    EXPECT_EQ(TreeText(), "folder/\nmy-folder-one/\n shape 1\n t-te--1-Name- 1\nwhole 6\n");
    EXPECT_EQ(SavedText(), text);
}

TEST_F(SceneFile, MergesFoldersOfEqualNames)
{
    const int first = AddFolder("a");
    const int second = AddFolder("a");
    AddToScene(Square(), "x", first);
    AddToScene(Square(), "y", second);
    OpenText(SavedText());
    EXPECT_EQ(TreeText(), "a/\n x 1\n y 1\na/\n");
}

TEST_F(SceneFile, WritesTheBranchesBelowANode)
{
    BuildScene();
    char* bytes = nullptr;
    std::size_t length = 0;
    FILE* file = open_memstream(&bytes, &length);
    FolderSave(file, 1, 2); // below a
    ShapeSave(file, 2);     // below b
    std::fclose(file);
    const std::string text(bytes, length);
    std::free(bytes);
    EXPECT_EQ(text.substr(0, 6), "//b\n#~");
    EXPECT_NE(text.find("Name:\n/a/b/cube\n"), std::string::npos);
    EXPECT_EQ(text.find("star"), std::string::npos);
}

TEST_F(SceneFile, ShowsThatItCannotBeSaved)
{
    BuildScene();
    EXPECT_EQ(SaveMrt((folder / "none/x.mrt").c_str()), 1);
    EXPECT_EQ(errors, cannotsave);
    std::filesystem::create_symlink("/dev/full", folder / "full.mrt");
    EXPECT_EQ(SaveMrt((folder / "full.mrt").c_str()), 1);
    EXPECT_EQ(SaveMrt(folder.GetPath().c_str()), 1);
    EXPECT_EQ(errors.size(), 3U);
}

TEST_F(SceneFile, KeepsTheFileThatASaveReplaces)
{
    WriteText(folder / "saved.mrt", "something else");
    SavedText();
    EXPECT_EQ(ReadText(folder / "saved.mrt~"), "something else");
}

TEST_F(SceneFile, TellsTheStreamWhenItCannotBeWritten)
{
    BuildScene();
    FILE* full = std::fopen("/dev/full", "w");
    std::setvbuf(full, nullptr, _IONBF, 0);
    ShapeSave(full, 0);
    EXPECT_NE(std::ferror(full), 0);
    std::fclose(full);
}

TEST_F(SceneFile, NewEmptiesTheSceneWithoutAQuestion)
{
    BuildScene();
    New();
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(treeiternumber, 1);
    EXPECT_EQ(treeiters[0].childnumber, 0);
    EXPECT_STREQ(treeiters[0].name, "scene");
    EXPECT_EQ(gtk_tree_model_iter_n_children(GTK_TREE_MODEL(store), nullptr), 0);
    EXPECT_EQ(activepointnumber, 0);
    EXPECT_EQ(pnumber, 0);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    EXPECT_EQ(filemodes, std::vector<int>());
    EXPECT_EQ(NewMrt(), 0);
}

// The shape that it named by its index would be another one.
TEST_F(SceneFile, NewPutsDownATakenUpTool)
{
    mainview.action = MOVE_SHAPE;
    srshapenumber = 0;
    New();
    EXPECT_EQ(mainview.action, TOOL_NONE);
}

TEST_F(SceneFile, OpenAsksForTheFile)
{
    WriteText(folder / "small.mrt", SmallScene());
    chosenfile = folder / "small.mrt";
    Open();
    EXPECT_EQ(filemodes, std::vector<int>({FILE_OPENSCENE}));
    EXPECT_EQ(shapenumber, 3);
}

TEST_F(SceneFile, SaveAndSaveAsAskForTheFileInTheirModes)
{
    BuildScene();
    chosenfile = folder / "one.mrt";
    Save();
    chosenfile = folder / "two.mrt";
    SaveAs();
    EXPECT_EQ(filemodes, std::vector<int>({FILE_SAVESCENE, FILE_SAVESCENEAS}));
    EXPECT_EQ(ReadText(folder / "one.mrt"), SavedText());
    EXPECT_EQ(ReadText(folder / "two.mrt"), SavedText());
}

TEST_F(SceneFile, ACancelledDialogChangesNothing)
{
    BuildScene();
    const std::string before = SavedText();
    Open();
    Save();
    SaveAs();
    EXPECT_EQ(errors, Errors());
    EXPECT_EQ(SavedText(), before);
}

TEST_F(SceneFile, LoadsAndClearsThousandsOfShapes)
{
    constexpr int number = 3000;
    std::string text = SceneHead(number) + "/a\n//b\n\n";
    for (int i = 0; i < number; i++) {
        text += TriangleBlock((i % 2 == 0 ? "/a/b/s" : "/s") + std::to_string(i));
    }
    EXPECT_EQ(OpenText(text), 0);
    EXPECT_EQ(shapenumber, number);
    EXPECT_EQ(treeiternumber, 1 + 2 + number);
    EXPECT_EQ(treeiters[2].childnumber, number / 2);
    const std::string saved = SavedText();
    EXPECT_EQ(OpenText(saved), 0);
    EXPECT_EQ(SavedText(), saved);
    NewMrt();
    EXPECT_EQ(shapenumber, 0);
}

} // namespace korvane
