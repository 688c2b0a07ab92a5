#pragma once

#include "show/Show.h"
#include "tools/check/Findings.h"

#include <string>

namespace check
{
/// The show's objects.
void CheckObjects(const vyr::cShowDescription &show, cFindings &findings);

/// One LWO2 object: within the part of the format that the engine reads (its reader has the last
/// word), with the texture that it names. Places are chunks, polygons and surfaces, counted from 0.
void CheckObject(const std::string &path, cFindings &findings);
} // namespace check
