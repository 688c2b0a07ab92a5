#include "studio/Program.h"

int main(int argc, char **argv) { return studio::RunStudio(argc, argv); }
