// SPDX-License-Identifier: GPL-3.0-or-later
// Messages as a mail reader sees them: written to an outbox and parsed.
#include <fcntl.h>
#include <gmime/gmime.h>

#include <regex>
#include <set>
#include <string_view>

#include "mail_fixture.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/export_formats.h"
#include "platform/mail/message/message_writer.h"
#include "support/time_zone.h"

namespace {

std::string Text(const char* text) {
    return text != nullptr ? text : "";
}

class FixedClock : public Clock {
 public:
    DateValue Now() const override {
        const DateValue day = DateSerial(2024, 2, 29);
        return DateValue::FromSeconds(day.Seconds() + TimeSerial(13, 5, 7).Seconds());
    }
};

class ZonedClock : public Clock {
 public:
    DateValue Now() const override {
        const DateValue day = DateSerial(2026, 10, 25);
        return DateValue::FromSeconds(day.Seconds() + TimeSerial(2, 30, 0).Seconds());
    }
    ZonedMoment Moment() const override { return InMachineZone(seconds); }
    std::int64_t seconds = 0;  // since 1970
};

class ParsedMessage {
 public:
    explicit ParsedMessage(const std::string& bytes) {
        g_mime_init();
        GMimeStream* stream = g_mime_stream_mem_new_with_buffer(bytes.data(), bytes.size());
        GMimeParser* parser = g_mime_parser_new_with_stream(stream);
        m_message = g_mime_parser_construct_message(parser, nullptr);
        g_object_unref(parser);
        g_object_unref(stream);
    }
    ~ParsedMessage() { g_object_unref(m_message); }
    ParsedMessage(const ParsedMessage&) = delete;
    ParsedMessage& operator=(const ParsedMessage&) = delete;

    std::string Subject() const { return Text(g_mime_message_get_subject(m_message)); }
    std::string Header(const char* name) const {
        return Text(g_mime_object_get_header(GMIME_OBJECT(m_message), name));
    }
    int HeaderCount() const {
        return g_mime_header_list_get_count(g_mime_object_get_header_list(GMIME_OBJECT(m_message)));
    }
    InternetAddressList* To() const { return g_mime_message_get_addresses(m_message, GMIME_ADDRESS_TYPE_TO); }

    int PartCount() const {
        GMimeObject* part = g_mime_message_get_mime_part(m_message);
        return GMIME_IS_MULTIPART(part) ? g_mime_multipart_get_count(GMIME_MULTIPART(part)) : 1;
    }
    GMimePart* Part(int index) const {
        GMimeObject* part = g_mime_message_get_mime_part(m_message);
        return GMIME_PART(GMIME_IS_MULTIPART(part) ? g_mime_multipart_get_part(GMIME_MULTIPART(part), index)
                                                   : part);
    }
    std::string Type(int index) const {
        GMimeContentType* type = g_mime_object_get_content_type(GMIME_OBJECT(Part(index)));
        char* text = g_mime_content_type_get_mime_type(type);
        const std::string result = Text(text);
        g_free(text);
        return result;
    }
    std::string FileName(int index) const { return Text(g_mime_part_get_filename(Part(index))); }
    std::string Content(int index) const {
        GMimeStream* stream = g_mime_stream_mem_new();
        g_mime_data_wrapper_write_to_stream(g_mime_part_get_content(Part(index)), stream);
        const GByteArray* bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream));
        const std::string content(reinterpret_cast<const char*>(bytes->data), bytes->len);
        g_object_unref(stream);
        return content;
    }

 private:
    GMimeMessage* m_message = nullptr;
};

std::string Repeated(const std::string& text, int times) {
    std::string all;
    for (; times > 0; --times) {
        all += text;
    }
    return all;
}

std::vector<std::string> Lines(const std::string& bytes) {
    std::vector<std::string> lines;
    for (std::size_t start = 0, end = 0; (end = bytes.find("\r\n", start)) != std::string::npos;
         start = end + 2) {
        lines.push_back(bytes.substr(start, end - start));
    }
    return lines;
}

std::string NameOf(InternetAddressList* list, int index) {
    return Text(internet_address_get_name(internet_address_list_get_address(list, index)));
}

