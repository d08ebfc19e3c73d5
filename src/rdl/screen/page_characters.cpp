// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/page_characters.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

namespace rdl::screen {
namespace {

// One text of the page.
struct Piece {
    double baseline, size, left, right;
    bool turned;
    std::vector<PageCharacter> characters;
};

Area Turned(const layout::TextOp& op, double from, double to, double ascent, double descent) {
    const double angle = static_cast<double>(op.rotation) * std::numbers::pi / 180;
    const double c = std::cos(angle), s = std::sin(angle);
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
    for (const double along : {from, to}) {
        for (const double across : {-ascent, descent}) {
            const double x = op.x + along * c - across * s, y = op.baseline + along * s + across * c;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
    }
    return {left, top, right - left, bottom - top};
}

Piece PieceOf(const layout::Page& page, const layout::TextOp& op) {
    struct Extent {
        double from, to;
    };
    std::map<std::uint32_t, Extent> clusters;  // in the order of the text
    double along = 0;
    for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
        const text::Glyph& glyph = page.glyphs[op.firstGlyph + i];
        const double next = along + static_cast<double>(glyph.advance);
        const auto [place, isNew] = clusters.try_emplace(glyph.cluster, Extent{along, next});
        if (!isNew) {
            place->second = {std::min(place->second.from, along), std::max(place->second.to, next)};
        }
        along = next;
    }
    const auto size = static_cast<double>(op.size);
    const text::FontMetrics& metrics = text::Metrics(op.font);
    Piece piece{op.baseline, size, op.x, op.x + along, op.rotation != 0, {}};
    const std::uint32_t length = op.textEnd - op.textBegin;
    for (auto at = clusters.begin(); at != clusters.end(); ++at) {
        const auto after = std::next(at);
        const std::uint32_t end = after == clusters.end() ? length : std::min(after->first, length);
        if (at->first < end) {
            piece.characters.push_back(
                {page.text.substr(op.textBegin + at->first, end - at->first),
                 Turned(op, at->second.from, at->second.to, metrics.ascent * size, metrics.descent * size),
                 false});
        }
    }
    return piece;
}

bool OnSameLine(const Piece& line, const Piece& piece) {
    constexpr double Share = 0.35;  // of the smaller text
    return !line.turned && !piece.turned &&
           std::abs(piece.baseline - line.baseline) < Share * std::min(line.size, piece.size);
}

void EndLine(std::vector<const Piece*>& line, std::vector<PageCharacter>& characters) {
    std::stable_sort(line.begin(), line.end(),
                     [](const Piece* a, const Piece* b) { return a->left < b->left; });
    const Piece* before = nullptr;
    for (const Piece* piece : line) {
        constexpr double LeastGap = 0.12;  // of the size
        const bool apart = before && piece->left - before->right > LeastGap * piece->size &&
                           characters.back().text != " " && piece->characters.front().text != " ";
        if (apart) {
            const Area& last = characters.back().area;
            characters.push_back(
                {" ", {before->right, last.y, piece->left - before->right, last.height}, false});
        }
        characters.insert(characters.end(), piece->characters.begin(), piece->characters.end());
        before = piece;
    }
    if (!line.empty()) {
        characters.back().endsLine = true;
    }
    line.clear();
}

}  // namespace

std::vector<PageCharacter> CharactersOf(const layout::Page& page) {
    std::vector<Piece> pieces;
    for (const layout::Op& op : page.ops) {
        if (const auto* text = std::get_if<layout::TextOp>(&op)) {
            Piece piece = PieceOf(page, *text);
            if (!piece.characters.empty()) {
                pieces.push_back(std::move(piece));
            }
        }
    }
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const Piece& a, const Piece& b) { return a.baseline < b.baseline; });
    std::vector<PageCharacter> characters;
    std::vector<const Piece*> line;
    for (const Piece& piece : pieces) {
        if (!line.empty() && !OnSameLine(*line.front(), piece)) {
            EndLine(line, characters);
        }
        line.push_back(&piece);
    }
    EndLine(line, characters);
    return characters;
}

}  // namespace rdl::screen
