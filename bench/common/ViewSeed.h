// ViewSeed: fills an open simulated array with views for the benches.
#ifndef ZAR_BENCH_COMMON_VIEWSEED_H
#define ZAR_BENCH_COMMON_VIEWSEED_H

namespace zarbench {

// Adds hosts "v00000".. to the open array, each exported one volume through
// four FC ports (a matched set: four views per host). Returns the number of
// views added; exits the program with a message when the array refuses.
int addViews(int hosts);

}  // namespace zarbench

#endif
