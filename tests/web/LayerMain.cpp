// The layer's tests as a program that a page runs: it prints what every such program prints.

#include <gtest/gtest.h>

#include <emscripten.h>

/// 0 when all tests passed.
extern "C" EMSCRIPTEN_KEEPALIVE int vyr_run_tests()
{
    char name[] = "web-layer", color[] = "--gtest_color=no";
    char *arguments[] = {name, color, nullptr};
    int count = 2;
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
