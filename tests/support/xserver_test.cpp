#include "tests/support/xserver.h"

#include "tests/support/tempfolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <thread>

namespace korvane::testing
{

static void AwaitFile(const std::string& file)
{
    while (!std::filesystem::exists(file)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

TEST(StopProgram, EndsOneThatMissesTheFirstSignal)
{
    const TempFolder folder;
    const std::string ready = folder / "ready";
    const pid_t program = StartProgram(
        "sh", "-c 'trap \"trap - TERM\" TERM; touch " + ready + "; while :; do sleep 0.01; done'",
        true);
    AwaitFile(ready);
    StopProgram(program);
    EXPECT_EQ(waitpid(program, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD); // it has ended and was waited for
}

} // namespace korvane::testing
