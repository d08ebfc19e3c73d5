// Numbers of the mail failures that concern one message or one profile. None of them is one of the two
// mailbox numbers (err::MailboxOrServer, err::MailboxFull), which mean that no mail can go out at all.
#pragma once

#include <cstdint>

namespace mailer {

inline constexpr std::int32_t ErrNoProfile = -2147221231;           // 80040111: no mail profile
inline constexpr std::int32_t ErrBadProfile = -2147221220;          // 8004011C: a profile that makes no sense
inline constexpr std::int32_t ErrLoginRefused = -2147024891;        // 80070005: user or password refused
inline constexpr std::int32_t ErrNotSecure = -2146893019;           // 80090325: TLS missing or not trusted
inline constexpr std::int32_t ErrUnknownRecipient = -2147221233;    // 8004010F: no such name, or no address
inline constexpr std::int32_t ErrAmbiguousRecipient = -2147219712;  // 80040700: the name is there twice
inline constexpr std::int32_t ErrNoRecipients = -2147219961;        // 80040607: nobody to send to
inline constexpr std::int32_t ErrRecipientRefused = -2147219711;    // 80040701: the server wants none of it
inline constexpr std::int32_t ErrMessageRefused = -2147219710;      // 80040702: sender or content refused
inline constexpr std::int32_t ErrDiskFull = 61;  // no room to build the message; not the mailbox's fault

}  // namespace mailer
