#pragma once

#include "base/Assert.h"

#include <cstddef>
#include <cstdint>

/// What a fuzz target is: one function that takes any bytes as the content of the file that its
/// reader reads, and stops the program where the reader breaks a promise.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// A promise of the reader. With the fuzzer, a broken one leaves the bytes behind in a file.
#define FUZZ_EXPECT(condition) VYR_ASSERT("fuzz", condition)
