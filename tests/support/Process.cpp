#include "tests/support/Process.h"

#include "tests/support/TestFiles.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace test
{
namespace
{
fs::path MakeCaptureFile()
{
    std::string name = (fs::temp_directory_path() / "vyr-output-XXXXXX").string();
    const int file = mkstemp(name.data());
    if (file < 0)
        throw std::runtime_error("no temporary file: " + name);
    close(file);
    return name;
}

void SendTo(const fs::path &path, int descriptor)
{
    const int file = open(path.c_str(), O_WRONLY | O_TRUNC);
    dup2(file, descriptor);
    close(file);
}

[[noreturn]] void Become(const std::vector<std::string> &command, const fs::path &folder)
{
    std::vector<char *> arguments;
    for (const std::string &argument : command)
        arguments.push_back(const_cast<char *>(argument.c_str()));
    arguments.push_back(nullptr);
    if (chdir(folder.c_str()) == 0)
        execvp(arguments[0], arguments.data());
    _exit(127);
}
} // namespace

cProcess::cProcess(const std::vector<std::string> &command, const fs::path &folder,
                   const std::vector<std::string> &environment)
    : mOutputFile(MakeCaptureFile()), mErrorFile(MakeCaptureFile())
{
    mId = fork();
    if (mId < 0) // a signal to process -1 would end every process there is
        throw std::runtime_error("no process for " + command[0]);
    if (mId != 0)
        return;
    SendTo(mOutputFile, STDOUT_FILENO);
    SendTo(mErrorFile, STDERR_FILENO);
    for (const std::string &entry : environment)
        putenv(const_cast<char *>(entry.c_str()));
    Become(command, folder);
}

cProcess::~cProcess()
{
    if (IsRunning()) {
        Signal(SIGKILL);
        waitpid(mId, &mWaitStatus, 0);
    }
    fs::remove(mOutputFile);
    fs::remove(mErrorFile);
}

bool cProcess::IsRunning()
{
    if (!mEnded)
        mEnded = waitpid(mId, &mWaitStatus, WNOHANG) == mId;
    return !mEnded;
}

void cProcess::Signal(int signal) const { kill(mId, signal); }

std::string cProcess::GetOutput() const { return ReadFile(mOutputFile); }

cProcessResult cProcess::Wait(double seconds)
{
    WaitUntil([this] { return !IsRunning(); }, seconds);
    cProcessResult result;
    if (IsRunning()) {
        result.mTimedOut = true;
        Signal(SIGKILL);
        waitpid(mId, &mWaitStatus, 0);
        mEnded = true;
    }
    if (WIFEXITED(mWaitStatus))
        result.mStatus = WEXITSTATUS(mWaitStatus);
    else
        result.mSignal = WTERMSIG(mWaitStatus);
    result.mOutput = ReadFile(mOutputFile);
    result.mErrors = ReadFile(mErrorFile);
    return result;
}

std::vector<std::string> WithoutPrivileges(std::vector<std::string> command)
{
    const std::vector<std::string> drop = {"setpriv",
                                           "--bounding-set=-dac_override,-dac_read_search"};
    if (geteuid() == 0)
        command.insert(command.begin(), drop.begin(), drop.end());
    return command;
}

cProcessResult Run(const std::vector<std::string> &command, const fs::path &folder,
                   const std::vector<std::string> &environment)
{
    return cProcess(command, folder, environment).Wait();
}
} // namespace test
