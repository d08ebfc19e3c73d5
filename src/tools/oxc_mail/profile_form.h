// SPDX-License-Identifier: GPL-3.0-or-later
// The values of a mail profile in the form in which the controls of the dialog show them.
#pragma once

#include <map>
#include <string>

#include "platform/mail/profile/keys.h"

namespace Ui {
class MailDialog;
}

// Values by the keys of the profile, without Password, which is never shown. An empty value means a missing
// key.
using ProfileValues = std::map<mailer::KnownKey, std::string>;

// Gives the controls the ranges and the tool tips of their keys. Must be called before the others.
void PrepareForm(const Ui::MailDialog& ui);

// Puts the values into the controls. For a value that a control cannot show, such as a port that is not a
// number, it shows the default of a missing key.
void FillForm(const Ui::MailDialog& ui, const ProfileValues& values);
ProfileValues FormValues(const Ui::MailDialog& ui);

// Returns true if a control can show the value unchanged. Otherwise a save replaces the value.
bool CanBeShown(mailer::KnownKey key, const std::string& value);

// Returns the usual port for the chosen encryption.
int UsualPort(const Ui::MailDialog& ui);
// Returns the usual time limit for the chosen transport, in seconds.
int UsualTimeout(const Ui::MailDialog& ui);
