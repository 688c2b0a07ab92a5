#pragma once

#include "engine/3DObject.h"

namespace bench
{
/// The first row whose picture is not black.
const double kFirstRow = 16.0, kFirstSeconds = 0.9;

/// What the first picture needs beside images and shaders, and what takes work to make.
struct cBareGift
{
    const vyr::c3DObject::cRenderObject *mObject = nullptr;
    float mObjectX = 0.0f, mObjectY = 0.0f, mObjectZ = 0.0f;
    float mNoise = 0.0f, mWhite = 0.0f, mBlack = 0.0f;
    int mVignetteWidth = 0; // pixels
};

cBareGift MakeBareGift();

/// All files of the show by plain calls, and its first picture, finished.
void StartBare(const cBareGift &gift);
} // namespace bench
