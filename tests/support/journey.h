// The built program on a desktop of its own: an X server, a window manager, and real pointer and
// key events sent with xdotool. Journeys wait for a condition, never for time alone. Pictures and
// pointer positions are those of the view: pixels from its upper left corner.
#pragma once

#include "tests/support/xserver.h"

#include <functional>
#include <string>
#include <vector>

typedef struct _XDisplay Display;

namespace korvane::testing
{

struct Color {
    int red, green, blue;
    bool operator==(const Color&) const = default;
};

// A copy of the view.
struct Screenshot {
    int width = 0;
    int height = 0;
    std::vector<Color> pixels; // rows from top to bottom

    const Color& At(int x, int y) const
    {
        return pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)];
    }
    int Count(const std::function<bool(const Color&)>& wanted) const;
    // How many pixels are not alike; all of them when the sizes differ.
    int CountDifferences(const Screenshot& other) const;
};

struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
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
    // Starts the program without waiting for its window.
    void Launch(const std::string& arguments, const std::string& environment = "");
    void Stop();      // ends the program
    int WaitForEnd(); // the program's exit code when it ends by itself, else -1
    bool IsRunning();

    void MoveTo(int x, int y);
    void Press(int button);
    void Release(int button);
    void Click(int x, int y, int button = 1);
    // A quick click with the left button that ends so many pixels to the right of where it began.
    void ClickTrembling(int x, int y, int pixels);
    void Type(const std::string& text);
    void Key(const std::string& keys); // as xdotool names them, for instance "alt+s"
    // A key goes down, which soon repeats, and up again.
    void Hold(const std::string& key);
    void LetGo(const std::string& key);

    // Until the window with the keyboard has this title.
    bool WaitForFront(const std::string& title);
    Place GetFront() const; // of that window, without its frame
    bool HasMenu() const;   // a window without a frame
    void Minimize();        // the main window
    void Restore();
    bool IsViewHidden() const; // not covered alone, but off the screen

    Screenshot Look() const;
    Screenshot LookAt(int left, int top, int pixelwidth, int pixelheight) const; // of the screen
    Screenshot LookWhenStill(); // once nothing moves any more

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
    unsigned long GetRootProperty(const char* name) const;
    std::string GetFrontTitle() const;
    void FindView();

    XServer server;
    Display* display = nullptr;
    pid_t manager = -1;
    pid_t program = -1;
    std::string folder;
    std::string output;
    unsigned long topwindow = 0; // as the window manager names it
    struct {
        unsigned long window;
        int left, top, width, height;
    } view = {};
};

std::string ReadWholeFile(const std::string& path); // empty when it cannot be read

} // namespace korvane::testing
