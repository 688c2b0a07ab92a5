#pragma once

#include <stdexcept>

namespace record
{
/// A failure outside the program (file, driver, ffmpeg). what() is one line for the person at the
/// shell that names the file or program; it is empty when that line has been printed already.
class cFailure : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The command line asks for something impossible.
class cUsageError : public cFailure
{
    using cFailure::cFailure;
};

/// The user interrupted the program before there was anything worth keeping.
class cInterruption : public cFailure
{
    using cFailure::cFailure;
};
} // namespace record
