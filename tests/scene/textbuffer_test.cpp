#include "scene/textbuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace korvane
{

// What reaches the file of these parts, written one after the other.
static std::string Gather(const std::vector<std::string>& parts)
{
    char* bytes = nullptr;
    std::size_t length = 0;
    FILE* file = open_memstream(&bytes, &length);
    TextBuffer text(file);
    for (const std::string& part : parts) {
        AppendText(text, part);
    }
    FlushText(text);
    std::fclose(file);
    std::string result(bytes, length);
    std::free(bytes);
    return result;
}

TEST(TextBuffer, HandsOnEveryByteInOrder)
{
    // what fits to the byte, what is a byte too long for the rest, what is longer than the buffer
    for (const std::size_t size : {0U, 1U, 65535U, 65536U, 65537U, 200000U}) {
        const std::string large(size, 'b');
        EXPECT_TRUE(Gather({"a", large, "c"}) == "a" + large + "c") << size;
        EXPECT_TRUE(Gather({large, "c", large}) == large + "c" + large) << size;
    }
}

TEST(TextBuffer, TakesWhatWasWrittenInItsRoom)
{
    FILE* nowhere = std::fopen("/dev/null", "w");
    TextBuffer text(nowhere);
    AppendText(text, std::string(65530, 'x'));
    char* room = MakeRoom(text, 6); // the last that there are
    EXPECT_EQ(text.used, 65530U);
    TakeText(text, std::fill_n(room, 4, 'y'));
    EXPECT_EQ(text.used, 65534U);
    EXPECT_EQ(MakeRoom(text, 3), text.bytes.data()); // there were two
    EXPECT_EQ(text.used, 0U);
    std::fclose(nowhere);
}

} // namespace korvane
