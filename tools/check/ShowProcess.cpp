#include "tools/check/ShowProcess.h"

#include "show/ShowFolder.h"
#include "show/Stage.h"
#include "show/Tempo.h"
#include "tools/check/Messages.h"
#include "tools/check/UniformWatch.h"

#include <epoxy/gl.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace check
{
namespace
{
const int pipeOfProcess = 3; // its own end, beside the three that every process has
const char *const describe = "describe", *const draw = "draw";

// The words of its messages.
const char *const descriptionWord = "description", *const stepWord = "step",
                  *const faultWord = "fault", *const endWord = "end";

const double patienceSeconds = 10.0; // for one step
const int maximumFrames = 4000;
const int frameWidth = 64, frameHeight = 36;

// The process ------------------------------------------------------------------------------------

void SendFault(const std::string &file, const std::string &place, const std::string &what)
{
    Send(pipeOfProcess, {faultWord, file, place, what});
}

void SendStep(const std::string &text) { Send(pipeOfProcess, {stepWord, text}); }

std::string AtRow(double row)
{
    char text[40];
    std::snprintf(text, sizeof text, "row %.6g", row);
    return text;
}

// Each error once, with the first row that had it.
void SendErrors(double row, unsigned int &known)
{
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
        const unsigned int bit = 1u << (error & 15u);
        char text[40];
        std::snprintf(text, sizeof text, "OpenGL error 0x%04x", error);
        if (!(known & bit))
            SendFault(vyr::kShowLibrary, AtRow(row), text);
        known |= bit;
    }
}

void DrawFrames(vyr::cShowFolder &show)
{
    const vyr::cShowDescription &description = show.GetDescription();
    const double step =
        std::max<double>(description.mRowsPerBeat, description.mLastRow / maximumFrames);
    unsigned int knownErrors = 0;
    for (double row = 0; row < description.mLastRow; row += step) {
        SendStep("while drawing row " + std::to_string(int64_t(row)));
        show.Draw(row, row / description.mRowsPerSecond);
        SendErrors(row, knownErrors);
    }
}

void DrawShow()
{
    SendStep("while opening it");
    vyr::cShowFolder show(".");
    const vyr::cStage stage(vyr::cStage::OFFSCREEN, frameWidth, frameHeight);
    if (!stage.IsOpen())
        return; // the check has said so itself
    show.LoadTracks();
    cUniformWatch watch(show.GetDescription());
    SendStep("while loading");
    show.Load();
    DrawFrames(show);
    for (const auto &[file, uniform] : watch.GetMisses())
        SendFault(file, "uniform " + uniform,
                  "expected it to be used, found no such active uniform");
    SendStep("while ending");
}

void Describe()
{
    SendStep("while describing itself");
    const vyr::cShowFolder show(".");
    tMessage message = ToMessage(show.GetDescription());
    message.insert(message.begin(), descriptionWord);
    Send(pipeOfProcess, message);
}

// The check
// ----------------------------------------------------------------------------------------

/// A process that runs the show, from its start to its end.
class cProcess
{
public:
    explicit cProcess(const char *what);
    ~cProcess();
    cProcess(const cProcess &) = delete;
    cProcess &operator=(const cProcess &) = delete;

    /// The next message; nothing when there are no more, or the process had to be stopped.
    std::optional<tMessage> Receive();
    /// How it ended, where that was not as it should: "stopped by signal 11 (Segmentation fault)".
    std::string FindEnd();

private:
    bool WaitForBytes();
    bool IsHanging(double waited) const;
    double GetProcessorSeconds() const;
    std::string TakeLastLine() const;

    pid_t mPid = -1;
    int mPipe = -1;
    std::FILE *mOutput = std::tmpfile(); // what the show prints
    std::string mBytes;
    bool mIsStopped = false;
};

cProcess::cProcess(const char *what)
{
    int ends[2] = {-1, -1};
    if (!mOutput || pipe2(ends, O_CLOEXEC) != 0)
        return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fileno(mOutput), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(mOutput), STDERR_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], pipeOfProcess);
    std::string words[] = {"vyr-check", kShowProcess, what};
    char *arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
    if (posix_spawn(&mPid, "/proc/self/exe", &actions, nullptr, arguments, environ) != 0)
        mPid = -1;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    mPipe = ends[0];
}

