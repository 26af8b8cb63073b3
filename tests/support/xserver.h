// An X server of a test's own, so that tests neither need a screen nor meet each other's windows.
#pragma once

#include <string>
#include <sys/types.h>

namespace korvane::testing
{

class XServer
{
public:
    // Starts Xvfb on a free display and names it in DISPLAY. Ends the test program when it cannot.
    XServer(int width, int height);
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    const std::string& GetDisplay() const
    {
        return display;
    }

private:
    pid_t server = -1;
    std::string display;
};

// Starts a program found on PATH, its output thrown away unless `quiet` is false.
pid_t StartProgram(const std::string& name, const std::string& arguments, bool quiet);

// Ends a program started with StartProgram and waits for it.
void StopProgram(pid_t program);

} // namespace korvane::testing
