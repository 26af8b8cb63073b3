#include "scene/tokenizer.h"

#include "scene/scenefile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;

using Tokens = std::vector<std::string>;

// Every token of a file with this text, by the public face of the tokenizer.
static Tokens TokensOf(std::string text)
{
    Tokens tokens;
    char buffer[tokensize];
    FILE* file =
        text.empty() ? std::fopen("/dev/null", "r") : fmemopen(text.data(), text.size(), "r");
    while (ReadToken(file, buffer) == 0) {
        tokens.emplace_back(buffer);
    }
    std::fclose(file);
    return tokens;
}

TEST(ReadToken, TakesRunsOfTokenCharacters)
{
    EXPECT_EQ(TokensOf("ShapeNumber: 12\n\n/a/b-c,D\t0,5"),
              Tokens({"ShapeNumber", "12", "/a/b-c,D", "0,5"}));
}

TEST(ReadToken, SplitsAtEveryOtherCharacter)
{
    EXPECT_EQ(TokensOf("v1.0 a_b +5 \xc3\xa9"), Tokens({"v1", "0", "a", "b", "5"}));
    EXPECT_EQ(TokensOf(std::string("a\0b\xff"
                                   "c",
                                   5)),
              Tokens({"a", "b", "c"}));
}

TEST(ReadToken, SkipsACommentWithItsLineFeed)
{
    EXPECT_EQ(TokensOf("a #b c\nd#\ne"), Tokens({"a", "d", "e"}));
}

TEST(ReadToken, ConsumesTheCharacterThatEndsAToken)
{
    EXPECT_EQ(TokensOf("5#x\n6"), Tokens({"5", "x", "6"}));
}

TEST(ReadToken, EndsACommentAtTheEndOfTheFile)
{
    EXPECT_EQ(TokensOf("a #b"), Tokens({"a"}));
    EXPECT_EQ(TokensOf("#"), Tokens({}));
}

TEST(ReadToken, ReturnsTheTokenThatTheFileEndsWith)
{
    EXPECT_EQ(TokensOf("a b"), Tokens({"a", "b"}));
}

TEST(ReadToken, LeavesTheBufferAsItWasAtTheEnd)
{
    char buffer[tokensize] = "before";
    FILE* file = std::fopen("/dev/null", "r");
    EXPECT_EQ(ReadToken(file, buffer), 1);
    EXPECT_STREQ(buffer, "before");
    std::fclose(file);
}

TEST(ReadToken, CutsALongTokenAndConsumesItsRest)
{
    const std::string longest(tokensize - 1, 'x');
    EXPECT_EQ(TokensOf(longest + " y"), Tokens({longest, "y"}));
    EXPECT_EQ(TokensOf(longest + "z y"), Tokens({longest, "y"}));
    EXPECT_EQ(TokensOf(std::string(1 << 20, 'x') + " y"), Tokens({longest, "y"}));
}

TEST(ReadTokenFrom, ReadsFromMemoryAsFromAFile)
{
    const std::string text = "Name:\n/a #x\n\n5#x\n\xff, #unended";
    MemorySource source{text.data(), text.data() + text.size()};
    Tokens tokens;
    char buffer[tokensize];
    while (ReadTokenFrom(source, buffer, tokensize) > 0) {
        tokens.emplace_back(buffer);
    }
    EXPECT_EQ(tokens, TokensOf(text));
    EXPECT_EQ(tokens, Tokens({"Name", "/a", "5", "x", ","}));
}

TEST(ReadTokenFrom, ReturnsTheLengthOfWhatItStored)
{
    const std::string text = "abcdef g";
    MemorySource source{text.data(), text.data() + text.size()};
    char buffer[4];
    EXPECT_EQ(ReadTokenFrom(source, buffer, 4), 3);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(ReadTokenFrom(source, buffer, 4), 1);
    EXPECT_EQ(ReadTokenFrom(source, buffer, 4), 0);
    EXPECT_STREQ(buffer, "g");
}
