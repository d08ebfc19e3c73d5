// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/message/message_writer.h"

#include <gmime/gmime.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/ascii.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/mail/base/header_text.h"
#include "platform/mail/message/id.h"

namespace mailer {
namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unref>;

std::string HeaderText(std::string_view text) {
    return ValidUtf8(WithoutControls(text));
}

// Converts all line ends to LF; the encoder writes the message's own. The byte 0 would end the body.
std::string BodyText(std::string_view text) {
    std::string body;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isReturn = text[at] == '\r';
        if (isReturn && at + 1 < text.size() && text[at + 1] == '\n') {
            ++at;
        }
        if (text[at] == '\0') {
            AppendCharacter(body, ReplacementCharacter);
        } else {
            body += isReturn ? '\n' : text[at];
        }
    }
    if (!body.ends_with('\n')) {
        body += '\n';
    }
    return ValidUtf8(body);
}

struct FileKind {
    std::string_view extension;
    const char* type;
    const char* subtype;
};

constexpr std::array FileKinds{
    FileKind{"pdf", "application", "pdf"},
    FileKind{"rtf", "application", "rtf"},
    FileKind{"xls", "application", "vnd.ms-excel"},
    FileKind{"xlsx", "application", "vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    FileKind{"doc", "application", "msword"},
    FileKind{"docx", "application", "vnd.openxmlformats-officedocument.wordprocessingml.document"},
    FileKind{"htm", "text", "html"},
    FileKind{"html", "text", "html"},
    FileKind{"csv", "text", "csv"},
    FileKind{"txt", "text", "plain"},
    FileKind{"xml", "application", "xml"},
    FileKind{"json", "application", "json"},
    FileKind{"zip", "application", "zip"},
    FileKind{"png", "image", "png"},
    FileKind{"jpg", "image", "jpeg"},
    FileKind{"jpeg", "image", "jpeg"},
    FileKind{"gif", "image", "gif"},
};

FileKind KindOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    const std::string extension = dot == std::string_view::npos ? "" : ToLower(name.substr(dot + 1));
    for (const FileKind& kind : FileKinds) {
        if (kind.extension == extension) {
            return kind;
        }
    }
    return {"", "application", "octet-stream"};
}

std::string DateLine(const ZonedMoment& date) {
    constexpr int Minute = 60;
    const std::unique_ptr<GTimeZone, decltype(&g_time_zone_unref)> zone(
        g_time_zone_new_offset(date.offset / Minute * Minute), &g_time_zone_unref);
    const std::unique_ptr<GDateTime, decltype(&g_date_time_unref)> moment(
        g_date_time_new_from_unix_utc(date.seconds), &g_date_time_unref);
    const std::unique_ptr<GDateTime, decltype(&g_date_time_unref)> local(
        g_date_time_to_timezone(moment.get(), zone.get()), &g_date_time_unref);
    const std::unique_ptr<char, decltype(&g_free)> text(g_mime_utils_header_format_date(local.get()),
                                                        &g_free);
    return std::string("Date: ") + text.get() + "\n";
}

std::string MessageIdLine(const OutgoingMail& mail) {
    const std::string id = mail.identity.empty() ? RandomMark() : MarkOf(mail.identity);
    return WordHeader("Message-ID", "<" + id + mail.from.address.substr(mail.from.address.rfind('@')) + ">");
}

Mailbox HeaderMailbox(const Mailbox& mailbox) {
    return {HeaderText(mailbox.name), mailbox.address};
}

// Returns the header lines before those that GMime writes for the content.
std::string HeaderLines(const OutgoingMail& mail) {
    std::vector<Mailbox> recipients;
    for (const Mailbox& recipient : mail.recipients) {
        recipients.push_back(HeaderMailbox(recipient));
    }
    std::string lines = DateLine(mail.date.value_or(TheClock().Moment()));
    lines += MailboxHeader("From", {HeaderMailbox(mail.from)});
    lines += MailboxHeader("To", recipients);
    lines += TextHeader("Subject", HeaderText(mail.subject));
    lines += MessageIdLine(mail);
    // No user reads this mailbox: automatic replies are not wanted (RFC 3834, section 5).
    lines += "Auto-Submitted: auto-generated\n";
    lines += "User-Agent: Oxbow Courier\n";
    if (mail.highImportance) {
        lines += "Importance: high\nX-Priority: 1\nPriority: urgent\n";
    }
    return lines + "MIME-Version: 1.0\n";
}

// Returns true if the text can be sent without an encoding: ASCII, with short lines.
bool IsPlain(std::string_view body) {
    constexpr std::size_t LongestLine = 900;
    std::size_t length = 0;
    for (const char c : body) {
        length = c == '\n' ? 0 : length + 1;
        if (static_cast<unsigned char>(c) > '~' || length > LongestLine) {
            return false;
        }
    }
    return true;
}

