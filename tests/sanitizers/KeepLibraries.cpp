// Part of every program built with the address sanitizer.

// A graphics driver that is unloaded before the program ends takes its name with it: its leaks
// could not be told from ours. So nothing is unloaded.
extern "C" int dlclose(void *) noexcept { return 0; }
