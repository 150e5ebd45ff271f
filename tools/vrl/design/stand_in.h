#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "guard/foreign_work.h"
#include "text/progress.h"
#include "vrllib/vrllib.h"

namespace vrltool {

/// A kind that no loaded plug-in has, met in a file: of what, its name, and how often.
struct MissingKind {
    enum class What { kBlock, kParameter, kNetlist };
    What what;
    std::string name;
    std::size_t count;
};

/// A block in the place of one whose kind is missing. It has what the file says of it: parameters, the names of its
/// ports (in no known domain), and the inside of a composite.
class StandInBlock : public vrl::CBB {
public:
    explicit StandInBlock(vrl::Foundry const* foundry);
    ~StandInBlock() override;
    /// The missing kind.
    std::string getName() const override { return kind; }

private:
    std::string kind;
};

bool isStandIn(vrl::BB const& block);

/// Whether a parameter is a stand-in for one of a missing type, so that its value is not known.
bool isStandIn(vrl::Attribute const& parameter);

/// A netlist in the place of one whose kind is missing.
class StandInNetlist : public vrl::Netlist {
public:
    explicit StandInNetlist(std::string missing) : kind(std::move(missing)) {}
    ~StandInNetlist() override;
    std::string getName() const override { return kind; }

protected:
    std::string getSerTypeName() override { return kind; }

private:
    std::string kind;
};

/// How the making of a kind is reported while it is at work: "making the block 'sfBend'".
std::string makingText(char const* word, std::string const& kind);

/// Reads the binary stream like the reader that it wraps, and makes a stand-in for every block and every parameter
/// whose kind no factory has, so that the whole of a design can be read without its plug-ins.
///
/// While it lives, the factories have the stand-ins under the missing kinds; afterwards they do not. One at a time.
class StandInReader final : public vrl::DeSerialiserBase {
public:
    /// The stream outlives the reader.
    StandInReader(std::istream& stream, Progress& counter);
    StandInReader(StandInReader const&) = delete;
    StandInReader& operator=(StandInReader const&) = delete;
    ~StandInReader();

    /**@{*/
    /// An object in the place of the top one, whose kind is missing; it is the next to be read. The caller owns it.
    vrl::BB* standInForBlock(std::string const& type);
    vrl::Netlist* standInForNetlist(std::string const& type);
    vrl::Attribute* standInForParameter(std::string const& type);
    /**@}*/

    /// What was missing, by what and name.
    std::vector<MissingKind> missing() const;
    /// Where the reader is, or where it stopped: "element 12 (sfBend), parameter 'radius'".
    std::string where() const;

    void beginAttribute() override { inner.beginAttribute(); }
    void endAttribute() override { inner.endAttribute(); }
    void previewType(std::string& type) override;
    void beginCompAttribute(std::string* type, int* version, std::string* doc) override;
    void endCompAttribute() override;
    void readNumberAttributes(unsigned int& count) override { inner.readNumberAttributes(count); }
    bool readSerialisationId(std::string& id) override;
    bool skipAttribute() override { return inner.skipAttribute(); }
    bool read(std::string& value) override;
    bool read(std::complex<double>& value) override { return inner.read(value); }
    bool read(double& value) override { return inner.read(value); }
    bool read(int& value) override { return inner.read(value); }
    bool read(unsigned int& value) override;
    bool read(bool& value) override { return inner.read(value); }

private:
    /// One open compound.
    struct Frame {
        std::string member;             ///< its id in the stream
        std::string type;               ///< what it says of itself
        std::string id;                 ///< the member that comes next in it
        std::string key;                ///< of a container: the element that comes next
        StandInBlock* block = nullptr;  ///< whom it fills
    };

    void standIn(MissingKind::What what, std::string const& type);
    void note(MissingKind::What what, std::string const& type);

    vrl::BinaryStreamDeSerialiser inner;
    Progress& progress;
    std::vector<Frame> frames;
    std::vector<MissingKind> missed;
    std::set<std::pair<MissingKind::What, std::string>> registered;
    bool acceptNext = false;              ///< the next compound is accepted whatever its version
    std::unique_ptr<ForeignWork> atWork;  ///< from the moment a kind is read until its object begins to read
};

}  // namespace vrltool
