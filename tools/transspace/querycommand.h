// `transspace query`: answers CONTEXT and PATH about FILE in one of three forms.
#pragma once

#include "commandline.h"

namespace cli {

enum class AnswerForm { List, String, Double };

// The last of --list, --string and --double given; List when none is.
AnswerForm answerForm(Arguments const& arguments);

}  // namespace cli
