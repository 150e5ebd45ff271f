#include "cli/grammar.h"
#include "commands/commands.h"

int main(int argc, char** argv) {
    using namespace vrltool;
    Grammar grammar;
    for (auto const add : {addPlugins, addList, addDescribe, addShow, addSet, addCheck, addExplain, addDiff, addDraw,
                           addDoc, addImport, addExport, addValidate, addNewPlugin, addPrinted})
        add(grammar);
    return grammar.run(argc, argv);
}
