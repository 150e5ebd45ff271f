#include "validate/isolated.h"

#include "system/process.h"
#include "validate/plugin.h"

namespace vrltool::validate {

namespace {

// Each string ends in a zero byte; the first is the trouble. An end without any shows that the work did not finish.
std::string bytesOf(std::function<std::vector<std::string>()> const& work) {
    std::vector<std::string> strings;
    std::string bytes = throwsText([&] { strings = work(); }) + '\0';
    for (std::string const& string : strings) bytes += string + '\0';
    return bytes;
}

IsolatedResult resultOf(std::string const& bytes) {
    IsolatedResult result;
    auto end = bytes.find('\0');
    result.trouble = bytes.substr(0, end);
    for (auto start = end + 1; (end = bytes.find('\0', start)) != std::string::npos; start = end + 1)
        result.strings.push_back(bytes.substr(start, end - start));
    return result;
}

}  // namespace

IsolatedResult workIsolated(std::function<std::vector<std::string>()> const& work, unsigned seconds) {
    ProcessResult const process = runCopy([&] { return bytesOf(work); }, seconds);
    if (!process.fine() || process.out.empty()) return {process.how(), {}};
    return resultOf(process.out);
}

}  // namespace vrltool::validate
