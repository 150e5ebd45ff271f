// Names a library that is missing when it is loaded.

struct Factory;

extern "C" void solve();

extern "C" __attribute__((visibility("default"))) void initLibraryBB(Factory*) { solve(); }
