// The values of a mail profile as the controls of the dialog show them.
#pragma once

#include <map>
#include <string>

namespace Ui {
class MailDialog;
}

// By the keys of the profile; without Password, which is never shown. An empty value is a missing key.
using ProfileValues = std::map<std::string, std::string>;

// Puts the values into the controls. What a control cannot show (a port that is no number) is shown as what
// holds when the key is missing.
void FillForm(const Ui::MailDialog& ui, const ProfileValues& values);
ProfileValues FormValues(const Ui::MailDialog& ui);

// Whether a control can show the value as it stands: if not, saving repairs it.
bool CanBeShown(const std::string& key, const std::string& value);

// The port that servers use for the encryption that is chosen.
int UsualPort(const Ui::MailDialog& ui);
// The same in seconds, for the transport.
int UsualTimeout(const Ui::MailDialog& ui);
