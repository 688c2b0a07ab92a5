#include "platform/Display.h"

#include "platform/Window.h"

int CGDisplayPixelsWide(int) { return vyr::platform::GetDisplaySize().width; }

int CGDisplayPixelsHigh(int) { return vyr::platform::GetDisplaySize().height; }
