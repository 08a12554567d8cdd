// ViewSeed: fills an open simulated array with views, for tests and benches
// that need many.
#ifndef ZAR_SERVER_HARNESS_VIEWSEED_H
#define ZAR_SERVER_HARNESS_VIEWSEED_H

namespace zare2e {

// Adds hosts "v00000".. to the open array, each exported one volume through
// four FC ports (a matched set: four views per host). Returns the number of
// views added; exits the program with a message when the array refuses.
int addViews(int hosts);

}  // namespace zare2e

#endif
