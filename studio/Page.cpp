#include "studio/Page.h"

#include "show/Time.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace studio
{
namespace
{
const ImU32 ink = IM_COL32(0x2a, 0x2a, 0x28, 255), line = IM_COL32(0xd5, 0xcd, 0xb9, 255);

const char *const followNames[] = {"follow: off", "follow: page", "follow: smooth"};
const char *const gridNames[] = {"grid: row", "grid: beat", "grid: bar"};

// The picture's alpha is what its layers have left there, and no business of the page.
void WithoutBlending(const ImDrawList *, const ImDrawCmd *) { glDisable(GL_BLEND); }
void WithBlending(const ImDrawList *, const ImDrawCmd *) { glEnable(GL_BLEND); }

std::string MinutesAndSeconds(double seconds)
{
    char text[48];
    std::snprintf(text, sizeof text, "%d:%06.3f", int(seconds) / 60, std::fmod(seconds, 60.0));
    return text;
}

void Copy(const std::string &text, char *buffer, size_t size)
{
    std::snprintf(buffer, size, "%s", text.c_str());
}

ImTextureID ToTexture(unsigned int name)
{
    return reinterpret_cast<ImTextureID>(static_cast<intptr_t>(name));
}
} // namespace

cPage::cPage(cStudio &studio, cGui &gui, double scale, std::filesystem::path folder)
    : mStudio(studio), mGui(gui), mScale(scale), mFolder(std::move(folder)),
      mView(0.0, 1000.0, 0.0, studio.Transport().LastRow()), mSnapper(studio.Transport().Tempo()),
      mPicker(scale)
{}

bool cPage::IsTyping() const { return ImGui::GetIO().WantTextInput; }

void cPage::Layout()
{
    const ImVec2 size = ImGui::GetIO().DisplaySize;
    const float bar = S(40), status = S(26), side = std::min(S(340), size.x * 0.35f);
    const float middle = bar + (size.y - bar - status) * mSplit;
    mToolbar = {{0, 0}, {size.x, bar}};
    mPicture = {{0, bar}, {size.x - side, middle}};
    mSide = {{size.x - side, bar}, {size.x, middle}};
    mTimeline = {{0, middle}, {size.x, size.y - status}};
    mStatus = {{0, size.y - status}, {size.x, size.y}};
    const float left = S(170), right = size.x - S(12);
    float top = middle + S(6);
    const auto strip = [&](float height) {
        const cArea area{{left, top}, {right, top + height}};
        top += height;
        return area;
    };
    mRuler = strip(S(44));
    mMusicStrip = strip(S(46));
    mWordStrip = strip(mStudio.WordSpans().empty() ? 0.0f : S(18));
    mLaneArea = {{left, top + S(4)}, {right, size.y - status}};
    mView.Resize(double(left), double(std::max(right - left, 50.0f)));
    if (mIsFirst)
        mView.FitAll();
    mIsFirst = false;
}

void cPage::Draw(const std::vector<cEvent> &events)
{
    Layout();
    ImGui::SetNextWindowPos({0, 0});
    ImGui::SetNextWindowSize(ImGui::GetIO().DisplaySize);
    ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImVec2(0, 0));
    ImGui::PushStyleVar(ImGuiStyleVar_WindowRounding, 0.0f);
    ImGui::Begin("page", nullptr,
                 ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoMove |
                     ImGuiWindowFlags_NoBringToFrontOnFocus | ImGuiWindowFlags_NoNav |
                     ImGuiWindowFlags_NoScrollWithMouse);
    ImGui::PopStyleVar(2);
    mSections = timeline::SectionsOf(mStudio.Document().Timeline());
    mProblems = mStudio.Problems();
    HandleKeys(events);
    DrawToolbar();
    DrawPreview();
    DrawSide();
    DrawTimeline();
    DrawStatus();
    DrawPopups();
    ImGui::End();
    DrawHelp();
}

