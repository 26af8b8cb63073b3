// A folder of a test's own, and whole files in it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace korvane::testing
{

class TempFolder
{
public:
    TempFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "korvane-XXXXXX").string();
        path = mkdtemp(name.data());
    }
    ~TempFolder()
    {
        std::filesystem::remove_all(path);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string operator/(const std::string& name) const
    {
        return (path / name).string();
    }

    const std::filesystem::path& GetPath() const
    {
        return path;
    }

private:
    std::filesystem::path path;
};

inline void WriteText(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string ReadText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace korvane::testing
