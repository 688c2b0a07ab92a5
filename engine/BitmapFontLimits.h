#pragma once

#include <string>

namespace vyr
{
/// Whether the XML reader may be given the file at `path`. It recurses with every level of nesting,
/// searches an element's attributes one by one, takes a folder for a file without end, and steps
/// over a UTF-8 character that is cut short at the end of the file, and over that end: without
/// limits, a broken file would end the program or hang it.
///
/// True for a regular file of at most 16 MiB, nested at most 64 levels deep, with at most 256
/// attributes an element, and a whole character at its end. Whether it is XML is the reader's to
/// find out.
bool IsFontDescriptionWithinLimits(const std::string &path);
} // namespace vyr
