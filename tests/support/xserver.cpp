#include "tests/support/xserver.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace korvane::testing
{

pid_t StartProgram(const std::string& name, const std::string& arguments, bool quiet)
{
    const pid_t program = fork();
    if (program != 0) {
        return program;
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM); // a test that dies takes its programs along
    if (quiet) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
    }
    const std::string command = "exec " + name + " " + arguments;
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
}

// The X server can miss a signal: one that comes just before it goes to sleep is not seen until
// something else wakes it, and its last client is waiting here.
void StopProgram(pid_t program)
{
    using std::chrono::milliseconds;
    for (int i = 0; program > 0 && waitpid(program, nullptr, WNOHANG) == 0; i++) {
        if (i % 100 == 0) {
            kill(program, SIGTERM);
        }
        std::this_thread::sleep_for(milliseconds(1));
    }
}

XServer::XServer(int width, int height)
{
    int answer[2];
    if (pipe(answer) != 0) {
        std::perror("pipe");
        std::exit(1);
    }
    const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
    server = StartProgram("Xvfb",
                          "-displayfd " + std::to_string(answer[1]) + " -screen 0 " + screen +
                              " -nolisten tcp +extension GLX -noreset",
                          true);
    close(answer[1]);
    std::string number;
    char digit = 0;
    while (read(answer[0], &digit, 1) == 1 && digit != '\n') {
        number += digit;
    }
    close(answer[0]);
    if (number.empty()) {
        std::fprintf(stderr, "The tests need Xvfb (Debian package xvfb).\n");
        std::exit(1);
    }
    display = ":" + number;
    setenv("DISPLAY", display.c_str(), 1);
}

XServer::~XServer()
{
    StopProgram(server);
}

} // namespace korvane::testing
