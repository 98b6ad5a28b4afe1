#pragma once

#include <cstdint>

#include "document/command_list.h"
#include "fountain/fountain.h"

namespace panel {

/// Replaces `replace` bits of the last command at `address` whose data agrees with `data` in the
/// `mask` bits; appends the command where there is none. What a list commands twice is decided by
/// the last command, so that one must take the new value.
void Put(document::Commands& commands, int address, int data, int mask, int replace);

/// One command per address: its data is replaced, or the command appended.
void PutOnly(document::Commands& commands, int address, int data);

/// Removes every command for which `predicate(document::Command)` holds.
template <typename Predicate>
void RemoveCommands(document::Commands& commands, Predicate predicate)
{
    document::Commands kept;
    for (int k = 0; k < document::CommandCount(commands); ++k)
        if (!predicate(document::CommandAt(commands, k)))
            kept.append(commands, static_cast<std::size_t>(k) * 2, 2);
    commands = kept;
}

/// Rewrites the data of every command: `data(document::Command)` gives the new byte.
template <typename NewData>
void RewriteData(document::Commands& commands, NewData data)
{
    for (int k = 0; k < document::CommandCount(commands); ++k)
        commands[static_cast<std::size_t>(k) * 2 + 1] =
            static_cast<char>(data(document::CommandAt(commands, k)));
}

/// Applies `commands` with nobody listening.
void Apply(fountain::Fountain& fountain, const document::Commands& commands);

/// The fountain after `commands`, from `before`.
[[nodiscard]] fountain::Fountain After(const fountain::Fountain& before,
                                       const document::Commands& commands);

}  // namespace panel
