// SPDX-License-Identifier: GPL-3.0-or-later
// The mail session: outbox, recipients, attachments, sending, address book.
//
// Failures raise RuntimeError. Two numbers mean that no mail can be sent at all, and the system handles them
// separately: err::MailboxOrServer (the server cannot be reached, refuses, drops the connection or does not
// answer) and err::MailboxFull (452, 552 or a full outbox disk). Any other failure has another number: all
// recipients refused, a recipient that cannot be resolved, an attachment that cannot be read, an invalid
// profile (platform/mail/base/mail_errors.h).
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/contracts/clock.h"

namespace MAPI {

inline constexpr int ImportanceHigh = 2;

// Whether a dialog may ask the user about names.
enum class Dialog { Allowed, Forbidden };
// How many names the user may choose from the address book.
enum class Choice { One, Several };

struct Recipient {
    std::string Name;  // a name of the address book, or an address, or "Name <address>"
};

class Recipients {
 public:
    virtual ~Recipients() = default;
    virtual void Add(const std::string& name) = 0;
    // Replaces every name with its address from the address book. Raises an error with the name if a name is
    // not an address and not in the book, or is there more than once. Asks no user, also with
    // Dialog::Allowed.
    virtual void Resolve(Dialog dialog) = 0;
    virtual int Count() const = 0;
    virtual const Recipient& Item(int index) const = 0;  // from 1
};

class Attachment {
 public:
    virtual ~Attachment() = default;
    int Position = 0;    // position in the body, in characters
    std::string Source;  // full path of the system; empty: no attachment
};

class Attachments {
 public:
    virtual ~Attachments() = default;
    virtual Attachment& Add() = 0;  // the message owns it
};

class Message {
 public:
    virtual ~Message() = default;
    std::string Subject;
    std::string Text;
    int Importance = 1;
    // The identity of the run that the message belongs to, see DueRun::Identity. Messages with the same
    // identity have the same Message-ID. Empty: the message is unique.
    std::string Identity;
    // The moment of the header Date. Nullopt: the moment at which the message is sent.
    std::optional<ZonedMoment> Date;
    virtual MAPI::Recipients& Recipients() = 0;
    virtual MAPI::Attachments& Attachments() = 0;
    // Returns after the transport has accepted the whole message for every recipient but those that the
    // server refuses permanently; the refusal handler gets these. On any other failure it raises an error,
    // and no recipient gets the message.
    virtual void Send() = 0;
};

// A recipient that the server refused although it accepted the message for others.
struct Refusal {
    std::string Address;
    std::string Answer;  // the server's answer, on one line
    bool operator==(const Refusal&) const = default;
};

// Called once for each message that was sent without some of its recipients. Must not throw: the message is
// sent.
using RefusalHandler = std::function<void(const std::string& subject, const std::vector<Refusal>& refusals)>;
// Without a handler the refusals become a dated line on standard error. An empty function removes the
// handler.
void SetRefusalHandler(RefusalHandler handler);
void ReportRefusals(const std::string& subject, const std::vector<Refusal>& refusals);

class Folder {
 public:
    virtual ~Folder() = default;
    // Messages.Add: returns a new message of this folder, owned by the caller.
    virtual std::unique_ptr<Message> AddMessage() = 0;
};

class Session {
 public:
    virtual ~Session() = default;
    // Reads the user's mail profile. Raises an error if it is missing or invalid.
    virtual void Logon() = 0;
    virtual Folder& Outbox() = 0;
    // Shows the address book and returns the chosen names. Raises err::MailUserCancel after a cancel.
    virtual std::vector<Recipient> AddressBook(Choice choice) = 0;
};

class System {
 public:
    virtual ~System() = default;
    virtual std::unique_ptr<Session> CreateSession() = 0;
};

// Returns the mail system that a program or a test has set. Raises 91 if none was set.
System& TheMailSystem();
// Null removes the mail system. The caller owns it, and it must outlive its use.
void SetMailSystem(System* system);

inline std::unique_ptr<Session> CreateSession() {
    return TheMailSystem().CreateSession();
}

}  // namespace MAPI
