#pragma once

namespace vrltool {

/// Lets calls into plug-ins be made first in a way that is fast and cannot say what is at work.
///
/// Should they crash or end the program meanwhile, a copy of this program, made before, goes on in its place and makes
/// them with care; this one ends as the copy does. One at a time.
class SecondTry {
public:
    /// Returns in the copy as well, once it is needed.
    SecondTry();
    SecondTry(SecondTry const&) = delete;
    SecondTry& operator=(SecondTry const&) = delete;
    /// The copy is not needed.
    ~SecondTry();

    /// Whether to be careful: in the copy, and where the system starts none.
    bool isNow() const { return copy <= 0; }

    /// Hands over to the copy if there is one, and then does not return. Safe in a handler of signals.
    static void handOver();

private:
    int copy = -1;
};

}  // namespace vrltool
