// The folder tree as texts, and its rows as they are added and picked.
#pragma once

#include "tests/support/shapes.h"

#include <string>
#include <vector>

namespace korvane::testing
{

int AddFolder(const std::string& name, int parent = 0); // returns its node

int AddShapeRow(OwnedShape shape, const std::string& name, int folder); // likewise

std::vector<int> GetSelectedNodes();

// What is in a folder, as for instance "a(b() one) two".
std::string GetContent(int folder = 0);

// The names of the selected nodes in the order of the selection, as for instance "a two".
std::string GetSelection();

// One change of the selection that leaves exactly these rows selected; opens their folders.
void SelectRows(const std::vector<int>& nodes);

} // namespace korvane::testing