// Returns the decoded text of each encoded word and each encoded part of a file name on a line.
std::vector<std::string> EncodedPieces(const std::string& line) {
    static const std::regex word("=\\?utf-8\\?([bq])\\?([^?]*)\\?=|name\\*[0-9]*\\*?=(?:utf-8'')?([^;]*)",
                                 std::regex::icase);
    std::vector<std::string> pieces;
    for (std::sregex_iterator at(line.begin(), line.end(), word), end; at != end; ++at) {
        const bool isBase64 = at->str(1) == "b" || at->str(1) == "B";
        std::string text = at->str(2) + at->str(3);
        if (isBase64) {
            gsize length = 0;
            guchar* bytes = g_base64_decode(text.c_str(), &length);
            text.assign(reinterpret_cast<char*>(bytes), length);
            g_free(bytes);
        } else {
            const char mark = at->str(1).empty() ? '%' : '=';
            std::string decoded;
            for (std::size_t i = 0; i < text.size(); ++i) {
                decoded += text[i] == mark ? static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16))
                                           : text[i];
                i += text[i] == mark ? 2 : 0;
            }
            text = decoded;
        }
        pieces.push_back(text);
    }
    return pieces;
}

class MailContent : public MailTest {
 public:
    void SetUp() override {
        WriteOutboxProfile();
        m_message = MakeMessage({"Ann <ann@example.com>"});
    }
    std::string SentBytes() {
        m_message->Send();
        const auto files = FilesIn(Outbox());
        return files.size() == 1 ? ReadBytes(files[0]) : "";
    }

 protected:
    std::unique_ptr<MAPI::Message> m_message;
};

}  // namespace

TEST_F(MailContent, PlainTextWithoutAttachmentsIsOnePart) {
    const ParsedMessage sent(SentBytes());
    EXPECT_EQ(sent.PartCount(), 1);
    EXPECT_EQ(sent.Type(0), "text/plain");
    EXPECT_EQ(sent.Content(0), "Please find the report.\r\n");
    EXPECT_EQ(sent.Header("From"), "Reports <reports@example.com>");
    EXPECT_EQ(sent.Header("To"), "Ann <ann@example.com>");
    EXPECT_EQ(sent.Header("Importance"), "");
    EXPECT_TRUE(sent.Header("Message-Id").ends_with("@example.com>")) << sent.Header("Message-Id");
}

TEST_F(MailContent, HighImportanceIsToldInAllThreeWays) {
    m_message->Importance = MAPI::ImportanceHigh;
    const ParsedMessage sent(SentBytes());
    EXPECT_EQ(sent.Header("Importance"), "high");
    EXPECT_EQ(sent.Header("X-Priority"), "1");
    EXPECT_EQ(sent.Header("Priority"), "urgent");
}

TEST_F(MailContent, DateIsTheClocksInTheMachinesZone) {
    const FixedClock clock;
    SetClock(&clock);
    const TimeZone zone("UTC-2");
    const std::string bytes = SentBytes();
    SetClock(nullptr);
    EXPECT_NE(bytes.find("Date: Thu, 29 Feb 2024 13:05:07 +0200\r\n"), std::string::npos) << bytes;
}

// In the night of 25 October 2026 the hour from two to three occurs twice.
TEST_F(MailContent, DateOfADoubledHourHasTheOffsetOfItsMoment) {
    const TimeZone zone("Europe/Berlin");
    ZonedClock clock;
    SetClock(&clock);
    clock.seconds = 1792888200;
    const std::string first = SentBytes();
    std::filesystem::remove_all(Outbox());
    clock.seconds += 3600;
    const std::string second = SentBytes();
    SetClock(nullptr);
    EXPECT_NE(first.find("Date: Sun, 25 Oct 2026 02:30:00 +0200\r\n"), std::string::npos) << first;
    EXPECT_NE(second.find("Date: Sun, 25 Oct 2026 02:30:00 +0100\r\n"), std::string::npos) << second;
}

