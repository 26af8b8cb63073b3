// The built program on a desktop of its own: an X server, a window manager, and real pointer and
// key events sent with xdotool. Journeys wait for a condition, never for time alone.
#pragma once

#include "tests/support/xserver.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::testing
{

struct Color {
    int red, green, blue;
};

// A copy of the screen.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Color> pixels; // rows from top to bottom

    const Color& At(int x, int y) const
    {
        return pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)];
    }
    // How many pixels inside a rectangle satisfy a condition.
    int Count(int left, int top, int right, int bottom,
              const std::function<bool(const Color&)>& wanted) const;
};

// Asks again and again until the answer is yes; false when it is still no after 20 seconds.
bool WaitFor(const std::function<bool()>& condition);

class Journey
{
public:
    Journey();
    ~Journey();
    Journey(const Journey&) = delete;
    Journey& operator=(const Journey&) = delete;

    // Starts the program in the project's folder and waits for its window, maximised. `environment`
    // is put before the command, for instance "LC_ALL=de_DE.UTF-8".
    bool Start(const std::string& arguments, const std::string& environment = "");
    void Stop(); // ends the program

    void Click(int x, int y, int button = 1);
    void Type(const std::string& text);
    void Key(const std::string& keys); // as xdotool names them, for instance "alt+s"
    void MoveTo(int x, int y);
    void Press(int button);
    void Release(int button);

    bool WaitForWindow(const std::string& title);
    bool WaitForNoWindow(const std::string& title);

    Picture Look() const;

    // A new folder of this journey's own, removed at its end.
    const std::string& GetFolder() const
    {
        return folder;
    }
    const std::string& GetOutput() const // the file with the program's standard output
    {
        return output;
    }

private:
    void Tell(const std::string& command) const;
    bool HasWindow(const std::string& title) const;

    XServer server;
    pid_t manager = -1;
    pid_t program = -1;
    std::string folder;
    std::string output;
};

std::string ReadWholeFile(const std::string& path); // empty when it cannot be read

} // namespace korvane::testing
