#pragma once

#include "text/failure.h"
#include "validate/check.h"

namespace vrltool::validate {

/// The bytes of a job for the standard input of a child, and back.
std::string jobBytes(Job const& job);
Job jobOf(std::string const& bytes);

/// Does the one check that standard input asks for, and reports on standard output. What foreign code prints
/// meanwhile goes elsewhere: see printedSoFar. Most checks end the process on the spot.
Outcome runJob();

/// What was printed on standard output and standard error since the last call.
std::string printedSoFar();

/// The first line of a string, shortened, in quotes.
std::string firstLine(std::string const& text);

}  // namespace vrltool::validate