void cPage::DrawToolbar()
{
    cTransport &transport = mStudio.Transport();
    ImGui::SetCursorPos({S(10), S(7)});
    if (ImGui::Button(transport.IsPlaying() ? "Pause##play" : "Play##play", {S(70), 0}))
        Do(eCommand::PlayPause);
    ImGui::SameLine();
    ImGui::PushFont(mGui.Large());
    const ImVec2 at = ImGui::GetCursorScreenPos();
    const std::string time = vyr::FormatRow(int(transport.Row()), transport.Tempo());
    ImGui::GetWindowDrawList()->AddText({at.x + S(6), at.y - S(2)}, ink, time.c_str());
    ImGui::PopFont();
    ImGui::SetCursorPosX(S(210));
    char place[96];
    std::snprintf(place, sizeof place, "%s   row %.2f",
                  MinutesAndSeconds(transport.Tempo().Seconds(transport.Row())).c_str(),
                  transport.Row());
    ImGui::AlignTextToFramePadding();
    ImGui::TextUnformatted(place);
    ImGui::SameLine(S(410));
    bool isLooping = transport.IsLooping();
    if (ImGui::Checkbox("loop", &isLooping))
        Do(eCommand::Loop);
    ImGui::SameLine();
    bool areGrainsOn = transport.AreGrainsOn();
    if (ImGui::Checkbox("scrub sound", &areGrainsOn))
        transport.SetGrains(areGrainsOn);
    ImGui::SameLine();
    ImGui::Checkbox("snap", &mIsSnapping);
    ImGui::SameLine();
    if (ImGui::Button(gridNames[mGrid], {S(84), 0}))
        mGrid = (mGrid + 1) % 3;
    ImGui::SameLine();
    if (ImGui::Button(followNames[int(mFollow)], {S(118), 0}))
        Do(eCommand::Follow);
    ImGui::SameLine();
    if (ImGui::Button(mIsFitted ? "fitted" : "own size", {S(76), 0}))
        mIsFitted = !mIsFitted;
    ImGui::SameLine();
    ImGui::BeginDisabled(mStudio.TimelinePath().empty());
    if (ImGui::Button("Undo"))
        Do(eCommand::Undo);
    ImGui::SameLine();
    if (ImGui::Button("Redo"))
        Do(eCommand::Redo);
    ImGui::EndDisabled();
    ImGui::SameLine();
    if (ImGui::Button("Still"))
        Do(eCommand::Still);
    ImGui::SameLine();
    if (ImGui::Button("Record"))
        Do(eCommand::Record);
    ImGui::SameLine();
    if (ImGui::Button("Keys (F1)"))
        Do(eCommand::Help);
}

// The picture in its own pixels or as large as fits, with its own shape and black around it.
void cPage::DrawPreview()
{
    ImDrawList &list = *ImGui::GetWindowDrawList();
    list.AddRectFilled(mPicture.mMin, mPicture.mMax, IM_COL32(18, 18, 18, 255));
    const record::cSize size = mStudio.Preview().Size();
    const float fit =
        std::min(mPicture.Width() / float(size.mWidth), mPicture.Height() / float(size.mHeight));
    const float zoom = mIsFitted ? fit : 1.0f;
    const ImVec2 half(float(size.mWidth) * zoom / 2.0f, float(size.mHeight) * zoom / 2.0f);
    const ImVec2 middle(std::round((mPicture.mMin.x + mPicture.mMax.x) / 2.0f),
                        std::round((mPicture.mMin.y + mPicture.mMax.y) / 2.0f));
    list.PushClipRect(mPicture.mMin, mPicture.mMax, true);
    if (mStudio.Preview().IsLoaded()) {
        list.AddCallback(WithoutBlending, nullptr);
        list.AddImage(ToTexture(mStudio.Preview().Texture()),
                      {middle.x - half.x, middle.y - half.y},
                      {middle.x + half.x, middle.y + half.y}, {0, 1}, {1, 0});
        list.AddCallback(WithBlending, nullptr);
    } else {
        list.AddText({mPicture.mMin.x + S(16), mPicture.mMin.y + S(16)},
                     IM_COL32(250, 246, 236, 255), "the show can't be drawn: see its problems");
    }
    list.PopClipRect();
}

