#pragma once

#include "show/Show.h"

#include <string>

namespace record
{
/// A hash of all that a recording of this show is made from: its drawing, its tracks, the files of
/// its description and everything under data/, by name and content. Two folders with one
/// fingerprint give the same frames. 32 hexadecimal digits. The working directory is the show's
/// folder. Throws cFailure when a file can't be read.
std::string FingerprintShow(const vyr::cShowDescription &description);
} // namespace record
