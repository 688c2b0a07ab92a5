#include "tools/tracks/CommandLine.h"

int main(int argc, char **argv) { return tracks::RunCommandLine(argc, argv); }
