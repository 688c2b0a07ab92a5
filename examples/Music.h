#pragma once

/// The music's position in seconds, for a show that follows its music. The first call starts
/// data/waiting.mp3; where it can't be played, one line says why and the window's clock goes on in
/// its place.
double MusicSeconds();
