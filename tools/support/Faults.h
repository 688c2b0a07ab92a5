#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tools
{
/// Something that is wrong with a file, and where in it.
struct cFault
{
    std::string mFile;
    std::string mPlace; ///< "key 4", "chunk SURF"; empty when it is the whole file
    std::string mWhat;

    std::string ToLine() const; ///< "file: place: what", printable and on one line
};

using tFaults = std::vector<cFault>;

/// The fault that the line "file: what" describes.
cFault ToFault(const std::string &line);

/// One line each.
void Print(std::ostream &out, const tFaults &faults);

/// `text` between quotes, its unprintable bytes as \xNN, cut after 40 characters.
std::string Quote(std::string_view text);

/// `text` with its control bytes as \xNN: whatever a file is called, a report stays on its line.
std::string OnOneLine(std::string_view text);
} // namespace tools
