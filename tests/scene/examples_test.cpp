#include "scene/model.h"
#include "scene/scenefile.h"
#include "tests/support/dialogdoubles.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/tempfolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static std::vector<std::string> ScenesIn(const std::string& folder)
{
    std::vector<std::string> paths;
    const std::filesystem::path root = KORVANE_SOURCE_DIR;
    for (const auto& entry : std::filesystem::directory_iterator(root / folder)) {
        if (entry.path().extension() == ".mrt") {
            paths.push_back(entry.path().string());
        }
    }
    return paths;
}

class Scenes : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
        ForgetDialogs();
    }

    // The text of the scene when it is saved.
    std::string SavedText() const
    {
        SaveMrt((folder / "x.mrt").c_str());
        return ReadText(folder / "x.mrt");
    }

    const TempFolder folder;
};

TEST_F(Scenes, OfTheExamplesAreWholeAndSavedTheSameEachTime)
{
    const std::vector<std::string> examples = ScenesIn("examples");
    ASSERT_FALSE(examples.empty());
    for (const std::string& path : examples) {
        ASSERT_EQ(OpenMrt(path.c_str()), 0) << path;
        EXPECT_EQ(FindBrokenRule(), "") << path;
        EXPECT_EQ(statustext, "") << path; // no shape is left out
        const std::string saved = SavedText();
        ASSERT_EQ(OpenMrt((folder / "x.mrt").c_str()), 0);
        EXPECT_EQ(SavedText(), saved) << path;
    }
}

TEST_F(Scenes, ThatTheFuzzerStartsFromLeaveTheProgramWhole)
{
    const std::vector<std::string> corpus = ScenesIn("tests/fuzz/corpus");
    ASSERT_FALSE(corpus.empty());
    for (const std::string& path : corpus) {
        OpenMrt(path.c_str());
        EXPECT_EQ(FindBrokenRule(), "") << path;
    }
}

} // namespace korvane
