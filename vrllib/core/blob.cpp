#include "vrllib/core/blob.h"

#include <cstdio>
#include <map>
#include <memory>
#include <ostream>

namespace Vorlane_v1_0 {

namespace {

/// Made on first use and never destroyed, since static objects of plug-ins register here.
std::map<std::string, Blob*>& registry() {
    static auto* const blobs = new std::map<std::string, Blob*>;
    return *blobs;
}

}  // namespace

Blob::Blob() = default;
Blob::Blob(Blob const& other) = default;
Blob& Blob::operator=(Blob const& other) = default;
Blob::~Blob() = default;

bool Blob::save(std::string const& fileName) const {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(fileName.c_str(), "wb"), &std::fclose);
    if (!file) return false;
    std::size_t const size = getSize();
    unsigned char const* const data = getData();
    if (data && size > 0) std::fwrite(data, 1, size, file.get());
    return true;
}

void Blob::init() { registry(); }
void Blob::push_back(std::string const& name, Blob* blob) { registry().emplace(name, blob); }
Blob* Blob::find(std::string const& name) {
    auto const found = registry().find(name);
    return found == registry().end() ? nullptr : found->second;
}
void Blob::list(std::ostream& os) {
    os << "Blob's:";
    for (auto const& entry : registry()) os << " " << entry.first;
    os << std::endl;
}

}  // namespace Vorlane_v1_0
