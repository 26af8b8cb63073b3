// The scene on which copying and pasting are tried.
#pragma once

#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace korvane::testing
{

void EmptyTheClipboard();

std::string GetCopiedNames(); // in the order of the clipboard, as for instance "a b deep"

// The scene's x points to the viewer, y to the right and z up; the centre lies at x 0.25.
void TurnCamera(float scale, int8_t perspective);

// Rows: a(b(deep) leaf) e() box square. Nothing is selected.
class Clipboard : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    static void Copy(const std::vector<int>& nodes);
    static void Paste(const std::vector<int>& selection);

    int a = 0;
    int b = 0;
    int e = 0;
    int deep = 0;
    int leaf = 0;
    int box = 0;
    int square = 0;
};

} // namespace korvane::testing
