// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/page_text.h"

#include <algorithm>
#include <cmath>

namespace viewer {
namespace {

// Returns the distance of a point from an area. Lines weigh more than characters, so that the nearest line is
// found.
double Distance(const QRectF& area, QPointF point) {
    const double across = std::max({area.top() - point.y(), point.y() - area.bottom(), 0.0});
    const double along = std::max({area.left() - point.x(), point.x() - area.right(), 0.0});
    constexpr double LineWeight = 100;
    return LineWeight * across + along;
}

}  // namespace

PageText::PageText(const std::vector<report::Character>& characters) {
    m_characters.reserve(characters.size());
    int line = 0;
    for (const report::Character& character : characters) {
        const QString text = QString::fromStdString(character.text);
        const report::Area& area = character.area;
        m_characters.push_back({{area.x, area.y, area.width, area.height},
                                static_cast<int>(m_text.size()),
                                line,
                                text.trimmed().isEmpty()});
        m_text += text;
        if (character.endsLine) {
            m_text += ' ';
            ++line;
        }
    }
}

int PageText::LetterOf(qsizetype position) const {
    const auto after =
        std::upper_bound(m_characters.begin(), m_characters.end(), position,
                         [](qsizetype at, const Character& character) { return at < character.begin; });
    return static_cast<int>(after - m_characters.begin()) - 1;
}

std::vector<CharacterRange> PageText::Find(const QString& words) const {
    std::vector<CharacterRange> found;
    if (words.isEmpty() || m_characters.empty()) {
        return found;
    }
    for (qsizetype at = 0; (at = m_text.indexOf(words, at, Qt::CaseInsensitive)) >= 0; at += words.size()) {
        const int first = LetterOf(at), last = LetterOf(at + words.size() - 1);
        found.push_back({first, last - first + 1});
    }
    return found;
}

QString PageText::Text(const CharacterRange& range) const {
    QString text;
    const int end = std::min(range.first + range.count, Count());
    for (int i = range.first; i < end; ++i) {
        const Character& character = m_characters[static_cast<std::size_t>(i)];
        const bool isLast = i + 1 == Count();
        const Character* next = isLast ? nullptr : &m_characters[static_cast<std::size_t>(i) + 1];
        const bool endsLine = isLast || next->line != character.line;
        const qsizetype after = isLast ? m_text.size() : next->begin;
        text += QStringView(m_text).mid(character.begin, after - character.begin - (endsLine ? 1 : 0));
        if (endsLine && i + 1 < end) {
            text += '\n';
        }
    }
    return text;
}

std::vector<QRectF> PageText::Areas(const CharacterRange& range) const {
    std::vector<QRectF> areas;
    int line = -1;
    const int end = std::min(range.first + range.count, Count());
    for (int i = range.first; i < end; ++i) {
        const Character& character = m_characters[static_cast<std::size_t>(i)];
        if (character.line != line) {
            areas.push_back(character.area);
            line = character.line;
        } else {
            areas.back() |= character.area;
        }
    }
    return areas;
}

int PageText::PlaceAt(QPointF point) const {
    const auto nearest = std::min_element(m_characters.begin(), m_characters.end(),
                                          [&](const Character& a, const Character& b) {
                                              return Distance(a.area, point) < Distance(b.area, point);
                                          });
    if (nearest == m_characters.end()) {
        return 0;
    }
    const bool after = point.x() > nearest->area.center().x();
    return static_cast<int>(nearest - m_characters.begin()) + (after ? 1 : 0);
}

bool PageText::IsOnText(QPointF point) const {
    return std::any_of(m_characters.begin(), m_characters.end(),
                       [&](const Character& character) { return character.area.contains(point); });
}

CharacterRange PageText::WordAt(int place) const {
    if (m_characters.empty()) {
        return {};
    }
    const auto at = [&](int i) -> const Character& { return m_characters[static_cast<std::size_t>(i)]; };
    const int middle = std::clamp(place, 0, Count() - 1);
    int first = middle, last = middle;
    const auto belongs = [&](int i) { return !at(i).blank && at(i).line == at(middle).line; };
    while (first > 0 && belongs(first - 1)) {
        --first;
    }
    while (last + 1 < Count() && belongs(last + 1)) {
        ++last;
    }
    return {first, last - first + 1};
}

}  // namespace viewer
