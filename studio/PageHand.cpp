#include "studio/Page.h"

#include "show/Time.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace studio
{
namespace
{
const double clickPixels = 3.0; ///< a hand that moves less has clicked
const double edgePixels = 6.0;  ///< around what can be taken at its edge

bool IsNoKey(const timeline::cKeyId &key) { return key.mLine == timeline::kNoLine; }
} // namespace

// Only what plays, or has jumped, takes the page along: an undo never does.
void cPage::FollowPlayhead()
{
    const cTransport &transport = mStudio.Transport();
    const double row = transport.Row();
    const bool hasJumped = row != mShownRow && !transport.IsPlaying();
    mShownRow = row;
    if (mFollow == eFollow::Off || mHand.mKind != cHand::NOTHING)
        return;
    const double x = mView.X(row);
    const bool isAway = x < mView.Left() || x > mView.Right();
    if (mFollow == eFollow::Smooth && transport.IsPlaying())
        mView.Pan(x - (mView.Left() + mView.Right()) / 2.0);
    else if (isAway && transport.IsPlaying())
        mView.Pan(x - mView.Left() - 0.1 * (mView.Right() - mView.Left()));
    else if (isAway && hasJumped)
        mView.Reveal(row);
}

// Pointer ----------------------------------------------------------------------------------------

const cPage::cPlace *cPage::PlaceAt(ImVec2 point) const
{
    if (!mLaneArea.Has(point))
        return nullptr;
    for (const cPlace &place : mPlaces)
        if (place.mArea.Has(point))
            return &place;
    return nullptr;
}

void cPage::PrepareSnapping()
{
    mSnapper.SetOn(mIsSnapping);
    mSnapper.SetPlayhead(int(std::lround(mStudio.Transport().Row())));
    std::vector<int> sections, keys;
    for (const timeline::cSectionSpan &section : mSections) {
        sections.push_back(int(section.mFrom));
        sections.push_back(int(section.mTo));
    }
    if (const auto &region = mStudio.Transport().Region()) {
        sections.push_back(region->mFrom);
        sections.push_back(region->mTo);
    }
    for (cLane *lane : mStudio.Lanes().Shown(mSearch))
        for (size_t i = 0; i < lane->mIds.size() && i < lane->mCurve.Keys().size(); i++)
            if (!mStudio.IsSelected(lane->mIds[i]))
                keys.push_back(lane->mCurve.Keys()[i].row);
    std::ranges::sort(keys);
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    mSnapper.SetSections(std::move(sections));
    mSnapper.SetKeys(std::move(keys));
}

int cPage::SnapRow(double x)
{
    const cSnapped snapped = mSnapper.Snap(mView, x, ImGui::GetIO().KeyCtrl);
    mSnappedRow.reset();
    if (snapped.mTo != eSnap::None)
        mSnappedRow = snapped.mRow;
    return snapped.mRow;
}

void cPage::HandlePointer()
{
    if (mHand.mKind != cHand::NOTHING) {
        const bool isHeld = ImGui::IsMouseDown(mHand.mKind == cHand::PAN ? 2 : 0);
        if (ImGui::IsMouseClicked(1))
            return CancelGesture();
        return isHeld ? UpdateGesture() : EndGesture();
    }
    mHovered = {};
    mCopies.clear();
    if (mStudio.Selection().size() <= 64)
        for (const timeline::cKeyId &key : mStudio.Selection()) {
            const auto copies = mStudio.Document().CopiesOf(key);
            if (copies.size() > 1)
                mCopies.insert(copies.begin(), copies.end());
        }
    if (!mIsOverTimeline)
        return;
    HandleWheel();
    Hover();
    if (ImGui::IsMouseClicked(0) || ImGui::IsMouseClicked(1) || ImGui::IsMouseClicked(2))
        BeginGesture();
}

void cPage::HandleWheel()
{
    const ImGuiIO &io = ImGui::GetIO();
    const double x = double(Pointer().x), steps = double(io.MouseWheel);
    if (io.MouseWheelH != 0.0f)
        mView.Pan(-double(io.MouseWheelH) * 60.0 * mScale);
    if (steps == 0.0)
        return;
    const cPlace *place = PlaceAt(Pointer());
    const bool isOverRuler = Pointer().y < mLaneArea.mMin.y;
    if (io.KeyCtrl || (isOverRuler && !io.KeyShift))
        return mView.Zoom(x, std::pow(1.2, steps));
    if (io.KeyShift)
        return mView.Pan(-steps * 60.0 * mScale);
    if (io.KeyAlt && place) {
        cValueView values = ValuesOf(*place);
        values.Zoom(double(Pointer().y), std::pow(1.2, steps));
        place->mLane->mLow = float(values.mLow);
        place->mLane->mHigh = float(values.mHigh);
        return;
    }
    mScroll -= steps * 40.0 * mScale;
}

void cPage::Hover()
{
    const cPlace *place = PlaceAt(Pointer());
    if (!place)
        return;
    const vyr::cTempo &tempo = mStudio.Transport().Tempo();
    const auto keys = mPicker.KeysAt(KeysOn(*place), {double(Pointer().x), double(Pointer().y)});
    if (keys.empty()) {
        const double row =
            std::clamp(mView.Row(double(Pointer().x)), 0.0, mStudio.Transport().LastRow());
        ImGui::SetTooltip("%s   %s", vyr::FormatRow(int(row), tempo).c_str(),
                          NameOf(*place->mLane, place->mLane->mCurve.Value(row)).c_str());
        return;
    }
    mHovered = keys.front();
    const timeline::cShowKey *key = mStudio.Document().FindKey(mHovered);
    if (!key)
        return;
    const timeline::cKeyText text = mStudio.Document().Describe(mHovered);
    const auto copies = mStudio.Document().CopiesOf(mHovered);
    if (copies.size() > 1)
        mCopies.insert(copies.begin(), copies.end());
    const std::string name = NameOf(*place->mLane, key->mKey.value),
                      value = vyr::FormatValue(key->mKey.value);
    const std::string line(mStudio.Document().Lines().Content(text.mLine - 1));
    std::string more;
    if (copies.size() > 1)
        more.append("\n")
            .append(std::to_string(copies.size()))
            .append(" copies of section ")
            .append(text.mSection);
    if (!text.mFixed.empty())
        more.append("\n").append(text.mFixed);
    if (!mStudio.TimelinePath().empty())
        more.append("\nline ").append(std::to_string(text.mLine)).append(": ").append(line);
    ImGui::SetTooltip("%s   %s%s%s   %s%s", vyr::FormatRow(key->mKey.row, tempo).c_str(),
                      value.c_str(), name == value ? "" : "  ", name == value ? "" : name.c_str(),
                      timeline::kInterpolations[key->mKey.type], more.c_str());
}

void cPage::BeginGesture()
{
    mHand = {};
    mHand.mStart = Pointer();
    mHand.mStartRow = mView.Row(double(Pointer().x));
    mHand.mStartScroll = mScroll;
    mHand.mBefore = mStudio.Selection();
    if (ImGui::IsMouseClicked(2)) {
        mHand.mKind = cHand::PAN;
        return;
    }
    if (std::abs(Pointer().y - mTimeline.mMin.y) < S(edgePixels)) {
        mHand.mKind = cHand::SPLIT;
        return;
    }
    PrepareSnapping();
    if (Pointer().x < mLaneArea.mMin.x)
        return; // names and their buttons
    if (Pointer().y < mLaneArea.mMin.y)
        return BeginOnRuler();
    BeginOnLanes();
}

void cPage::BeginOnRuler()
{
    if (!ImGui::IsMouseClicked(0))
        return;
    const double x = double(Pointer().x), reach = edgePixels * mScale;
    const auto isNear = [&](double row) { return std::abs(mView.X(row) - x) <= reach; };
    const auto &region = mStudio.Transport().Region();
    int first = 0, last = 0;
    const bool isOnBar = Pointer().y > mRuler.mMax.y - S(10) && Pointer().y <= mRuler.mMax.y + S(2);
    const bool canStretch = isOnBar && mStudio.Selection().size() > 1 &&
                            mStudio.SelectedRows(first, last) && first < last;
    if (canStretch && (isNear(first) || isNear(last))) {
        mHand.mKind = cHand::STRETCH;
        mHand.mEdge = isNear(last) ? last : first;
        mHand.mPivot = isNear(last) ? first : last;
        Hold();
        mStudio.BeginDrag();
    } else if (ImGui::GetIO().KeyShift) {
        mHand.mKind = cHand::REGION;
    } else if (region && Pointer().y < mRuler.mMin.y + S(30) && isNear(region->mFrom)) {
        mHand.mKind = cHand::LOOP_BEGIN;
    } else if (region && Pointer().y < mRuler.mMin.y + S(30) && isNear(region->mTo)) {
        mHand.mKind = cHand::LOOP_END;
    } else {
        mHand.mKind = cHand::SCRUB;
        mStudio.Transport().BeginScrub();
        UpdateGesture();
    }
}

void cPage::BeginOnLanes()
{
    const ImGuiIO &io = ImGui::GetIO();
    const cPlace *place = PlaceAt(Pointer());
    const cPoint at{double(Pointer().x), double(Pointer().y)};
    const bool isRight = ImGui::IsMouseClicked(1);
    const timeline::cKeyId key = place ? mPicker.Click(KeysOn(*place), at) : timeline::cKeyId{};
    if (IsNoKey(key)) {
        if (isRight) {
            mAskedPopup = "menu";
        } else if (place && (io.KeyCtrl || ImGui::IsMouseDoubleClicked(0))) {
            AddAtPointer();
        } else {
            mHand.mKind = cHand::BOX;
            if (!io.KeyShift && !io.KeyCtrl)
                mStudio.Select({});
        }
        return;
    }
    if (ImGui::IsMouseDoubleClicked(0)) {
        mStudio.Select({key});
        return OpenTypePopup();
    }
    if (io.KeyShift || (io.KeyCtrl && isRight)) {
        cStudio::tSelection selection = mStudio.Selection();
        if (!selection.insert(key).second)
            selection.erase(key);
        mStudio.Select(std::move(selection));
    } else if (!mStudio.IsSelected(key)) {
        mStudio.Select({key});
    }
    if (isRight) {
        mAskedPopup = "menu";
        return;
    }
    if (mStudio.IsSelected(key))
        BeginMove(*place, key);
}

void cPage::BeginMove(const cPlace &place, timeline::cKeyId id)
{
    const timeline::cShowKey *key = mStudio.Document().FindKey(id);
    if (!key)
        return;
    PrepareSnapping(); // without what is selected now
    mHand.mKind = cHand::MOVE;
    mHand.mTrack = place.mLane->mTrack;
    mHand.mKeyRow = key->mKey.row;
    mHand.mKeyValue = key->mKey.value;
    const cValueView values = ValuesOf(place);
    mHand.mPerPixel = (values.mHigh - values.mLow) / std::max(values.mHeight, 1.0);
    Hold();
    mStudio.BeginDrag();
}

// What the hand has now, once for all of the drag.
void cPage::Hold()
{
    mHand.mKeys = mStudio.SelectedIds();
    mCopies.clear();
    for (const timeline::cKeyId &selected : mHand.mKeys) {
        const auto copies = mStudio.Document().CopiesOf(selected);
        if (copies.size() > 1)
            mCopies.insert(copies.begin(), copies.end());
    }
    for (const timeline::cShowTrack &track : mStudio.Document().Tracks())
        for (const timeline::cShowKey &key : track.mKeys)
            if (mStudio.IsSelected(key.mId) || mCopies.count(key.mId))
                mHand.mHeld.push_back({track.mName, key.mKey.row, !mStudio.IsSelected(key.mId)});
}

// Where a held key lies while the hand drags. Copies go as far as the key that is dragged.
int cPage::HeldRow(const cHeld &held) const
{
    if (mHand.mKind == cHand::STRETCH)
        return int(std::lround(mHand.mPivot + (held.mRow - mHand.mPivot) * mHand.mFactor));
    return held.mRow + mHand.mRows;
}

bool cPage::AreKeysThere(const timeline::tKeyIds &keys) const
{
    return std::ranges::all_of(keys, [this](const timeline::cKeyId &key) {
        return mStudio.Document().FindKey(key) != nullptr;
    });
}

void cPage::UpdateGesture()
{
    const ImVec2 by(Pointer().x - mHand.mStart.x, Pointer().y - mHand.mStart.y);
    if (std::hypot(double(by.x), double(by.y)) > clickPixels * mScale)
        mHand.mHasMoved = true;
    const ImVec2 delta = ImGui::GetIO().MouseDelta;
    switch (mHand.mKind) {
    case cHand::NOTHING:
        return;
    case cHand::PAN:
        mView.Pan(-double(delta.x));
        mScroll -= double(delta.y);
        return;
    case cHand::SCRUB: {
        AutoScroll();
        // Without snapping the playhead stands anywhere, between rows too.
        const double x = double(Pointer().x);
        const bool isSnapping = mIsSnapping != ImGui::GetIO().KeyCtrl;
        return mStudio.Transport().ScrubTo(isSnapping ? double(SnapRow(x)) : mView.Row(x));
    }
    case cHand::SPLIT: {
        const float room = mStatus.mMin.y - mToolbar.mMax.y;
        mSplit = std::clamp((Pointer().y - mToolbar.mMax.y) / std::max(room, 1.0f), 0.1f, 0.8f);
        return;
    }
    case cHand::BOX:
        AutoScroll();
        return UpdateBox();
    case cHand::MOVE:
        AutoScroll();
        return UpdateMove();
    case cHand::STRETCH:
        return UpdateStretch();
    case cHand::LOOP_BEGIN:
    case cHand::LOOP_END:
    case cHand::REGION:
        return UpdateRegion();
    }
}

void cPage::AutoScroll()
{
    if (!mHand.mHasMoved)
        return;
    const double step = 12.0 * mScale;
    if (Pointer().x < mLaneArea.mMin.x)
        mView.Pan(-step);
    if (Pointer().x > mLaneArea.mMax.x)
        mView.Pan(step);
    if (mHand.mKind == cHand::SCRUB)
        return;
    if (mHand.mKind == cHand::BOX && Pointer().y < mLaneArea.mMin.y)
        mScroll -= step;
    if (mHand.mKind == cHand::BOX && Pointer().y > mLaneArea.mMax.y)
        mScroll += step;
}

// Shift keeps to the axis that the hand has moved along more.
void cPage::UpdateMove()
{
    if (!mHand.mHasMoved)
        return;
    const ImGuiIO &io = ImGui::GetIO();
    double x = double(Pointer().x) - mView.X(mHand.mStartRow),
           y = double(mHand.mStart.y - Pointer().y);
    const bool isAlongTime = std::abs(x) >= std::abs(y);
    // A hand that means the time only is not steady.
    if (std::abs(y) < 4.0 * mScale || (io.KeyShift && isAlongTime))
        y = 0.0;
    if (io.KeyShift && !isAlongTime)
        x = 0.0;
    int rows = 0;
    if (x != 0.0)
        rows = SnapRow(mView.X(mHand.mKeyRow) + x) - mHand.mKeyRow;
    cLane *lane = mStudio.Lanes().Find(mHand.mTrack);
    const double value = lane && y != 0.0 ? DraggedValue(*lane, double(mHand.mKeyValue), y,
                                                         mHand.mPerPixel, io.KeyCtrl)
                                          : double(mHand.mKeyValue);
    // Nothing is worked out anew while hand and text stand still.
    const bool isSame = !mHand.mEdits.IsEmpty() && rows == mHand.mRows && value == mHand.mValue &&
                        mStudio.Generation() == mHand.mGeneration;
    if (isSame)
        return;
    mHand.mValue = value;
    mHand.mGeneration = mStudio.Generation();
    if (!AreKeysThere(mHand.mKeys))
        return; // somebody has changed them: letting go will say so
    const timeline::cEdits edits =
        MoveEdits(mStudio.Document(), mHand.mKeys, rows,
                  float(value) == mHand.mKeyValue ? 0.0 : value - double(mHand.mKeyValue));
    if (!mStudio.Drag(edits))
        return;
    mHand.mEdits = edits;
    mHand.mRows = rows;
    mHand.mWhat = vyr::FormatRow(mHand.mKeyRow + rows, mStudio.Transport().Tempo()) + "   " +
                  (lane ? NameOf(*lane, float(value)) : "");
    if (mCopies.size() > mStudio.Selection().size())
        mHand.mWhat += "   " + std::to_string(mCopies.size()) + " keys of repeated sections change";
}

void cPage::UpdateStretch()
{
    if (!mHand.mHasMoved)
        return;
    const int row = SnapRow(double(Pointer().x));
    const double factor = double(row - mHand.mPivot) / double(mHand.mEdge - mHand.mPivot);
    if (factor <= 0.0)
        return;
    if (!AreKeysThere(mHand.mKeys))
        return;
    const timeline::cEdits edits =
        timeline::StretchKeys(mStudio.Document(), mHand.mKeys, mHand.mPivot, factor);
    if (!mStudio.Drag(edits))
        return;
    mHand.mEdits = edits;
    mHand.mFactor = factor;
    char text[48];
    std::snprintf(text, sizeof text, "%.4g times as long", factor);
    mHand.mWhat = text;
}

void cPage::UpdateBox()
{
    if (!mHand.mHasMoved)
        return;
    const ImGuiIO &io = ImGui::GetIO();
    const cPoint corner{mView.X(mHand.mStartRow),
                        double(mHand.mStart.y) + mHand.mStartScroll - mScroll},
        other{double(Pointer().x), double(Pointer().y)};
    cStudio::tSelection selection =
        io.KeyShift || io.KeyCtrl ? mHand.mBefore : cStudio::tSelection{};
    // Lanes that have been scrolled away are in the box too.
    const std::vector<cLane *> shown = mStudio.Lanes().Shown(mSearch);
    const double step = mPlaces.size() > 1
                            ? double(mPlaces[1].mArea.mMin.y - mPlaces[0].mArea.mMin.y)
                            : double(mLaneArea.Height());
    const double height = mPlaces.empty() ? 0.0 : double(mPlaces[0].mArea.Height());
    for (size_t i = 0; i < shown.size(); i++) {
        const float top = float(double(mLaneArea.mMin.y) + double(i) * step - mScroll);
        const cPlace place{shown[i],
                           {{mLaneArea.mMin.x, top}, {mLaneArea.mMax.x, top + float(height)}}};
        const cValueView values = ValuesOf(place);
        std::vector<cPlacedKey> keys;
        const auto &all = shown[i]->mCurve.Keys();
        for (size_t key = 0; key < shown[i]->mIds.size() && key < all.size(); key++)
            keys.push_back(
                {shown[i]->mIds[key], {mView.X(all[key].row), values.Y(double(all[key].value))}});
        for (const timeline::cKeyId &key : cPicker::KeysIn(keys, corner, other))
            io.KeyCtrl ? void(selection.erase(key)) : void(selection.insert(key));
    }
    mStudio.Select(std::move(selection));
}

void cPage::UpdateRegion()
{
    cTransport &transport = mStudio.Transport();
    const int last = int(transport.LastRow());
    const int row = std::clamp(SnapRow(double(Pointer().x)), 0, last);
    int from = int(std::lround(mHand.mStartRow)), to = row;
    if (mHand.mKind == cHand::LOOP_BEGIN) {
        from = row;
        to = transport.Region()->mTo;
    } else if (mHand.mKind == cHand::LOOP_END) {
        from = transport.Region()->mFrom;
    } else {
        from = mSnapper.Snap(mView, mView.X(mHand.mStartRow), ImGui::GetIO().KeyCtrl).mRow;
    }
    if (mHand.mKind == cHand::REGION && from > to)
        std::swap(from, to);
    if (from >= to || !mHand.mHasMoved)
        return;
    transport.SetRegion({std::max(from, 0), to});
    transport.SetLooping(true);
}

void cPage::EndGesture()
{
    const cHand hand = std::move(mHand);
    mHand = {};
    mSnappedRow.reset();
    if (hand.mKind == cHand::SCRUB)
        mStudio.Transport().EndScrub();
    if (hand.mKind != cHand::MOVE && hand.mKind != cHand::STRETCH)
        return;
    if (hand.mHasMoved && !hand.mEdits.IsEmpty())
        mStudio.EndDrag(hand.mEdits);
    else
        mStudio.CancelDrag();
}

void cPage::CancelGesture()
{
    if (mHand.mKind == cHand::MOVE || mHand.mKind == cHand::STRETCH)
        mStudio.CancelDrag();
    if (mHand.mKind == cHand::SCRUB)
        mStudio.Transport().EndScrub();
    if (mHand.mKind == cHand::BOX)
        mStudio.Select(mHand.mBefore);
    mHand = {};
    mSnappedRow.reset();
}

void cPage::AddAtPointer()
{
    const cPlace *place = PlaceAt(Pointer());
    const cValueView values = ValuesOf(*place);
    cLane &lane = *place->mLane;
    const double perPixel = (values.mHigh - values.mLow) / std::max(values.mHeight, 1.0);
    // Ctrl is held for the click, not against snapping.
    const int row = mSnapper.Snap(mView, double(Pointer().x), false).mRow;
    const double atPointer = values.Value(double(Pointer().y));
    const double value = lane.mCurve.Keys().empty()
                             ? RoundedTo(atPointer, perPixel)
                             : DraggedValue(lane, atPointer, 0.0, perPixel, false);
    mStudio.AddKey(lane.mTrack, row, float(value));
}
} // namespace studio
