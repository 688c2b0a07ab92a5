#pragma once

#include "tools/record/Arguments.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <sys/types.h>

namespace record
{
/// Another program at work, started with a list of arguments that no shell sees. It stands outside
/// the terminal's process group: Ctrl-C reaches this program alone, which then ends the other one
/// in order.
class cChildProcess
{
public:
    /// Starts `arguments[0]`, looked up in PATH. With `withInput` what is given to Write arrives on
    /// its standard input, which is empty otherwise; its output goes nowhere, its error text is
    /// kept. Throws cFailure when it can't be started.
    cChildProcess(const tArguments &arguments, bool withInput);
    ~cChildProcess(); ///< ends the program if it still runs
    cChildProcess(const cChildProcess &) = delete;
    cChildProcess &operator=(const cChildProcess &) = delete;

    /// Waits until the other side has room. False when it no longer reads.
    bool Write(const void *bytes, size_t count);
    /// Throws cFailure, as Finish does, when it has ended already and failed.
    void Check();
    /// Closes its input and waits for its end. Throws cFailure, with what it said last, when it
    /// failed.
    void Finish();

private:
    void Spawn(const tArguments &arguments, int input);
    void WaitForEnd();
    void ThrowOnFailure() const;
    std::string GetComplaint() const;

    std::string mName;
    pid_t mProcess = -1; // -1 when it has ended
    int mStatus = 0;     // how it ended, as waitpid says it
    int mInput = -1;     // our end of the pipe
    std::unique_ptr<FILE, int (*)(FILE *)> mErrors;
};

/// Starts the program and waits for its end; throws as above.
void RunProgram(const tArguments &arguments);
} // namespace record
