// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/one_line.h"

#include "platform/base/text.h"

std::string OnOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Character character = CharacterAt(text, at);
        if (BreaksLine(character.code)) {
            line += ' ';
        } else if (character.code >= NoCharacter) {
            AppendCharacter(line, ReplacementCharacter);
        } else {
            line.append(text.substr(at, character.length));
        }
        at += character.length;
    }
    return line;
}
