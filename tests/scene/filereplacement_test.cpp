#include "scene/filereplacement.h"

#include "tests/support/tempfolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvane
{

using testing::ReadText;
using testing::TempFolder;
using testing::WriteText;

static TextWriter Writing(const std::string& text)
{
    return [text](FILE* file) { std::fputs(text.c_str(), file); };
}

static mode_t GetMode(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

static std::set<std::string> FilesIn(const TempFolder& folder)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.GetPath())) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

using Names = std::set<std::string>;

// While it lives, no file may grow beyond a size: a disk that is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        handler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before{};
    void (*handler)(int) = nullptr;
};

// Nobody's rights while it lives, since nothing is closed to the superuser.
class PlainUser
{
public:
    PlainUser()
    {
        changed = geteuid() == 0 && seteuid(nobody) == 0;
    }
    ~PlainUser()
    {
        if (changed && seteuid(0) != 0) {
            std::abort();
        }
    }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;

    static constexpr uid_t nobody = 65534;

private:
    bool changed = false;
};

// A file that the plain user may write in a folder that he may not.
static void CloseFolder(const TempFolder& folder, const std::string& file)
{
    if (geteuid() == 0) {
        ASSERT_EQ(chown(file.c_str(), PlainUser::nobody, getgid()), 0);
    }
    std::filesystem::permissions(folder.GetPath(), std::filesystem::perms(0555));
}

TEST(ReplaceFile, CreatesANewFile)
{
    const TempFolder folder;
    EXPECT_TRUE(ReplaceFile((folder / "x.mrt").c_str(), Writing("new")));
    EXPECT_EQ(ReadText(folder / "x.mrt"), "new");
    EXPECT_EQ(FilesIn(folder), Names({"x.mrt"}));
}

TEST(ReplaceFile, GivesANewFileTheUsualMode)
{
    const TempFolder folder;
    const mode_t before = umask(026);
    ReplaceFile((folder / "x.mrt").c_str(), Writing("new"));
    umask(before);
    EXPECT_EQ(GetMode(folder / "x.mrt"), 0640U);
}

TEST(ReplaceFile, KeepsTheFileThatItReplaces)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "first");
    EXPECT_TRUE(ReplaceFile((folder / "x.mrt").c_str(), Writing("second")));
    EXPECT_TRUE(ReplaceFile((folder / "x.mrt").c_str(), Writing("third")));
    EXPECT_EQ(ReadText(folder / "x.mrt"), "third");
    EXPECT_EQ(ReadText(folder / "x.mrt~"), "second");
    EXPECT_EQ(FilesIn(folder), Names({"x.mrt", "x.mrt~"}));
}

TEST(ReplaceFile, KeepsTheMode)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "old");
    for (const mode_t mode : {0600U, 0666U, 0755U}) {
        chmod((folder / "x.mrt").c_str(), mode);
        EXPECT_TRUE(ReplaceFile((folder / "x.mrt").c_str(), Writing("new")));
        EXPECT_EQ(GetMode(folder / "x.mrt"), mode);
        EXPECT_EQ(GetMode(folder / "x.mrt~"), mode);
    }
}

TEST(ReplaceFile, FollowsALinkToItsTarget)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "far");
    WriteText(folder / "far/x.mrt", "old");
    std::filesystem::create_symlink("far/x.mrt", folder / "near.mrt");
    std::filesystem::create_symlink(folder / "near.mrt", folder / "link.mrt");
    EXPECT_TRUE(ReplaceFile((folder / "link.mrt").c_str(), Writing("new")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "near.mrt"));
    EXPECT_EQ(ReadText(folder / "far/x.mrt"), "new");
    EXPECT_EQ(ReadText(folder / "far/x.mrt~"), "old");
    EXPECT_EQ(FilesIn(folder), Names({"far", "near.mrt", "link.mrt"}));
}

TEST(ReplaceFile, CreatesTheTargetOfALinkToNothing)
{
    const TempFolder folder;
    std::filesystem::create_symlink("x.mrt", folder / "link.mrt");
    EXPECT_TRUE(ReplaceFile((folder / "link.mrt").c_str(), Writing("new")));
    EXPECT_EQ(ReadText(folder / "x.mrt"), "new");
}

TEST(ReplaceFile, WritesANameWithoutAFolder)
{
    const TempFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.GetPath());
    EXPECT_TRUE(ReplaceFile("x.mrt", Writing("new")));
    std::filesystem::current_path(before);
    EXPECT_EQ(ReadText(folder / "x.mrt"), "new");
}

TEST(ReplaceFile, DoesNotFollowALinkInThePlaceOfTheKeptFile)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "old");
    WriteText(folder / "other", "other");
    std::filesystem::create_symlink("other", folder / "x.mrt~");
    EXPECT_TRUE(ReplaceFile((folder / "x.mrt").c_str(), Writing("new")));
    EXPECT_EQ(ReadText(folder / "other"), "other");
    EXPECT_EQ(ReadText(folder / "x.mrt~"), "old");
}

