#include "host/config_text.h"

#include <filesystem>

#include "text/failure.h"

namespace vrltool {

namespace {

namespace fs = std::filesystem;

/// A plug-in as lines of the configuration name it.
struct Named {
    std::string folder, name, postfix;
};

/// The characters that end a value or are expanded in it; and lines are read in pieces of 1023 bytes.
void refuseUnwritable(std::string const& plugin, std::string const& folder) {
    std::string const all = folder + plugin;
    if (all.find_first_of("#;\r\n") != std::string::npos || all.find("${") != std::string::npos || folder.size() > 900)
        throw Failure(plugin, "a configuration cannot hold the name of this file or of its folder",
                      "move it into a folder with a plain name");
}

Named namedOf(std::string const& plugin) {
    std::string const head = "lib_wn_", file = fs::path(plugin).filename().string();
    std::error_code error;
    if (!fs::is_regular_file(plugin, error))
        throw Failure(plugin, "there is no such file", "give the file of a plug-in");
    auto const ending = file.find('.', head.size());
    if (file.compare(0, head.size(), head) != 0 || ending == std::string::npos || ending == head.size())
        throw Failure(plugin, "is not named as plug-ins are", "a configuration finds lib_wn_NAME.so.5.1.3 as NAME");
    std::string const folder = fs::canonical(plugin, error).parent_path().string();
    refuseUnwritable(file, folder);
    return {folder, file.substr(head.size(), ending - head.size()), file.substr(ending)};
}

}  // namespace

std::string configText(std::vector<std::string> const& plugins) {
    std::string text = "# The plug-ins that programs with vrllib load, in this order.\n"
                       "#\n"
                       "# sodlldir_clear                  forgets the folders before it\n"
                       "# sodlldir_linux = FOLDER         a folder of plug-ins\n"
                       "# sodllpostfix_linux = ENDING     the ending of their files, such as .so.5.1.3\n"
                       "# sodllfile = NAME                loads lib_wn_NAME and the ending from the folders\n"
                       "sodlldir_clear\n";
    std::string folder, postfix;
    for (std::string const& plugin : plugins) {
        Named const named = namedOf(plugin);
        if (named.folder != folder)
            text += std::string(folder.empty() ? "" : "sodlldir_clear\n") + "sodlldir_linux = " + named.folder + "\n";
        if (named.postfix != postfix) text += "sodllpostfix_linux = " + named.postfix + "\n";
        text += "sodllfile = " + named.name + "\n";
        folder = named.folder;
        postfix = named.postfix;
    }
    return text;
}

}  // namespace vrltool
