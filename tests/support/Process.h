#pragma once

#include "tests/support/Wait.h"

#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace test
{
struct cProcessResult
{
    int mStatus = -1; ///< exit status, or -1 when a signal ended it
    int mSignal = 0;
    bool mTimedOut = false;
    std::string mOutput, mErrors;
};

/// A real program, started without a shell in a folder of its own choosing and killed at the end of
/// this object's life if it still runs.
class cProcess
{
public:
    /// `environment` holds entries "NAME=value" on top of this process's own.
    cProcess(const std::vector<std::string> &command, const std::filesystem::path &folder,
             const std::vector<std::string> &environment = {});
    ~cProcess();
    cProcess(const cProcess &) = delete;
    cProcess &operator=(const cProcess &) = delete;

    pid_t Id() const { return mId; }
    bool IsRunning();
    void Signal(int signal) const;
    std::string GetOutput() const; ///< what it has printed by now
    /// Waits for its end; after `seconds` it is killed and counts as timed out.
    cProcessResult Wait(double seconds = hangSeconds);

private:
    pid_t mId = -1;
    bool mEnded = false;
    int mWaitStatus = 0;
    std::filesystem::path mOutputFile, mErrorFile;
};

/// The same command, run as somebody who may read only what the files' modes allow: the superuser's
/// leave to read everything is taken from it.
std::vector<std::string> WithoutPrivileges(std::vector<std::string> command);

/// Runs a command to its end.
cProcessResult Run(const std::vector<std::string> &command,
                   const std::filesystem::path &folder = std::filesystem::current_path(),
                   const std::vector<std::string> &environment = {});
} // namespace test