void cPage::DrawSide()
{
    ImGui::SetCursorPos(mSide.mMin);
    ImGui::PushStyleVar(ImGuiStyleVar_WindowPadding, ImVec2(S(12), S(8)));
    ImGui::BeginChild("side", {mSide.Width(), mSide.Height()}, false,
                      ImGuiWindowFlags_AlwaysUseWindowPadding);
    DrawSelectedKey();
    DrawProblems();
    ImGui::Spacing();
    char meter[96] = "flashes: play to measure";
    if (mStudio.Flashes() >= 0.0)
        std::snprintf(meter, sizeof meter, "flashes, worst second: %.1f of 3 allowed",
                      mStudio.Flashes());
    const bool isTooMany = mStudio.Flashes() > 3.0;
    ImGui::TextColored(isTooMany ? ImVec4(0.75f, 0.1f, 0.05f, 1) : ImVec4(0.3f, 0.3f, 0.28f, 1),
                       "%s", meter);
    const record::cSize size = mStudio.Preview().Size();
    if (mHasTimes)
        ImGui::TextDisabled("a frame of %dx%d takes %.1f ms", size.mWidth, size.mHeight,
                            mStudio.Preview().FrameSeconds() * 1000.0);
    ImGui::EndChild();
    ImGui::PopStyleVar();
    ImGui::GetWindowDrawList()->AddLine({mSide.mMin.x, mSide.mMin.y}, {mSide.mMin.x, mSide.mMax.y},
                                        line);
}

void cPage::DrawSelectedKey()
{
    const timeline::cDocument &document = mStudio.Document();
    const auto &selection = mStudio.Selection();
    ImGui::PushFont(mGui.Bold());
    if (selection.size() == 1)
        ImGui::TextUnformatted("selected key");
    else
        ImGui::Text("%d keys selected", int(selection.size()));
    ImGui::PopFont();
    const timeline::cShowKey *key =
        selection.size() == 1 ? document.FindKey(*selection.begin()) : nullptr;
    if (!key) {
        ImGui::TextWrapped("%s", mStudio.TimelinePath().empty()
                                     ? "This show does not say where its timeline is: look only."
                                     : mStudio.TimelinePath().filename().c_str());
        return;
    }
    const timeline::cKeyText text = document.Describe(key->mId);
    const cLane *lane = mStudio.Lanes().Find(text.mTrack);
    ImGui::Text("%s", text.mTrack.c_str());
    ImGui::Text("at %s", vyr::FormatRow(key->mKey.row, mStudio.Transport().Tempo()).c_str());
    const std::string value = vyr::FormatValue(key->mKey.value);
    const std::string name = lane ? NameOf(*lane, key->mKey.value) : "";
    ImGui::Text("value %s%s%s, %s", value.c_str(), name.empty() || name == value ? "" : "  ",
                name == value ? "" : name.c_str(), timeline::kInterpolations[key->mKey.type]);
    if (text.mCopies > 1)
        ImGui::TextWrapped("in section %s (line %d), put %d times: all change together",
                           text.mSection.c_str(), text.mSectionLine, text.mCopies);
    else if (!text.mSection.empty())
        ImGui::Text("in section %s (line %d)", text.mSection.c_str(), text.mSectionLine);
    ImGui::TextDisabled("%s:%d", mStudio.TimelinePath().filename().c_str(), text.mLine);
    const std::string content(document.Lines().Content(text.mLine - 1));
    ImGui::TextWrapped("%s", content.c_str());
    if (!text.mFixed.empty())
        ImGui::TextColored({0.75f, 0.1f, 0.05f, 1}, "%s", text.mFixed.c_str());
    if (ImGui::SmallButton("type"))
        OpenTypePopup();
    ImGui::SameLine();
    if (ImGui::SmallButton("open line"))
        mStudio.OpenEditor({mStudio.TimelinePath().string(), text.mLine, 1, "", ""});
    if (text.mCopies > 1) {
        ImGui::SameLine();
        if (ImGui::SmallButton("detach"))
            Do(eCommand::Detach);
    }
}

void cPage::DrawProblems()
{
    ImGui::Spacing();
    ImGui::PushFont(mGui.Bold());
    const tProblems &problems = mProblems;
    if (problems.empty())
        ImGui::TextUnformatted("no problems");
    else
        ImGui::TextColored({0.75f, 0.1f, 0.05f, 1}, "%d problems", int(problems.size()));
    ImGui::PopFont();
    int number = 0;
    for (const cProblem &problem : problems) {
        cProblem named = problem;
        named.mFile = std::filesystem::path(problem.mFile).filename().string();
        ImGui::PushID(number++);
        ImGui::PushTextWrapPos(0.0f);
        ImGui::TextWrapped("%s", named.ToLine().c_str());
        if (!problem.mFile.empty()) {
            if (ImGui::IsItemHovered())
                ImGui::SetTooltip("open %s", problem.mFile.c_str());
            if (ImGui::IsItemClicked())
                mStudio.OpenEditor(problem);
        }
        ImGui::PopTextWrapPos();
        ImGui::PopID();
    }
}

