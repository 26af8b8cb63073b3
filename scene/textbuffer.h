// Text that is gathered in a buffer and handed to a file in large pieces: stdio's own calls cost
// more than the digits they write. Whoever writes ends with FlushText. A failed write shows in the
// file's error flag, as with stdio.
#pragma once

#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace korvane
{

struct TextBuffer {
    explicit TextBuffer(FILE* target) : file(target)
    {
    }

    FILE* file;                    // borrowed
    std::size_t used = 0;          // how many of `bytes` wait to be written
    std::array<char, 65536> bytes; // unfilled from used on
};

inline void FlushText(TextBuffer& text) // hands what is buffered to the file
{
    std::fwrite(text.bytes.data(), 1, text.used, text.file);
    text.used = 0;
}

// Where the next text goes; `length` bytes, no more than the buffer has, are free there.
inline char* MakeRoom(TextBuffer& text, std::size_t length)
{
    if (length > text.bytes.size() - text.used) {
        FlushText(text);
    }
    return text.bytes.data() + text.used;
}

// Takes what was written from MakeRoom's answer to `end`.
inline void TakeText(TextBuffer& text, const char* end)
{
    text.used = std::size_t(end - text.bytes.data());
}

inline void AppendText(TextBuffer& text, std::string_view part)
{
    if (part.size() > text.bytes.size()) {
        FlushText(text);
        std::fwrite(part.data(), 1, part.size(), text.file);
        return;
    }
    std::memcpy(MakeRoom(text, part.size()), part.data(), part.size());
    text.used += part.size();
}

} // namespace korvane
