// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a page, for search, selection and copying. A place is the index of a character, from 0.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

#include "platform/contracts/report_view.h"

namespace viewer {

struct CharacterRange {
    int first = 0, count = 0;
    bool operator==(const CharacterRange&) const = default;
};

class PageText {
 public:
    explicit PageText(const std::vector<report::Character>& characters);

    int Count() const { return static_cast<int>(m_characters.size()); }
    // Returns the matches of the words, without regard to case; a match may continue on the next line.
    std::vector<CharacterRange> Find(const QString& words) const;
    // Returns the text of a range; lines end with a line feed.
    QString Text(const CharacterRange& range) const;
    // Returns one area for each line of the range, in points.
    std::vector<QRectF> Areas(const CharacterRange& range) const;
    // Returns the place before or after a character that is nearest to a point; 0 on a page without text.
    int PlaceAt(QPointF point) const;
    bool IsOnText(QPointF point) const;
    // Returns the range of the word around a place, up to blanks and the ends of the line.
    CharacterRange WordAt(int place) const;

 private:
    struct Character {
        QRectF area;
        int begin;  // offset in m_text
        int line;
        bool blank;
    };
    int LetterOf(qsizetype position) const;

    QString m_text;  // with a blank in place of each line end
    std::vector<Character> m_characters;
};

}  // namespace viewer
