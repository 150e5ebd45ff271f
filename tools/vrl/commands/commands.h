#pragma once

namespace vrltool {

class Grammar;

// The commands, each in a file of its own name. Each adds its words to the grammar, and its work.
void addPlugins(Grammar& grammar);
void addList(Grammar& grammar);
void addDescribe(Grammar& grammar);
void addShow(Grammar& grammar);
void addSet(Grammar& grammar);
void addCheck(Grammar& grammar);
void addExplain(Grammar& grammar);
void addDiff(Grammar& grammar);
void addDraw(Grammar& grammar);
void addDoc(Grammar& grammar);
void addImport(Grammar& grammar);
void addExport(Grammar& grammar);
void addValidate(Grammar& grammar);
void addNewPlugin(Grammar& grammar);
void addPrinted(Grammar& grammar);  ///< man page and completion, for the build and the shell

}  // namespace vrltool
