#include "studio/Gui.h"

#include "studio/Window.h"

#include <backends/imgui_impl_glfw.h>
#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cfloat>
#include <filesystem>

namespace studio
{
namespace
{
const char *const fontFolder = "/usr/share/fonts/truetype/dejavu/";

// Paper and ink: the look of the plots that vyr-tracks draws.
void SetColors(ImGuiStyle &style)
{
    const ImVec4 paper(0.980f, 0.965f, 0.925f, 1.0f), ink(0.165f, 0.165f, 0.157f, 1.0f),
        line(0.835f, 0.804f, 0.725f, 1.0f), white(1.0f, 1.0f, 1.0f, 0.75f),
        petrol(0.118f, 0.310f, 0.353f, 1.0f), amber(1.0f, 0.702f, 0.278f, 1.0f);
    const auto faded = [](ImVec4 color, float alpha) {
        color.w = alpha;
        return color;
    };
    ImGui::StyleColorsLight(&style);
    ImVec4 *colors = style.Colors;
    colors[ImGuiCol_Text] = ink;
    colors[ImGuiCol_TextDisabled] = ImVec4(0.42f, 0.40f, 0.36f, 1.0f);
    colors[ImGuiCol_WindowBg] = paper;
    colors[ImGuiCol_PopupBg] = paper;
    colors[ImGuiCol_Border] = line;
    colors[ImGuiCol_FrameBg] = white;
    colors[ImGuiCol_FrameBgHovered] = faded(amber, 0.25f);
    colors[ImGuiCol_FrameBgActive] = faded(amber, 0.45f);
    colors[ImGuiCol_Button] = faded(petrol, 0.10f);
    colors[ImGuiCol_ButtonHovered] = faded(amber, 0.45f);
    colors[ImGuiCol_ButtonActive] = faded(amber, 0.80f);
    colors[ImGuiCol_Header] = faded(petrol, 0.15f);
    colors[ImGuiCol_HeaderHovered] = faded(amber, 0.40f);
    colors[ImGuiCol_HeaderActive] = faded(amber, 0.60f);
    colors[ImGuiCol_CheckMark] = petrol;
    colors[ImGuiCol_TitleBgActive] = line;
    colors[ImGuiCol_NavHighlight] = faded(petrol, 0.0f);
    colors[ImGuiCol_TextSelectedBg] = faded(amber, 0.6f);
}
} // namespace

cGui::cGui(cWindow &window, double scale) : mWindow(window), mScale(scale), mKeys(512, false)
{
    IMGUI_CHECKVERSION();
    ImGui::CreateContext();
    ImGuiIO &io = ImGui::GetIO();
    io.IniFilename = nullptr; // nothing is left in the folder that it is started from
    io.ConfigInputTextCursorBlink = false;
    LoadFonts();
    ImGuiStyle &style = ImGui::GetStyle();
    SetColors(style);
    style.WindowRounding = style.FrameRounding = style.PopupRounding = 3.0f;
    style.WindowBorderSize = 0.0f;
    style.FrameBorderSize = 1.0f;
    style.ScaleAllSizes(float(scale));
    ImGui_ImplGlfw_InitForOpenGL(window.Handle(), false);
    ImGui_ImplOpenGL3_Init("#version 150");
}

cGui::~cGui()
{
    mWindow.UsePage();
    ImGui_ImplOpenGL3_Shutdown();
    ImGui_ImplGlfw_Shutdown();
    ImGui::DestroyContext();
}

void cGui::LoadFonts()
{
    ImFontAtlas &fonts = *ImGui::GetIO().Fonts;
    const std::string plain = std::string(fontFolder) + "DejaVuSans.ttf",
                      bold = std::string(fontFolder) + "DejaVuSans-Bold.ttf";
    std::error_code ignored;
    if (!std::filesystem::exists(plain, ignored) || !std::filesystem::exists(bold, ignored)) {
        mSmall = mBold = mLarge = fonts.AddFontDefault();
        return;
    }
    static const ImWchar ranges[] = {0x20,   0x17f,  0x2010, 0x2027, 0x2190,
                                     0x2193, 0x25a0, 0x25ff, 0};
    const auto load = [&fonts, this](const std::string &file, double pixels) {
        return fonts.AddFontFromFileTTF(file.c_str(), float(pixels * mScale), nullptr, ranges);
    };
    load(plain, 14.0); // the first one is what everything is written in
    mSmall = load(plain, 11.0);
    mBold = load(bold, 13.0);
    mLarge = load(bold, 22.0);
}

void cGui::Feed(const cEvent &event)
{
    ImGuiIO &io = ImGui::GetIO();
    switch (event.mKind) {
    case cEvent::KEY:
        if (event.mKey >= 0 && size_t(event.mKey) < mKeys.size())
            mKeys[size_t(event.mKey)] = event.mIsDown;
        break;
    case cEvent::TEXT:
        io.AddInputCharacter(event.mCharacter);
        return; // it says nothing about modifiers
    case cEvent::MOVE:
        mX = event.mX;
        mY = event.mY;
        break;
    case cEvent::BUTTON:
        if (event.mKey >= 0 && event.mKey < 3)
            mButtons[event.mKey] = event.mIsDown;
        break;
    case cEvent::WHEEL:
        io.MouseWheelH += float(event.mX);
        io.MouseWheel += float(event.mY);
        break;
    case cEvent::LEAVE:
        if (!mButtons[0] && !mButtons[2])
            mX = mY = -1e30;
        return;
    }
    mModifiers = event.mModifiers;
}

// The backend knows the window, its size and the pointer's shapes; what it has asked of the mouse
// and the keys is put aside for what our queue has dealt out.
void cGui::Begin(const std::vector<cEvent> &events, double seconds)
{
    mWindow.UsePage();
    ImGui_ImplOpenGL3_NewFrame();
    ImGui_ImplGlfw_NewFrame();
    ImGuiIO &io = ImGui::GetIO();
    for (const cEvent &event : events)
        Feed(event);
    io.DeltaTime = float(seconds);
    io.MousePos = mX < -1e20 ? ImVec2(-FLT_MAX, -FLT_MAX) : ImVec2(float(mX), float(mY));
    std::copy(mButtons, mButtons + 3, io.MouseDown);
    for (size_t key = 0; key < mKeys.size(); key++)
        io.KeysDown[key] = mKeys[key];
    io.KeyCtrl = mModifiers.mCtrl;
    io.KeyShift = mModifiers.mShift;
    io.KeyAlt = mModifiers.mAlt;
    const auto size = mWindow.Size();
    io.DisplaySize = ImVec2(float(size.width), float(size.height));
    io.DisplayFramebufferScale = ImVec2(1.0f, 1.0f);
    ImGui::NewFrame();
}

void cGui::End() { ImGui::Render(); }

void cGui::Render()
{
    const auto size = mWindow.Size();
    glViewport(0, 0, size.width, size.height);
    glDisable(GL_SCISSOR_TEST);
    glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
}
} // namespace studio
