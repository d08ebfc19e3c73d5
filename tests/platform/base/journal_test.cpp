// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/journal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

#include "platform/contracts/clock.h"

namespace {

// Noon in a zone three and a half hours west of Greenwich.
class WesternClock : public Clock {
 public:
    DateValue Now() const override { return DateValue::FromDays(37322.5); }
    ZonedMoment Moment() const override {
        constexpr int Offset = -12600;
        return {DateValue::FromDays(37322.5).Seconds() - DateSerial(1970, 1, 1).Seconds() - Offset, Offset};
    }
};

class JournalLines : public testing::Test {
 protected:
    JournalLines() { SetClock(&m_clock); }
    ~JournalLines() override {
        SetClock(nullptr);
        journal::UseForm(journal::Form::Text);
        journal::WriteEvents(false);
        journal::SetContext({});
    }
    static std::string Written(const std::function<void()>& write) {
        testing::internal::CaptureStderr();
        write();
        return testing::internal::GetCapturedStderr();
    }
    static std::string Written(const journal::Event& event) {
        return Written([&event] { journal::Write(event); });
    }

 private:
    WesternClock m_clock;
};

const journal::Event Done{
    journal::Level::Info,
    "run-done",
    {journal::Number("schedule", 5), journal::Text("title", "Sales \"north\""),
     journal::Text("outcome", "delivered"), journal::Seconds("seconds", std::chrono::milliseconds(61042))}};

TEST_F(JournalLines, EventIsALineWithLevelNameAndFacts) {
    journal::WriteEvents(true);
    EXPECT_EQ(Written(Done),
              "2002-03-07 12:00:00 info run-done schedule=5 title=\"Sales \\\"north\\\"\" outcome=delivered "
              "seconds=61.042\n");
    EXPECT_EQ(Written({journal::Level::Error, "a", {journal::Text("b", ""), journal::Text("c", "1\n2=3")}}),
              "2002-03-07 12:00:00 error a b=\"\" c=\"1 2=3\"\n");
}

TEST_F(JournalLines, EventsAreOffUnlessTheyAreTurnedOn) {
    EXPECT_EQ(Written(Done), "");
}

TEST_F(JournalLines, EventWithASentenceIsThatSentence) {
    journal::Event event = Done;
    event.sentence = "It is\ndone";
    EXPECT_EQ(Written(event), "2002-03-07 12:00:00 It is done\n");
}

TEST_F(JournalLines, JsonIsOneObjectWithTimeAndOffset) {
    journal::UseForm(journal::Form::Json);
    journal::WriteEvents(true);
    EXPECT_EQ(Written(Done),
              "{\"time\":\"2002-03-07T12:00:00-03:30\",\"level\":\"info\",\"event\":\"run-done\","
              "\"schedule\":5,\"title\":\"Sales \\\"north\\\"\",\"outcome\":\"delivered\","
              "\"seconds\":61.042}\n");
}

TEST_F(JournalLines, JsonEscapesControlCharactersAndReplacesWhatIsNoUtf8) {
    journal::UseForm(journal::Form::Json);
    EXPECT_EQ(Written([] { Journal("a\tb\nc\\d \xC3\xA4 \xFF\x7F"); }),
              "{\"time\":\"2002-03-07T12:00:00-03:30\",\"level\":\"warning\",\"event\":\"message\","
              "\"text\":\"a\\u0009b\\u000ac\\\\d \xC3\xA4 \xEF\xBF\xBD\\u007f\"}\n");
}

// U+009B begins an escape sequence of terminals, U+2028 a line of some readers.
TEST_F(JournalLines, NamesDoNotReachTheTerminalAsCommands) {
    const std::string name =
        "A\x1B[2J\xC2\x9B"
        "31m\xE2\x80\xA8"
        "2002-03-07\x9B\xFF";
    EXPECT_EQ(Written([&] { Journal(name); }),
              "2002-03-07 12:00:00 A [2J 31m 2002-03-07\xEF\xBF\xBD\xEF\xBF\xBD\n");
    journal::UseForm(journal::Form::Json);
    EXPECT_EQ(Written([&] { Journal(name); }),
              "{\"time\":\"2002-03-07T12:00:00-03:30\",\"level\":\"warning\",\"event\":\"message\","
              "\"text\":\"A\\u001b[2J\\u009b31m\\u20282002-03-07\xEF\xBF\xBD\xEF\xBF\xBD\"}\n");
}

// U+202E turns what follows: "txe.tnuocca" would show as "account.ext".
TEST_F(JournalLines, NamesDoNotTurnTheirLine) {
    const std::string name = "A\xE2\x80\xAEtxe\xE2\x81\xA6z";
    EXPECT_EQ(Written([&] { Journal(name); }), "2002-03-07 12:00:00 A txe z\n");
    journal::UseForm(journal::Form::Json);
    EXPECT_EQ(Written([&] { Journal(name); }),
              "{\"time\":\"2002-03-07T12:00:00-03:30\",\"level\":\"warning\",\"event\":\"message\","
              "\"text\":\"A\\u202etxe\\u2066z\"}\n");
}

// The machine's journal takes the rest of a line of 48 KiB for another line, with a severity of its own.
TEST_F(JournalLines, EndlessTextsAreCut) {
    const std::string most(8192, 'x');
    EXPECT_EQ(Written([&] { Journal(most); }), "2002-03-07 12:00:00 " + most + "\n");
    EXPECT_EQ(Written([&] { Journal(most + "<3>forged"); }), "2002-03-07 12:00:00 " + most + "...\n");
    journal::WriteEvents(true);
    EXPECT_EQ(Written({journal::Level::Error, "a", {journal::Text("b", most + "y")}}),
              "2002-03-07 12:00:00 error a b=" + most + "...\n");
    journal::UseForm(journal::Form::Json);
    std::string escapes;
    while (escapes.size() < most.size()) {
        escapes += "\\u000a";
    }
    EXPECT_EQ(Written([&] { Journal(std::string(100'000, '\n')); }),
              "{\"time\":\"2002-03-07T12:00:00-03:30\",\"level\":\"warning\",\"event\":\"message\","
              "\"text\":\"" +
                  escapes + "...\"}\n");
}

TEST_F(JournalLines, ValueWithALineBreakIsOneWord) {
    journal::WriteEvents(true);
    EXPECT_EQ(Written({journal::Level::Error, "a", {journal::Text("title", "x\noutcome\ndelivered")}}),
              "2002-03-07 12:00:00 error a title=\"x outcome delivered\"\n");
}

TEST_F(JournalLines, ContextBelongsToEveryEventAndToEveryLineOfJson) {
    journal::SetContext({journal::Number("schedule", 5)});
    journal::WriteEvents(true);
    EXPECT_EQ(Written({journal::Level::Notice, "alert-sent", {journal::Text("to", "boss")}}),
              "2002-03-07 12:00:00 notice alert-sent schedule=5 to=boss\n");
    EXPECT_EQ(Written([] { Journal("As before"); }), "2002-03-07 12:00:00 As before\n");
    journal::UseForm(journal::Form::Json);
    EXPECT_EQ(Written([] { Journal("As before"); }),
              "{\"time\":\"2002-03-07T12:00:00-03:30\",\"level\":\"warning\",\"event\":\"message\","
              "\"schedule\":5,\"text\":\"As before\"}\n");
}

void WriteToTheJournalsStream(bool isItsOwn) {
    struct stat own {};
    fstat(STDERR_FILENO, &own);
    const std::string stream =
        std::to_string(own.st_dev) + ":" + std::to_string(own.st_ino + (isItsOwn ? 0 : 1));
    setenv("JOURNAL_STREAM", stream.c_str(), 1);
    Journal("A line");
    journal::WriteEvents(true);
    journal::Write(Done);
    ::_exit(0);
}

// Each in a new process: the stream is looked at once.
TEST_F(JournalLines, LinesOfAJournalsStreamBeginWithTheirSeverity) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(WriteToTheJournalsStream(true), testing::ExitedWithCode(0),
                "^<4>2002-03-07 12:00:00 A line\n<6>2002-03-07 12:00:00 info run-done ");
    EXPECT_EXIT(WriteToTheJournalsStream(false), testing::ExitedWithCode(0),
                "^2002-03-07 12:00:00 A line\n2002-03-07 12:00:00 info run-done ");
}

}  // namespace
