// Plain heap arrays for the records of the document. Every array that a record points to is made,
// grown, copied and closed up here and nowhere else. A fresh entry has every byte zero. A count
// that is negative or memory that runs out ends the program with a message: no caller sees a null
// array.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>

#include <malloc.h>

namespace korvane
{

struct FreeDeleter {
    void operator()(void* block) const noexcept
    {
        std::free(block);
    }
};

// A temporary that its holder frees; what a function hands over to its caller has this type.
template <class T> using Block = std::unique_ptr<T, FreeDeleter>;

// Ends the program: the arrays of the document cannot be had. Exit status 1.
[[noreturn]] inline void StopForMemory(const char* reason)
{
    std::fprintf(stderr, "korvane: %s\n", reason);
    std::exit(1);
}

// Lets the heap keep what is freed, up to a bound, instead of handing it back to the system. Every
// step of a drag frees the derived versions of its shape and makes them again: with fresh pages
// that takes twice as long. Call it once, before anything large is allocated.
inline void KeepFreedMemory()
{
    constexpr int largestblock = 32 << 20; // larger ones the heap cannot keep
    constexpr int largestrest = 512 << 20;
    mallopt(M_MMAP_THRESHOLD, largestblock);
    mallopt(M_TRIM_THRESHOLD, largestrest);
}

// The bytes of `count` entries of `size` bytes; at least one byte, so that no array is null.
inline std::size_t GetArrayBytes(std::int64_t count, std::size_t size)
{
    if (count < 0) {
        StopForMemory("an array cannot have a negative length");
    }
    if (std::size_t(count) > std::size_t(PTRDIFF_MAX) / size) {
        StopForMemory("an array is too long for this machine");
    }
    return count == 0 ? 1 : std::size_t(count) * size;
}

// A new array of `count` entries, every byte zero. The caller owns it.
template <class T> T* NewArray(int count)
{
    static_assert(std::is_trivially_copyable_v<T>);
    void* block = std::calloc(GetArrayBytes(count, sizeof(T)), 1);
    if (block == nullptr) {
        StopForMemory("out of memory");
    }
    return static_cast<T*>(block);
}

// A new array of `count` entries whose bytes the caller writes, all of them, before any is read.
template <class T> T* NewUnfilledArray(int count)
{
    static_assert(std::is_trivially_copyable_v<T>);
    void* block = std::malloc(GetArrayBytes(count, sizeof(T)));
    if (block == nullptr) {
        StopForMemory("out of memory");
    }
    return static_cast<T*>(block);
}

// Makes the array exactly `count` entries long and keeps those that fit; new ones are unfilled.
// What memory the array has is used again: fresh pages cost more than what is written to them.
template <class T> void ResizeArray(T*& array, int count)
{
    static_assert(std::is_trivially_copyable_v<T>);
    void* block = std::realloc(static_cast<void*>(array), GetArrayBytes(count, sizeof(T)));
    if (block == nullptr) {
        StopForMemory("out of memory");
    }
    array = static_cast<T*>(block);
}

// A new array with the first `count` entries of `source`. The caller owns it.
template <class T> T* CopyArray(const T* source, int count)
{
    T* copy = NewUnfilledArray<T>(count);
    if (count > 0) {
        std::memcpy(static_cast<void*>(copy), source, GetArrayBytes(count, sizeof(T)));
    }
    return copy;
}

// A copy of a text with its final zero.
inline Block<char[]> CopyText(std::string_view text)
{
    Block<char[]> copy(NewUnfilledArray<char>(int(text.size()) + 1));
    text.copy(copy.get(), text.size());
    copy[text.size()] = 0;
    return copy;
}

// Makes room for `newcount` entries and keeps the first `oldcount`; the new ones are zero. The room
// grows in powers of two, so that entries can be added one by one at constant cost.
template <class T> void GrowArray(T*& array, int oldcount, int newcount)
{
    static_assert(std::is_trivially_copyable_v<T>);
    const auto room = std::int64_t(std::bit_ceil(std::uint64_t(newcount < 1 ? 1 : newcount)));
    void* block = std::realloc(static_cast<void*>(array), GetArrayBytes(room, sizeof(T)));
    if (block == nullptr) {
        StopForMemory("out of memory");
    }
    array = static_cast<T*>(block);
    if (newcount > oldcount) {
        std::memset(static_cast<void*>(array + oldcount), 0,
                    std::size_t(newcount - oldcount) * sizeof(T));
    }
}

// Opens a zeroed place at `index`, moving the later entries up, and raises `count` by one.
template <class T> void InsertAt(T*& array, int& count, int index)
{
    GrowArray(array, count, count + 1);
    std::memmove(static_cast<void*>(array + index + 1), array + index,
                 std::size_t(count - index) * sizeof(T));
    std::memset(static_cast<void*>(array + index), 0, sizeof(T));
    count++;
}

// Closes the gap at `index` and lowers `count` by one. What the entry owns is freed before, by the
// caller; the array is not shrunk.
template <class T> void RemoveAt(T* array, int& count, int index)
{
    std::memmove(static_cast<void*>(array + index), array + index + 1,
                 std::size_t(count - index - 1) * sizeof(T));
    count--;
}

// Frees the array and makes the pointer null.
template <class T> void FreeArray(T*& array)
{
    std::free(static_cast<void*>(array));
    array = nullptr;
}

} // namespace korvane
