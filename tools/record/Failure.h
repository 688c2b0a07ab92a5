#pragma once

#include <stdexcept>

namespace record
{
/// The world is wrong: what() is one line for the person at the shell, and names the thing. It is
/// empty where that line has been printed.
class cFailure : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The command line asks for something that can't be.
class cUsageError : public cFailure
{
    using cFailure::cFailure;
};

/// Somebody interrupted before there was anything worth keeping.
class cInterruption : public cFailure
{
    using cFailure::cFailure;
};
} // namespace record