TEST_F(MailContent, MessageWithADateBearsThatOne) {
    m_message->Date = ZonedMoment{1792888200, -12600};
    EXPECT_EQ(ParsedMessage(SentBytes()).Header("Date"), "Sat, 24 Oct 2026 21:00:00 -0330");
    m_message->Date = std::nullopt;
    std::filesystem::remove_all(Outbox());
    EXPECT_NE(ParsedMessage(SentBytes()).Header("Date"), "Sat, 24 Oct 2026 21:00:00 -0330");
}

// Message-ID

TEST_F(MailContent, MessagesOfOneIdentityBearOneMessageId) {
    const auto idOf = [this](const std::string& identity) {
        std::filesystem::remove_all(Outbox());
        m_message->Identity = identity;
        return ParsedMessage(SentBytes()).Header("Message-Id");
    };
    const std::string id = idOf("/home/ann/store\nschedule\n7\n2026-11-22 07:00");
    EXPECT_EQ(id.size(), std::string("<>@example.com").size() + 32);
    EXPECT_EQ(idOf("/home/ann/store\nschedule\n7\n2026-11-22 07:00"), id);
    EXPECT_NE(idOf("/home/ann/store\nschedule\n7\n2026-11-23 07:00"), id);
    EXPECT_NE(idOf("/home/ann/store\nschedule\n8\n2026-11-22 07:00"), id);
    EXPECT_NE(idOf("/home/bob/store\nschedule\n7\n2026-11-22 07:00"), id);
    EXPECT_EQ(id.find("ann"), std::string::npos);
    const std::string first = idOf("");
    EXPECT_NE(idOf(""), first);
}

TEST_F(MailContent, SubjectAndBodyOfAnyLanguageSurvive) {
    m_message->Subject = "Umsätze für März – 売上";
    m_message->Text = "Grüße\r\nZeile\rdrei – 売上\n";
    const std::string bytes = SentBytes();
    const ParsedMessage sent(bytes);
    EXPECT_EQ(sent.Subject(), "Umsätze für März – 売上");
    EXPECT_EQ(sent.Content(0), "Grüße\r\nZeile\r\ndrei – 売上\r\n");
    EXPECT_TRUE(std::all_of(bytes.begin(), bytes.end(), [](char character) { return character >= 0; }));
}

TEST_F(MailContent, NoTextBreaksOutOfItsHeader) {
    const int plain = ParsedMessage(SentBytes()).HeaderCount();
    std::filesystem::remove_all(Outbox());
    m_message->Subject = "Hello\r\nBcc: eve@example.com\r\n\r\nbody";
    m_message->Attachments().Add().Source = WriteFile("a\nBcc: eve@example.com\".pdf", "x");
    const ParsedMessage sent(SentBytes());
    EXPECT_EQ(sent.HeaderCount(), plain);
    EXPECT_EQ(sent.Header("Bcc"), "");
    EXPECT_EQ(sent.Subject(), "Hello  Bcc: eve@example.com    body");
    EXPECT_EQ(sent.FileName(1), "a Bcc: eve@example.com\".pdf");
}

TEST_F(MailContent, AttachmentsKeepTheirBytesNamesAndKinds) {
    std::string bytes;
    for (int value = 0; value < 70000; ++value) {
        bytes += static_cast<char>(value * 7);
    }
    m_message->Attachments().Add().Source = WriteFile("sales.pdf", bytes);
    m_message->Attachments().Add().Source = WriteFile("Übersicht März.XLS", "\r\n\n\r mixed \r\n");
    m_message->Attachments().Add().Source = WriteFile("page.htm", "<p>a\nb\r\nc</p>\n");
    m_message->Attachments().Add().Source = WriteFile("unknown.zzz", "");
    const ParsedMessage sent(SentBytes());
    ASSERT_EQ(sent.PartCount(), 5);
    EXPECT_EQ(sent.Type(0), "text/plain");
    EXPECT_EQ(sent.Type(1), "application/pdf");
    EXPECT_EQ(sent.Content(1), bytes);
    EXPECT_EQ(sent.FileName(1), "sales.pdf");
    EXPECT_EQ(sent.Type(2), "application/vnd.ms-excel");
    EXPECT_EQ(sent.Content(2), "\r\n\n\r mixed \r\n");
    EXPECT_EQ(sent.FileName(2), "Übersicht März.XLS");
    EXPECT_EQ(sent.Type(3), "text/html");
    EXPECT_EQ(sent.Content(3), "<p>a\nb\r\nc</p>\n");
    EXPECT_EQ(sent.Type(4), "application/octet-stream");
    EXPECT_EQ(sent.Content(4), "");
}

