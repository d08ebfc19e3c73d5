// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data_provider/statement_text.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/contracts/clock.h"
#include "platform/contracts/dates.h"
#include "platform/contracts/runtime.h"
#include "platform/data_provider/tokens.h"

void RaiseSyntaxError(std::string_view reason) {
    throw RuntimeError(err::DataSyntax, "The statement is not understood; " + std::string(reason));
}

void RefuseZeroCharacter(std::string_view statement) {
    if (statement.find('\0') != std::string_view::npos) {
        RaiseSyntaxError("it holds a character with the number zero");
    }
}

bool IsBlankStatement(std::string_view rest) {
    const std::vector<Token> tokens = Tokenize(rest);
    return std::all_of(tokens.begin(), tokens.end(), [](const Token& token) {
        return token.kind == TokenKind::Blank || (token.kind == TokenKind::Mark && token.text == ";");
    });
}

std::string NowText() {
    const DateParts now = Split(Now());
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", now.year, now.month, now.day,
                  now.hour, now.minute, now.second);
    return text.data();
}
