// Part of every test built with coverage counters: a process that an assertion ends writes its
// counters too, so that what a death test reaches is counted.

#include <csignal>

extern "C" void __gcov_dump();

namespace
{
const auto before = std::signal(SIGABRT, [](int) { __gcov_dump(); });
}
