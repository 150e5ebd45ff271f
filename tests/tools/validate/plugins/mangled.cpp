// Two usual slips: an entry point with the mangled name of C++, and one whose name nobody calls.

struct Factory;

__attribute__((visibility("default"))) void initLibraryFoundry(Factory*) {}

extern "C" __attribute__((visibility("default"))) void initLibraryBb(Factory*) {}
