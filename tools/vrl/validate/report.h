#pragma once

#include <string>
#include <vector>

namespace vrltool::validate {

/// What a check reports, while it works and at its end. It goes to the parent process line by line, so that the parent
/// knows how far a check came that crashed.
class Report {
public:
    /// Writes to that file descriptor.
    explicit Report(int to) : descriptor(to) {}
    Report(Report const&) = delete;
    Report& operator=(Report const&) = delete;

    /// Foreign code is about to run: "making the block 'sfBend'". Of the thing that it is about, only the first process
    /// that ends there is reported. Without a hint, that of the check applies.
    void step(std::string const& doing, std::string const& thing = "", std::string const& hint = "");
    /// Something is wrong. Without a hint, that of the check applies.
    void find(std::string const& thing, std::string const& what, std::string const& hint = "");
    /// What a check that passes has to say: "12 blocks".
    void note(std::string const& text);
    /// The check does not apply, or cannot work.
    void notRun(std::string const& why);
    /// The check came to its end. Nothing is reported after it.
    void done();
    /// Whether anything is wrong so far.
    bool clean() const { return findings == 0; }
    unsigned findingCount() const { return findings; }

private:
    void send(char const* what, std::vector<std::string> const& texts);

    int descriptor;
    unsigned findings = 0;
};

}  // namespace vrltool::validate
