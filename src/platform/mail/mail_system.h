// The real mail system behind platform/mapi.h: the mail profile, GMime, and the profile's transport.
#pragma once

#include <filesystem>

#include "platform/contracts/mapi.h"

namespace mailer {

// Sessions read the profile anew at each Logon, so that a change of it needs no restart.
class ProfileMailSystem : public MAPI::System {
 public:
    // An empty path is the user's own profile (MailProfilePath).
    explicit ProfileMailSystem(std::filesystem::path profile = {}) : m_profile(std::move(profile)) {}
    std::unique_ptr<MAPI::Session> CreateSession() override;

 private:
    std::filesystem::path m_profile;
};

}  // namespace mailer

namespace MAPI {
// The one that a program sets by SetMailSystem(&MailSystem()).
System& MailSystem();
}  // namespace MAPI
