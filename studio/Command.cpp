#include "studio/Command.h"

#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace studio
{
namespace
{
std::vector<char *> Pointers(const std::vector<std::string> &arguments)
{
    std::vector<char *> pointers;
    for (const std::string &argument : arguments)
        pointers.push_back(const_cast<char *>(argument.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// In a process group of its own, so that it can be ended with all that it started.
int Spawn(const std::vector<std::string> &arguments, posix_spawn_file_actions_t *files,
          pid_t &process)
{
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const int error = posix_spawnp(&process, arguments[0].c_str(), files, &attributes,
                                   Pointers(arguments).data(), environ);
    posix_spawnattr_destroy(&attributes);
    return error;
}
} // namespace

cCommand::cCommand(const std::vector<std::string> &arguments)
{
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        mHasEnded = true;
        mStatus = 127;
        return;
    }
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDERR_FILENO);
    const int error = Spawn(arguments, &files, mProcess);
    posix_spawn_file_actions_destroy(&files);
    close(ends[1]);
    mPipe = ends[0];
    fcntl(mPipe, F_SETFL, O_NONBLOCK);
    if (error != 0) {
        mOutput = arguments[0] + ": " + std::strerror(error) + "\n";
        mHasEnded = true;
        mStatus = 127;
        mProcess = -1;
    }
}

cCommand::~cCommand()
{
    if (!mHasEnded) {
        kill(-mProcess, SIGTERM);
        waitpid(mProcess, nullptr, 0);
    }
    if (mPipe >= 0)
        close(mPipe);
}

void cCommand::Update()
{
    char buffer[4096];
    for (ssize_t size; mPipe >= 0 && (size = read(mPipe, buffer, sizeof buffer)) > 0;)
        mOutput.append(buffer, size_t(size));
    int status = 0;
    if (mHasEnded || waitpid(mProcess, &status, WNOHANG) != mProcess)
        return;
    mHasEnded = true;
    mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    Update(); // what it wrote last
}

std::string cCommand::LastLine() const
{
    const size_t end = mOutput.find_last_not_of("\r\n");
    if (end == std::string::npos)
        return "";
    const size_t begin = mOutput.find_last_of("\r\n", end);
    return mOutput.substr(begin + 1, end - begin);
}

bool StartAlone(const std::vector<std::string> &arguments)
{
    pid_t process = -1;
    signal(SIGCHLD, SIG_DFL);
    return Spawn(arguments, nullptr, process) == 0;
}
} // namespace studio
