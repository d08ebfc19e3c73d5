// SPDX-License-Identifier: GPL-3.0-or-later
// The interface of a text box for the rooms below the forms.
#pragma once

#include <string>

class EditableText {
 public:
    virtual ~EditableText() = default;
    virtual std::string Text() const = 0;
    virtual void Text(const std::string& text) = 0;
};
