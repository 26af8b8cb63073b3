// Finds the folder that a shape's path names, in time that grows with the path alone. Paths are
// chains of names: a folder's path is its parent's followed by its own, and of several folders with
// one path the first counts. Texts are not kept whole, so long names in deep folders cost nothing.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korvane
{

class FolderTable
{
public:
    static constexpr int rootplace = 0; // the place of the empty path

    // Gives the path that is `ending` below a place, "/" and a name or several of them, to a folder
    // unless an earlier one has it. Returns the path's place.
    int Add(int place, std::string_view ending, int folder);

    // The first folder with this path, or `missing`. Every folder's path begins with "/".
    int Find(std::string_view path, int missing) const;

private:
    struct Step { // from a path to a longer one by one name
        int place;
        std::string name;

        bool operator==(const Step&) const = default;
    };
    struct StepHash {
        std::size_t operator()(const Step& step) const;
    };

    static constexpr int nofolder = -1;

    std::unordered_map<Step, int, StepHash> steps; // the places to which they lead
    std::vector<int> folders{nofolder};            // the first folder of each place
};

} // namespace korvane