// A reader chooses the program that opens a file by its type.
TEST_F(MailContent, EveryFormatOfAnExportHasATypeOfItsOwn) {
    std::set<std::string> types;
    for (const report::FormatRow& row : report::FormatTable) {
        // A user may save a file under the word.
        for (const std::string_view ending : {row.extension, row.word}) {
            m_message->Attachments().Add().Source = WriteFile("sales." + std::string(ending), "x");
        }
    }
    const ParsedMessage sent(SentBytes());
    int part = 0;
    for (const report::FormatRow& row : report::FormatTable) {
        const std::string type = sent.Type(++part);
        EXPECT_NE(type, "application/octet-stream") << row.extension;
        EXPECT_TRUE(types.insert(type).second) << row.extension << " has the type of another format";
        EXPECT_EQ(sent.Type(++part), type) << row.word;
    }
}

TEST_F(MailContent, NoLineIsLongerThanMailAllows) {
    m_message->Subject = std::string(3000, 's');
    m_message->Text = std::string(5000, 'w') + "\n";
    m_message->Attachments().Add().Source = WriteFile(std::string(200, 'n') + ".pdf", std::string(5000, 'b'));
    const std::string bytes = SentBytes();
    std::size_t start = 0;
    while (start < bytes.size()) {
        const std::size_t end = bytes.find("\r\n", start);
        ASSERT_NE(end, std::string::npos);
        EXPECT_LE(end - start, 998u) << bytes.substr(start, 60);
        start = end + 2;
    }
    const ParsedMessage sent(bytes);
    EXPECT_EQ(sent.Content(0), std::string(5000, 'w') + "\r\n");
}

// The header lines of the message and of its parts.
TEST_F(MailContent, HeaderLinesHaveSeventyEightCharactersAtMost) {
    m_message->Subject = "Gr\u00fc\u00dfe " + std::string(200, 's') + " \u65e5\u672c\u8a9e " +
                         Repeated("\u65e5\u672c\u8a9e", 20) +
                         " and a rather long end of it, so that it is folded where there are blanks";
    for (const std::string& name :
         {std::string("B\u00fcrgermeisterin der Stadt M\u00f6nchengladbach und Umgebung, Abteilung f\u00fcr "
                      "\u00d6ffentlichkeit"),
          Repeated("\u65e5\u672c\u8a9e", 20), std::string(120, 'n'),
          std::string("A long name of somebody who has a long name, of somebody who has a long name")}) {
        m_message->Recipients().Add("\"" + name + "\" <" + std::to_string(name.size()) + "@example.com>");
    }
    m_message->Attachments().Add().Source =
        WriteFile("\u00dcbersicht " + Repeated("\u65e5\u672c\u8a9e", 15) + ".xlsx", "x");
    m_message->Attachments().Add().Source = WriteFile(std::string(200, 'n') + ".docx", "x");
    const std::string bytes = SentBytes();
    for (const std::string& line : Lines(bytes)) {
        EXPECT_LE(line.size(), 78u) << line;
    }
    const ParsedMessage sent(bytes);
    EXPECT_EQ(sent.Subject(), m_message->Subject);
    EXPECT_EQ(sent.FileName(1), "\u00dcbersicht " + Repeated("\u65e5\u672c\u8a9e", 15) + ".xlsx");
    EXPECT_EQ(sent.FileName(2), std::string(200, 'n') + ".docx");
    ASSERT_EQ(internet_address_list_length(sent.To()), 5);
    EXPECT_EQ(NameOf(sent.To(), 1),
              "B\u00fcrgermeisterin der Stadt M\u00f6nchengladbach und Umgebung, Abteilung f\u00fcr "
              "\u00d6ffentlichkeit");
    EXPECT_EQ(NameOf(sent.To(), 2), Repeated("\u65e5\u672c\u8a9e", 20));
    EXPECT_EQ(NameOf(sent.To(), 3), std::string(120, 'n'));
    EXPECT_EQ(NameOf(sent.To(), 4),
              "A long name of somebody who has a long name, of somebody who has a long name");
}

