// The flat layers of the show (photos, words, logo, vignette, fades) at the same rows, drawn as
// somebody would who has SDL2 and not this engine: its own renderer, on OpenGL.
//
//   bench-sdl SHOW FRAMES [PICTURE ROW]     prints what bench-frames SHOW FRAMES flat prints
//
// With PICTURE, the frame at ROW is written there instead, as raw RGB from the top, 1280 by 720.

#include "base/Truncate.h"
#include "benchmarks/FrameTimes.h"

#include <SDL2/SDL.h>
#include <stb_image.h>

#include <array>
#include <cmath>
#include <cstdlib>

#include <unistd.h>

namespace
{
const int width = 1280, height = 720;

struct cImage
{
    SDL_Texture *mTexture = nullptr;
    int mWidth = 0, mHeight = 0;
};

class cFlatShow
{
public:
    explicit cFlatShow(SDL_Renderer *renderer);
    void Draw(double row);

private:
    cImage Load(const std::string &path);
    float Sample(demo::eTrack track) const { return sync_get_val(mTracks[size_t(track)], mRow); }
    int Index(demo::eTrack track) const { return vyr::TruncateToInt(double(Sample(track))); }
    void Sprite(const cImage &image, double x, double y, double scale, double angle, float alpha);
    void Fill(Uint8 brightness, float alpha);
    void DrawPhotos(double seconds);
    void DrawCenterPhoto(double seconds);
    void DrawLyricAndLogo();

