#pragma once

#include <string>
#include <string_view>

#include "document/command_list.h"
#include "fountain/fountain.h"

namespace testing_support {

/// "003-020 004-017" packed.
[[nodiscard]] document::Commands Packed(std::string_view text);

/// Hears what the panel would hear.
class Listener final : public fountain::FountainListener {
 public:
    int display = -1;  ///< last number shown, -1 for none
    int resets = 0;

    void OnOperatorDisplay(std::uint8_t number) override { display = number; }
    void OnResetDevices() override { ++resets; }
};

/// A reset fountain after the commands of some times: "001-017 | 002-018" are two times.
[[nodiscard]] fountain::Fountain After(std::string_view times);

/// What differs from a reset fountain, the running timers included: "ring1 3/0 join 1" is ring 1 of
/// Group A at 3, Group B at 0, joined. A reset fountain is "".
[[nodiscard]] std::string StateText(const fountain::Fountain& fountain);

}  // namespace testing_support
