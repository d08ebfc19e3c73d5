// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/frames.h"

#include <sys/socket.h>

#include <cerrno>
#include <cstring>

#include "platform/reports/worker/codec.h"

namespace reports::worker {
namespace {

union Control {
    std::array<char, CMSG_SPACE(sizeof(int))> bytes;
    cmsghdr aligned;
};

// Returns the file that came with the message, or an empty handle.
UniqueFd FileOf(const msghdr& message) {
    const cmsghdr* const control = CMSG_FIRSTHDR(&message);
    int file = -1;
    if (control != nullptr && control->cmsg_level == SOL_SOCKET && control->cmsg_type == SCM_RIGHTS &&
        control->cmsg_len == CMSG_LEN(sizeof file)) {
        std::memcpy(&file, CMSG_DATA(control), sizeof file);
    }
    return UniqueFd(file);
}

// Fills the buffer. Returns false at the end of the stream. `file` gets the file that comes with the bytes.
bool ReadAll(int socket, char* buffer, std::size_t size, UniqueFd& file) {
    while (size > 0) {
        Control control{};
        iovec piece{buffer, size};
        msghdr message{};
        message.msg_iov = &piece;
        message.msg_iovlen = 1;
        message.msg_control = control.bytes.data();
        message.msg_controllen = control.bytes.size();
        const ssize_t count = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        if (UniqueFd came = FileOf(message); came.Get() >= 0) {
            file = std::move(came);
        }
        buffer += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace

std::string Framed(Kind kind, std::string_view body) {
    if (body.size() > LongestBody) {
        throw BadMessage("a message that is too long");
    }
    const auto size = static_cast<std::uint32_t>(body.size());
    std::string frame(reinterpret_cast<const char*>(&size), sizeof size);
    frame += static_cast<char>(kind);
    return frame.append(body);
}

Head HeadOf(std::string_view bytes) {
    Head head;
    std::memcpy(&head.size, bytes.data(), sizeof head.size);
    const auto kind = static_cast<std::uint8_t>(bytes[sizeof head.size]);
    if (kind > static_cast<std::uint8_t>(Kind::Beat) || head.size > LongestBody) {
        throw BadMessage("a frame that cannot be read");
    }
    head.kind = static_cast<Kind>(kind);
    return head;
}

ssize_t SendSome(int socket, std::string_view bytes, int file) {
    Control control{};
    iovec piece{const_cast<char*>(bytes.data()), bytes.size()};
    msghdr message{};
    message.msg_iov = &piece;
    message.msg_iovlen = 1;
    if (file >= 0) {
        message.msg_control = control.bytes.data();
        message.msg_controllen = control.bytes.size();
        cmsghdr* const rights = CMSG_FIRSTHDR(&message);
        rights->cmsg_level = SOL_SOCKET;
        rights->cmsg_type = SCM_RIGHTS;
        rights->cmsg_len = CMSG_LEN(sizeof file);
        std::memcpy(CMSG_DATA(rights), &file, sizeof file);
    }
    return sendmsg(socket, &message, MSG_NOSIGNAL);
}

std::optional<Frame> WaitForFrame(int socket) {
    Frame frame;
    std::array<char, HeadSize> bytes{};
    if (!ReadAll(socket, bytes.data(), bytes.size(), frame.file)) {
        return std::nullopt;
    }
    const Head head = HeadOf({bytes.data(), bytes.size()});
    frame.kind = head.kind;
    frame.body.resize(head.size);
    if (!ReadAll(socket, frame.body.data(), frame.body.size(), frame.file)) {
        return std::nullopt;
    }
    return frame;
}

bool SendFrame(int socket, Kind kind, std::string_view body) {
    const std::string frame = Framed(kind, body);
    std::string_view rest = frame;
    while (!rest.empty()) {
        const ssize_t count = SendSome(socket, rest, -1);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        rest.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace reports::worker
