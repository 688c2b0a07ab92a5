#pragma once

#include "examples/Example.h"

/// The examples as their sources define them, each under a name of its own. Several use the same
/// globals of Scene.cpp, so a test loads one of them.
extern const cExample kSprite, kMovement, kObject, kRgbSplit, kFeedbackBlur, kSignalDistort, kText,
    kShow;
