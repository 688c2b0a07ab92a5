#include "tools/record/Interrupt.h"

#include <csignal>
#include <initializer_list>

namespace record
{
namespace
{
volatile std::sig_atomic_t isInterrupted = 0;

void Note(int) { isInterrupted = 1; }
} // namespace

void WatchForInterrupt()
{
    struct sigaction action = {};
    action.sa_handler = Note;
    sigemptyset(&action.sa_mask);
    action.sa_flags = int(SA_RESTART | SA_RESETHAND);
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN); // a write to a program that ended says so by its result
}

bool IsInterrupted() { return isInterrupted != 0; }
} // namespace record
