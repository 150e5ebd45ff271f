#pragma once

namespace vrltool {

/// Sends what is written to standard output to standard error while it lives: foreign code is at work.
class QuietOutput {
public:
    QuietOutput();
    QuietOutput(QuietOutput const&) = delete;
    QuietOutput& operator=(QuietOutput const&) = delete;
    ~QuietOutput();

private:
    int kept;
};

}  // namespace vrltool
