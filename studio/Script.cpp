#include "studio/Script.h"

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <sstream>

namespace studio
{
namespace
{
const std::map<std::string, tKey> keyNames = {{"Space", GLFW_KEY_SPACE},
                                              {"Left", GLFW_KEY_LEFT},
                                              {"Right", GLFW_KEY_RIGHT},
                                              {"Up", GLFW_KEY_UP},
                                              {"Down", GLFW_KEY_DOWN},
                                              {"Home", GLFW_KEY_HOME},
                                              {"End", GLFW_KEY_END},
                                              {"PageUp", GLFW_KEY_PAGE_UP},
                                              {"PageDown", GLFW_KEY_PAGE_DOWN},
                                              {"Del", GLFW_KEY_DELETE},
                                              {"Backspace", GLFW_KEY_BACKSPACE},
                                              {"Enter", GLFW_KEY_ENTER},
                                              {"Esc", GLFW_KEY_ESCAPE},
                                              {"Tab", GLFW_KEY_TAB},
                                              {"F1", GLFW_KEY_F1}};
const std::map<std::string, int> buttons = {{"left", 0}, {"", 0}, {"right", 1}, {"middle", 2}};

bool SetModifier(const std::string &name, bool isOn, cModifiers &modifiers)
{
    bool *modifier = name == "Ctrl"    ? &modifiers.mCtrl
                     : name == "Shift" ? &modifiers.mShift
                     : name == "Alt"   ? &modifiers.mAlt
                                       : nullptr;
    if (modifier)
        *modifier = isOn;
    return modifier != nullptr;
}

/// Reads line after line; what is held stays held.
class cReader
{
public:
    explicit cReader(std::vector<cStep> &steps) : mSteps(steps) {}

    /// Empty, or what is wrong.
    std::string Read(const std::string &line, int number)
    {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        mLine = number;
        if (verb.empty() || verb[0] == '#')
            return "";
        if (verb == "key")
            return ReadKey(words);
        if (verb == "hold" || verb == "let")
            return ReadModifier(words, verb == "hold");
        if (verb == "type")
            return ReadText(Rest(words));
        if (verb == "move")
            return ReadMove(words);
        if (verb == "lane" || verb == "ruler" || verb == "seek")
            return ReadPlace(words, verb);
        if (verb == "press" || verb == "release" || verb == "click" || verb == "double")
            return ReadButton(words, verb);
        if (verb == "wheel")
            return ReadWheel(words);
        return ReadOther(words, verb);
    }

private:
    static std::string Rest(std::istringstream &words)
    {
        std::string rest;
        std::getline(words >> std::ws, rest);
        return rest;
    }

    cStep &Add(cStep::eKind kind)
    {
        mSteps.emplace_back();
        mSteps.back().mKind = kind;
        mSteps.back().mLine = mLine;
        return mSteps.back();
    }

    cEvent &AddEvent(cEvent::eKind kind)
    {
        cEvent &event = Add(cStep::EVENT).mEvent;
        event.mKind = kind;
        event.mModifiers = mHeld;
        return event;
    }

    std::string ReadKey(std::istringstream &words)
    {
        std::string name;
        words >> name;
        cModifiers modifiers = mHeld;
        for (size_t plus; (plus = name.find('+')) != std::string::npos && plus > 0;) {
            if (!SetModifier(name.substr(0, plus), true, modifiers))
                return "no modifier \"" + name.substr(0, plus) + "\": Ctrl, Shift or Alt";
            name.erase(0, plus + 1);
        }
        const auto named = keyNames.find(name);
        if (named == keyNames.end() && name.size() != 1)
            return "no key \"" + name + "\"";
        const tKey key = named != keyNames.end() ? named->second : std::toupper(name[0]);
        for (bool isDown : {true, false}) {
            cEvent &event = AddEvent(cEvent::KEY);
            event.mKey = event.mPlace = key;
            event.mIsDown = isDown;
            event.mModifiers = isDown ? modifiers : mHeld;
        }
        return "";
    }

    std::string ReadModifier(std::istringstream &words, bool isHeld)
    {
        std::string name;
        words >> name;
        return SetModifier(name, isHeld, mHeld) ? "" : "expected Ctrl, Shift or Alt";
    }

    std::string ReadText(const std::string &text)
    {
        for (char c : text)
            AddEvent(cEvent::TEXT).mCharacter = static_cast<unsigned char>(c);
        return "";
    }

    std::string ReadMove(std::istringstream &words)
    {
        double x = 0.0, y = 0.0;
        if (!(words >> x >> y))
            return "expected move X Y";
        cEvent &event = AddEvent(cEvent::MOVE);
        event.mX = x;
        event.mY = y;
        return "";
    }

    std::string ReadPlace(std::istringstream &words, const std::string &verb)
    {
        const bool isLane = verb == "lane";
        std::string track, time, value;
        if (isLane)
            words >> track;
        words >> time >> value;
        if (time.empty())
            return "expected " + verb + (isLane ? " TRACK TIME [VALUE]" : " TIME");
        cStep &step = Add(isLane            ? cStep::TO_LANE
                          : verb == "ruler" ? cStep::TO_RULER
                                            : cStep::SEEK);
        step.mText = track;
        step.mTime = time;
        step.mValue = value;
        step.mEvent.mModifiers = mHeld;
        return "";
    }

    std::string ReadButton(std::istringstream &words, const std::string &verb)
    {
        std::string name;
        words >> name;
        const auto button = buttons.find(name);
        if (button == buttons.end())
            return "expected left, right or middle";
        const auto add = [&](bool isDown) {
            cEvent &event = AddEvent(cEvent::BUTTON);
            event.mKey = button->second;
            event.mIsDown = isDown;
        };
        if (verb != "release")
            add(true);
        if (verb != "press")
            add(false);
        if (verb == "double") {
            add(true);
            add(false);
        }
        return "";
    }

    std::string ReadWheel(std::istringstream &words)
    {
        double steps = 0.0;
        if (!(words >> steps))
            return "expected wheel STEPS";
        AddEvent(cEvent::WHEEL).mY = steps;
        return "";
    }

    std::string ReadOther(std::istringstream &words, const std::string &verb)
    {
        if (verb == "settle") {
            Add(cStep::SETTLE);
            return "";
        }
        if (verb == "wait") {
            const int limit = 1'000'000;
            int count = 0;
            if (!(words >> count) || count < 0 || count > limit)
                return "expected wait FRAMES";
            Add(cStep::WAIT).mCount = count;
            return "";
        }
        const std::string rest = Rest(words);
        if (verb != "run" && verb != "screenshot" && verb != "print")
            return "no instruction \"" + verb + "\"";
        if (rest.empty())
            return verb + " needs something behind it";
        Add(verb == "run"     ? cStep::RUN
            : verb == "print" ? cStep::PRINT
                              : cStep::SCREENSHOT)
            .mText = rest;
        return "";
    }

    std::vector<cStep> &mSteps;
    cModifiers mHeld;
    int mLine = 0;
};
} // namespace

bool ReadScript(const std::string &text, std::vector<cStep> &steps, std::string &error)
{
    std::istringstream lines(text);
    cReader reader(steps);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::string fault = reader.Read(line, ++number);
        if (fault.empty())
            continue;
        error = "line " + std::to_string(number) + ": " + fault;
        return false;
    }
    return true;
}
} // namespace studio
