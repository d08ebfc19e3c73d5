// SPDX-License-Identifier: GPL-3.0-or-later
// The mail system that implements platform/contracts/mapi.h with the mail profile, GMime and the profile's
// transport.
#pragma once

#include <filesystem>

#include "platform/contracts/mapi.h"

namespace mailer {

// Each Logon reads the profile again, so that a change needs no restart.
class ProfileMailSystem : public MAPI::System {
 public:
    // An empty path means the user's own profile (MailProfilePath).
    explicit ProfileMailSystem(std::filesystem::path profile = {}) : m_profile(std::move(profile)) {}
    std::unique_ptr<MAPI::Session> CreateSession() override;

 private:
    std::filesystem::path m_profile;
};

}  // namespace mailer

namespace MAPI {
// Returns the mail system that a program sets with SetMailSystem(&MailSystem()).
System& MailSystem();
}  // namespace MAPI
