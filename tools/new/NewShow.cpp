#include "tools/new/NewShow.h"

#include "tools/new/Template.h"
#include "tools/record/ChildProcess.h"
#include "tools/record/Failure.h"
#include "tools/support/Faults.h"
#include "tools/support/Music.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <map>
#include <set>

#include <unistd.h>

namespace fs = std::filesystem;

namespace newshow
{
namespace
{
using record::tArguments;
using record::operator+;

const size_t maximumName = 60;
const int beats = 32;         // eight bars of four
const double tailSeconds = 1; // of music after the last row

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsNameCharacter(char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '_'; }

// Names that the build has for itself.
const std::set<std::string> takenNames = {"all",           "build", "clean",   "data",
                                          "edit_cache",    "help",  "install", "package",
                                          "rebuild_cache", "test"};

// It becomes the name of a class, a program and several files.
std::string CheckName(const fs::path &folder)
{
    std::string name = fs::absolute(folder / "").lexically_normal().parent_path().filename();
    const bool isName = !name.empty() && name.size() <= maximumName && IsLetter(name[0]) &&
                        std::ranges::all_of(name, IsNameCharacter);
    if (!isName)
        throw cRefusal(
            folder.string() + ": " + tools::Quote(name) +
            " is no name for a program: letters, digits and _, a letter first, at most " +
            std::to_string(maximumName));
    if (takenNames.count(name))
        throw cRefusal(folder.string() + ": the build has a " + tools::Quote(name) +
                       " of its own: another name");
    return name;
}

void CheckTitle(const std::string &title)
{
    for (char c : title)
        if (uint8_t(c) < 0x20 || c == 0x7f)
            throw cRefusal("--title " + tools::Quote(title) + ": control characters");
}

void CheckFolder(const fs::path &folder)
{
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (status.type() == fs::file_type::not_found)
        return;
    if (!fs::is_directory(status))
        throw cRefusal(folder.string() + ": is there, and no folder");
    const bool isEmpty = fs::is_empty(folder, error);
    if (error)
        throw cRefusal(folder.string() + ": " + error.message());
    if (!isEmpty)
        throw cRefusal(folder.string() + ": not empty");
}

std::string Capitalised(std::string name)
{
    if (name[0] >= 'a' && name[0] <= 'z')
        name[0] = char(name[0] - 'a' + 'A');
    return name;
}

// As it stands between quotes in a C++ source.
std::string Escaped(const std::string &text)
{
    std::string escaped;
    for (char c : text)
        escaped += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return escaped;
}

// At the end of a comment a backslash would continue it.
std::string ForComment(std::string text)
{
    std::ranges::replace(text, '\\', '/');
    return text;
}

std::string Shortest(double number)
{
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

using tWords = std::map<std::string, std::string>;

// Each @WORD@ of `words` by what stands for it; what it is replaced by is not looked at again.
std::string Fill(std::string_view text, const tWords &words)
{
    std::string filled;
    while (!text.empty()) {
        const size_t begin = text.find('@');
        const size_t end = begin == text.npos ? begin : text.find('@', begin + 1);
        const auto word = end == text.npos
                              ? words.end()
                              : words.find(std::string(text.substr(begin + 1, end - begin - 1)));
        if (word == words.end()) {
            const size_t plain = begin == text.npos ? text.size() : begin + 1;
            filled += text.substr(0, plain);
            text.remove_prefix(plain);
            continue;
        }
        filled.append(text.substr(0, begin)).append(word->second);
        text.remove_prefix(end + 1);
    }
    return filled;
}

void WriteText(const fs::path &path, const std::string &text)
{
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    file.close();
    if (!file)
        throw record::cFailure(path.string() + ": can't be written");
}

void WriteTexts(const fs::path &folder, const std::string &name, const tWords &words)
{
    for (const cTemplateFile &file : kTemplate) {
        std::string path(file.mPath);
        if (path.starts_with("NAME."))
            path.replace(0, 4, name);
        if (path.ends_with(".in")) // what is no source until it is filled in
            path.resize(path.size() - 3);
        WriteText(folder / path, Fill(file.mText, words));
    }
}

void MakePicture(const fs::path &path, const std::string &source)
{
    record::RunProgram(record::StrictFfmpeg() + tArguments{"-f", "lavfi", "-i", source} +
                       record::Words("-frames:v 1") + tArguments{path.string()});
}

void MakePictures(const fs::path &folder)
{
    MakePicture(folder / "moon.png",
                "color=black:size=400x400,format=rgba,geq="
                "r=255:g=240:b=190:a='255*clip((200-hypot(X-200,Y-200))/4,0,1)'");
    const std::string words[] = {"the moon comes up", "the fog stays down"};
    for (size_t i = 0; i < std::size(words); i++)
        MakePicture(folder / ("words" + std::to_string(i) + ".png"),
                    "color=black@0:size=800x96,format=rgba,drawtext=font=sans:fontsize=64:"
                    "fontcolor=white:bordercolor=black:borderw=6:x=(w-tw)/2:y=(h-th)/2:text='" +
                        words[i] + "'");
}

// A click on each beat, and a bass that changes its note with the bar.
std::string Sound(double beatSeconds)
{
    const std::string beat = Shortest(beatSeconds), bar = Shortest(4 * beatSeconds);
    const std::string inBeat = "mod(t," + beat + ")";
    const std::string note = "(55*exp(0.0577623*(3*mod(floor(t/" + bar + "),4)-2*mod(floor(t/" +
                             bar + "),2))))"; // A, B, E-flat, D: half tones above A
    return "0.5*sin(2*PI*1760*t)*exp(-70*" + inBeat + ")+0.45*sin(2*PI*" + note + "*t)*exp(-3*" +
           inBeat + ")*(1-exp(-400*" + inBeat + "))";
}

void EncodeMusic(const fs::path &path, double beatsPerMinute, double gain)
{
    const double beatSeconds = 60.0 / beatsPerMinute;
    const std::string length = Shortest(beats * beatSeconds + tailSeconds);
    record::RunProgram(
        record::StrictFfmpeg() +
        tArguments{"-f", "lavfi", "-i",
                   "aevalsrc='" + Sound(beatSeconds) + "':s=44100:d=" + length} +
        tArguments{"-af", "volume=" + Shortest(gain) + "dB,alimiter=limit=0.79:level=disabled"} +
        record::Words("-ac 2 -b:a 128k") + tArguments{path.string()});
}

// As loud as vyr-check wants it: the first encoding says how far away that is.
void MakeMusic(const fs::path &path, double beatsPerMinute)
{
    const double wanted = -14.0; // LUFS
    tools::cMusicMeasure measure;
    std::string error;
    EncodeMusic(path, beatsPerMinute, 0.0);
    if (!tools::MeasureMusic(path, false, false, measure, error))
        throw record::cFailure(path.string() + ": " + error);
    EncodeMusic(path, beatsPerMinute, wanted - measure.mIntegrated);
}

/// A folder beside the wanted one, which takes its place when all is written.
class cDraft
{
public:
    explicit cDraft(const fs::path &wanted) : mWanted(wanted)
    {
        const fs::path folder = fs::absolute(wanted / "").lexically_normal().parent_path();
        std::string name = folder.string() + ".XXXXXX";
        if (!mkdtemp(name.data()))
            throw record::cFailure(wanted.string() + ": can't be written beside it");
        mPath = name;
        mTarget = folder;
    }
    ~cDraft()
    {
        std::error_code ignored;
        fs::remove_all(mPath, ignored);
    }
    cDraft(const cDraft &) = delete;
    cDraft &operator=(const cDraft &) = delete;

    const fs::path &GetPath() const { return mPath; }

    void Commit()
    {
        std::error_code error;
        fs::permissions(mPath, fs::perms(0755), error);
        fs::rename(mPath, mTarget, error); // an empty folder gives way
        if (error)
            throw record::cFailure(mWanted.string() + ": " + error.message());
    }

private:
    fs::path mWanted, mPath, mTarget;
};
} // namespace

void WriteNewShow(const cRequest &request)
{
    const std::string name = CheckName(request.mFolder);
    const std::string title = request.mTitle.empty() ? Capitalised(name) : request.mTitle;
    CheckTitle(title);
    CheckFolder(request.mFolder);
    const tWords words = {{"NAME", name},
                          {"CLASS", std::string("c").append(Capitalised(name))},
                          {"TITLE", Escaped(title)},
                          {"TITLE_COMMENT", ForComment(title)},
                          {"TEMPO", Shortest(request.mBeatsPerMinute)}};
    cDraft draft(request.mFolder);
    WriteTexts(draft.GetPath(), name, words);
    MakePictures(draft.GetPath() / "data");
    MakeMusic(draft.GetPath() / "data/music.mp3", request.mBeatsPerMinute);
    draft.Commit();
}
} // namespace newshow
