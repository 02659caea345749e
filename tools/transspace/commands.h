// The commands of `transspace`, run on parsed options; each returns the process's exit status.
#pragma once

#include <iosfwd>

#include "options.h"

namespace cli {

enum ExitStatus { Answered = 0, NoResult = 1, BadInput = 2 };

// Runs the command of `options` with the library's value space; output to `out`, messages to `err`.
int run(Options const& options, std::ostream& out, std::ostream& err);

}  // namespace cli
