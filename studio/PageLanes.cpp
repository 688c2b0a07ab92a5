#include "studio/Page.h"

#include "show/Time.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace studio
{
namespace
{
const ImU32 ink = IM_COL32(0x2a, 0x2a, 0x28, 255), faint = IM_COL32(0x6e, 0x69, 0x5e, 255),
            laneFill = IM_COL32(255, 255, 255, 140), coarse = IM_COL32(0xc9, 0xc0, 0xa8, 255),
            fine = IM_COL32(0xe8, 0xe1, 0xd0, 255), red = IM_COL32(0xc8, 0x2d, 0x1d, 255),
            petrol = IM_COL32(0x1e, 0x4f, 0x5a, 255), plum = IM_COL32(0x4b, 0x2e, 0x57, 255),
            cream = IM_COL32(0xf5, 0xe9, 0xd0, 255), amber = IM_COL32(0xff, 0xb3, 0x47, 255);
const ImU32 laneColors[] = {petrol,
                            IM_COL32(0xb8, 0x45, 0x2d, 255),
                            plum,
                            IM_COL32(0x8a, 0x5a, 0x08, 255),
                            IM_COL32(0x2f, 0x7d, 0x68, 255),
                            IM_COL32(0x7a, 0x3b, 0x2e, 255)};
const double laneHeight = 58.0, laneGap = 6.0, keySize = 4.0; // pixels at scale 1

ImU32 Faded(ImU32 color, double alpha)
{
    return (color & ~IM_COL32_A_MASK) | (ImU32(alpha * 255.0) << IM_COL32_A_SHIFT);
}

ImVec2 ToImVec(const cPoint &point) { return {float(point.x), float(point.y)}; }

// The smallest step of `unit` times a power of two whose marks lie `pixels` apart or more.
double MarkStep(const cTimeView &view, double unit, double pixels)
{
    double step = unit;
    while (step * view.PixelsPerRow() < pixels)
        step *= 2.0;
    return step;
}

// Square: hold, triangle: linear, diamond: smoothstep, triangle on its tip: quadratic.
void DrawKeyShape(ImDrawList &list, int type, ImVec2 at, float s, ImU32 color)
{
    switch (type) {
    case SYNC_KEY_HOLD:
        return list.AddRectFilled({at.x - s, at.y - s}, {at.x + s, at.y + s}, color);
    case SYNC_KEY_LINEAR:
        return list.AddTriangleFilled({at.x - s, at.y + s}, {at.x, at.y - 1.3f * s},
                                      {at.x + s, at.y + s}, color);
    case SYNC_KEY_SMOOTHSTEP:
        return list.AddQuadFilled({at.x, at.y - 1.4f * s}, {at.x + 1.4f * s, at.y},
                                  {at.x, at.y + 1.4f * s}, {at.x - 1.4f * s, at.y}, color);
    default:
        return list.AddTriangleFilled({at.x - s, at.y - s}, {at.x + s, at.y - s},
                                      {at.x, at.y + 1.3f * s}, color);
    }
}

// As much of `text` as fits.
void AddClipped(ImDrawList &list, ImVec2 at, float width, ImU32 color, const std::string &text)
{
    if (width < 8.0f)
        return;
    list.PushClipRect(at, {at.x + width, at.y + 100.0f}, true);
    list.AddText(at, color, text.c_str());
    list.PopClipRect();
}
} // namespace

void cPage::DrawTimeline()
{
    ImGui::SetCursorPos({0, mTimeline.mMin.y});
    ImGui::InvisibleButton("timeline", {mTimeline.Width(), mTimeline.Height()},
                           ImGuiButtonFlags_MouseButtonLeft | ImGuiButtonFlags_MouseButtonRight |
                               ImGuiButtonFlags_MouseButtonMiddle);
    ImGui::SetItemAllowOverlap();
    mIsOverTimeline = ImGui::IsItemHovered(ImGuiHoveredFlags_AllowWhenBlockedByActiveItem) ||
                      ImGui::IsItemActive();
    mPlaces = PlaceLanes();
    HandlePointer();
    FollowPlayhead();
    mPlaces = PlaceLanes();

    ImDrawList &list = *ImGui::GetWindowDrawList();
    list.AddLine({0, mTimeline.mMin.y}, {mTimeline.mMax.x, mTimeline.mMin.y}, coarse);
    DrawGrid(list);
    DrawRuler(list);
    DrawMusic(list);
    DrawWords(list);
    ImGui::PushFont(mGui.Small());
    DrawLanes(list);
    ImGui::PopFont();
    DrawRegion(list);
    DrawPlayhead(list);
    DrawHand(list);

    // The search field over the lanes' names.
    ImGui::SetCursorPos({S(10), mMusicStrip.mMin.y});
    ImGui::SetNextItemWidth(S(148));
    if (mIsSearchAsked)
        ImGui::SetKeyboardFocusHere();
    mIsSearchAsked = false;
    ImGui::InputTextWithHint("##search", "search lanes", mSearch, sizeof mSearch);
    bool isAnyHidden = false;
    for (cLane &lane : mStudio.Lanes().All())
        isAnyHidden = isAnyHidden || lane.mIsHidden || lane.mIsSolo;
    ImGui::SetCursorPos({S(10), mMusicStrip.mMin.y + S(26)});
    if (isAnyHidden && ImGui::SmallButton("show all lanes"))
        for (cLane &lane : mStudio.Lanes().All())
            lane.mIsHidden = lane.mIsSolo = false;
}

std::vector<cPage::cPlace> cPage::PlaceLanes()
{
    const std::vector<cLane *> shown = mStudio.Lanes().Shown(mSearch);
    const double step = (laneHeight + laneGap) * mScale;
    const double whole = double(shown.size()) * step;
    mScroll = std::clamp(mScroll, 0.0, std::max(whole - double(mLaneArea.Height()), 0.0));
    std::vector<cPlace> places;
    for (size_t i = 0; i < shown.size(); i++) {
        const float top = mLaneArea.mMin.y + float(double(i) * step - mScroll);
        if (top + float(step) < mLaneArea.mMin.y || top > mLaneArea.mMax.y)
            continue;
        places.push_back(
            {shown[i], {{mLaneArea.mMin.x, top}, {mLaneArea.mMax.x, top + S(laneHeight)}}});
    }
    return places;
}

cValueView cPage::ValuesOf(const cPlace &place) const
{
    const double margin = keySize * 1.6 * mScale;
    return {double(place.mArea.mMin.y) + margin, double(place.mArea.Height()) - 2.0 * margin,
            double(place.mLane->mLow), double(place.mLane->mHigh)};
}

std::vector<cPlacedKey> cPage::KeysOn(const cPlace &place) const
{
    std::vector<cPlacedKey> keys;
    const cLaneCurve &curve = place.mLane->mCurve;
    if (place.mLane->mIds.size() != curve.Keys().size() || curve.IsDense(mView))
        return keys;
    const cValueView values = ValuesOf(place);
    const auto range = curve.Visible(mView, keySize * mScale);
    for (size_t i = range.mBegin; i < range.mEnd; i++) {
        const sync_key &key = curve.Keys()[i];
        keys.push_back({place.mLane->mIds[i], {mView.X(key.row), values.Y(double(key.value))}});
    }
    return keys;
}

std::string cPage::NameOf(const cLane &lane, float value) const
{
    if (lane.IsPicking()) {
        const int index = int(value);
        if (index < 0)
            return "none";
        return size_t(index) < lane.mFiles.size()
                   ? std::filesystem::path(lane.mFiles[size_t(index)]).stem().string()
                   : "past the table";
    }
    const auto &names = mStudio.Document().Timeline().mValueNames;
    const auto track = names.find(lane.mTrack);
    if (track != names.end()) {
        const auto found = track->second.find(value);
        if (found != track->second.end())
            return found->second;
    }
    return vyr::FormatValue(value);
}

ImVec2 cPage::PointOnRuler(double row)
{
    if (mView.X(row) < mView.Left() || mView.X(row) > mView.Right())
        mView.Reveal(row);
    return {float(mView.X(row)), mRuler.mMin.y + S(28)};
}

bool cPage::PointOnLane(const std::string &track, double row, std::optional<double> value,
                        ImVec2 &point)
{
    const std::vector<cLane *> shown = mStudio.Lanes().Shown(mSearch);
    const auto lane = std::ranges::find(shown, track, &cLane::mTrack);
    if (lane == shown.end())
        return false;
    const double step = (laneHeight + laneGap) * mScale, top = double(lane - shown.begin()) * step;
    if (top < mScroll || top + step > mScroll + double(mLaneArea.Height()))
        mScroll = std::max(top - step, 0.0);
    mPlaces = PlaceLanes();
    point.x = PointOnRuler(row).x;
    for (const cPlace &place : mPlaces)
        if (place.mLane == *lane)
            point.y = float(ValuesOf(place).Y(value ? *value : double((*lane)->mCurve.Value(row))));
    return true;
}

void cPage::DrawGrid(ImDrawList &list)
{
    const vyr::cTempo &tempo = mStudio.Transport().Tempo();
    const bool areBeats = tempo.mRowsPerBeat * mView.PixelsPerRow() >= 12.0 * mScale;
    const double bar = tempo.RowsPerBar();
    const double step = areBeats ? tempo.mRowsPerBeat : MarkStep(mView, bar, 14.0 * mScale);
    const double strong = areBeats ? bar : 4.0 * step;
    list.PushClipRect({mRuler.mMin.x, mRuler.mMin.y}, mTimeline.mMax, true);
    for (double row = std::floor(mView.BeginRow() / step) * step; row <= mView.EndRow();
         row += step) {
        const float x = float(mView.X(row));
        const bool isStrong = std::fmod(std::abs(row), strong) == 0.0;
        list.AddLine({x, mRuler.mMin.y + S(20)}, {x, mTimeline.mMax.y}, isStrong ? coarse : fine);
    }
    list.PopClipRect();
}

void cPage::DrawRuler(ImDrawList &list)
{
    list.PushClipRect(mRuler.mMin, {mRuler.mMax.x, mTimeline.mMax.y}, true);
    ImGui::PushFont(mGui.Small());
    int number = 0;
    for (const timeline::cSectionSpan &section : mSections) {
        const float from = float(mView.X(section.mFrom)), to = float(mView.X(section.mTo));
        const ImU32 color = number++ % 2 == 0 ? petrol : plum;
        if (to < mRuler.mMin.x || from > mRuler.mMax.x)
            continue;
        list.AddRectFilled({from, mRuler.mMin.y}, {to - 1.0f, mRuler.mMin.y + S(16)}, color);
        const float left = std::max(from, mRuler.mMin.x) + S(4);
        AddClipped(list, {left, mRuler.mMin.y + S(1)}, to - left - S(3), cream, section.mName);
    }
    const vyr::cTempo &tempo = mStudio.Transport().Tempo();
    const double bar = tempo.RowsPerBar();
    const double step = MarkStep(mView, bar, 34.0 * mScale);
    for (double row = std::max(0.0, std::floor(mView.BeginRow() / step) * step);
         row <= mView.EndRow(); row += step) {
        const std::string text = std::to_string(std::lround(row / bar));
        list.AddText({float(mView.X(row)) + S(3), mRuler.mMin.y + S(24)}, ink, text.c_str());
    }
    ImGui::PopFont();
    list.PopClipRect();
    list.AddText({mRuler.mMin.x - S(34), mRuler.mMin.y + S(22)}, faint, "bar");
}

// The loop, and the bar over the selection whose ends stretch it.
void cPage::DrawRegion(ImDrawList &list)
{
    list.PushClipRect({mRuler.mMin.x, mRuler.mMin.y}, mTimeline.mMax, true);
    if (const auto &region = mStudio.Transport().Region()) {
        const float from = float(mView.X(region->mFrom)), to = float(mView.X(region->mTo));
        const bool isOn = mStudio.Transport().IsLooping();
        const ImU32 color = isOn ? amber : Faded(amber, 0.5);
        list.AddRectFilled({from, mRuler.mMin.y + S(17)}, {to, mRuler.mMin.y + S(22)}, color);
        list.AddRectFilled({from - S(2), mRuler.mMin.y + S(16)}, {from + S(2), mRuler.mMax.y},
                           color);
        list.AddRectFilled({to - S(2), mRuler.mMin.y + S(16)}, {to + S(2), mRuler.mMax.y}, color);
        if (isOn)
            list.AddRectFilled({from, mRuler.mMax.y}, {to, mTimeline.mMax.y}, Faded(amber, 0.08));
    }
    int first = 0, last = 0;
    if (mStudio.Selection().size() > 1 && mStudio.SelectedRows(first, last) && first < last) {
        const float from = float(mView.X(first)), to = float(mView.X(last)),
                    y = mRuler.mMax.y - S(4);
        list.AddRectFilled({from, y - S(1)}, {to, y + S(1)}, red);
        list.AddRectFilled({from - S(3), y - S(4)}, {from + S(3), y + S(4)}, red);
        list.AddRectFilled({to - S(3), y - S(4)}, {to + S(3), y + S(4)}, red);
    }
    list.PopClipRect();
}

// Near, from the samples themselves; far, from the measured curve. Below, the loudness of the last
// three seconds.
void cPage::DrawMusic(ImDrawList &list)
{
    list.AddRectFilled(mMusicStrip.mMin, {mMusicStrip.mMax.x, mMusicStrip.mMax.y - S(2)}, laneFill);
    const tSamples &samples = mStudio.Samples();
    const tools::cMusicMeasure *music = mStudio.Music();
    const vyr::cTempo &tempo = mStudio.Transport().Tempo();
    if (!samples || !music || !tempo.HasSeconds())
        return;
    const float middle = (mMusicStrip.mMin.y + mMusicStrip.mMax.y) / 2.0f,
                half = mMusicStrip.Height() / 2.0f - S(3);
    const double step = 1.0; // pixels
    for (double x = double(mMusicStrip.mMin.x); x < double(mMusicStrip.mMax.x); x += step) {
        const double from = tempo.Seconds(mView.Row(x)), to = tempo.Seconds(mView.Row(x + step));
        float low = 0.0f, high = 0.0f;
        if (to - from > music->mStep) {
            const size_t end =
                std::min(size_t(std::max(to / music->mStep, 0.0)), music->mLow.size());
            for (size_t i = size_t(std::max(from / music->mStep, 0.0)); i < end; i++) {
                low = std::min(low, music->mLow[i]);
                high = std::max(high, music->mHigh[i]);
            }
        } else {
            const int64_t begin = std::max<int64_t>(int64_t(from * samples->mRate), 0),
                          end = std::min(int64_t(to * samples->mRate) + 1, samples->Count());
            const int64_t stride = std::max<int64_t>((end - begin) / 96, 1);
            for (int64_t i = begin; i < end; i += stride) {
                const float value = float(samples->mFrames[size_t(2 * i)]) / 32768.0f;
                low = std::min(low, value);
                high = std::max(high, value);
            }
        }
        if (high > low)
            list.AddRectFilled({float(x), middle - half * high},
                               {float(x + step), middle - half * low + 1.0f}, Faded(petrol, 0.55));
    }
    std::vector<ImVec2> loudness;
    const double floorLufs = -40.0;
    for (size_t i = 0; i < music->mShortTerm.size(); i++) {
        const double x = mView.X(tempo.Rows((double(i) + 1.0) * music->mStep));
        if (x < double(mMusicStrip.mMin.x) || x > double(mMusicStrip.mMax.x))
            continue;
        const double level = std::clamp((music->mShortTerm[i] - floorLufs) / -floorLufs, 0.0, 1.0);
        loudness.push_back({float(x), mMusicStrip.mMax.y - S(4) - float(level) * (2 * half)});
    }
    list.AddPolyline(loudness.data(), int(loudness.size()), Faded(laneColors[1], 0.9), 0, S(1.4));
}

void cPage::DrawWords(ImDrawList &list)
{
    list.PushClipRect(mWordStrip.mMin, mWordStrip.mMax, true);
    ImGui::PushFont(mGui.Small());
    for (const tools::cLyricSpan &span : mStudio.WordSpans()) {
        const float from = float(mView.X(span.mFrom)), to = float(mView.X(span.mTo));
        if (to < mWordStrip.mMin.x || from > mWordStrip.mMax.x)
            continue;
        list.AddRectFilled({from, mWordStrip.mMin.y + 1}, {to - 1, mWordStrip.mMax.y - 1},
                           Faded(amber, 0.35));
        const float left = std::max(from, mWordStrip.mMin.x) + S(3);
        AddClipped(list, {left, mWordStrip.mMin.y + S(2)}, to - left - S(2), ink,
                   mStudio.WordsOf(span.mLyric));
    }
    ImGui::PopFont();
    list.PopClipRect();
}

void cPage::DrawLanes(ImDrawList &list)
{
    list.PushClipRect({0, mLaneArea.mMin.y}, mLaneArea.mMax, true);
    for (const cPlace &place : mPlaces) {
        DrawLaneHead(list, place);
        DrawLaneBody(list, place);
    }
    list.PopClipRect();
}

void cPage::DrawLaneHead(ImDrawList &list, const cPlace &place)
{
    cLane &lane = *place.mLane;
    const size_t index = size_t(&lane - mStudio.Lanes().All().data());
    const bool isGood =
        std::ranges::find(mProblems, lane.mTrack, &cProblem::mTrack) == mProblems.end();
    const ImU32 color = isGood ? laneColors[index % std::size(laneColors)] : red;
    const float top = place.mArea.mMin.y;
    ImGui::PushFont(mGui.Bold());
    AddClipped(list, {S(10), top + S(4)}, mLaneArea.mMin.x - S(52), color, lane.mTrack);
    ImGui::PopFont();
    char text[48];
    if (!lane.IsPicking()) {
        std::snprintf(text, sizeof text, "%.4g", double(lane.mHigh));
        const float width = ImGui::CalcTextSize(text).x;
        list.AddText({mLaneArea.mMin.x - width - S(5), top + S(1)}, faint, text);
        std::snprintf(text, sizeof text, "%.4g", double(lane.mLow));
        const float lowWidth = ImGui::CalcTextSize(text).x;
        list.AddText({mLaneArea.mMin.x - lowWidth - S(5), place.mArea.mMax.y - S(14)}, faint, text);
    }
    const double row = mStudio.Transport().Row();
    const float value = lane.mCurve.Value(row);
    std::snprintf(text, sizeof text, "%.4g", double(value));
    const std::string name = NameOf(lane, value);
    const bool isNamed = name != vyr::FormatValue(value);
    const std::string now = lane.mCurve.Keys().empty() ? "no keys: 0" : isNamed ? name : text;
    AddClipped(list, {S(10), top + S(21)}, mLaneArea.mMin.x - S(52), ink, now);
    if (top + S(38) < mLaneArea.mMin.y || top + S(56) > mLaneArea.mMax.y)
        return;
    ImGui::SetCursorPos({S(10), top + S(38)});
    ImGui::PushID(lane.mTrack.c_str());
    ImGui::PushStyleVar(ImGuiStyleVar_FramePadding, ImVec2(S(4), 0));
    if (lane.mIsSolo)
        ImGui::PushStyleColor(ImGuiCol_Button, amber);
    const bool wasSolo = lane.mIsSolo;
    if (ImGui::SmallButton("solo"))
        lane.mIsSolo = !lane.mIsSolo;
    if (wasSolo)
        ImGui::PopStyleColor();
    ImGui::SameLine(0, S(4));
    if (ImGui::SmallButton("hide"))
        lane.mIsHidden = true;
    ImGui::PopStyleVar();
    ImGui::PopID();
}

void cPage::DrawLaneBody(ImDrawList &list, const cPlace &place)
{
    const cLane &lane = *place.mLane;
    const size_t index = size_t(&lane - mStudio.Lanes().All().data());
    const ImU32 color = laneColors[index % std::size(laneColors)];
    list.AddRectFilled(place.mArea.mMin, place.mArea.mMax, laneFill);
    list.PushClipRect(place.mArea.mMin, place.mArea.mMax, true);
    if (lane.IsPicking() && !lane.mCurve.IsDense(mView))
        DrawBlocks(list, place);
    else
        DrawCurve(list, place, color);
    DrawKeys(list, place, color);
    list.PopClipRect();
    const auto problem = std::ranges::find(mProblems, lane.mTrack, &cProblem::mTrack);
    if (problem == mProblems.end())
        return;
    cProblem named = *problem;
    named.mFile = std::filesystem::path(named.mFile).filename().string();
    const std::string text = named.ToLine();
    const ImVec2 at(place.mArea.mMin.x + S(6), place.mArea.mMin.y + S(3)),
        size = ImGui::CalcTextSize(text.c_str());
    list.AddRectFilled({at.x - S(3), at.y - S(1)}, {at.x + size.x + S(3), at.y + size.y + S(1)},
                       IM_COL32(255, 240, 235, 235));
    list.AddText(at, red, text.c_str());
}

// What is picked, as long as it is: a small picture of it, and its name.
void cPage::DrawBlocks(ImDrawList &list, const cPlace &place)
{
    const cLane &lane = *place.mLane;
    const auto &keys = lane.mCurve.Keys();
    const auto visible = lane.mCurve.Visible(mView);
    const size_t begin = visible.mBegin > 0 ? visible.mBegin - 1 : 0;
    for (size_t i = begin; i < visible.mEnd; i++) {
        const int picked = int(keys[i].value);
        if (picked < 0)
            continue;
        const bool isLast = i + 1 == keys.size();
        const float from =
            float(mView.X(i == 0 ? std::min(0.0, double(keys[0].row)) : keys[i].row));
        const float to =
            float(mView.X(isLast ? mStudio.Transport().LastRow() : double(keys[i + 1].row)));
        list.AddRectFilled({from + 1, place.mArea.mMin.y + 1}, {to - 1, place.mArea.mMax.y - 1},
                           Faded(petrol, 0.16));
        float left = from + S(3);
        record::cSize size;
        const bool isPicture =
            size_t(picked) < lane.mFiles.size() && !lane.mFiles[size_t(picked)].ends_with(".lwo");
        const unsigned int texture =
            isPicture && to - from > S(8)
                ? mStudio.Preview().FindPicture(lane.mFiles[size_t(picked)], size)
                : 0;
        if (texture != 0 && size.mHeight > 0) {
            const float height = place.mArea.Height() - S(4);
            const float width = height * float(size.mWidth) / float(size.mHeight);
            const ImVec2 at(std::max(from, place.mArea.mMin.x) + S(2), place.mArea.mMin.y + S(2));
            list.PushClipRect({from + 1, at.y}, {to - 1, at.y + height}, true);
            list.AddRectFilled(at, {at.x + width, at.y + height}, IM_COL32(40, 40, 40, 255));
            list.AddImage(reinterpret_cast<ImTextureID>(static_cast<intptr_t>(texture)), at,
                          {at.x + width, at.y + height});
            list.PopClipRect();
            left = at.x + width + S(3);
        }
        AddClipped(list, {left, place.mArea.mMin.y + S(3)}, to - left - S(2), ink,
                   NameOf(lane, keys[i].value));
    }
}

void cPage::DrawCurve(ImDrawList &list, const cPlace &place, ImU32 color)
{
    const cLane &lane = *place.mLane;
    const cValueView values = ValuesOf(place);
    if (lane.mLow < 0.0f && lane.mHigh > 0.0f) {
        const float zero = float(values.Y(0.0));
        list.AddLine({place.mArea.mMin.x, zero}, {place.mArea.mMax.x, zero}, coarse);
    }
    if (lane.mCurve.IsDense(mView)) {
        float x = place.mArea.mMin.x;
        for (const cColumn &column : lane.mCurve.Columns(mView)) {
            list.AddRectFilled({x, float(values.Y(double(column.mHigh))) - 0.5f},
                               {x + 1.0f, float(values.Y(double(column.mLow))) + 0.5f},
                               Faded(color, 0.7));
            x += 1.0f;
        }
        return;
    }
    std::vector<ImVec2> points;
    for (const cPoint &point : lane.mCurve.Line(mView, values))
        points.push_back(ToImVec(point));
    list.AddPolyline(points.data(), int(points.size()), color, 0, S(1.5));
}

// Selected ones are red, those that change with them have a ring; what can't be changed is hollow.
void cPage::DrawKeys(ImDrawList &list, const cPlace &place, ImU32 color)
{
    const cLane &lane = *place.mLane;
    if (lane.mCurve.IsDense(mView))
        return;
    const cValueView values = ValuesOf(place);
    const auto range = lane.mCurve.Visible(mView, keySize * mScale);
    const bool hasIds = lane.mIds.size() == lane.mCurve.Keys().size();
    const bool isFixed = mStudio.TimelinePath().empty();
    std::map<int, bool> held; // row of a key in the hand, whether it is a copy
    if (!hasIds)
        for (const cHeld &key : mHand.mHeld)
            if (key.mTrack == lane.mTrack)
                held[HeldRow(key)] = key.mIsCopy;
    for (size_t i = range.mBegin; i < range.mEnd; i++) {
        const sync_key &key = lane.mCurve.Keys()[i];
        const ImVec2 at(float(mView.X(key.row)), float(values.Y(double(key.value))));
        const auto inHand = held.find(key.row);
        const bool isHeld = inHand != held.end();
        const bool isSelected =
            hasIds ? mStudio.IsSelected(lane.mIds[i]) : isHeld && !inHand->second;
        const bool isCopy = hasIds ? mCopies.count(lane.mIds[i]) != 0 : isHeld && inHand->second;
        const bool isHovered = hasIds && lane.mIds[i] == mHovered;
        if (isCopy || isHovered)
            list.AddCircle(at, S(8), isSelected ? red : Faded(amber, 1.0), 0, S(2));
        DrawKeyShape(list, key.type, at, S(isSelected ? keySize * 1.3 : keySize),
                     isSelected ? red : color);
        if (isFixed)
            DrawKeyShape(list, key.type, at, S(keySize * 0.5), IM_COL32_WHITE);
    }
}

void cPage::DrawPlayhead(ImDrawList &list)
{
    const float x = float(mView.X(mStudio.Transport().Row()));
    if (x < mRuler.mMin.x - 1 || x > mRuler.mMax.x + 1)
        return;
    const float top = mRuler.mMin.y + S(17);
    list.AddLine({x, top}, {x, mTimeline.mMax.y}, red, S(1.4));
    list.AddTriangleFilled({x - S(6), top}, {x + S(6), top}, {x, top + S(9)}, red);
}

void cPage::DrawHand(ImDrawList &list)
{
    list.PushClipRect({mRuler.mMin.x, mRuler.mMin.y}, mTimeline.mMax, true);
    if (mHand.mKind == cHand::BOX && mHand.mHasMoved) {
        // Its first corner stays at its place in the show, wherever the page has gone.
        const ImVec2 from(float(mView.X(mHand.mStartRow)),
                          mHand.mStart.y + float(mHand.mStartScroll - mScroll));
        const ImVec2 to = Pointer();
        const ImVec2 low(std::min(from.x, to.x), std::min(from.y, to.y)),
            high(std::max(from.x, to.x), std::max(from.y, to.y));
        list.AddRectFilled(low, high, Faded(amber, 0.18));
        list.AddRect(low, high, amber);
    }
    if (mSnappedRow && mHand.mHasMoved) {
        const float x = float(mView.X(*mSnappedRow));
        list.AddLine({x, mRuler.mMax.y}, {x, mTimeline.mMax.y}, Faded(red, 0.5));
    }
    list.PopClipRect();
}
} // namespace studio
