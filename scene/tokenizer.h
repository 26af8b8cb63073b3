// The one tokenizer of the scene format, over a byte source. A token is a run of ASCII letters,
// digits, "/", "-" and ","; "#" starts a comment that runs to the end of its line, and every other
// character only separates. The character that ends a token is consumed with it.
#pragma once

#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace korvane
{

// A byte source answers with the next byte, or a negative number at its end, and can skip a line.
struct FileSource {
    FILE* file; // borrowed

    int Next()
    {
        return std::getc(file);
    }
    void SkipLine() // or what is left of the file, when it has no line feed
    {
        int c = Next();
        while (c >= 0 && c != '\n') {
            c = Next();
        }
    }
};

struct MemorySource {
    const char* next; // borrowed; the bytes that are left
    const char* end;  // borrowed; where they end

    int Next()
    {
        return next == end ? EOF : int(static_cast<unsigned char>(*next++));
    }
    void SkipLine()
    {
        const void* feed = std::memchr(next, '\n', std::size_t(end - next));
        next = feed == nullptr ? end : static_cast<const char*>(feed) + 1;
    }
};

inline constexpr auto tokencharacters = [] {
    std::array<bool, 256> table{}; // never isalnum, which depends on the locale
    for (const char c : std::string_view("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                         "0123456789/-,")) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}();

inline bool IsTokenCharacter(int c)
{
    return c >= 0 && tokencharacters[std::size_t(c)];
}

// Reads the next token into the `room` bytes at `buffer`, cutting it where it does not fit with its
// terminating zero. Returns the length of what was stored; 0 at the end of the source, where the
// buffer stays as it was.
template <class Source> int ReadTokenFrom(Source& source, char* buffer, int room)
{
    Source bytes = source; // a copy that cannot be thought to change with the buffer: it is faster
    int c = bytes.Next();
    while (c >= 0 && !IsTokenCharacter(c)) {
        if (c == '#') {
            bytes.SkipLine();
        }
        c = bytes.Next();
    }
    int length = 0;
    for (; IsTokenCharacter(c) && length < room - 1; c = bytes.Next()) {
        buffer[length++] = char(c);
    }
    while (IsTokenCharacter(c)) {
        c = bytes.Next();
    }
    if (length > 0) {
        buffer[length] = 0;
    }
    source = bytes;
    return length;
}

} // namespace korvane
