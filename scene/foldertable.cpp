#include "scene/foldertable.h"

#include <functional>

namespace korvane
{

std::size_t FolderTable::StepHash::operator()(const Step& step) const
{
    constexpr std::size_t spread = 0x9e3779b97f4a7c15U; // 2^64 over the golden ratio
    return std::hash<std::string>()(step.name) ^ std::size_t(step.place) * spread;
}

// Takes the first "/name" off a path.
static std::string_view TakeName(std::string_view& path)
{
    const std::size_t end = path.find('/', 1);
    const std::string_view name = path.substr(1, end == path.npos ? end : end - 1);
    path.remove_prefix(end == path.npos ? path.size() : end);
    return name;
}

int FolderTable::Add(int place, std::string_view ending, int folder)
{
    while (!ending.empty()) {
        const int next = int(folders.size());
        const auto [step, isnew] = steps.try_emplace({place, std::string(TakeName(ending))}, next);
        if (isnew) {
            folders.push_back(nofolder);
        }
        place = step->second;
    }
    if (folders[std::size_t(place)] == nofolder) {
        folders[std::size_t(place)] = folder;
    }
    return place;
}

int FolderTable::Find(std::string_view path, int missing) const
{
    if (!path.starts_with('/')) {
        return missing;
    }
    int place = rootplace;
    while (!path.empty()) {
        const auto step = steps.find({place, std::string(TakeName(path))});
        if (step == steps.end()) {
            return missing;
        }
        place = step->second;
    }
    const int folder = folders[std::size_t(place)];
    return folder == nofolder ? missing : folder;
}

} // namespace korvane
