#pragma once

#include <string>

namespace vrltool {

/// Says, while it lives, which code of a plug-in is at work, such as "PATH: initLibraryBB". One within another is
/// allowed: the inner one counts.
class ForeignWork {
public:
    explicit ForeignWork(std::string what);
    ForeignWork(ForeignWork const&) = delete;
    ForeignWork& operator=(ForeignWork const&) = delete;
    ~ForeignWork();

private:
    std::string text;
    char const* before;
};

/// Ends the program with status 2 and a line on standard error when foreign work crashes or calls exit; without any at
/// work, a crash stays a crash. With `json` the failure is on standard output, too, as that is now, for programs.
void reportCrashes(bool json);

/// Has a crash end the program by its signal, and exit with its status, for a parent process that looks at it.
void leaveCrashesToParent();

}  // namespace vrltool
