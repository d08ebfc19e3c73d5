// The text of a page, to be searched, marked and copied. A place in it is the number of a letter, from 0.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <optional>
#include <vector>

#include "platform/contracts/report_view.h"

namespace viewer {

struct LetterRange {
    int first = 0, count = 0;
    bool operator==(const LetterRange&) const = default;
};

class PageText {
 public:
    explicit PageText(const std::vector<report::Letter>& letters);

    int Count() const { return static_cast<int>(m_letters.size()); }
    // Where the words stand, without regard to case; they may go on in the next line.
    std::vector<LetterRange> Find(const QString& words) const;
    // Lines end with a line feed.
    QString Text(const LetterRange& range) const;
    // In points: one area for each line.
    std::vector<QRectF> Areas(const LetterRange& range) const;
    // The place before or behind a letter that is nearest to a point; 0 on a page without text.
    int PlaceAt(QPointF point) const;
    bool IsOnText(QPointF point) const;
    // Letters around one of them up to blanks and the ends of the line.
    LetterRange WordAt(int place) const;

 private:
    struct Letter {
        QRectF area;
        int begin;  // in m_text
        int line;
        bool blank;
    };
    int LetterOf(qsizetype position) const;

    QString m_text;  // a blank instead of each line's end
    std::vector<Letter> m_letters;
};

}  // namespace viewer
