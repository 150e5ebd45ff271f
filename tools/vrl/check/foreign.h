#pragma once

#include <exception>
#include <iostream>
#include <sstream>
#include <string>

namespace vrltool::check {

/// Takes what is written to std::cout and std::cerr while it lives, and forgets it: plug-ins and the library talk there
/// while they are asked.
class Hush {
public:
    Hush() : out(std::cout.rdbuf(text.rdbuf())), err(std::cerr.rdbuf(text.rdbuf())) {}
    Hush(Hush const&) = delete;
    Hush& operator=(Hush const&) = delete;
    ~Hush() {
        std::cout.rdbuf(out);
        std::cerr.rdbuf(err);
    }

private:
    std::ostringstream text;
    std::streambuf* out;
    std::streambuf* err;
};

/// Runs work in which code of a plug-in is called. False if it threw, whatever it was; `text` then tells what.
template <class Work>
bool contained(Work work, std::string* text = nullptr) {
    Hush const hush;
    std::string thrown = "something that is no text";
    try {
        work();
        return true;
    } catch (std::exception const& error) {
        thrown = error.what();
    } catch (char const* error) {
        thrown = error;
    } catch (std::string const& error) {
        thrown = error;
    } catch (...) {  // a plug-in may throw anything, and one that does must not end the check
    }
    if (text) *text = thrown;
    return false;
}

}  // namespace vrltool::check
