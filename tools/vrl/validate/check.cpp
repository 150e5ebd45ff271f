#include "validate/check.h"

#include <algorithm>

#include "text/failure.h"
#include "text/near_names.h"

namespace vrltool::validate {

namespace {

constexpr auto kError = Severity::kError;
constexpr auto kWarning = Severity::kWarning;

// What several checks need: a file to look into, code that loads, entry points that come back, keys, and objects.
std::vector<std::string> const kFile{"regular-file", "machine"};
std::vector<std::string> const kLoaded{"loads"};
std::vector<std::string> const kEntered{"entry-returns"};
std::vector<std::string> const kKeys{"brings-keys"};
std::vector<std::string> const kMade{"null-foundry", "foundry-parts"};

}  // namespace

std::vector<Check> const& allChecks() {
    static std::vector<Check> const checks{
        {"regular-file",
         kError,
         "the plug-in is a regular file that can be read",
         "give the path of the plug-in",
         {},
         &checkRegularFile},
        {"file-name",
         kWarning,
         "its name is one under which a configuration finds it",
         "name it lib_wn_NAME.so.VERSION, as vrl_add_plugin does",
         {"regular-file"},
         &checkFileName},
        {"machine",
         kError,
         "it is a whole shared library for this machine",
         "build it for this machine",
         {"regular-file"},
         &checkMachine},
        {"dependencies", kError, "the libraries that it names are found, vrllib with the right version among them",
         "install the library, or link with its folder as run path", kFile, &checkDependencies},
        {"entry-points", kError, "it exports an entry point, under its plain name",
         "declare entry points with VRL_PLUGIN_EXPORT, which is extern \"C\" and visible", kFile, &checkEntryPoints},
        {"loads", kError, "it loads at once, with every symbol found",
         "link it with all that it uses (-Wl,--no-undefined shows), and do nothing that can fail in static objects",
         kFile, &checkLoads},
        {"version-function", kError, "getAPIversion returns the version that it was made for",
         "write VRL_PLUGIN_API_VERSION(major, minor, patch); once, with the version of vrllib that it is built with",
         kLoaded, &checkVersionFunction},
        {"entry-returns",
         kError,
         "its entry points return and throw nothing",
         "only register classes there, and catch what that may throw",
         {"loads", "entry-points"},
         &checkEntryReturns},
        {"entry-quiet", kError, "loading and entry points print nothing",
         "write messages with vrlPrintf or vrlCout(), the message channel, or not at all", kEntered, &checkEntryQuiet},
        {"one-class-per-key", kError, "its entry points register one class under each key",
         "give each class a key of its own, the name that its objects return", kEntered, &checkOneClassPerKey},
        {"brings-keys", kError, "it brings at least one key",
         "register a class in an entry point: factory->Register<Class>(\"name\")", kEntered, &checkBringsKeys},
        {"post-load", kError, "its post-load hook tolerates several calls",
         "leave at once from the second call on: the hook is called for each entry point and each start-up", kEntered,
         &checkPostLoad},
        {"process-end", kError, "the program ends well with it", "let static objects free nothing of the library's",
         kEntered, &checkProcessEnd},
        {"process-state", kWarning, "it leaves locale, signals, folder, mask, environment and streams alone",
         "set nothing that belongs to the whole program, or set it back", kEntered, &checkProcessState},
        {"null-foundry", kError, "every block is made without a foundry and with each of its foundries",
         "let the constructor accept a null foundry", kKeys, &checkNullFoundry},
        {"foundry-kept",
         kError,
         "a block knows the foundry that it was made with",
         "pass the foundry on: BB(foundry); the class of a composite names BB(foundry) itself",
         {"null-foundry"},
         &checkFoundryKept},
        {"foundry-parts", kError, "the flows and cross sections of its foundries are made and asked",
         "let constructors and createCS accept any number, and throw nothing", kKeys, &checkFoundryParts},
        {"objects-quiet", kWarning, "making and destroying objects prints nothing",
         "write messages with vrlPrintf or vrlCout(), the message channel, or not at all", kMade, &checkObjectsQuiet},
        {"objects-state", kWarning, "making and destroying objects leaves the rest of the program alone",
         "set nothing that belongs to the whole program, or set it back", kMade, &checkObjectsState},
        {"objects-freed", kError, "what is made is freed again, and all that it took",
         "free in the destructor what the constructor took, or keep it in std::unique_ptr or std::vector; what is kept "
         "by design, keep once",
         kMade, &checkObjectsFreed},
        {"objects-bounds", kError, "making and destroying objects writes into its own memory only",
         "find the place with a build with -fsanitize=address, or under valgrind", kMade, &checkObjectsBounds},
        {"port-direction", kWarning, "the names of optical ports begin with their direction",
         "begin inputs with \"in\" and outputs with \"out\"; where light goes both ways by design, --skip "
         "port-direction",
         kMade, &checkPortDirection},
        {"composite-inside", kError,
         "composites connect ports of their blocks, and have a node of its own for each port",
         "a boundary node inside for each port outside, in their order; setInputNode and the others drop a node that "
         "is "
         "an input already",
         kMade, &checkCompositeInside},
        {"composite-open",
         kWarning,
         "each node inside of composites connects ports, or is on the boundary",
         "see whether the block of each element is made and each name is right: addNode returns 0 for an element that "
         "is missing, and takes 0 for a new node",
         {"composite-inside"},
         &checkCompositeOpen},
        {"key-matches-name", kError, "each key is the name that its objects return",
         "register the class under the string that getName returns, a parameter type under getFactoryName", kMade,
         &checkKeyMatchesName},
        {"unknown-key", kError, "an unknown name returns nothing", "return null for a name that is not known", kKeys,
         &checkUnknownKey},
        {"names", kError, "ports and parameters have names, and none twice", "give each its own name", kMade,
         &checkNames},
        {"described", kWarning, "everything has a description, and numbers have units",
         "give description and unit to the constructor; the unit of a bare number is \"1\"", kMade, &checkDescribed},
        {"defaults-in-range", kError, "defaults are finite and within bounds that are in order",
         "the bounds belong to the range: minimum <= default <= maximum", kMade, &checkDefaultsInRange},
        {"text-forms", kError, "parameters read back their own text, and write themselves for documents and source",
         "override getStringValue, setStringValue, toTex and toCpp together", kMade, &checkTextForms},
        {"copies", kError, "parameters are copied as the library copies them",
         "let setValue(Attribute const*) take over the value alone; refer to nothing of the owner", kMade,
         &checkCopies},
        {"saved",
         kError,
         "blocks, netlists and parameter types read back equal what was saved",
         "save every member of the class, and make the kind's name the saved type",
         {"null-foundry"},
         &checkSaved},
        {"random-bytes",
         kError,
         "damaged files do no harm",
         "check what was read before it is used; throw nothing",
         {"saved"},
         &checkRandomBytes},
        {"views", kError, "views are made with and without an object, and register with it",
         "pass object and name on to the base: TypeView(block, \"KEY\"); accept null", kMade, &checkViews},
        {"two-plugins", kError, "it loads before and after others, with the same keys in either order",
         "register the same keys whatever is registered already", kKeys, &checkTwoPlugins},
        {"key-clash", kWarning, "no other plug-in has one of its keys",
         "begin keys with a prefix of your own: the last plug-in that registers a key wins", kKeys, &checkKeyClash}};
    return checks;
}

Check const& findCheck(std::string const& id) {
    std::vector<std::string> ids;
    for (Check const& check : allChecks()) {
        if (check.id == id) return check;
        ids.push_back(check.id);
    }
    std::string const near = didYouMean(id, ids);
    throw Failure("no check '" + id + "'", "'vrl validate --list' lists them", near);
}

bool contains(std::vector<Check const*> const& checks, Check const& check) {
    return std::find(checks.begin(), checks.end(), &check) != checks.end();
}

}  // namespace vrltool::validate
