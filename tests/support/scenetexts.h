// Texts of small scene files, for the tests that read them.
#pragma once

#include <string>
#include <vector>

namespace korvane::testing
{

// Everything before the folder lines.
inline std::string SceneHead(int shapecount)
{
    return "Korvane v1.0\n\n#Created by Mirtal v1.0\n\nShapeNumber: " + std::to_string(shapecount) +
           "\n\nFolders:\n\n";
}

// The words and colours after a side's triangles.
inline std::string SideLook(const std::string& visibility = "frontback")
{
    return "Visibility: " + visibility +
           "\nColors:\n0,8 0,8 0,8 1\n0,2 0,2 0,2 1\n1\n0,7 0,7 0,7 1\n0,1 0,1 0,1 1\n0,5\n";
}

// A triangle as a file has it.
inline std::string TriangleBlock(const std::string& path)
{
    return "Name:\n" + path +
           "\nPointNumber: 3\nPoints:\n0\t0\t0\t#0.\n1\t0\t0\t#1.\n0\t1\t0\t#2.\n"
           "TriangleNumber: 1\nTriangles:\n0\t1\t2\t#0.\nSideNumber: 1\nSides:\n"
           "PointNumber: 3\nPoints:\n0\t1\t2\t\n\nTriangleNumber: 1\nTriangles:\n0\t\n\n" +
           SideLook();
}

// A tetrahedron with one marked point, in a folder.
inline std::string TetrahedronBlock(const std::string& path)
{
    std::string text = "Name:\n" + path +
                       "\nPointNumber: 4\nPoints:\n1\t1\t1\t#0.\n-1\t-1\t1\t#1.\n-1\t1\t-1\t#2.\n"
                       "1\t-1\t-1\t#3.\nVertexNumber: 1\nVertexes:\n2\t\n"
                       "TriangleNumber: 4\nTriangles:\n0\t2\t1\n0\t1\t3\n0\t3\t2\n1\t2\t3\n"
                       "SideNumber: 4\nSides:\n";
    const std::vector<std::string> sides{"0\t2\t1", "0\t1\t3", "0\t3\t2", "1\t2\t3"};
    for (std::size_t i = 0; i < sides.size(); i++) {
        text += "PointNumber: 3\nPoints:\n" + sides[i] + "\nTriangleNumber: 1\nTriangles:\n" +
                std::to_string(i) + "\n" + SideLook("front");
    }
    return text;
}

// Two folders, one in the other, and a shape in each of three places.
inline std::string SmallScene()
{
    return SceneHead(3) + "/a\n//b\n\n" + TetrahedronBlock("/a/b/body") + TriangleBlock("/a/leaf") +
           TriangleBlock("/top");
}

// A yellow box that fills x from 0.1 to 0.3, y from 0.1 to 0.2 and z from -0.15 to 0.05; every
// corner is marked, so that it stays a box when it is rounded.
inline std::string BoxScene()
{
    std::string text = SceneHead(1) +
                       "Name:\n/box\nPointNumber: 8\nPoints:\n"
                       "0,1\t0,1\t-0,15\n0,3\t0,1\t-0,15\n0,3\t0,2\t-0,15\n0,1\t0,2\t-0,15\n"
                       "0,1\t0,1\t0,05\n0,3\t0,1\t0,05\n0,3\t0,2\t0,05\n0,1\t0,2\t0,05\n"
                       "VertexNumber: 8\nVertexes:\n0 1 2 3 4 5 6 7\n";
    const char* triangles[] = {"0 3 2", "0 2 1", "4 5 6", "4 6 7", "0 1 5", "0 5 4",
                               "3 7 6", "3 6 2", "0 4 7", "0 7 3", "1 2 6", "1 6 5"};
    const char* sides[] = {"0 3 2 1", "4 5 6 7", "0 1 5 4", "3 7 6 2", "0 4 7 3", "1 2 6 5"};
    text += "TriangleNumber: 12\nTriangles:\n";
    for (const char* triangle : triangles) {
        text += std::string(triangle) + "\n";
    }
    text += "SideNumber: 6\nSides:\n";
    for (int i = 0; i < 6; i++) {
        text += std::string("PointNumber: 4\nPoints:\n") + sides[i] +
                "\nTriangleNumber: 2\nTriangles:\n" + std::to_string(2 * i) + " " +
                std::to_string(2 * i + 1) +
                "\nVisibility: front\nColors:\n0,9 0,9 0 1\n0,7 0,7 0 1\n0,1\n"
                "0,9 0,9 0 1\n0,7 0,7 0 1\n0,1\n";
    }
    return text;
}

} // namespace korvane::testing
