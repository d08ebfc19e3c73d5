// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/codec.h"

#include <gmock/gmock.h>

#include "platform/reports/worker/frames.h"
#include "platform/reports/worker/operations.h"

namespace reports::worker::test {
namespace {

Operation Everything() {
    return AddValue{3, 4, Variant("text with \0 in it")};
}

TEST(WorkerCodec, EveryKindOfParameterValueArrives) {
    for (const report::ParameterValue& value :
         {report::ParameterValue(1.5), report::ParameterValue(true),
          report::ParameterValue(std::string("a\0b", 3)), report::ParameterValue(DateSerial(2026, 11, 22)),
          report::ParameterValue(Variant()), report::ParameterValue(Variant(7)),
          report::ParameterValue(Variant(0.25)),
          report::ParameterValue(Variant("Gr\xC3\xBC\xC3\x9F"
                                         "e"))}) {
        const auto read = Decoded<AddValue>(Encoded(AddValue{3, 4, value}));
        EXPECT_EQ(read.report, 3);
        EXPECT_EQ(read.field, 4);
        EXPECT_EQ(read.value, value);
    }
}

TEST(WorkerCodec, DescriptionOfAReportArrives) {
    const Opened sent{
        7, 2, "Sales", "by region", "{Year} > 2000", {{9, false, "Year", "Which year?"}, {7, true, "n", ""}}};
    const auto read = Decoded<Opened>(Encoded(sent));
    EXPECT_EQ(read.report, 7);
    EXPECT_EQ(read.tables, 2);
    EXPECT_EQ(read.title + read.description + read.formula, "Salesby region{Year} > 2000");
    ASSERT_EQ(read.fields.size(), 2U);
    EXPECT_EQ(read.fields[0].prompt, "Which year?");
    EXPECT_TRUE(read.fields[1].isWholeNumber);
}

TEST(WorkerCodec, MessageThatIsCutOffIsRefusedWhereverThatIs) {
    const std::string whole = Encoded(Everything());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_THROW(Decoded<Operation>(whole.substr(0, size)), BadMessage) << size;
    }
    EXPECT_NO_THROW(Decoded<Operation>(whole));
    EXPECT_THROW(Decoded<Operation>(whole + "x"), BadMessage);
}

TEST(WorkerCodec, AnyByteMayBeWrong) {
    const std::string whole = Encoded(Everything());
    for (std::size_t place = 0; place < whole.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = whole;
            changed[place] = static_cast<char>(byte);
            try {
                Decoded<Operation>(changed);
            } catch (const BadMessage&) {
                continue;
            }
        }
    }
}

TEST(WorkerCodec, CountsAndKindsAreHeldAgainstWhatIsThere) {
    Writer many;
    many.Put(~std::uint64_t{0});
    EXPECT_THROW(Decoded<Texts>(many.Take()), BadMessage);
    EXPECT_THROW(Decoded<Operation>(std::string(1, static_cast<char>(std::variant_size_v<Operation>))),
                 BadMessage);
    std::string field = Encoded(Field{1, true, "", ""});
    field[sizeof(int)] = 2;
    EXPECT_THROW(Decoded<Field>(field), BadMessage);
    Writer moment;
    moment.Put(std::int64_t{1} << 60);
    DateValue date;
    const std::string bytes = moment.Take();
    EXPECT_THROW(Reader(bytes).Get(date), BadMessage);
}

TEST(WorkerFrames, HeadIsRefusedForAnUnknownKindAndALongBody) {
    std::string frame = Framed(Kind::Answer, "body");
    EXPECT_EQ(HeadOf(frame).size, 4U);
    frame[4] = 4;
    EXPECT_THROW(HeadOf(frame), BadMessage);
    frame = Framed(Kind::Answer, "body");
    frame[3] = 1;  // 16 MB and 4 bytes
    EXPECT_THROW(HeadOf(frame), BadMessage);
    EXPECT_THROW(Framed(Kind::Answer, std::string(LongestBody + 1, 'x')), BadMessage);
}

}  // namespace
}  // namespace reports::worker::test
