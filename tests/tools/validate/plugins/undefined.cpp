// Linked without what it uses.

struct Factory;

void drawRing(int radius);

extern "C" __attribute__((visibility("default"))) void initLibraryBB(Factory*) { drawRing(5); }
