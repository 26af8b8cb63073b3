#include "tests/support/journey.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::testing
{

static constexpr int screenwidth = 1280;
static constexpr int screenheight = 1024;
static constexpr int treewidth = 260;      // the least that stands to the left of the view
static constexpr int margin = 20;          // the most to the right of it in a maximised window
static constexpr useconds_t pause = 50000; // microseconds between two looks
static constexpr int patience = 400;       // looks: twenty seconds in all
static constexpr int stillness = 8;        // looks alike after which nothing moves any more

int Screenshot::Count(const std::function<bool(const Color&)>& wanted) const
{
    int number = 0;
    for (const Color& color : pixels) {
        number += wanted(color) ? 1 : 0;
    }
    return number;
}

int Screenshot::CountDifferences(const Screenshot& other) const
{
    if (width != other.width || height != other.height) {
        return int(pixels.size());
    }
    int number = 0;
    for (std::size_t i = 0; i < pixels.size(); i++) {
        number += pixels[i] == other.pixels[i] ? 0 : 1;
    }
    return number;
}

bool WaitFor(const std::function<bool()>& condition)
{
    for (int i = 0; i < patience; i++) {
        if (condition()) {
            return true;
        }
        usleep(pause);
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

// A window may go between being found and being asked about.
static int IgnoreError(Display*, XErrorEvent*)
{
    return 0;
}

Journey::Journey() : server(screenwidth, screenheight)
{
    char name[] = "/tmp/korvane-journey-XXXXXX";
    folder = mkdtemp(name);
    output = folder + "/output.txt";
    XSetErrorHandler(IgnoreError);
    display = XOpenDisplay(server.GetDisplay().c_str());
    manager = StartProgram("openbox", "", true);
    WaitFor([this] { return GetRootProperty("_NET_SUPPORTING_WM_CHECK") != None; });
}

Journey::~Journey()
{
    Stop();
    StopProgram(manager);
    XCloseDisplay(display);
    std::filesystem::remove_all(folder);
}

void Journey::Launch(const std::string& arguments, const std::string& environment)
{
    Stop();
    const std::string line = std::string("-C ") + KORVANE_SOURCE_DIR +
                             " LIBGL_ALWAYS_SOFTWARE=1 XDG_CONFIG_HOME=" + folder +
                             " XDG_DATA_HOME=" + folder + " " + environment + " " +
                             KORVANE_PROGRAM + " " + arguments + " >" + output;
    program = StartProgram("env", line, false);
}

bool Journey::Start(const std::string& arguments, const std::string& environment)
{
    Launch(arguments, environment);
    if (!WaitForFront("Vintra")) {
        return false;
    }
    topwindow = GetRootProperty("_NET_ACTIVE_WINDOW");
    return WaitFor([this] {
        FindView();
        return view.left > treewidth && view.left + view.width > screenwidth - margin;
    });
}

void Journey::Stop()
{
    StopProgram(program);
    program = -1;
    WaitFor([this] { return GetFrontTitle() != "Vintra"; }); // the next one's is another
}

bool Journey::IsRunning()
{
    if (program > 0 && waitpid(program, nullptr, WNOHANG) != 0) {
        program = -1;
    }
    return program > 0;
}

int Journey::WaitForEnd()
{
    int status = 0;
    if (!WaitFor([&] { return waitpid(program, &status, WNOHANG) == program; })) {
        return -1;
    }
    program = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The view is the innermost window at a place that belongs to it whatever the window's layout.
void Journey::FindView()
{
    const Window root = DefaultRootWindow(display);
    constexpr int x = screenwidth * 3 / 4;
    constexpr int y = screenheight / 2;
    view.window = root;
    Window inner = root;
    int left = 0;
    int top = 0;
    while (XTranslateCoordinates(display, root, view.window, x, y, &left, &top, &inner) != 0 &&
           inner != None) {
        view.window = inner;
    }
    XWindowAttributes attributes = {};
    XGetWindowAttributes(display, view.window, &attributes);
    view.left = x - left;
    view.top = y - top;
    view.width = attributes.width;
    view.height = attributes.height;
}

void Journey::Tell(const std::string& command) const
{
    if (std::system(("xdotool " + command + " >/dev/null").c_str()) != 0) {
        std::fprintf(stderr, "The journeys need xdotool, which could not %s\n", command.c_str());
    }
}

void Journey::MoveTo(int x, int y)
{
    Tell("mousemove " + std::to_string(view.left + x) + " " + std::to_string(view.top + y));
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

void Journey::ClickTrembling(int x, int y, int pixels)
{
    MoveTo(x, y);
    Tell("mousedown 1 mousemove_relative " + std::to_string(pixels) + " 0 mouseup 1");
}

void Journey::Type(const std::string& text)
{
    Tell("type --delay 20 '" + text + "'");
}

void Journey::Key(const std::string& keys)
{
    Tell("key " + keys);
}

void Journey::Hold(const std::string& key)
{
    constexpr unsigned int wait = 100; // milliseconds
    constexpr unsigned int interval = 20;
    XkbSetAutoRepeatRate(display, XkbUseCoreKbd, wait, interval);
    XSync(display, False);
    Tell("keydown " + key);
}

void Journey::LetGo(const std::string& key)
{
    Tell("keyup " + key);
}

// The window that the window manager names in a property of the root window, None without one.
unsigned long Journey::GetRootProperty(const char* name) const
{
    const Atom property = XInternAtom(display, name, False);
    Atom type = None;
    int format = 0;
    unsigned long number = 0;
    unsigned long rest = 0;
    unsigned char* value = nullptr;
    XGetWindowProperty(display, DefaultRootWindow(display), property, 0, 1, False, XA_WINDOW, &type,
                       &format, &number, &rest, &value);
    const Window window = number == 1 ? *reinterpret_cast<Window*>(value) : None;
    XFree(value);
    return window;
}

// The title of the window with the keyboard; "no window" without one.
std::string Journey::GetFrontTitle() const
{
    const Window window = GetRootProperty("_NET_ACTIVE_WINDOW");
    if (window == None) {
        return "no window";
    }
    char* name = nullptr;
    XFetchName(display, window, &name);
    const std::string title = name == nullptr ? "" : name;
    XFree(name);
    return title;
}

bool Journey::WaitForFront(const std::string& title)
{
    return WaitFor([&] { return GetFrontTitle() == title; });
}

Place Journey::GetFront() const
{
    const Window window = GetRootProperty("_NET_ACTIVE_WINDOW");
    XWindowAttributes attributes = {};
    XGetWindowAttributes(display, window, &attributes);
    int left = 0;
    int top = 0;
    Window inner = None;
    XTranslateCoordinates(display, window, DefaultRootWindow(display), 0, 0, &left, &top, &inner);
    return {left - view.left, top - view.top, attributes.width, attributes.height};
}

bool Journey::HasMenu() const
{
    Window root = None;
    Window parent = None;
    Window* children = nullptr;
    unsigned int number = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &number);
    bool found = false;
    for (unsigned int i = 0; i < number; i++) {
        XWindowAttributes child = {};
        XGetWindowAttributes(display, children[i], &child);
        found = found || (child.override_redirect != 0 && child.map_state == IsViewable &&
                          child.c_class == InputOutput && child.x >= 0 && child.width > 40 &&
                          child.height > 20);
    }
    XFree(children);
    return found;
}

void Journey::Minimize()
{
    XIconifyWindow(display, topwindow, DefaultScreen(display));
    XFlush(display);
}

void Journey::Restore()
{
    XMapWindow(display, topwindow);
    XFlush(display);
}

bool Journey::IsViewHidden() const
{
    XWindowAttributes attributes = {};
    XGetWindowAttributes(display, view.window, &attributes);
    return attributes.map_state != IsViewable;
}

Screenshot Journey::Look() const
{
    return LookAt(0, 0, view.width, view.height);
}

Screenshot Journey::LookAt(int left, int top, int pixelwidth, int pixelheight) const
{
    Screenshot picture;
    picture.width = pixelwidth;
    picture.height = pixelheight;
    XImage* image = XGetImage(display, DefaultRootWindow(display), view.left + left, view.top + top,
                              unsigned(pixelwidth), unsigned(pixelheight), AllPlanes, ZPixmap);
    picture.pixels.reserve(std::size_t(pixelwidth) * std::size_t(pixelheight));
    for (int y = 0; y < pixelheight; y++) {
        for (int x = 0; x < pixelwidth; x++) {
            const unsigned long pixel = XGetPixel(image, x, y);
            picture.pixels.push_back(
                {int(pixel >> 16 & 255), int(pixel >> 8 & 255), int(pixel & 255)});
        }
    }
    XDestroyImage(image);
    return picture;
}

Screenshot Journey::LookWhenStill()
{
    Screenshot last = Look();
    int alike = 0;
    WaitFor([&] {
        Screenshot next = Look();
        alike = next.pixels == last.pixels ? alike + 1 : 0;
        last = std::move(next);
        return alike == stillness;
    });
    return last;
}

} // namespace korvane::testing
