#include "tools/record/ChildProcess.h"

#include "tools/record/Failure.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace record
{
namespace
{
// Two frames of 640x360: the default, 64 KiB, would wake both sides dozens of times a frame.
const int pipeBytes = 1 << 20;

/// What the child inherits, released when it has started.
struct cSpawnSettings
{
    posix_spawn_file_actions_t mActions;
    posix_spawnattr_t mAttributes;

    cSpawnSettings(int input, int errors)
    {
        posix_spawn_file_actions_init(&mActions);
        if (input >= 0)
            posix_spawn_file_actions_adddup2(&mActions, input, STDIN_FILENO);
        else
            posix_spawn_file_actions_addopen(&mActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&mActions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&mActions, errors, STDERR_FILENO);
        posix_spawnattr_init(&mAttributes);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE); // ignored by this program
        posix_spawnattr_setsigdefault(&mAttributes, &defaults);
        posix_spawnattr_setpgroup(&mAttributes, 0);
        posix_spawnattr_setflags(&mAttributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }

    ~cSpawnSettings()
    {
        posix_spawn_file_actions_destroy(&mActions);
        posix_spawnattr_destroy(&mAttributes);
    }
};

// The last line that says something; empty when none does.
std::string FindLastLine(const std::string &text)
{
    const size_t end = text.find_last_not_of(" \r\n");
    if (end == std::string::npos)
        return {};
    const size_t before = text.find_last_of("\r\n", end);
    const size_t begin = before == std::string::npos ? 0 : before + 1;
    return text.substr(begin, end + 1 - begin);
}

// Why a program failed: the last line, or the one that says what the system refused, where the
// lines after it only say what came of that.
std::string FindReason(const std::string &text)
{
    for (int error : {ENOSPC, EDQUOT, EFBIG, EIO, EROFS}) {
        const size_t found = text.find(std::strerror(error));
        if (found != std::string::npos)
            return FindLastLine(text.substr(0, text.find_first_of("\r\n", found)));
    }
    return FindLastLine(text);
}

std::string ReadTail(FILE *file)
{
    char bytes[4096];
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    std::fseek(file, size > long(sizeof bytes) ? size - long(sizeof bytes) : 0, SEEK_SET);
    return std::string(bytes, std::fread(bytes, 1, sizeof bytes, file));
}
} // namespace

cChildProcess::cChildProcess(const tArguments &arguments, bool withInput)
    : mName(arguments.front()), mErrors(std::tmpfile(), std::fclose)
{
    if (!mErrors)
        throw cFailure(std::string("no room for temporary files: ") + std::strerror(errno));
    int ends[2] = {-1, -1};
    if (withInput && pipe2(ends, O_CLOEXEC) != 0)
        throw cFailure(std::string("no pipe to ") + mName + ": " + std::strerror(errno));
    mInput = ends[1];
    if (mInput >= 0)
        fcntl(mInput, F_SETPIPE_SZ, pipeBytes); // as large as the system allows
    try {
        Spawn(arguments, ends[0]);
    } catch (const cFailure &) {
        close(ends[0]);
        close(mInput);
        throw;
    }
    if (ends[0] >= 0)
        close(ends[0]);
}

cChildProcess::~cChildProcess()
{
    if (mInput >= 0)
        close(mInput);
    if (mProcess < 0)
        return;
    kill(mProcess, SIGKILL);
    WaitForEnd();
}

void cChildProcess::Spawn(const tArguments &arguments, int input)
{
    std::vector<char *> pointers;
    for (const std::string &argument : arguments)
        pointers.push_back(const_cast<char *>(argument.c_str()));
    pointers.push_back(nullptr);
    const cSpawnSettings settings(input, fileno(mErrors.get()));
    const int error = posix_spawnp(&mProcess, mName.c_str(), &settings.mActions,
                                   &settings.mAttributes, pointers.data(), environ);
    if (error == 0)
        return;
    mProcess = -1;
    throw cFailure(error == ENOENT ? mName + ": this program is not installed"
                                   : mName + ": can't be started: " + std::strerror(error));
}

bool cChildProcess::Write(const void *bytes, size_t count)
{
    const char *next = static_cast<const char *>(bytes);
    while (count > 0) {
        const ssize_t written = write(mInput, next, count);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        next += written;
        count -= size_t(written);
    }
    return true;
}

void cChildProcess::WaitForEnd()
{
    while (waitpid(mProcess, &mStatus, 0) < 0 && errno == EINTR)
        continue;
    mProcess = -1;
}

std::string cChildProcess::GetComplaint() const
{
    if (WIFSIGNALED(mStatus))
        return mName + ": ended by signal " + std::to_string(WTERMSIG(mStatus));
    const std::string line = FindReason(ReadTail(mErrors.get()));
    const std::string number = std::to_string(WEXITSTATUS(mStatus));
    return mName + ": " + (line.empty() ? "failed with status " + number : line);
}

void cChildProcess::ThrowOnFailure() const
{
    if (mStatus != 0)
        throw cFailure(GetComplaint());
}

void cChildProcess::Check()
{
    if (mProcess >= 0 && waitpid(mProcess, &mStatus, WNOHANG) == mProcess)
        mProcess = -1;
    ThrowOnFailure();
}

void cChildProcess::Finish()
{
    if (mInput >= 0)
        close(mInput);
    mInput = -1;
    if (mProcess >= 0)
        WaitForEnd();
    ThrowOnFailure();
}

void RunProgram(const tArguments &arguments) { cChildProcess(arguments, false).Finish(); }
} // namespace record
