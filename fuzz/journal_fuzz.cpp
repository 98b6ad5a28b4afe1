#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "document/journal_format.h"
#include "require_order.h"

namespace {

using document::Choreography;
using document::JournalContent;
using fuzzing::Require;
using fuzzing::RequireOrder;

void PutNumber(std::string& bytes, std::uint32_t number)
{
    for (int k = 0; k < 4; ++k)
        bytes += static_cast<char>(number >> (8 * k) & 0xFF);
}

// The fuzzer finds no checksum: records whose two first bytes are their size get a right one.
std::string WithChecksums(std::string_view data)
{
    std::string bytes = document::JournalHeader("show.ctl", {}) + document::JournalSnapshot({});
    while (data.size() > 2) {
        const std::size_t size = static_cast<unsigned char>(data[0]) +
                                 std::size_t{256} * static_cast<unsigned char>(data[1]);
        const std::string_view body = data.substr(2, size);
        PutNumber(bytes, static_cast<std::uint32_t>(body.size()));
        PutNumber(bytes, document::Checksum(body));
        bytes += body;
        data.remove_prefix(std::min(data.size(), size + 2));
    }
    return bytes;
}

// What was recovered can be recovered again.
void RequireSound(const JournalContent& content)
{
    RequireOrder(content.show);
    const auto again =
        document::ReadJournalText(document::JournalHeader(content.fileName, content.opened) +
                                  document::JournalSnapshot(content.show));
    Require(again.has_value() && again->show == content.show && again->opened == content.opened);
}

}  // namespace

/// Whatever the bytes are, reading them gives nothing or a choreography in order.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto raw = document::ReadJournalText(bytes);
    if (raw)
        RequireSound(*raw);
    const auto framed = document::ReadJournalText(WithChecksums(bytes));
    Require(framed.has_value());
    RequireSound(*framed);
    return 0;
}
