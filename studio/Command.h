#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace studio
{
/// Another program at work in the background. What it writes, to either of its outputs, is kept.
class cCommand
{
public:
    /// Starts `arguments[0]`, looked up in PATH. Where it can't be started it has ended, with a
    /// status of 127.
    explicit cCommand(const std::vector<std::string> &arguments);
    ~cCommand(); ///< ends the program and what it started, if it still runs
    cCommand(const cCommand &) = delete;
    cCommand &operator=(const cCommand &) = delete;

    /// Takes what it has written since, and whether it has ended. Never waits.
    void Update();
    bool HasEnded() const { return mHasEnded; }
    int Status() const { return mStatus; } ///< its exit status, 128 and more after a signal
    const std::string &Output() const { return mOutput; }
    std::string LastLine() const; ///< of the output, without what a carriage return has overwritten

private:
    pid_t mProcess = -1;
    int mPipe = -1;
    bool mHasEnded = false;
    int mStatus = 0;
    std::string mOutput;
};

/// Starts a program that lives on by itself: an editor. False when it can't be started.
bool StartAlone(const std::vector<std::string> &arguments);
} // namespace studio
