// A show of an interface that is still to come. Making it would be a mistake.

#include <cstdlib>

extern "C" {
extern const int vyr_show_interface;
const int vyr_show_interface = 999;
void *vyr_create_show();
void *vyr_create_show() { std::abort(); }
}
