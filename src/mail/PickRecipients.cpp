// SPDX-License-Identifier: GPL-3.0-or-later
#include "mail/PickRecipients.h"

#include <memory>

#include "platform/contracts/mapi.h"
#include "platform/contracts/prompts.h"
#include "shared/Global.h"

namespace Global {

namespace {

template <typename Object>
Object& Set(const std::unique_ptr<Object>& object) {
    if (!object) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return *object;
}

// The state that the statements of one choice share. The message only collects the recipients and is never
// sent.
struct Choice {
    explicit Choice(EditableText& target) : box(target) {}

    void CreateSession() { session = MAPI::CreateSession(); }
    void Logon() { Set(session).Logon(); }
    void MakeMessage() { message = Set(session).Outbox().AddMessage(); }
    void ShowAddressBook() {
        for (const MAPI::Recipient& recipient : Set(session).AddressBook(MAPI::Choice::Several)) {
            Set(message).Recipients().Add(recipient.Name);
        }
    }
    void AddNames() {
        const MAPI::Recipients& chosen = Set(message).Recipients();
        const int count = chosen.Count();
        for (int i = 1; i <= count; ++i) {
            box.Text(box.Text() + chosen.Item(i).Name + ";");
        }
    }

    EditableText& box;
    std::unique_ptr<MAPI::Session> session;
    std::unique_ptr<MAPI::Message> message;
};

}  // namespace

void PickRecipients(EditableText& box) {
    Choice choice(box);
    for (const auto statement : {&Choice::CreateSession, &Choice::Logon, &Choice::MakeMessage,
                                 &Choice::ShowAddressBook, &Choice::AddNames}) {
        try {
            (choice.*statement)();
        } catch (...) {
            // After a cancel the next statement runs and finds a message without recipients.
            const RuntimeError error = CurrentError();
            if (error.Number() != err::MailUserCancel) {
                MsgBox(ErrorText("AN ERROR OCCURED. ", error), vbExclamation);  // sic
                return;
            }
        }
    }
}

}  // namespace Global
