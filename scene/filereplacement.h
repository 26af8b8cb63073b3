// Whole files: reading one, and putting a new text in the place of an old one so that neither a
// full disk nor a crash costs the old text.
#pragma once

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace korvane
{

struct FileBytes {
    std::unique_ptr<char[]> bytes; // may have more room than is filled
    std::size_t length = 0;        // bytes that are filled

    std::string_view GetText() const
    {
        return {bytes.get(), length};
    }
};

// Reads a regular file, in the place of what `file` held; anything else, such as a folder, a pipe
// or a device, may never end. False when there is no such file, it cannot be read or it has more
// bytes than an int can count.
bool ReadRegularFile(const char* path, FileBytes& file);

// Writes a file's text; whether that worked is told by the file's error flag.
using TextWriter = std::function<void(FILE*)>;

// Puts the text that `write` gives in the place of the file at `path`, or behind it when it is a
// symbolic link. The file that is replaced is kept with "~" behind its name, and its mode stays.
// False when anything fails; the old file is as it was then.
bool ReplaceFile(const char* path, const TextWriter& write);

} // namespace korvane
