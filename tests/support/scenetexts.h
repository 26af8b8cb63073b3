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

} // namespace korvane::testing
