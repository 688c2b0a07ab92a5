#pragma once

// contract: these names on every system.

/// Width and height of a display in pixels; display 0 is the main one. 0 where there is no display.
/// They start the window library when it does not run yet.
int CGDisplayPixelsWide(int display);
int CGDisplayPixelsHigh(int display);
