// The whole source of the program in a show's folder.

#include "show/Player.h"

int main(int argc, char **argv) { return vyr::PlayShow(argc, argv); }