void cPage::DrawStatus()
{
    ImDrawList &list = *ImGui::GetWindowDrawList();
    list.AddRectFilled(mStatus.mMin, mStatus.mMax, IM_COL32(0xeb, 0xe5, 0xd6, 255));
    const std::string activity = mStudio.Activity();
    const std::string &text = !mHand.mWhat.empty() ? mHand.mWhat
                              : !activity.empty()  ? activity
                                                   : mStudio.Message();
    list.AddText({mStatus.mMin.x + S(12), mStatus.mMin.y + S(5)}, ink, text.c_str());
}

// Whatever has asked for one, it is opened here: a popup belongs to where it is opened.
void cPage::DrawPopups()
{
    if (mAskedPopup)
        ImGui::OpenPopup(mAskedPopup);
    mAskedPopup = nullptr;
    DrawTypePopup();
    DrawRecordPopup();
    DrawMenu();
}

void cPage::OpenTypePopup()
{
    if (mStudio.Selection().empty())
        return;
    const timeline::cShowKey *key = mStudio.Document().FindKey(*mStudio.Selection().begin());
    if (!key)
        return;
    mTyped = key->mId;
    const timeline::cKeyText text = mStudio.Document().Describe(mTyped);
    Copy(vyr::FormatRow(key->mKey.row, mStudio.Document().Tempo()), mTypedTime, sizeof mTypedTime);
    Copy(text.mValueName.empty() ? vyr::FormatValue(key->mKey.value) : text.mValueName, mTypedValue,
         sizeof mTypedValue);
    mTypedType = key->mKey.type;
    mAskedPopup = "type";
}

// Only what has been typed anew changes: the spelling of the rest stays.
void cPage::DrawTypePopup()
{
    ImGui::SetNextWindowPos({mTimeline.mMin.x + S(200), mTimeline.mMin.y - S(150)},
                            ImGuiCond_Appearing);
    if (!ImGui::BeginPopup("type"))
        return;
    const timeline::cShowKey *key = mStudio.Document().FindKey(mTyped);
    if (!key) {
        ImGui::CloseCurrentPopup();
        ImGui::EndPopup();
        return;
    }
    ImGui::TextUnformatted("time (bar:beat:row, row, or 12.5s)");
    if (ImGui::IsWindowAppearing())
        ImGui::SetKeyboardFocusHere(1);
    ImGui::InputText("##time", mTypedTime, sizeof mTypedTime);
    ImGui::TextUnformatted("value, or a name of the timeline");
    ImGui::InputText("##value", mTypedValue, sizeof mTypedValue, ImGuiInputTextFlags_AutoSelectAll);
    ImGui::Combo("##type", &mTypedType, timeline::kInterpolations, 4);
    // The key that has opened it is no answer yet.
    const auto isPressed = [](ImGuiKey pressed) {
        return !ImGui::IsWindowAppearing() &&
               ImGui::IsKeyPressed(ImGui::GetKeyIndex(pressed), false);
    };
    const bool isDone =
        ImGui::Button("Change") || isPressed(ImGuiKey_Enter) || isPressed(ImGuiKey_KeyPadEnter);
    ImGui::SameLine();
    if (ImGui::Button("Leave it"))
        ImGui::CloseCurrentPopup();
    if (isDone) {
        const timeline::cKeyText text = mStudio.Document().Describe(mTyped);
        const std::string time = vyr::FormatRow(key->mKey.row, mStudio.Document().Tempo());
        const std::string value =
            text.mValueName.empty() ? vyr::FormatValue(key->mKey.value) : text.mValueName;
        mStudio.Retype(mTyped, time == mTypedTime ? "" : mTypedTime,
                       value == mTypedValue ? "" : mTypedValue,
                       mTypedType == key->mKey.type ? "" : timeline::kInterpolations[mTypedType]);
        ImGui::CloseCurrentPopup();
    }
    ImGui::EndPopup();
}