    SDL_Renderer *mRenderer;
    demo::tTracks mTracks;
    double mRow = 0.0;
    std::array<cImage, demo::kPhotoCount> mPhotos;
    std::array<cImage, demo::kLyricCount> mLyrics;
    cImage mLogo, mVignette;
};

cFlatShow::cFlatShow(SDL_Renderer *renderer)
    : mRenderer(renderer), mTracks(demo::LoadTracks(sync_create_device(demo::kTrackPrefix)))
{
    const auto names = demo::PhotoNames();
    for (size_t i = 0; i < mPhotos.size(); i++)
        mPhotos[i] = Load(names[i]);
    for (size_t i = 0; i < mLyrics.size(); i++)
        mLyrics[i] = Load(demo::LyricName(int(i)));
    mLogo = Load("data/zemlogo.png");
    mVignette = Load("data/vignette1.png");
}

cImage cFlatShow::Load(const std::string &path)
{
    cImage image;
    int components = 0;
    unsigned char *pixels = stbi_load(path.c_str(), &image.mWidth, &image.mHeight, &components, 4);
    if (!pixels) {
        std::fprintf(stderr, "bench-sdl: can't read %s\n", path.c_str());
        std::exit(1);
    }
    image.mTexture = SDL_CreateTexture(mRenderer, SDL_PIXELFORMAT_RGBA32, SDL_TEXTUREACCESS_STATIC,
                                       image.mWidth, image.mHeight);
    SDL_UpdateTexture(image.mTexture, nullptr, pixels, image.mWidth * 4);
    SDL_SetTextureBlendMode(image.mTexture, SDL_BLENDMODE_BLEND);
    stbi_image_free(pixels);
    return image;
}

Uint8 ToByte(float alpha)
{
    return Uint8(std::lround(std::min(std::max(alpha, 0.0f), 1.0f) * 255));
}

// As the engine's sprites: placed by the top-left corner, turned and scaled about the centre.
void cFlatShow::Sprite(const cImage &image, double x, double y, double scale, double angle,
                       float alpha)
{
    const double wide = image.mWidth * scale, high = image.mHeight * scale;
    const SDL_FRect place = {float(x + (image.mWidth - wide) / 2),
                             float(y + (image.mHeight - high) / 2), float(wide), float(high)};
    SDL_SetTextureAlphaMod(image.mTexture, ToByte(alpha));
    SDL_RenderCopyExF(mRenderer, image.mTexture, nullptr, &place, angle, nullptr, SDL_FLIP_NONE);
}

void cFlatShow::Fill(Uint8 brightness, float alpha)
{
    SDL_SetRenderDrawBlendMode(mRenderer, SDL_BLENDMODE_BLEND);
    SDL_SetRenderDrawColor(mRenderer, brightness, brightness, brightness, ToByte(alpha));
    SDL_RenderFillRectF(mRenderer, nullptr);
}

void cFlatShow::DrawPhotos(double seconds)
{
    if (const int left = Index(demo::IMAGE_LEFT); left >= 0)
        Sprite(mPhotos[size_t(left)], 150, 100, 1.0, std::sin(0.7 * seconds) * 7.0 + 5.0, 1.0f);
    if (const int right = Index(demo::IMAGE_RIGHT); right >= 0) {
        const cImage &photo = mPhotos[size_t(right)];
        Sprite(photo, width - photo.mWidth - 100, 110, 1.0, std::cos(seconds) * -7.0 + 5.0, 1.0f);
    }
}

void cFlatShow::DrawCenterPhoto(double seconds)
{
    const int index = Index(demo::IMAGE_CENTER);
    if (index < 0)
        return;
    const cImage &photo = mPhotos[size_t(index)];
    const double swing = std::sin(0.25 * seconds) + std::cos(seconds) + std::sin(-2.0 * seconds);
    Sprite(photo, (width - photo.mWidth) / 2.0, (height - photo.mHeight) / 2.0,
           std::cos(seconds) * 0.5 + 1.0, swing * 25.0, Sample(demo::IMAGE_CENTER_ALPHA));
}

void cFlatShow::DrawLyricAndLogo()
{
    if (const int lyric = Index(demo::LYRICS_NUM); lyric >= 0)
        Sprite(mLyrics[size_t(lyric)], double(Sample(demo::LYRICS_X)),
               double(Sample(demo::LYRICS_Y)), 1.0, 0.0, Sample(demo::LYRICS_FADE));
    if (const float alpha = Sample(demo::IMAGE_ZEMLOGO); alpha > 0.0f)
        Sprite(mLogo, (width - mLogo.mWidth) / 2.0, (height - mLogo.mHeight) / 2.0, 1.0, 0.0,
               alpha);
}

void cFlatShow::Draw(double row)
{
    mRow = row;
    const double seconds = row / demo::kRowsPerSecond;
    SDL_SetRenderDrawColor(mRenderer, 0, 0, 0, 255);
    SDL_RenderClear(mRenderer);
    DrawPhotos(seconds);
    DrawCenterPhoto(seconds);
    DrawLyricAndLogo();
    Fill(255, Sample(demo::FADE_BG_WHITE));
    Sprite(mVignette, (width - mVignette.mWidth) / 2.0, 0, 1.0, 0.0, 1.0f);
    Fill(0, Sample(demo::FADE_FG_BLACK));
}

SDL_Renderer *OpenWindow()
{
    SDL_SetHint(SDL_HINT_RENDER_DRIVER, "opengl");
    SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "linear");
    SDL_SetHint(SDL_HINT_RENDER_BATCHING, "1");
    SDL_Init(SDL_INIT_VIDEO);
    SDL_Window *window = SDL_CreateWindow("", 0, 0, width, height, SDL_WINDOW_OPENGL);
    SDL_Renderer *renderer = window ? SDL_CreateRenderer(window, -1, 0) : nullptr;
    if (!renderer) {
        std::fprintf(stderr, "bench-sdl: %s\n", SDL_GetError());
        std::exit(1);
    }
    return renderer;
}

void WritePicture(SDL_Renderer *renderer, const char *path)
{
    std::vector<unsigned char> pixels(size_t(width) * height * 3);
    SDL_RenderReadPixels(renderer, nullptr, SDL_PIXELFORMAT_RGB24, pixels.data(), width * 3);
    bench::WritePixels(path, pixels);
}
} // namespace

int main(int count, char **arguments)
{
    if (count < 3 || chdir(arguments[1]) != 0) {
        std::fprintf(stderr, "bench-sdl: needs the folder of a show and a number of frames\n");
        return 2;
    }
    SDL_Renderer *renderer = OpenWindow();
    cFlatShow show(renderer);
    if (count > 4) {
        show.Draw(std::atof(arguments[4]));
        WritePicture(renderer, arguments[3]);
        return 0;
    }
    using tFinish = void (*)();
    const auto finish = reinterpret_cast<tFinish>(SDL_GL_GetProcAddress("glFinish"));
    bench::PrintFrameTimes(std::atoi(arguments[2]), [&](double row) {
        show.Draw(row);
        SDL_RenderFlush(renderer);
        finish();
        SDL_RenderPresent(renderer);
        SDL_PumpEvents();
    });
}
