#pragma once

#include "platform/web/Programs.h"

namespace vyr::web
{
/// What glEnable and glDisable have made of the fixed pipeline: its texturing, and sphere mapping
/// where both coordinates are generated.
eFixedPipeline GetFixedPipeline();
} // namespace vyr::web
