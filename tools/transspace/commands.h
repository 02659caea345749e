// The commands of `transspace`, run on parsed options; each returns the process's exit status.
#pragma once

#include <iosfwd>
#include <string>

#include "options.h"

namespace cli {

enum ExitStatus { Answered = 0, NoResult = 1, BadInput = 2 };

// Compact XML re-serialised with pretty printing, as `dict --pretty` shows an XML file; the text
// road of a system file's dictionary gives the same bytes for its document's compact text.
std::string indent(std::string const& xml);

// Runs the command of `options` with the library's value space; output to `out`, messages to `err`.
int run(Options const& options, std::ostream& out, std::ostream& err);

}  // namespace cli
