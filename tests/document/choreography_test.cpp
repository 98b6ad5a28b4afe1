#include "document/choreography.h"

#include <gtest/gtest.h>

#include "packed.h"

namespace {

using document::Choreography;
using testing_support::Packed;

TEST(Choreography, FindsInsertsStoresAndErasesSlots)
{
    Choreography show;
    EXPECT_EQ(document::SlotAtOrBefore(show, document::kEndSentinel), -1);
    EXPECT_EQ(document::SlotAt(show, document::kEndSentinel), -1);
    InsertSlot(show, 0, 2000, Packed("099-000"));
    InsertSlot(show, 0, 1000, Packed("003-020"));
    InsertSlot(show, 2, 3000, Packed("004-020"));
    EXPECT_EQ(show.lngTime, (std::vector{1000, 2000, 3000, document::kEndSentinel}));
    EXPECT_EQ(show.blnReset, (std::vector<std::uint8_t>{0, 1, 0, 0}));

    const struct {
        std::int32_t time;
        std::int32_t atOrBefore;
        std::int32_t at;
    } cases[] = {{0, -1, -1},   {999, -1, -1}, {1000, 0, 0},  {1001, 0, -1},
                 {2999, 1, -1}, {3000, 2, 2},  {3001, 2, -1}, {document::kEndSentinel + 1, 2, -1}};
    for (const auto& c : cases) {
        EXPECT_EQ(document::SlotAtOrBefore(show, c.time), c.atOrBefore) << c.time;
        EXPECT_EQ(document::SlotAt(show, c.time), c.at) << c.time;
    }

    StoreCommands(show, 0, Packed("099-000 003-020"));
    StoreCommands(show, 1, Packed("003-020"));
    EXPECT_EQ(show.blnReset, (std::vector<std::uint8_t>{1, 0, 0, 0}));
    EraseSlot(show, 1);
    EXPECT_EQ(show.lngTime, (std::vector{1000, 3000, document::kEndSentinel}));
    EXPECT_EQ(show.strCommands[1], Packed("004-020"));
    EXPECT_EQ(show.lngLastSlot(), 2);
}

TEST(ControlFileCaption, ShowsOnlyFilesThatExist)
{
    Choreography show;
    show.fileName = "/Shows/FINALE \xC3\x84.Ctl";
    EXPECT_EQ(ControlFileCaption(show), "unsaved choreography");
    show.fileExists = true;
    EXPECT_EQ(ControlFileCaption(show), "/shows/finale \xC3\x84.ctl");
}

}  // namespace
