#include "platform/mail/message_writer.h"

#include <gmime/gmime.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <memory>
#include <string_view>

#include "platform/clock.h"
#include "platform/mail/ascii.h"
#include "platform/runtime.h"
#include "platform/system_error.h"

namespace mailer {
namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Unref>;

std::string ValidUtf8(std::string_view text) {
    const std::unique_ptr<char, decltype(&g_free)> valid(
        g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())), &g_free);
    return valid.get();
}

std::string HeaderText(std::string_view text) {
    return ValidUtf8(WithoutControls(text));
}

// One kind of line end for the encoder to turn into the message's own.
std::string BodyText(std::string_view text) {
    std::string body;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isReturn = text[at] == '\r';
        if (isReturn && at + 1 < text.size() && text[at + 1] == '\n') {
            ++at;
        }
        body += isReturn ? '\n' : text[at];
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

// The clock's wall time in the machine's zone.
Owned<GDateTime>::pointer LocalDate() {
    const DateParts now = Split(Now());
    return g_date_time_new_local(now.year, now.month, now.day, now.hour, now.minute, now.second);
}

void SetDate(GMimeMessage* message) {
    GDateTime* date = LocalDate();
    if (date == nullptr) {
        date = g_date_time_new_now_local();
    }
    g_mime_message_set_date(message, date);
    g_date_time_unref(date);
}

void SetMessageId(GMimeMessage* message, const std::string& sender) {
    std::array<unsigned char, 16> random{};
    // A short read would need a signal within sixteen bytes; the kernel gives so few whole.
    if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size())) {
        throw RuntimeError(err::PathFileAccess, "The machine gives no random numbers for the message");
    }
    std::string id;
    for (const unsigned char byte : random) {
        constexpr std::string_view Digits = "0123456789abcdef";
        id += Digits[byte >> 4];
        id += Digits[byte & 15];
    }
    id += sender.substr(sender.rfind('@'));
    g_mime_message_set_message_id(message, id.c_str());
}

void SetHeaders(GMimeMessage* message, const OutgoingMail& mail) {
    g_mime_message_add_mailbox(message, GMIME_ADDRESS_TYPE_FROM, HeaderText(mail.from.name).c_str(),
                               mail.from.address.c_str());
    for (const Mailbox& recipient : mail.recipients) {
        g_mime_message_add_mailbox(message, GMIME_ADDRESS_TYPE_TO, HeaderText(recipient.name).c_str(),
                                   recipient.address.c_str());
    }
    g_mime_message_set_subject(message, HeaderText(mail.subject).c_str(), "utf-8");
    SetDate(message);
    SetMessageId(message, mail.from.address);
    auto* object = reinterpret_cast<GMimeObject*>(message);
    g_mime_object_append_header(object, "User-Agent", "Oxbow Courier", "utf-8");
    if (mail.highImportance) {
        g_mime_object_append_header(object, "Importance", "high", "utf-8");
        g_mime_object_append_header(object, "X-Priority", "1", "utf-8");
        g_mime_object_append_header(object, "Priority", "urgent", "utf-8");
    }
}

// Whether every mail program on the way takes the text as it stands.
bool IsPlain(std::string_view body) {
    constexpr std::size_t LongestLine = 900;
    std::size_t length = 0;
    for (const char letter : body) {
        length = letter == '\n' ? 0 : length + 1;
        if (static_cast<unsigned char>(letter) > '~' || letter == '\0' || length > LongestLine) {
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
    g_mime_object_set_disposition(object, GMIME_DISPOSITION_ATTACHMENT);
    g_mime_part_set_filename(part.get(), HeaderText(attachment.name).c_str());
    return part;
}

Owned<GMimeMessage> MakeMessage(const OutgoingMail& mail) {
    Owned<GMimeMessage> message(g_mime_message_new(FALSE));
    SetHeaders(message.get(), mail);
    const Owned<GMimeTextPart> body = MakeBody(mail.text);
    auto* content = reinterpret_cast<GMimeObject*>(body.get());
    Owned<GMimeMultipart> multipart;
    if (!mail.attachments.empty()) {
        multipart.reset(g_mime_multipart_new_with_subtype("mixed"));
        g_mime_multipart_add(multipart.get(), content);
        for (const OutgoingAttachment& attachment : mail.attachments) {
            const Owned<GMimePart> part = MakeAttachment(attachment);
            g_mime_multipart_add(multipart.get(), reinterpret_cast<GMimeObject*>(part.get()));
        }
        content = reinterpret_cast<GMimeObject*>(multipart.get());
    }
    g_mime_message_set_mime_part(message.get(), content);
    return message;
}

void EnsureStarted() {
    static const bool started = (g_mime_init(), true);
    (void)started;
}

// A file that grows or shrinks while it is read would give a message that nobody meant.
void CheckUnchanged(const OutgoingAttachment& attachment) {
    struct stat status {};
    if (fstat(attachment.file.Get(), &status) != 0 || attachment.size != status.st_size) {
        throw RuntimeError(err::PathFileAccess,
                           "The attachment \"" + attachment.path + "\" changed while it was read");
    }
}

// Buffered, and with the line ends that are asked for: encoders write their own.
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
    const Owned<GMimeMessage> message = MakeMessage(mail);
    const Owned<GMimeStream> target = MakeTarget(file, ends);
    errno = 0;
    auto* object = reinterpret_cast<GMimeObject*>(message.get());
    const bool written = g_mime_object_write_to_stream(object, nullptr, target.get()) >= 0 &&
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