void cPage::DrawRecordPopup()
{
    ImGui::SetNextWindowPos({mPicture.mMin.x + S(80), mPicture.mMin.y + S(40)},
                            ImGuiCond_Appearing);
    if (!ImGui::BeginPopup("record"))
        return;
    const vyr::cTempo &tempo = mStudio.Transport().Tempo();
    ImGui::Text("record %s to %s", vyr::FormatRow(int(mRecordFrom), tempo).c_str(),
                vyr::FormatRow(int(mRecordTo), tempo).c_str());
    ImGui::SetNextItemWidth(S(420));
    if (ImGui::IsWindowAppearing())
        ImGui::SetKeyboardFocusHere();
    const bool isEntered = ImGui::InputText("##file", mRecordFile, sizeof mRecordFile,
                                            ImGuiInputTextFlags_EnterReturnsTrue);
    const std::filesystem::path file = mFolder / mRecordFile;
    std::error_code ignored;
    ImGui::TextDisabled("%s", std::filesystem::exists(file, ignored)
                                  ? "it is there, and is replaced"
                                  : "in the folder that the "
                                    "studio was started from");
    if (ImGui::Button("Record##now") || isEntered) {
        mStudio.Record(file, mRecordFrom, mRecordTo);
        ImGui::CloseCurrentPopup();
    }
    ImGui::SameLine();
    if (ImGui::Button("Cancel"))
        ImGui::CloseCurrentPopup();
    ImGui::EndPopup();
}

void cPage::DrawMenu()
{
    if (!ImGui::BeginPopup("menu"))
        return;
    const bool isAny = !mStudio.Selection().empty();
    const auto item = [this](const char *text, const char *keys, eCommand command, bool isOn) {
        if (ImGui::MenuItem(text, keys, false, isOn))
            Do(command);
    };
    item("Type time and value ...", "Enter", eCommand::Type, isAny);
    ImGui::Separator();
    item("Hold", "1", eCommand::Hold, isAny);
    item("Linear", "2", eCommand::Linear, isAny);
    item("Smoothstep", "3", eCommand::Smoothstep, isAny);
    item("Quadratic", "4", eCommand::Quadratic, isAny);
    ImGui::Separator();
    item("Cut", "Ctrl+X", eCommand::Cut, isAny);
    item("Copy", "Ctrl+C", eCommand::Copy, isAny);
    item("Paste at the playhead", "Ctrl+V", eCommand::Paste, true);
    item("Duplicate", "Ctrl+D", eCommand::Duplicate, isAny);
    item("Delete", "Del", eCommand::Delete, isAny);
    item("To the grid", "Q", eCommand::Quantise, isAny);
    item("Detach this copy", "Ctrl+T", eCommand::Detach, isAny);
    ImGui::Separator();
    item("Insert time at the playhead", "I", eCommand::InsertTime, true);
    item("Delete time there", "Shift+I", eCommand::DeleteTime, true);
    ImGui::EndPopup();
}

void cPage::DrawHelp()
{
    if (!mIsHelpOpen)
        return;
    const ImVec2 size = ImGui::GetIO().DisplaySize;
    ImGui::SetNextWindowPos({size.x / 2, size.y / 2}, ImGuiCond_Always, {0.5f, 0.5f});
    ImGui::Begin("Keys", &mIsHelpOpen,
                 ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoCollapse);
    ImGui::SetWindowFocus();
    if (ImGui::BeginTable("keys", 4, ImGuiTableFlags_SizingFixedFit)) {
        int column = 0;
        for (const cBinding &binding : Bindings()) {
            if (!*binding.mKeys)
                continue;
            if (column++ % 2 == 0)
                ImGui::TableNextRow();
            ImGui::TableNextColumn();
            ImGui::PushFont(mGui.Bold());
            ImGui::TextUnformatted(binding.mKeys);
            ImGui::PopFont();
            ImGui::TableNextColumn();
            ImGui::Text("%s    ", binding.mText);
        }
        ImGui::EndTable();
    }
    ImGui::Separator();
    for (const char *text :
         {"Ruler: drag scrubs, Shift+drag marks the loop, wheel zooms.",
          "Lanes: drag selects, a key drags; Shift adds, or keeps to one axis; Ctrl inverts "
          "snapping.",
          "Double click or Ctrl+click on an empty place adds a key; double click on one types.",
          "Middle drag pans. Wheel scrolls; with Ctrl it zooms, with Shift pans, with Alt zooms "
          "values.",
          "The ends of the bar over a selection stretch it. Right click: menu."})
        ImGui::TextUnformatted(text);
    ImGui::End();
}
} // namespace studio
