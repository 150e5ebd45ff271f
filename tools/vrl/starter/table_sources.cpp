#include "starter/table_sources.h"

#include "starter/cpp_text.h"
#include "starter/table_values.h"
#include "text/table.h"

namespace vrltool::starter {

namespace {

constexpr char kBegin[] = "\nnamespace PluginName_plugin {\n\n";
constexpr char kEnd[] = "\n}  // namespace PluginName_plugin\n";

/// A thing of a table with the name of its class.
template <class T>
struct Named {
    T const* thing;
    std::string className;
};

template <class T>
using AllNamed = std::vector<Named<T>>;

template <class T>
AllNamed<T> named(std::vector<T> const& things, std::string T::*name, std::string const& word, CppNames& names) {
    AllNamed<T> all;
    for (T const& thing : things) all.push_back({&thing, names.className(thing.*name, word)});
    return all;
}

std::string getName(std::string const& name) {
    return "    std::string getName() const override { return " + cppString(name) + "; }\n";
}

std::string sectionClass(TableSection const& section, std::string const& className) {
    std::string text = "/// A negative width asks for the standard width.\nclass " + className +
                       " : public vrl::CrossSection {\npublic:\n    " + className +
                       "(double w, double r) : CrossSection(w < 0.0 ? " + cppValue(section.width, "Double") +
                       " : w, r) {\n" + parametersText(8, section.parameters) + "    }\n";
    text += getName(section.name);
    return text + "    std::string describe() const override {\n        return " + cppString(section.description) +
           ";\n    }\n};\n\n";
}

std::string flowClass(TableFlow const& flow, std::string const& className, AllNamed<TableSection> const& sections) {
    std::string text = "class " + className + " : public vrl::ProcessFlow {\npublic:\n";
    if (!flow.parameters.empty())
        text += "    " + className + "() {\n" + parametersText(8, flow.parameters) + "    }\n";
    text += getName(flow.name);
    for (auto const& section : sections)
        if (section.thing->name == flow.crossSection)
            text += "    vrl::CrossSection* createCS(double const& width, double radius) const override {\n"
                    "        return new " +
                    section.className + "(width, radius);\n    }\n";
    return text + "};\n\n";
}

std::string foundrySource(BlockTable const& table, AllNamed<TableSection> const& sections,
                          AllNamed<TableFlow> const& flows) {
    std::string text =
        "#include \"foundry.h\"\n\n#include \"parameters.h\"\n" + std::string(kBegin) + "namespace {\n\n";
    for (auto const& section : sections) text += sectionClass(*section.thing, section.className);
    for (auto const& flow : flows) text += flowClass(*flow.thing, flow.className, sections);
    text += "}  // namespace\n\nFab::Fab() {\n";
    for (auto const& flow : flows)
        text += "    flows.Register<" + flow.className + ">(" + cppString(flow.thing->name) + ");\n";
    for (auto const& section : sections)
        text += "    crossSections.Register<" + section.className + ">(" + cppString(section.thing->name) + ");\n";
    text += choiceText(4, "", table.choice) + parametersText(4, table.parameters);
    return text + "}\n\nstd::string Fab::describe() const {\n    return " + cppString(table.description) + ";\n}\n" +
           kEnd;
}

std::string foundryHeader(BlockTable const& table) {
    return "#pragma once\n\n#include <string>\n\n#include \"vrllib/vrllib.h\"\n" + std::string(kBegin) +
           "/// The foundry: it names its process flows and cross sections, which are in foundry.cpp.\n"
           "class Fab : public vrl::Foundry {\npublic:\n    static constexpr char const* kName = " +
           cppString(table.foundry) +
           ";\n\n    Fab();\n    std::string getName() const override { return kName; }\n"
           "    std::string describe() const override;\n};\n" +
           kEnd;
}

std::string registering(std::string const& className) { return "register" + className; }

std::string blocksHeader(AllNamed<TableBlock> const& blocks) {
    std::string text = "#pragma once\n\n#include <string>\n\n#include \"vrllib/vrllib.h\"\n" + std::string(kBegin) +
                       "using BlockFactory = FactoryArg<std::string, vrl::BB, vrl::Foundry const*>;\n\n"
                       "// Each block is in a file of its own.\n";
    for (auto const& block : blocks) text += "void " + registering(block.className) + "(BlockFactory& factory);\n";
    return text + kEnd;
}

std::string blockSource(Named<TableBlock> const& block) {
    bool const composite = !block.thing->elements.empty();
    return "#include \"blocks.h\"\n" + std::string(composite ? "#include \"connect.h\"\n" : "") +
           "#include \"parameters.h\"\n" + kBegin + "namespace {\n\n" + blockClass(*block.thing, block.className) +
           "\n}  // namespace\n\nvoid " + registering(block.className) +
           "(BlockFactory& factory) {\n    factory.Register<" + block.className + ">(" + block.className +
           "::kKind);\n}\n" + kEnd;
}

std::string entryPoints(AllNamed<TableBlock> const& blocks) {
    std::string text = "#include \"blocks.h\"\n#include \"foundry.h\"\n\n// What the library calls in this plug-in.\n\n"
                       "// The version of vrllib that the plug-in was made for.\n"
                       "VRL_PLUGIN_API_VERSION(VRL_VERSION_MAJOR, VRL_VERSION_MINOR, VRL_VERSION_PATCH);\n\n"
                       "VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {\n"
                       "    factory->Register<PluginName_plugin::Fab>(PluginName_plugin::Fab::kName);\n}\n\n"
                       "VRL_PLUGIN_EXPORT void initLibraryBB(PluginName_plugin::BlockFactory* factory) {\n";
    for (auto const& block : blocks) text += "    PluginName_plugin::" + registering(block.className) + "(*factory);\n";
    return text + "}\n";
}

/// A template with the foundry's name, the blocks and their files in their places.
std::string filled(std::string text, BlockTable const& table, AllNamed<TableBlock> const& blocks) {
    std::string kinds, files;
    for (auto const& block : blocks) {
        kinds += "    " + cppString(block.thing->kind) + ",\n";
        files += "\n    src/" + fileName(block.className) + ".cpp";
    }
    for (auto const& [mark, value] : {std::pair<std::string, std::string>{"\"FoundryName\"", cppString(table.foundry)},
                                      {"    \"BlockKinds\",\n", kinds},
                                      {"\n    BlockFiles", files}})
        for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size()))
            text.replace(at, mark.size(), value);
    return text;
}

}  // namespace

std::vector<StarterFile> tableSources(BlockTable const& table) {
    CppNames names;
    auto const sections = named(table.sections, &TableSection::name, "Section", names);
    auto const flows = named(table.flows, &TableFlow::name, "Flow", names);
    auto const blocks = named(table.blocks, &TableBlock::kind, "Block", names);
    std::vector<StarterFile> files;
    for (StarterFile const& file : tableFiles()) files.push_back({file.path, filled(file.text, table, blocks)});
    files.push_back({"src/blocks.h", blocksHeader(blocks)});
    files.push_back({"src/entry_points.cpp", entryPoints(blocks)});
    files.push_back({"src/foundry.cpp", foundrySource(table, sections, flows)});
    files.push_back({"src/foundry.h", foundryHeader(table)});
    for (auto const& block : blocks) files.push_back({"src/" + fileName(block.className) + ".cpp", blockSource(block)});
    return files;
}

}  // namespace vrltool::starter
