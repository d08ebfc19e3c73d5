// The mail session: outbox, recipients, attachments, sending, address book.
//
// Failures raise RuntimeError. Two numbers mean that no mail can go out at all and are told apart by the
// system: err::MailboxOrServer (the server cannot be reached, refuses, drops or hangs) and err::MailboxFull
// (452, 552 or a full outbox disk). Any other failure (recipients that are all refused or one that cannot be
// resolved, an attachment that cannot be read, a profile that makes no sense) has another number.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace MAPI {

inline constexpr int ImportanceHigh = 2;

struct Recipient {
    std::string Name;  // a name of the address book, or an address, or "Name <address>"
};

class Recipients {
 public:
    virtual ~Recipients() = default;
    virtual void Add(const std::string& name) = 0;
    // Turns every name into an address by the address book; a name that is no address, not in the book or
    // there more than once raises an error that names it. Nobody is asked.
    virtual void Resolve(bool showDialog) = 0;
    virtual int Count() const = 0;
    virtual const Recipient& Item(int index) const = 0;  // from 1
};

class Attachment {
 public:
    virtual ~Attachment() = default;
    int Position = 0;    // the place in the body, in characters
    std::string Source;  // full path of the file, as the system writes paths; empty: nothing is attached
};

class Attachments {
 public:
    virtual ~Attachments() = default;
    virtual Attachment& Add() = 0;  // good as long as the message
};

class Message {
 public:
    virtual ~Message() = default;
    std::string Subject;
    std::string Text;
    int Importance = 1;
    // What the message is a copy of, see DueRun::Identity: messages of one identity bear one Message-ID.
    // Empty: it is the only one of its kind.
    std::string Identity;
    virtual MAPI::Recipients& Recipients() = 0;
    virtual MAPI::Attachments& Attachments() = 0;
    // Returns when the transport has taken the whole message, for every recipient but those that the server
    // will never take: those are told to the refusal handler. Otherwise raises and nobody has got it.
    virtual void Send() = 0;
};

// A recipient that the server does not take mail for, though it took the message for others.
struct Refusal {
    std::string Address;
    std::string Answer;  // of the server, one line
    bool operator==(const Refusal&) const = default;
};

// Hears of a message that has gone out without some of its recipients, once for each. Must not raise: the
// message is sent.
using RefusalHandler = std::function<void(const std::string& subject, const std::vector<Refusal>& refusals)>;
// Without one they are a dated line on standard error. Empty takes the handler away.
void SetRefusalHandler(RefusalHandler handler);
void TellRefusals(const std::string& subject, const std::vector<Refusal>& refusals);

class Folder {
 public:
    virtual ~Folder() = default;
    // Messages.Add: a new message of this folder.
    virtual std::unique_ptr<Message> AddMessage() = 0;
};

class Session {
 public:
    virtual ~Session() = default;
    // Joins the user's mail profile. Raises when there is none or it makes no sense.
    virtual void Logon() = 0;
    virtual Folder& Outbox() = 0;
    // Shows the address book; raises err::MailUserCancel when the user cancels.
    virtual std::vector<Recipient> AddressBook(bool oneAddress) = 0;
};

class System {
 public:
    virtual ~System() = default;
    virtual std::unique_ptr<Session> CreateSession() = 0;
};

// The mail system of platform/mail, unless a test has put another in its place.
System& TheMailSystem();
void SetMailSystem(System* system);

inline std::unique_ptr<Session> CreateSession() {
    return TheMailSystem().CreateSession();
}

}  // namespace MAPI