TEST(ReplaceFile, RefusesWhatIsNoRegularFile)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "folder.mrt");
    ASSERT_EQ(mkfifo((folder / "pipe.mrt").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/full", folder / "full.mrt");
    std::filesystem::create_symlink("loop.mrt", folder / "loop.mrt");
    const Names before = FilesIn(folder);
    for (const char* name : {"folder.mrt", "pipe.mrt", "full.mrt", "loop.mrt", "none/x.mrt", ""}) {
        EXPECT_FALSE(ReplaceFile((folder / name).c_str(), Writing("new"))) << name;
    }
    EXPECT_EQ(FilesIn(folder), before);
}

TEST(ReplaceFile, LeavesTheOldFileWhenTheDiskIsFull)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "old");
    WriteText(folder / "x.mrt~", "older");
    {
        const FullDisk full(100000);
        EXPECT_FALSE(ReplaceFile((folder / "x.mrt").c_str(), Writing(std::string(200000, 'x'))));
    }
    EXPECT_EQ(ReadText(folder / "x.mrt"), "old");
    EXPECT_EQ(ReadText(folder / "x.mrt~"), "older");
    EXPECT_EQ(FilesIn(folder), Names({"x.mrt", "x.mrt~"}));
}

TEST(ReplaceFile, LeavesTheOldFileWhenItCannotBeKept)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "old");
    std::filesystem::create_directory(folder / "x.mrt~");
    EXPECT_FALSE(ReplaceFile((folder / "x.mrt").c_str(), Writing("new")));
    EXPECT_EQ(ReadText(folder / "x.mrt"), "old");
    EXPECT_EQ(FilesIn(folder), Names({"x.mrt", "x.mrt~"}));
}

TEST(ReplaceFile, RefusesAProtectedFile)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "old");
    chmod((folder / "x.mrt").c_str(), 0444);
    std::filesystem::permissions(folder.GetPath(), std::filesystem::perms(0777));
    {
        const PlainUser user;
        EXPECT_FALSE(ReplaceFile((folder / "x.mrt").c_str(), Writing("new")));
    }
    EXPECT_EQ(ReadText(folder / "x.mrt"), "old");
}

TEST(ReplaceFile, WritesInPlaceWhereTheFolderTakesNoNewFile)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "a longer old text");
    CloseFolder(folder, folder / "x.mrt");
    const TempFolder copies; // where the old text is while the new one is written
    std::filesystem::permissions(copies.GetPath(), std::filesystem::perms(0777));
    setenv("TMPDIR", copies.GetPath().c_str(), 1);
    {
        const PlainUser user;
        EXPECT_TRUE(ReplaceFile((folder / "x.mrt").c_str(), Writing("new")));
        EXPECT_FALSE(ReplaceFile((folder / "y.mrt").c_str(), Writing("new")));
    }
    unsetenv("TMPDIR");
    EXPECT_EQ(ReadText(folder / "x.mrt"), "new");
    EXPECT_EQ(FilesIn(folder), Names({"x.mrt"}));
    EXPECT_EQ(FilesIn(copies), Names());
}

TEST(ReplaceFile, WritesInPlaceWhereTheFileCannotBeMovedOver)
{
    const TempFolder folder;
    WriteText(folder / "x.mrt", "old");
    chmod((folder / "x.mrt").c_str(), 0666);
    chmod(folder.GetPath().c_str(), 01777); // only the owner of a file may replace it
    {
        const PlainUser user;
        EXPECT_TRUE(ReplaceFile((folder / "x.mrt").c_str(), Writing("new")));
    }
    EXPECT_EQ(ReadText(folder / "x.mrt"), "new");
    EXPECT_EQ(ReadText(folder / "x.mrt~"), "old");
    EXPECT_EQ(FilesIn(folder), Names({"x.mrt", "x.mrt~"}));
}

TEST(ReplaceFile, PutsTheOldTextBackWhenWritingInPlaceFails)
{
    const TempFolder folder;
    const std::string old(50000, 'o');
    WriteText(folder / "x.mrt", old);
    CloseFolder(folder, folder / "x.mrt");
    {
        const PlainUser user;
        const FullDisk full(100000);
        EXPECT_FALSE(ReplaceFile((folder / "x.mrt").c_str(), Writing(std::string(200000, 'x'))));
    }
    EXPECT_EQ(ReadText(folder / "x.mrt"), old);
}

TEST(ReadRegularFile, ReadsAFileWhole)
{
    const TempFolder folder;
    const std::string text("a\0b\n", 4);
    WriteText(folder / "x", text);
    FileBytes file;
    EXPECT_TRUE(ReadRegularFile((folder / "x").c_str(), file));
    EXPECT_EQ(file.GetText(), text);
}

TEST(ReadRegularFile, ForgetsWhatWasReadBefore)
{
    const TempFolder folder;
    WriteText(folder / "x", "abc");
    WriteText(folder / "y", "longer");
    FileBytes file;
    for (const std::string name : {"x", "y", "x"}) {
        EXPECT_TRUE(ReadRegularFile((folder / name).c_str(), file));
        EXPECT_EQ(file.GetText(), name == "x" ? "abc" : "longer");
    }
}

TEST(ReadRegularFile, ReadsAnEmptyFile)
{
    const TempFolder folder;
    WriteText(folder / "x", "");
    FileBytes file;
    EXPECT_TRUE(ReadRegularFile((folder / "x").c_str(), file));
    EXPECT_EQ(file.GetText(), "");
}

TEST(ReadRegularFile, RefusesWhatIsNoRegularFile)
{
    const TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {folder.GetPath().string(), folder / "pipe", folder / "none", std::string("/dev/zero")}) {
        FileBytes file;
        EXPECT_FALSE(ReadRegularFile(path.c_str(), file)) << path;
    }
}

TEST(ReadRegularFile, RefusesAFileBeyondTheRangeOfAnInt)
{
    const TempFolder folder;
    WriteText(folder / "x", "");
    std::filesystem::resize_file(folder / "x", std::uintmax_t(1) << 40); // nothing but a hole
    FileBytes file;
    EXPECT_FALSE(ReadRegularFile((folder / "x").c_str(), file));
}

} // namespace korvane
