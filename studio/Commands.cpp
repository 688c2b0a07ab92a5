#include "studio/Commands.h"

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

namespace studio
{
namespace
{
constexpr cModifiers plain{}, ctrl{true, false, false}, shift{false, true, false},
    alt{false, false, true}, ctrlShift{true, true, false};

const cBinding bindings[] = {
    {GLFW_KEY_SPACE, plain, eCommand::PlayPause, "Space", "play, pause"},
    {GLFW_KEY_LEFT, plain, eCommand::FrameBack, "Left, Right", "a frame back, forward"},
    {GLFW_KEY_RIGHT, plain, eCommand::FrameForward, "", ""},
    {GLFW_KEY_LEFT, shift, eCommand::BeatBack, "Shift+Left, Right", "a beat"},
    {GLFW_KEY_RIGHT, shift, eCommand::BeatForward, "", ""},
    {GLFW_KEY_LEFT, ctrl, eCommand::BarBack, "Ctrl+Left, Right", "a bar"},
    {GLFW_KEY_RIGHT, ctrl, eCommand::BarForward, "", ""},
    {GLFW_KEY_PAGE_UP, plain, eCommand::PreviousSection, "Page Up, Down", "previous, next section"},
    {GLFW_KEY_PAGE_DOWN, plain, eCommand::NextSection, "", ""},
    {GLFW_KEY_HOME, plain, eCommand::ToBegin, "Home, End", "the show's beginning, its end"},
    {GLFW_KEY_END, plain, eCommand::ToEnd, "", ""},
    {',', plain, eCommand::PreviousKey, ",  .", "previous, next key"},
    {'.', plain, eCommand::NextKey, "", ""},
    {',', alt, eCommand::NudgeBack, "Alt+,  Alt+.", "move the selected keys by the grid"},
    {'.', alt, eCommand::NudgeForward, "", ""},
    {'L', plain, eCommand::Loop, "L", "loop on, off"},
    {'B', plain, eCommand::LoopBegin, "B, N", "the loop begins, ends here"},
    {'N', plain, eCommand::LoopEnd, "", ""},
    {'F', plain, eCommand::Fit, "F", "show the selection, or all"},
    {'O', plain, eCommand::Follow, "O", "follow the playhead: off, page, smooth"},
    {'Z', ctrl, eCommand::Undo, "Ctrl+Z", "undo"},
    {'Z', ctrlShift, eCommand::Redo, "Ctrl+Shift+Z, Ctrl+Y", "redo"},
    {'Y', ctrl, eCommand::Redo, "", ""},
    {'X', ctrl, eCommand::Cut, "Ctrl+X, C", "cut, copy keys"},
    {'C', ctrl, eCommand::Copy, "", ""},
    {'V', ctrl, eCommand::Paste, "Ctrl+V", "paste at the playhead"},
    {'V', ctrlShift, eCommand::PasteAtOriginalTime, "Ctrl+Shift+V",
     "paste at the time of the copy"},
    {'D', ctrl, eCommand::Duplicate, "Ctrl+D", "the same keys again, whole bars later"},
    {'A', ctrl, eCommand::SelectAll, "Ctrl+A", "select all keys of the lanes shown"},
    {'A', ctrlShift, eCommand::SelectNone, "Esc, Ctrl+Shift+A", "select none; Esc cancels a drag"},
    {GLFW_KEY_ESCAPE, plain, eCommand::SelectNone, "", ""},
    {GLFW_KEY_DELETE, plain, eCommand::Delete, "Del", "delete keys"},
    {GLFW_KEY_BACKSPACE, plain, eCommand::Delete, "", ""},
    {GLFW_KEY_ENTER, plain, eCommand::Type, "Enter", "type time and value"},
    {GLFW_KEY_KP_ENTER, plain, eCommand::Type, "", ""},
    {'Q', plain, eCommand::Quantise, "Q", "move keys to the grid"},
    {'1', plain, eCommand::Hold, "1, 2, 3, 4", "hold, linear, smoothstep, quadratic"},
    {'2', plain, eCommand::Linear, "", ""},
    {'3', plain, eCommand::Smoothstep, "", ""},
    {'4', plain, eCommand::Quadratic, "", ""},
    {'T', ctrl, eCommand::Detach, "Ctrl+T", "detach: this copy of a section gets its own lines"},
    {'I', plain, eCommand::InsertTime, "I", "insert the grid's time at the playhead"},
    {'I', shift, eCommand::DeleteTime, "Shift+I", "delete it there"},
    {'S', plain, eCommand::Still, "S", "save the picture"},
    {'R', plain, eCommand::Record, "R", "record the loop, the selection, or all"},
    {'F', ctrl, eCommand::Search, "Ctrl+F", "search lanes"},
    {GLFW_KEY_F1, plain, eCommand::Help, "F1", "this page"},
    {'Q', ctrl, eCommand::Quit, "Ctrl+Q", "end"},
};
} // namespace

std::span<const cBinding> Bindings() { return bindings; }

// Letters are what is written on a key. Digits and signs, which some keyboards have only with
// Shift, are where they are too.
eCommand FindCommand(const cEvent &event)
{
    const auto find = [&event](tKey key) {
        for (const cBinding &binding : bindings)
            if (binding.mKey == key && binding.mModifiers == event.mModifiers)
                return binding.mCommand;
        return eCommand::None;
    };
    const auto isLetter = [](tKey key) { return key >= 'A' && key <= 'Z'; };
    const eCommand command = find(event.mKey);
    const bool mayBePlace = !isLetter(event.mKey) && !isLetter(event.mPlace);
    return command == eCommand::None && mayBePlace ? find(event.mPlace) : command;
}
} // namespace studio
