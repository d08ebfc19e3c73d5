// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/document_outline.h"

#include <algorithm>

namespace rdl::writers {
namespace {

std::string Place(int page, double x, double y) {
    std::string out = "[" + PdfReference(page) + "/XYZ ";
    PdfNumber(out, x);
    out += ' ';
    PdfNumber(out, y);
    return out + " 0]";
}

struct Links {
    int parent = -1, first = -1, last = -1, previous = -1, next = -1, below = 0;
};

}  // namespace

void PdfOutline::AddDestination(const std::string& name, int page, double x, double y) {
    m_places.try_emplace(name, Place(page, x, y));
}

void PdfOutline::AddEntry(const std::string& label, int level, int page, double x, double y) {
    m_entries.push_back({label, Place(page, x, y), level});
}

int PdfOutline::WriteEntries(PdfFile& file) const {
    std::vector<Links> links(m_entries.size() + 1);  // the root comes last
    const int root = static_cast<int>(m_entries.size());
    std::vector<int> open{root};
    std::vector<int> numbers;
    for (int i = 0; i <= root; ++i) {
        numbers.push_back(file.Reserve());
    }
    const auto at = [&](int i) -> Links& { return links[static_cast<std::size_t>(i)]; };
    for (int i = 0; i < root; ++i) {
        const int level = m_entries[static_cast<std::size_t>(i)].level;
        while (open.size() > 1 && m_entries[static_cast<std::size_t>(open.back())].level >= level) {
            open.pop_back();
        }
        Links& parent = at(open.back());
        at(i).parent = open.back();
        at(i).previous = parent.last;
        if (parent.last >= 0) {
            at(parent.last).next = i;
        } else {
            parent.first = i;
        }
        parent.last = i;
        ++parent.below;
        open.push_back(i);
    }
    const auto refer = [&](const char* key, int i) {
        return i < 0 ? std::string() : key + PdfReference(numbers[static_cast<std::size_t>(i)]);
    };
    for (int i = 0; i <= root; ++i) {
        const Links& link = at(i);
        std::string body = i == root ? "<</Type/Outlines" : "<<";
        if (i < root) {
            const Entry& entry = m_entries[static_cast<std::size_t>(i)];
            body += "/Title " + PdfText(entry.label) + "/Dest" + entry.place +
                    refer("/Parent ", link.parent) + refer("/Prev ", link.previous) +
                    refer("/Next ", link.next);
        }
        body += refer("/First ", link.first) + refer("/Last ", link.last);
        if (link.below) {
            // The top level is open, what is below it closed.
            body += "/Count " + std::to_string(i == root ? link.below : -link.below);
        }
        file.Object(numbers[static_cast<std::size_t>(i)], body + ">>");
    }
    return numbers.back();
}

std::string PdfOutline::Write(PdfFile& file) const {
    std::string out;
    if (!m_places.empty()) {
        std::string names = "<</Names[";
        for (const auto& [name, place] : m_places) {
            names += PdfLiteral(name) + place;
        }
        out += "/Names<</Dests " + PdfReference(file.Object(names + "]>>")) + ">>";
    }
    if (!m_entries.empty()) {
        out += "/PageMode/UseOutlines/Outlines " + PdfReference(WriteEntries(file));
    }
    return out;
}

}  // namespace rdl::writers
