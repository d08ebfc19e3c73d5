// A text box of a form, as far as the rooms below the forms touch one.
#pragma once

#include <string>

class EditableText {
 public:
    virtual ~EditableText() = default;
    virtual std::string Text() const = 0;
    virtual void Text(const std::string& text) = 0;
};
