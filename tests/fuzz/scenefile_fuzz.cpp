// Opens whatever bytes the fuzzer thinks of as a scene file. The scene must be whole afterwards,
// and what is saved of it must load again without a loss.

#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/treeview.h"
#include "tests/support/dialogdoubles.h"
#include "tests/support/invariants.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace korvane
{

static void Require(bool condition, const std::string& rule)
{
    if (!condition) {
        std::fprintf(stderr, "Broken: %s\n", rule.c_str());
        std::abort();
    }
}

// A file in memory with a path by which it can be opened.
class MemoryFile
{
public:
    MemoryFile() : file(fdopen(memfd_create("scene", MFD_CLOEXEC), "w+"))
    {
    }
    ~MemoryFile()
    {
        std::fclose(file);
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    FILE* GetFile() const
    {
        return file;
    }
    std::string GetPath() const
    {
        std::fflush(file);
        return "/proc/self/fd/" + std::to_string(fileno(file));
    }

private:
    FILE* file;
};

// Writes what SaveMrt writes. Answers whether the format carries all of it: numbers from 1e20 on,
// which alone have a "+", fall apart.
static bool WriteScene(const MemoryFile& saved)
{
    FILE* file = saved.GetFile();
    std::fprintf(file, "Korvane v1.0\nShapeNumber: %d\nFolders:\n", shapenumber);
    FolderSave(file, 0, 1);
    ShapeSave(file, 0);
    std::rewind(file);
    for (int c = std::getc(file); c != EOF; c = std::getc(file)) {
        if (c == '+') {
            return false;
        }
    }
    return true;
}

static void Try(const std::uint8_t* data, std::size_t size)
{
    const MemoryFile given;
    std::fwrite(data, 1, size, given.GetFile());
    OpenMrt(given.GetPath().c_str());
    const std::string broken = testing::FindBrokenRule();
    Require(broken.empty(), broken);

    const int shapesgiven = shapenumber;
    const int nodesgiven = treeiternumber;
    const MemoryFile saved;
    if (WriteScene(saved)) {
        Require(OpenMrt(saved.GetPath().c_str()) == 0, "a saved scene loads");
        Require(shapenumber == shapesgiven, "a saved scene has all its shapes");
        Require(treeiternumber == nodesgiven, "a saved scene has all its nodes");
    }
    NewMrt();
    testing::ForgetDialogs();
}

} // namespace korvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (korvane::store == nullptr) {
        korvane::MakeTree();
    }
    korvane::Try(data, size);
    return 0;
}
