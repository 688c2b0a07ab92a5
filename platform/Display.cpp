#include "platform/Display.h"

#include "platform/Window.h"

int CGDisplayPixelsWide(int) { return platform::GetDisplaySize().width; }

int CGDisplayPixelsHigh(int) { return platform::GetDisplaySize().height; }
