#include "validate/report.h"

#include <unistd.h>

#include <nlohmann/json.hpp>

#include "text/failure.h"
#include "text/json.h"

namespace vrltool::validate {

void Report::send(char const* what, std::vector<std::string> const& texts) {
    std::string const line = Json{{what, texts}}.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
    for (std::size_t done = 0; done < line.size();) {
        ssize_t const count = write(descriptor, line.data() + done, line.size() - done);
        if (count <= 0) _exit(static_cast<int>(Outcome::kFailed));
        done += static_cast<std::size_t>(count);
    }
}

void Report::step(std::string const& doing, std::string const& thing, std::string const& hint) {
    send("step", {doing, thing, hint});
}

void Report::find(std::string const& thing, std::string const& what, std::string const& hint) {
    ++findings;
    send("find", {thing, what, hint});
}

void Report::note(std::string const& text) { send("note", {text}); }
void Report::notRun(std::string const& why) { send("notRun", {why}); }
void Report::done() { send("done", {}); }

}  // namespace vrltool::validate
