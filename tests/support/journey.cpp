#include "tests/support/journey.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace korvane::testing
{

int Picture::Count(int left, int top, int right, int bottom,
                   const std::function<bool(const Color&)>& wanted) const
{
    int number = 0;
    for (int y = top; y < bottom; y++) {
        for (int x = left; x < right; x++) {
            number += wanted(At(x, y)) ? 1 : 0;
        }
    }
    return number;
}

bool WaitFor(const std::function<bool()>& condition)
{
    constexpr int tries = 200;
    for (int i = 0; i < tries; i++) {
        if (condition()) {
            return true;
        }
        usleep(100000);
    }
    return false;
}

std::string ReadWholeFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

Journey::Journey() : server(1280, 1024)
{
    char name[] = "/tmp/korvane-journey-XXXXXX";
    folder = mkdtemp(name);
    output = folder + "/output.txt";
    manager = StartProgram("openbox", "", true);
}

Journey::~Journey()
{
    Stop();
    StopProgram(manager);
    std::filesystem::remove_all(folder);
}

bool Journey::Start(const std::string& arguments, const std::string& environment)
{
    const std::string line =
        "LIBGL_ALWAYS_SOFTWARE=1 " + environment + " " + KORVANE_PROGRAM + " " + arguments;
    program = StartProgram("env", line + " >" + output, false);
    return WaitForWindow("Vintra");
}

void Journey::Stop()
{
    StopProgram(program);
    program = -1;
}

void Journey::Tell(const std::string& command) const
{
    if (std::system(("xdotool " + command + " >/dev/null 2>&1").c_str()) != 0) {
        std::fprintf(stderr, "xdotool could not %s\n", command.c_str());
    }
}

void Journey::MoveTo(int x, int y)
{
    Tell("mousemove " + std::to_string(x) + " " + std::to_string(y));
}

void Journey::Press(int button)
{
    Tell("mousedown " + std::to_string(button));
}

void Journey::Release(int button)
{
    Tell("mouseup " + std::to_string(button));
}

void Journey::Click(int x, int y, int button)
{
    MoveTo(x, y);
    Tell("click " + std::to_string(button));
}

void Journey::Type(const std::string& text)
{
    Tell("type --delay 20 '" + text + "'");
}

void Journey::Key(const std::string& keys)
{
    Tell("key " + keys);
}

bool Journey::HasWindow(const std::string& title) const
{
    const std::string command =
        "xdotool search --onlyvisible --name '^" + title + "$' >/dev/null 2>&1";
    return std::system(command.c_str()) == 0;
}

bool Journey::WaitForWindow(const std::string& title)
{
    return WaitFor([&] { return HasWindow(title); });
}

bool Journey::WaitForNoWindow(const std::string& title)
{
    return WaitFor([&] { return !HasWindow(title); });
}

Picture Journey::Look() const
{
    Display* display = XOpenDisplay(server.GetDisplay().c_str());
    const int screen = DefaultScreen(display);
    Picture picture;
    picture.width = DisplayWidth(display, screen);
    picture.height = DisplayHeight(display, screen);
    XImage* image = XGetImage(display, RootWindow(display, screen), 0, 0, unsigned(picture.width),
                              unsigned(picture.height), AllPlanes, ZPixmap);
    for (int y = 0; y < picture.height; y++) {
        for (int x = 0; x < picture.width; x++) {
            const unsigned long pixel = XGetPixel(image, x, y);
            picture.pixels.push_back(
                {int(pixel >> 16 & 255), int(pixel >> 8 & 255), int(pixel & 255)});
        }
    }
    XDestroyImage(image);
    XCloseDisplay(display);
    return picture;
}

} // namespace korvane::testing
