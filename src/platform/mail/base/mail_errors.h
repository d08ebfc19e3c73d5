// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers of the mail failures that concern one message or one profile. They differ from the two mailbox
// numbers (err::MailboxOrServer, err::MailboxFull), which mean that no mail can be sent at all.
#pragma once

#include <cstdint>

namespace mailer {

inline constexpr std::int32_t ErrNoProfile = -2147221231;         // 80040111: no mail profile
inline constexpr std::int32_t ErrBadProfile = -2147221220;        // 8004011C: an invalid profile
inline constexpr std::int32_t ErrLoginRefused = -2147024891;      // 80070005: user or password refused
inline constexpr std::int32_t ErrNotSecure = -2146893019;         // 80090325: TLS missing or not trusted
inline constexpr std::int32_t ErrUnknownRecipient = -2147221233;  // 8004010F: no such name, or not an address
// 80040700: the name is there more than once
inline constexpr std::int32_t ErrAmbiguousRecipient = -2147219712;
inline constexpr std::int32_t ErrNoRecipients = -2147219961;  // 80040607: no recipients
// 80040701: the server refuses every recipient
inline constexpr std::int32_t ErrRecipientRefused = -2147219711;
inline constexpr std::int32_t ErrMessageRefused = -2147219710;  // 80040702: sender or content refused
inline constexpr std::int32_t ErrDiskFull = 61;  // no space to build the message; the mailbox is not full

}  // namespace mailer