cProcess::~cProcess()
{
    if (mPid > 0) {
        kill(mPid, SIGKILL);
        waitpid(mPid, nullptr, 0);
    }
    if (mPipe >= 0)
        close(mPipe);
    if (mOutput)
        std::fclose(mOutput);
}

std::optional<tMessage> cProcess::Receive()
{
    for (;;) {
        if (auto message = TakeMessage(mBytes))
            return message;
        if (!WaitForBytes())
            return std::nullopt;
        char block[4096];
        const ssize_t count = read(mPipe, block, sizeof block);
        if (count <= 0)
            return std::nullopt;
        mBytes.append(block, size_t(count));
    }
}

bool cProcess::WaitForBytes()
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const double processorBefore = GetProcessorSeconds();
    for (;;) {
        pollfd waiting = {mPipe, POLLIN, 0};
        if (poll(&waiting, 1, 200) > 0)
            return true;
        const double waited = std::chrono::duration<double>(Clock::now() - start).count();
        const double worked = GetProcessorSeconds() - processorBefore;
        // On a busy machine a step that works may wait long for its ten seconds of processor time;
        // one that does nothing has none to wait for.
        const bool isIdle = worked < 0.01 * waited;
        if (waited < patienceSeconds || (!isIdle && worked < patienceSeconds))
            continue;
        mIsStopped = true;
        return false;
    }
}

double cProcess::GetProcessorSeconds() const
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(mPid, &clock) != 0 || clock_gettime(clock, &time) != 0)
        return 0;
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

// As a rule an assertion, or what the C++ library says of an exception.
std::string cProcess::TakeLastLine() const
{
    std::string line, last;
    std::rewind(mOutput);
    for (int c = std::fgetc(mOutput); c != EOF; c = std::fgetc(mOutput)) {
        if (c != '\n') {
            line += char(c);
            continue;
        }
        last = line.empty() ? last : line;
        line.clear();
    }
    last = line.empty() ? last : line;
    return last.empty() ? "" : ": " + last;
}

std::string cProcess::FindEnd()
{
    if (mPid < 0)
        return "can't be started";
    if (mIsStopped)
        return "did not come back within 10 seconds";
    int status = 0;
    waitpid(mPid, &status, 0);
    mPid = -1;
    if (WIFSIGNALED(status))
        return "stopped by signal " + std::to_string(WTERMSIG(status)) + " (" +
               strsignal(WTERMSIG(status)) + ")" + TakeLastLine();
    return "left by exit with status " + std::to_string(WEXITSTATUS(status)) + TakeLastLine();
}

// Runs it to its end. `take` gets the messages that are not the same for every process.
void Supervise(const char *what, cFindings &findings,
               const std::function<void(const tMessage &)> &take)
{
    cProcess process(what);
    std::string step = "while starting";
    while (const auto message = process.Receive()) {
        if (message->empty())
            continue;
        const std::string &word = message->front();
        if (word == endWord)
            return;
        if (word == stepWord && message->size() == 2)
            step = message->back();
        else if (word == faultWord && message->size() == 4)
            findings.Fault((*message)[1], (*message)[2], (*message)[3]);
        else
            take(*message);
    }
    findings.Fault(vyr::kShowLibrary, "", process.FindEnd() + ", " + step);
}
} // namespace

std::optional<vyr::cShowDescription> DescribeShow(cFindings &findings)
{
    std::optional<vyr::cShowDescription> description;
    Supervise(describe, findings, [&](const tMessage &message) {
        if (message.front() == descriptionWord)
            description = ToDescription({message.begin() + 1, message.end()});
    });
    return description;
}

void CheckDrawing(cFindings &findings)
{
    Supervise(draw, findings, [](const tMessage &) {});
}

int RunShowProcess(const char *what)
{
    try {
        if (std::strcmp(what, describe) == 0)
            Describe();
        else
            DrawShow();
    } catch (const vyr::cShowError &error) {
        const tools::cFault fault = tools::ToFault(error.what());
        SendFault(fault.mFile, "", fault.mWhat);
    } catch (const std::exception &error) {
        SendFault(vyr::kShowLibrary, "", error.what());
    }
    Send(pipeOfProcess, {endWord});
    _exit(0); // whatever the show has registered for the end
}
} // namespace check
