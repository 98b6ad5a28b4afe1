#pragma once

#include <string>

#include "document/command_list.h"

namespace timeline {

/// What is wrong with a command by itself.
struct CommandFault {
    enum class Kind { None, UnknownAddress, NoMeaning };

    Kind kind = Kind::None;
    std::string text;  ///< what is wrong and the fix, to follow the command's name
};

[[nodiscard]] CommandFault FindCommandFault(document::Command command);

}  // namespace timeline
