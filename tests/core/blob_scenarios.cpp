#include <iostream>

#include "tests/support/scenario.h"
#include "vrllib/core/blob.h"

// The registry has no way back, so each of these starts from an empty one.

namespace {

using Vorlane_v1_0::Blob;

class Data : public Blob {
public:
    ~Data() override { std::cout << "deleted\n"; }
    unsigned char const* getData() const override { return nullptr; }
    std::size_t getSize() const override { return 0; }
};

Data& kept() {
    static auto& data = *new Data;
    return data;
}

/// A static object of a host that looks into the registry while the process ends.
struct LooksAtExit {
    ~LooksAtExit() {
        Blob::list(std::cout);
        std::cout << (Blob::find("a name that is too long for a short string") == &kept()) << "\n";
    }
};

}  // namespace

VRL_SCENARIO(EmptyBlobList) { Blob::list(std::cout); }

VRL_SCENARIO(InitOfBlobs) {
    Blob::init();
    Blob::init();
    Blob::list(std::cout);
}

VRL_SCENARIO(BlobsInKeyOrder) {
    Blob::push_back("b", &kept());
    Blob::push_back("", &kept());
    Blob::push_back("a c", &kept());
    Blob::push_back("B", &kept());
    Blob::init();
    Blob::list(std::cout);
}

VRL_SCENARIO(BlobWithATakenName) {
    static auto& second = *new Data;
    Blob::push_back("x", &kept());
    Blob::push_back("x", &second);
    Blob::list(std::cout);
    std::cout << (Blob::find("x") == &kept()) << "\n";
}

VRL_SCENARIO(UnknownBlobs) {
    std::cout << (Blob::find("x") == nullptr);
    Blob::push_back("x", &kept());
    Blob::push_back("none", nullptr);
    std::cout << (Blob::find("X") == nullptr) << (Blob::find("x ") == nullptr) << (Blob::find("") == nullptr);
    std::cout << (Blob::find("none") == nullptr) << (Blob::find("x") == &kept()) << "\n";
}

VRL_SCENARIO(BlobsAtExit) {
    static LooksAtExit const looks;
    Blob::push_back("a name that is too long for a short string", &kept());
}
