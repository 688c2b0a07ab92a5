#include "base/Assert.h"

#include <cstdio>
#include <cstdlib>

namespace vyr
{
void FailAssertion(const char *condition, const char *function, const char *file, int line)
{
    std::fflush(stdout); // what was reported before the fault stands before it
    std::fprintf(stderr, "Assertion failed: (%s), function %s, file %s, line %d.\n", condition,
                 function, file, line);
    std::fflush(stderr);
    std::abort();
}
} // namespace vyr
