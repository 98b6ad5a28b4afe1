#include "panel/list_edit.h"

namespace panel {
namespace {

class Deaf : public fountain::FountainListener {
    void OnOperatorDisplay(std::uint8_t) override {}
    void OnResetDevices() override {}
};

}  // namespace

void Put(document::Commands& commands, int address, int data, int mask, int replace)
{
    for (int k = document::CommandCount(commands); k-- > 0;) {
        const document::Command command = document::CommandAt(commands, k);
        if (command.address != address || (command.data & mask) != (data & mask))
            continue;
        commands[static_cast<std::size_t>(k) * 2 + 1] =
            static_cast<char>((command.data & ~replace) | data);
        return;
    }
    document::AddCommand(commands, {.Address = static_cast<std::int16_t>(address),
                                    .Data = static_cast<std::int16_t>(data)});
}

void PutOnly(document::Commands& commands, int address, int data)
{
    Put(commands, address, data, 0, 255);
}

void Apply(fountain::Fountain& fountain, const document::Commands& commands)
{
    Deaf deaf;
    fountain.ApplyCommands(commands, deaf);
}

fountain::Fountain After(const fountain::Fountain& before, const document::Commands& commands)
{
    fountain::Fountain fountain = before;
    Apply(fountain, commands);
    return fountain;
}

}  // namespace panel
