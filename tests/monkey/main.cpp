// Runs the monkey for a while: seed after seed, until the time is over or something breaks.
//   monkey [SECONDS [FIRSTSEED [STEPS]]]     60 seconds, from seed 1, 4000 steps each
// With KORVANE_MONKEY_TELL in the environment every step is told as it is taken: after a crash the
// last one is there.

#include "tests/monkey/monkey.h"
#include "tests/support/widgets.h"
#include "tests/support/xserver.h"

#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

using namespace korvane::testing;

static int GetArgument(int argc, char** argv, int place, int otherwise)
{
    return argc > place ? std::atoi(argv[place]) : otherwise;
}

// Answers with the number of seeds that were tried, or -1 after a rule was broken.
static int WanderFor(std::chrono::seconds time, unsigned first, int steps)
{
    const auto end = std::chrono::steady_clock::now() + time;
    int seeds = 0;
    while (std::chrono::steady_clock::now() < end) {
        const unsigned seed = first + unsigned(seeds);
        std::fprintf(stderr, "seed %u\n", seed);
        const Wandering wandering =
            Wander(seed, steps, std::getenv("KORVANE_MONKEY_TELL") != nullptr);
        if (!wandering.broken.empty()) {
            for (const std::string& step : wandering.steps) {
                std::fprintf(stderr, "  %s\n", step.c_str());
            }
            std::fprintf(stderr, "seed %u: %s\n", seed, wandering.broken.c_str());
            return -1;
        }
        seeds++;
    }
    return seeds;
}

int main(int argc, char** argv)
{
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    char settings[] = "/tmp/korvane-settings-XXXXXX";
    setenv("XDG_CONFIG_HOME", mkdtemp(settings), 1);
    const XServer server(1280, 1024);
    gtk_init(&argc, &argv);
    gtk_gl_init(&argc, &argv);
    std::setlocale(LC_NUMERIC, "C");
    ShowMainWindow();
    const int steps = GetArgument(argc, argv, 3, 4000);
    const int seeds = WanderFor(std::chrono::seconds(GetArgument(argc, argv, 1, 60)),
                                unsigned(GetArgument(argc, argv, 2, 1)), steps);
    std::filesystem::remove_all(settings);
    if (seeds < 0) {
        return 1;
    }
    std::printf("the monkey took %d steps with %d seeds and broke nothing\n", seeds * steps, seeds);
    return 0;
}
