// What a key or a button asks for.

#include "studio/Page.h"

#include "show/Time.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace studio
{
namespace
{
const double framesPerSecond = 60.0;

// "Waiting-40.0.0.png": a name that any file system takes.
std::string FileName(const std::string &title, double row, const vyr::cTempo &tempo,
                     const std::string &extension)
{
    std::string name = title;
    name.append("-").append(vyr::FormatRow(int(row), tempo)).append(extension);
    std::ranges::replace(name, ':', '.');
    std::ranges::replace(name, '/', '_');
    return name;
}
} // namespace

void cPage::HandleKeys(const std::vector<cEvent> &events)
{
    for (const cEvent &event : events) {
        if (event.mKind != cEvent::KEY || !event.mIsDown)
            continue;
        const eCommand command = FindCommand(event);
        if (command == eCommand::Help)
            Do(command);
        if (IsTyping() || ImGui::IsPopupOpen("", ImGuiPopupFlags_AnyPopupId))
            continue; // they belong to the field
        if (command == eCommand::SelectNone && mHand.mKind != cHand::NOTHING)
            CancelGesture();
        else if (command == eCommand::SelectNone && mIsHelpOpen)
            mIsHelpOpen = false;
        else if (command != eCommand::Help)
            Do(command);
    }
}

int cPage::GridRows() const
{
    const vyr::cTempo &tempo = mStudio.Transport().Tempo();
    return mGrid == 0 ? 1 : mGrid == 1 ? tempo.mRowsPerBeat : tempo.RowsPerBar();
}

void cPage::Do(eCommand command)
{
    cTransport &transport = mStudio.Transport();
    const vyr::cTempo &tempo = transport.Tempo();
    const double frame = tempo.Rows(1.0 / framesPerSecond);
    const auto step = [&transport](double rows) { transport.Seek(transport.Row() + rows); };
    const int here = int(std::lround(transport.Row()));
    switch (command) {
    case eCommand::None:
        return;
    case eCommand::PlayPause:
        return transport.Toggle();
    case eCommand::FrameBack:
        return step(-frame);
    case eCommand::FrameForward:
        return step(frame);
    case eCommand::BeatBack:
        return step(-tempo.mRowsPerBeat);
    case eCommand::BeatForward:
        return step(tempo.mRowsPerBeat);
    case eCommand::BarBack:
        return step(-tempo.RowsPerBar());
    case eCommand::BarForward:
        return step(tempo.RowsPerBar());
    case eCommand::ToBegin:
        return transport.Seek(0.0);
    case eCommand::ToEnd:
        return transport.Seek(transport.LastRow());
    case eCommand::PreviousKey:
        return StepToKey(-1);
    case eCommand::NextKey:
        return StepToKey(1);
    case eCommand::PreviousSection:
        return StepToSection(-1);
    case eCommand::NextSection:
        return StepToSection(1);
    case eCommand::Loop:
        if (!transport.Region())
            transport.SetRegion({here, here + 4 * tempo.RowsPerBar()});
        return transport.SetLooping(!transport.IsLooping());
    case eCommand::LoopBegin: {
        const int end = transport.Region() ? transport.Region()->mTo : 0;
        transport.SetRegion({here, end > here ? end : here + tempo.RowsPerBar()});
        return transport.SetLooping(true);
    }
    case eCommand::LoopEnd: {
        const int begin = transport.Region() ? transport.Region()->mFrom : here;
        transport.SetRegion(
            {begin < here ? begin : std::max(here - tempo.RowsPerBar(), 0), std::max(here, 1)});
        return transport.SetLooping(true);
    }
    case eCommand::Fit: {
        int first = 0, last = 0;
        if (mStudio.SelectedRows(first, last))
            return mView.Fit(first, last);
        return mView.FitAll();
    }
    case eCommand::Follow:
        mFollow = eFollow((int(mFollow) + 1) % 3);
        return;
    case eCommand::Copy:
        return mStudio.Copy();
    case eCommand::SelectAll: {
        cStudio::tSelection all;
        for (cLane *lane : mStudio.Lanes().Shown(mSearch))
            all.insert(lane->mIds.begin(), lane->mIds.end());
        return mStudio.Select(std::move(all));
    }
    case eCommand::SelectNone:
        return mStudio.Select({});
    case eCommand::Type:
        return OpenTypePopup();
    case eCommand::Still:
        return SaveStill();
    case eCommand::Record:
        return AskToRecord();
    case eCommand::Search:
        mIsSearchAsked = true;
        return;
    case eCommand::Help:
        mIsHelpOpen = !mIsHelpOpen;
        return;
    case eCommand::Quit:
        mIsQuitAsked = true;
        return;
    default:
        break;
    }
    if (mHand.mKind == cHand::NOTHING) // a drag is one step, with nothing in it
        Edit(command);
}

void cPage::Edit(eCommand command)
{
    switch (command) {
    case eCommand::NudgeBack:
        return mStudio.Nudge(-GridRows());
    case eCommand::NudgeForward:
        return mStudio.Nudge(GridRows());
    case eCommand::Undo:
        return mStudio.Undo();
    case eCommand::Redo:
        return mStudio.Redo();
    case eCommand::Cut:
        return mStudio.Cut();
    case eCommand::Paste:
        return mStudio.Paste(false);
    case eCommand::PasteAtOriginalTime:
        return mStudio.Paste(true);
    case eCommand::Duplicate:
        return mStudio.Duplicate();
    case eCommand::Delete:
        return mStudio.DeleteSelected();
    case eCommand::Quantise:
        return mStudio.Quantise(GridRows());
    case eCommand::Hold:
        return mStudio.SetInterpolation(SYNC_KEY_HOLD);
    case eCommand::Linear:
        return mStudio.SetInterpolation(SYNC_KEY_LINEAR);
    case eCommand::Smoothstep:
        return mStudio.SetInterpolation(SYNC_KEY_SMOOTHSTEP);
    case eCommand::Quadratic:
        return mStudio.SetInterpolation(SYNC_KEY_QUADRATIC);
    case eCommand::Detach:
        return mStudio.Detach();
    case eCommand::InsertTime:
        return mStudio.InsertTime(GridRows());
    case eCommand::DeleteTime:
        return mStudio.DeleteTime(GridRows());
    default:
        return;
    }
}

// Of the lanes with a selected key; without a selection of those shown.
void cPage::StepToKey(int direction)
{
    const double here = mStudio.Transport().Row();
    std::optional<int> best;
    const auto consider = [&](const cLane &lane) {
        for (const sync_key &key : lane.mCurve.Keys()) {
            const bool isBeyond = direction > 0 ? key.row > here + 1e-6 : key.row < here - 1e-6;
            if (isBeyond && (!best || (direction > 0 ? key.row < *best : key.row > *best)))
                best = key.row;
        }
    };
    bool isAnySelected = false;
    for (cLane *lane : mStudio.Lanes().Shown(mSearch)) {
        const bool isSelected = std::ranges::any_of(
            lane->mIds, [this](const timeline::cKeyId &key) { return mStudio.IsSelected(key); });
        isAnySelected = isAnySelected || isSelected;
        if (isSelected)
            consider(*lane);
    }
    if (!isAnySelected)
        for (cLane *lane : mStudio.Lanes().Shown(mSearch))
            consider(*lane);
    if (best)
        mStudio.Transport().Seek(*best);
}

void cPage::StepToSection(int direction)
{
    const double here = mStudio.Transport().Row();
    std::optional<double> best;
    for (const timeline::cSectionSpan &section : mSections) {
        const double row = section.mFrom;
        const bool isBeyond = direction > 0 ? row > here + 1e-6 : row < here - 1e-6;
        if (isBeyond && (!best || (direction > 0 ? row < *best : row > *best)))
            best = row;
    }
    if (best)
        mStudio.Transport().Seek(*best);
}

void cPage::SaveStill()
{
    const cTransport &transport = mStudio.Transport();
    std::filesystem::path file;
    for (int i = 1; file.empty() || std::filesystem::exists(file); i++) {
        std::string end = ".png";
        if (i > 1)
            end.insert(0, std::to_string(i)).insert(0, 1, '-');
        file = mFolder / FileName(mStudio.Show().mTitle, transport.Row(), transport.Tempo(), end);
    }
    mStudio.SaveStill(file);
}

// The loop, else the selection, else all.
void cPage::AskToRecord()
{
    if (mStudio.IsRecording())
        return mStudio.Say("a recording is under way");
    const cTransport &transport = mStudio.Transport();
    int first = 0, last = 0;
    const bool isSelection = mStudio.SelectedRows(first, last) && first < last;
    const bool isLoop = transport.IsLooping() && transport.Region();
    mRecordFrom = isLoop ? transport.Region()->mFrom : isSelection ? std::max(first, 0) : 0.0;
    mRecordTo = isLoop        ? transport.Region()->mTo
                : isSelection ? std::min(double(last), transport.LastRow())
                              : transport.LastRow();
    const std::string name =
        FileName(mStudio.Show().mTitle, mRecordFrom, transport.Tempo(), ".mp4");
    std::snprintf(mRecordFile, sizeof mRecordFile, "%s", name.c_str());
    mAskedPopup = "record";
}
} // namespace studio
