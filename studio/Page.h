#pragma once

#include "studio/Commands.h"
#include "studio/Events.h"
#include "studio/Gesture.h"
#include "studio/Gui.h"
#include "studio/Picker.h"
#include "studio/Snap.h"
#include "studio/Studio.h"
#include "studio/TimeView.h"
#include "tools/timeline/Sections.h"

#include <imgui.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace studio
{
enum class eFollow
{
    Off,
    Page,
    Smooth
};

/// What one sees of the studio, and what a hand does there. One ImGui frame a call of Draw; between
/// calls it keeps what is zoomed, scrolled, typed and dragged, and nothing of the show.
class cPage
{
public:
    /// `folder`: where stills and recordings go.
    cPage(cStudio &studio, cGui &gui, double scale, std::filesystem::path folder);

    /// Between Begin and End of the gui, with the events of the frame.
    void Draw(const std::vector<cEvent> &events);

    bool IsTyping() const; ///< keys belong to a field
    bool IsQuitAsked() const { return mIsQuitAsked; }

    /// Measured times are left out of the page, so that it looks the same in every run.
    void LeaveOutTimes() { mHasTimes = false; }

    // Where things are on the page, in pixels: for scripts. Where it is not on the page, it is
    // brought there.
    ImVec2 PointOnRuler(double row);
    /// Of a lane at `row`: at its key there, else on its curve; or where its values are `value`.
    /// False when there is no such lane.
    bool PointOnLane(const std::string &track, double row, std::optional<double> value,
                     ImVec2 &point);

private:
    struct cArea
    {
        ImVec2 mMin, mMax;
        float Width() const { return mMax.x - mMin.x; }
        float Height() const { return mMax.y - mMin.y; }
        bool Has(ImVec2 p) const
        {
            return p.x >= mMin.x && p.x < mMax.x && p.y >= mMin.y && p.y < mMax.y;
        }
    };

    /// A key that moves with the hand.
    struct cHeld
    {
        std::string mTrack;
        int mRow = 0;         ///< before
        bool mIsCopy = false; ///< not selected, but of the same line as one that is
    };

    /// What the pointer is doing.
    struct cHand
    {
        enum eKind
        {
            NOTHING,
            SCRUB,
            BOX,
            MOVE,
            STRETCH,
            PAN,
            LOOP_BEGIN,
            LOOP_END,
            REGION,
            SPLIT
        };
        eKind mKind = NOTHING;
        ImVec2 mStart;             ///< where it went down
        double mStartRow = 0.0;    ///< time there
        bool mHasMoved = false;    ///< far enough to be no click
        std::string mTrack;        ///< of the key that it holds
        int mKeyRow = 0;           ///< that key's
        float mKeyValue = 0.0f;    ///< and its value
        double mPerPixel = 0.0;    ///< value of one pixel of its lane
        int mPivot = 0, mEdge = 0; ///< of a stretch: the row that stays, and the one that is held
        double mStartScroll = 0.0;
        cStudio::tSelection mBefore;    ///< what was selected
        timeline::tKeyIds mKeys;        ///< that it drags
        std::vector<cHeld> mHeld;       ///< these, and their copies
        double mFactor = 1.0;           ///< of a stretch
        timeline::cEdits mEdits;        ///< what letting go will do
        int mRows = 0, mGeneration = 0; ///< that they were made of, with the value
        double mValue = 0.0;
        std::string mWhat; ///< shown beside the pointer
    };

    struct cPlace
    {
        cLane *mLane = nullptr;
        cArea mArea;
    };

    // Layout and widgets (Page.cpp)
    void Layout();
    void DrawToolbar();
    void DrawPreview();
    void DrawSide();
    void DrawSelectedKey();
    void DrawProblems();
    void DrawStatus();
    void DrawPopups();
    void DrawTypePopup();
    void DrawRecordPopup();
    void DrawHelp();
    void DrawMenu();

    // The timeline (PageLanes.cpp)
    void DrawTimeline();
    void DrawGrid(ImDrawList &list);
    void DrawRuler(ImDrawList &list);
    void DrawRegion(ImDrawList &list);
    void DrawMusic(ImDrawList &list);
    void DrawWords(ImDrawList &list);
    void DrawLanes(ImDrawList &list);
    void DrawLaneHead(ImDrawList &list, const cPlace &place);
    void DrawLaneBody(ImDrawList &list, const cPlace &place);
    void DrawBlocks(ImDrawList &list, const cPlace &place);
    void DrawCurve(ImDrawList &list, const cPlace &place, ImU32 color);
    void DrawKeys(ImDrawList &list, const cPlace &place, ImU32 color);
    void DrawPlayhead(ImDrawList &list);
    void DrawHand(ImDrawList &list);
    std::vector<cPlace> PlaceLanes();
    cValueView ValuesOf(const cPlace &place) const;
    std::vector<cPlacedKey> KeysOn(const cPlace &place) const;
    std::string NameOf(const cLane &lane, float value) const;

    // What is asked for (PageCommands.cpp)
    void HandleKeys(const std::vector<cEvent> &events);
    void Do(eCommand command);
    void Edit(eCommand command);
    void SaveStill();
    void AskToRecord();
    void StepToKey(int direction);
    void StepToSection(int direction);
    int GridRows() const;

    // The hand (PageHand.cpp)
    void HandlePointer();
    void HandleWheel();
    void BeginGesture();
    void BeginOnRuler();
    void BeginOnLanes();
    void BeginMove(const cPlace &place, timeline::cKeyId key);
    void Hold();
    int HeldRow(const cHeld &held) const;
    void UpdateGesture();
    bool AreKeysThere(const timeline::tKeyIds &keys) const;
    void UpdateMove();
    void UpdateStretch();
    void UpdateBox();
    void UpdateRegion();
    void AutoScroll();
    void EndGesture();
    void CancelGesture();
    void AddAtPointer();
    void Hover();
    void OpenTypePopup();
    void FollowPlayhead();
    const cPlace *PlaceAt(ImVec2 point) const;
    void PrepareSnapping();
    int SnapRow(double x);
    float S(double pixels) const { return float(pixels * mScale); }
    ImVec2 Pointer() const { return ImGui::GetIO().MousePos; }

    cStudio &mStudio;
    cGui &mGui;
    const double mScale;
    const std::filesystem::path mFolder;
    cTimeView mView;
    cSnapper mSnapper;
    cPicker mPicker;
    cHand mHand;
    eFollow mFollow = eFollow::Page;
    bool mIsSnapping = true, mIsFitted = true, mIsHelpOpen = false;
    int mGrid = 1;          ///< 0 rows, 1 beats, 2 bars
    float mSplit = 0.46f;   ///< of the height, for the picture
    double mScroll = 0.0;   ///< of the lanes, pixels
    double mShownRow = 0.0; ///< of the playhead, in the frame before
    char mSearch[128] = "";
    bool mIsSearchAsked = false;
    std::vector<timeline::cSectionSpan> mSections;
    tProblems mProblems;         ///< of this frame
    std::vector<cPlace> mPlaces; ///< lanes on the page
    cArea mToolbar, mPicture, mSide, mTimeline, mRuler, mMusicStrip, mWordStrip, mLaneArea, mStatus;
    bool mIsOverTimeline = false;
    timeline::cKeyId mHovered;
    cStudio::tSelection mCopies; ///< that light up beside the selected and the hovered key
    timeline::cKeyId mTyped;
    char mTypedTime[64] = "", mTypedValue[64] = "";
    int mTypedType = 0;
    char mRecordFile[512] = "";
    double mRecordFrom = 0.0, mRecordTo = 0.0;
    std::optional<int> mSnappedRow; ///< shown as a line while something snaps to it
    const char *mAskedPopup = nullptr;
    bool mIsQuitAsked = false, mHasTimes = true, mIsFirst = true;
};
} // namespace studio