// Each encoded word and each part of a file name can be read alone.
TEST_F(MailContent, NothingIsSplitInsideACharacter) {
    for (int shift = 0; shift < 4; ++shift) {
        std::filesystem::remove_all(Outbox());
        const std::string text =
            std::string(static_cast<std::size_t>(shift), 'x') + Repeated("\u65e5\u00fc\U0001F600", 25);
        m_message = MakeMessage({text + " <ann@example.com>"});
        m_message->Subject = text;
        m_message->Attachments().Add().Source =
            WriteFile(text.substr(0, 200 + static_cast<std::size_t>(shift)) + ".pdf", "x");
        const std::string bytes = SentBytes();
        int pieces = 0;
        for (const std::string& line : Lines(bytes)) {
            for (const std::string& piece : EncodedPieces(line)) {
                EXPECT_TRUE(g_utf8_validate(piece.data(), static_cast<gssize>(piece.size()), nullptr))
                    << line;
                ++pieces;
            }
        }
        EXPECT_GT(pieces, 10);
        EXPECT_EQ(ParsedMessage(bytes).Subject(), text);
    }
}

TEST_F(MailContent, AnswersOfMachinesAreNotAskedFor) {
    EXPECT_EQ(ParsedMessage(SentBytes()).Header("Auto-Submitted"), "auto-generated");
}

TEST_F(MailContent, BlanksOfTheSubjectStayAndWhatLooksEncodedIsNotRead) {
    for (const char* subject :
         {"two  blanks   three", " first and last ", "=?utf-8?q?not_meant?=", "a =?utf-8?q?x?= b"}) {
        std::filesystem::remove_all(Outbox());
        m_message->Subject = subject;
        EXPECT_EQ(ParsedMessage(SentBytes()).Subject(), subject);
    }
}

// Sends the file as it was measured at the start, or nothing.
TEST_F(MailContent, FileThatGrewMeanwhileIsNotSentInPart) {
    WriteBytes(m_folder / "live.csv", "one\n");
    mailer::OutgoingMail mail;
    mail.from = {"", "reports@example.com"};
    mail.recipients = {{"", "ann@example.com"}};
    mail.attachments.push_back(
        {"Z:\\live.csv", "live.csv", UniqueFd(open((m_folder / "live.csv").c_str(), O_RDONLY)), 4});
    WriteBytes(m_folder / "live.csv", "one\ntwo\n");
    const UniqueFd target(open((m_folder / "message").c_str(), O_RDWR | O_CREAT, 0600));
    const auto write = [&] { mailer::WriteMessage(mail, target.Get(), mailer::LineEnds::CrLf); };
    EXPECT_EQ(NumberRaisedBy(write), err::PathFileAccess);
    EXPECT_EQ(DescriptionRaisedBy(write), "The attachment \"/live.csv\" changed while it was read");
}

TEST_F(MailContent, EmptySourceAttachesNothing) {
    m_message->Attachments().Add();
    EXPECT_EQ(ParsedMessage(SentBytes()).PartCount(), 1);
}

TEST_F(MailContent, ManyRecipientsAreAllNamedEachOnce) {
    for (int number = 0; number < 100; ++number) {
        m_message->Recipients().Add("Ünit " + std::to_string(number) + " <u" + std::to_string(number) +
                                    "@example.com>");
    }
    m_message->Recipients().Add("ann@EXAMPLE.com");
    const ParsedMessage sent(SentBytes());
    EXPECT_EQ(internet_address_list_length(sent.To()), 101);
}

TEST_F(MailContent, DamagedUtf8DoesNotDamageTheMessage) {
    m_message->Subject = "bad \xC3\x28 bytes \xFF";
    m_message->Text = std::string("nul \0 and \xFE", 11);
    const ParsedMessage sent(SentBytes());
    EXPECT_EQ(sent.Subject(), "bad \xEF\xBF\xBD( bytes \xEF\xBF\xBD");
    EXPECT_NE(sent.Content(0).find("and"), std::string::npos);
}
