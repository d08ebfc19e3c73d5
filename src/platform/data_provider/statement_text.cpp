// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data_provider/statement_text.h"

#include <algorithm>

#include "platform/base/moment_text.h"
#include "platform/contracts/clock.h"
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
    return MomentText(Now());
}
