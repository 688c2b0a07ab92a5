#pragma once

#include "studio/Events.h"

#include <span>

namespace studio
{
/// What a key can ask for.
enum class eCommand
{
    None,
    PlayPause,
    FrameBack,
    FrameForward,
    BeatBack,
    BeatForward,
    BarBack,
    BarForward,
    ToBegin,
    ToEnd,
    PreviousKey,
    NextKey,
    NudgeBack,
    NudgeForward,
    PreviousSection,
    NextSection,
    Loop,
    LoopBegin,
    LoopEnd,
    Fit,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    PasteAtOriginalTime,
    Duplicate,
    SelectAll,
    SelectNone,
    Delete,
    Type,
    Quantise,
    Hold,
    Linear,
    Smoothstep,
    Quadratic,
    Detach,
    InsertTime,
    DeleteTime,
    Still,
    Record,
    Follow,
    Search,
    Help,
    Quit
};

struct cBinding
{
    tKey mKey;
    cModifiers mModifiers;
    eCommand mCommand;
    const char *mKeys; ///< as they are called on a page; empty: another way to the line before
    const char *mText; ///< what it does
};

/// All keys, in the order in which a page lists them.
std::span<const cBinding> Bindings();

/// What `event`, a key that goes down, asks for.
eCommand FindCommand(const cEvent &event);
} // namespace studio
