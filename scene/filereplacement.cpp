#include "scene/filereplacement.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvane
{

// A file of many megabytes is read into large pages where the system has them: each small page that
// is touched the first time costs as much as reading hundreds of its bytes.
static void AskForLargePages(char* bytes, std::size_t size)
{
    constexpr std::size_t largepage = std::size_t(2) << 20;
    void* first = bytes;
    std::size_t room = size;
    if (std::align(largepage, largepage, first, room) != nullptr) {
        madvise(first, room, MADV_HUGEPAGE);
    }
}

// Reads what an open file holds, or held when its length was asked.
static bool ReadOpenFile(int descriptor, FileBytes& file)
{
    struct stat status;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > INT_MAX) {
        return false;
    }
    const auto size = std::size_t(status.st_size);
    file.length = 0;
    file.bytes.reset(new (std::nothrow) char[size]);
    if (file.bytes == nullptr) {
        return false;
    }
    AskForLargePages(file.bytes.get(), size);
    while (file.length < size) {
        const ssize_t count = read(descriptor, &file.bytes[file.length], size - file.length);
        if (count < 0) {
            return false;
        }
        if (count == 0) { // it has become shorter
            break;
        }
        file.length += std::size_t(count);
    }
    return true;
}

bool ReadRegularFile(const char* path, FileBytes& file)
{
    // opening a pipe would wait for its other end
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return false;
    }
    const bool done = ReadOpenFile(descriptor, file);
    close(descriptor);
    return done;
}

// Writes an open file anew, closes it and waits until its text is on the disk.
static bool WriteAndClose(int descriptor, const TextWriter& write)
{
    FILE* file = fdopen(descriptor, "w");
    if (file == nullptr) {
        close(descriptor);
        return false;
    }
    write(file);
    const bool written = std::fflush(file) == 0 && std::ferror(file) == 0 &&
                         ftruncate(descriptor, ftello(file)) == 0 && fsync(descriptor) == 0;
    return std::fclose(file) == 0 && written;
}

// The file that is to be replaced.
struct Target {
    std::string path; // no symbolic link
    bool exists;      // with a mode, an owner and bytes
    struct stat status;
    FileBytes bytes;
};

// The path behind a chain of symbolic links, whose last may lead to nothing. A chain without an end
// stops at a link.
static std::string FollowLinks(const char* path)
{
    constexpr int longestchain = 40;
    std::filesystem::path target = path;
    for (int i = 0; i < longestchain; i++) {
        std::error_code error;
        const std::filesystem::path next = std::filesystem::read_symlink(target, error);
        if (error) {
            break;
        }
        target = target.parent_path() / next;
    }
    return target.string();
}

// False when the path cannot be written: what stands there is no regular file, or is protected.
static bool FindTarget(const char* path, Target& target)
{
    target.path = FollowLinks(path);
    target.exists = stat(target.path.c_str(), &target.status) == 0;
    if (!target.exists) {
        return errno == ENOENT;
    }
    return S_ISREG(target.status.st_mode) &&
           faccessat(AT_FDCWD, target.path.c_str(), W_OK, AT_EACCESS) == 0 &&
           ReadRegularFile(target.path.c_str(), target.bytes);
}

static std::string GetFolder(const Target& target)
{
    const std::string folder = std::filesystem::path(target.path).parent_path().string();
    return folder.empty() ? "." : folder;
}

// Gives a new file the mode of the one that it replaces, and the owner as far as that is allowed.
static bool TakeOver(int descriptor, const struct stat& status)
{
    const bool owned = fchown(descriptor, status.st_uid, status.st_gid) == 0;
    const mode_t mode = status.st_mode & (owned ? 07777U : 0777U);
    return fchmod(descriptor, mode) == 0;
}

// Removes a file that came to nothing; errno still tells why.
static void Discard(const std::string& path)
{
    const int reason = errno;
    unlink(path.c_str());
    errno = reason;
}

// Writes a new file that is to take the target's place, or its name with "~". False with the reason
// in errno, and there is no file then; so with MoveTo.
static bool WriteNewFile(const std::string& path, const Target& target, const TextWriter& write)
{
    Discard(path); // what a crash has left
    const mode_t mode = target.exists ? target.status.st_mode & 0777 : 0666;
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (descriptor < 0) {
        return false;
    }
    const bool taken = !target.exists || TakeOver(descriptor, target.status);
    if (!WriteAndClose(descriptor, write) || !taken) {
        Discard(path);
        return false;
    }
    return true;
}

static bool MoveTo(const std::string& path, const std::string& newpath)
{
    if (std::rename(path.c_str(), newpath.c_str()) != 0) {
        Discard(path);
        return false;
    }
    return true;
}

static TextWriter GetWriterOf(const FileBytes& bytes)
{
    return [&bytes](FILE* file) { std::fwrite(bytes.bytes.get(), 1, bytes.length, file); };
}

// The file that was kept before goes only when the new one is complete.
static bool KeepOldFile(const Target& target, const std::string& temporary)
{
    return !target.exists || (WriteNewFile(temporary, target, GetWriterOf(target.bytes)) &&
                              MoveTo(temporary, target.path + "~"));
}

// A name is on the disk when its folder is; not every file system can be asked for that.
static void SyncFolder(const std::string& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

// Keeps a copy where files can always be made. Empty when that fails.
static std::string KeepTemporaryCopy(const Target& target)
{
    const char* folder = std::getenv("TMPDIR");
    std::string path = folder == nullptr ? "/tmp" : folder;
    path += "/" + std::filesystem::path(target.path).filename().string() + "~XXXXXX";
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (descriptor >= 0 && WriteAndClose(descriptor, GetWriterOf(target.bytes))) {
        return path;
    }
    Discard(path);
    return "";
}

static int OpenInPlace(const Target& target)
{
    return open(target.path.c_str(), O_WRONLY | O_CLOEXEC);
}

static bool PutOldTextBack(const Target& target)
{
    const int descriptor = OpenInPlace(target);
    return descriptor >= 0 && WriteAndClose(descriptor, GetWriterOf(target.bytes));
}

// Writes a file whose folder does not let it be replaced. While the text is not complete a copy of
// the old one is on the disk, from which it can be had back even after a crash.
static bool WriteInPlace(const Target& target, const TextWriter& write)
{
    const std::string copy = KeepTemporaryCopy(target);
    if (copy.empty()) {
        return false;
    }
    const int descriptor = OpenInPlace(target);
    const bool written = descriptor >= 0 && WriteAndClose(descriptor, write);
    const bool whole = written || descriptor < 0 || PutOldTextBack(target);
    if (whole) {
        unlink(copy.c_str());
    } else {
        std::printf("The old text of %s is in %s\n", target.path.c_str(), copy.c_str());
    }
    return written;
}

// Writes a new file beside the target and moves it over. False with the reason in errno.
static bool WriteBeside(const Target& target, const TextWriter& write)
{
    const std::string newpath = GetFolder(target) + "/.korvane-" + std::to_string(getpid());
    if (!WriteNewFile(newpath, target, write)) {
        return false;
    }
    if (!KeepOldFile(target, newpath + "~")) {
        Discard(newpath);
        return false;
    }
    if (!MoveTo(newpath, target.path)) {
        return false;
    }
    SyncFolder(GetFolder(target));
    return true;
}

bool ReplaceFile(const char* path, const TextWriter& write)
{
    Target target;
    if (!FindTarget(path, target)) {
        return false;
    }
    if (WriteBeside(target, write)) {
        return true;
    }
    return target.exists && (errno == EACCES || errno == EPERM) && WriteInPlace(target, write);
}

} // namespace korvane
