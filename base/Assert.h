#pragma once

namespace vyr
{
/// Prints "Assertion failed: (condition), function F, file S, line N." to standard error and
/// aborts.
[[noreturn]] void FailAssertion(const char *condition, const char *function, const char *file,
                                int line);
} // namespace vyr

/// A programming error stops the program, in every build type: a show that goes on after one would
/// draw wrongly for minutes before anyone asks why.
/// `file` and `line` are the names under which the fault is known in reports. contract: they stay
/// the same when the source moves.
#define VYR_ASSERT_AT(file, line, condition)                                                       \
    ((condition) ? void(0) : vyr::FailAssertion(#condition, __func__, file, line))

/// The same where the place in the source is all that needs to be known.
#define VYR_ASSERT(file, condition) VYR_ASSERT_AT(file, __LINE__, condition)