Owned<GMimeTextPart> MakeBody(const std::string& text) {
    Owned<GMimeTextPart> part(g_mime_text_part_new());
    const std::string body = BodyText(text);
    g_mime_text_part_set_charset(part.get(), "utf-8");
    g_mime_text_part_set_text(part.get(), body.c_str());
    g_mime_part_set_content_encoding(
        reinterpret_cast<GMimePart*>(part.get()),
        IsPlain(body) ? GMIME_CONTENT_ENCODING_7BIT : GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
    return part;
}

// Writes `line` unchanged, in place of GMime's header of that name.
void SetHeaderLine(GMimeObject* object, const std::string& line) {
    const std::size_t colon = line.find(':');
    const std::string name = line.substr(0, colon);
    g_mime_object_set_header(object, name.c_str(), "", nullptr);
    GMimeHeader* header = g_mime_header_list_get_header(g_mime_object_get_header_list(object), name.c_str());
    g_mime_header_set_raw_value(header, line.c_str() + colon + 1);
}

Owned<GMimePart> MakeAttachment(const OutgoingAttachment& attachment) {
    const FileKind kind = KindOf(attachment.name);
    Owned<GMimePart> part(g_mime_part_new_with_type(kind.type, kind.subtype));
    const Owned<GMimeStream> stream(
        g_mime_stream_fs_new_with_bounds(attachment.file.Get(), 0, attachment.size));
    g_mime_stream_fs_set_owner(reinterpret_cast<GMimeStreamFs*>(stream.get()), FALSE);
    const Owned<GMimeDataWrapper> content(
        g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
    g_mime_part_set_content(part.get(), content.get());
    g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
    auto* object = reinterpret_cast<GMimeObject*>(part.get());
    const std::string name = HeaderText(attachment.name);
    SetHeaderLine(object,
                  ParameterHeader("Content-Type", std::string(kind.type) + "/" + kind.subtype, "name", name));
    SetHeaderLine(object, ParameterHeader("Content-Disposition", "attachment", "filename", name));
    return part;
}

// Returns the text, or a multipart with the text and the attachments.
Owned<GMimeObject> MakeContent(const OutgoingMail& mail) {
    Owned<GMimeTextPart> body = MakeBody(mail.text);
    if (mail.attachments.empty()) {
        return Owned<GMimeObject>(reinterpret_cast<GMimeObject*>(body.release()));
    }
    Owned<GMimeMultipart> multipart(g_mime_multipart_new_with_subtype("mixed"));
    g_mime_multipart_add(multipart.get(), reinterpret_cast<GMimeObject*>(body.get()));
    for (const OutgoingAttachment& attachment : mail.attachments) {
        const Owned<GMimePart> part = MakeAttachment(attachment);
        g_mime_multipart_add(multipart.get(), reinterpret_cast<GMimeObject*>(part.get()));
    }
    return Owned<GMimeObject>(reinterpret_cast<GMimeObject*>(multipart.release()));
}

void EnsureStarted() {
    static const bool started = (g_mime_init(), true);
    (void)started;
}

// A file that grows or shrinks while it is read would give a damaged message.
void CheckUnchanged(const OutgoingAttachment& attachment) {
    struct stat status {};
    if (fstat(attachment.file.Get(), &status) != 0 || attachment.size != status.st_size) {
        throw RuntimeError(err::PathFileAccess, "The attachment \"" + paths::ForUser(attachment.path) +
                                                    "\" changed while it was read");
    }
}

// Returns a buffered stream with the requested line ends: encoders write their own.
Owned<GMimeStream> MakeTarget(int file, LineEnds ends) {
    const Owned<GMimeStream> plain(g_mime_stream_fs_new(file));
    g_mime_stream_fs_set_owner(reinterpret_cast<GMimeStreamFs*>(plain.get()), FALSE);
    const Owned<GMimeStream> filtered(g_mime_stream_filter_new(plain.get()));
    if (ends == LineEnds::CrLf) {
        const Owned<GMimeFilter> filter(g_mime_filter_unix2dos_new(FALSE));
        g_mime_stream_filter_add(reinterpret_cast<GMimeStreamFilter*>(filtered.get()), filter.get());
    }
    return Owned<GMimeStream>(g_mime_stream_buffer_new(filtered.get(), GMIME_STREAM_BUFFER_BLOCK_WRITE));
}

}  // namespace

int WriteMessage(const OutgoingMail& mail, int file, LineEnds ends) {
    EnsureStarted();
    const std::string headers = HeaderLines(mail);
    const Owned<GMimeObject> content = MakeContent(mail);
    const Owned<GMimeStream> target = MakeTarget(file, ends);
    errno = 0;
    const bool written = g_mime_stream_write(target.get(), headers.data(), headers.size()) >= 0 &&
                         g_mime_object_write_to_stream(content.get(), nullptr, target.get()) >= 0 &&
                         g_mime_stream_flush(target.get()) == 0;
    const int code = errno;
    if (!written && IsDiskFull(code)) {
        return code;
    }
    for (const OutgoingAttachment& attachment : mail.attachments) {
        CheckUnchanged(attachment);
    }
    return written ? 0 : (code != 0 ? code : EIO);
}

}  // namespace mailer
