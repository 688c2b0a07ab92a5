#pragma once

#include "tools/support/Faults.h"

#include <string>

/// The preflight of a show folder, which is the working directory. Every check adds all that it
/// finds.
namespace check
{
/// Faults stop a show; warnings are what its maker should look at.
struct cFindings
{
    tools::tFaults mFaults, mWarnings;

    void Fault(const std::string &file, const std::string &place, const std::string &what)
    {
        mFaults.push_back({file, place, what});
    }
    void Warn(const std::string &file, const std::string &place, const std::string &what)
    {
        mWarnings.push_back({file, place, what});
    }
};

/// "12.3 s", "-14.2"; as many digits as a reader needs.
std::string Decimal(double value, int digits);
} // namespace check
