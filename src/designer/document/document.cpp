// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/document.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>

namespace designer {
namespace {

constexpr std::size_t NeverSaved = static_cast<std::size_t>(-1);

// Returns the bytes between the line's beginning and the element; nullopt if there is more than blanks.
std::optional<std::string> IndentOf(const SourceTree& tree, int index) {
    const std::string_view before = std::string_view(tree.Text()).substr(0, tree[index].whole.begin);
    const std::size_t end = before.find_last_not_of(" \t");
    const bool beginsLine = end != std::string_view::npos && (before[end] == '\n' || before[end] == '\r');
    return beginsLine ? std::optional(std::string(before.substr(end + 1))) : std::nullopt;
}

}  // namespace

Document::Document(FileText file) : m_encoding(std::move(file.encoding)), m_tree(std::move(file.text)) {
    m_indexes.push_back(NoIndex);  // NoElement
    for (int index = 0; index < m_tree.Count(); ++index) {
        m_ids.push_back(static_cast<ElementId>(index + 1));
        m_indexes.push_back(index);
    }
    FindLayout();
}

// A file that another program has written keeps its ways: they are read once, from its first lines.
void Document::FindLayout() {
    const std::string& text = Text();
    const std::size_t end = text.find_first_of("\r\n");
    if (end != std::string::npos) {
        m_lineEnd = text.substr(end, text[end] == '\r' && text.substr(end + 1, 1) == "\n" ? 2 : 1);
    }
    bool hasLines = false;
    for (int index = 1; index < m_tree.Count() && m_indent.empty(); ++index) {
        const std::optional<std::string> own = IndentOf(m_tree, index);
        const std::optional<std::string> outer = IndentOf(m_tree, m_tree[index].parent);
        hasLines = hasLines || own;
        const std::string base = outer.value_or("");
        if (own && own->size() > base.size() && own->starts_with(base)) {
            m_indent = own->substr(base.size());
        }
    }
    if (m_tree.Count() == 1) {
        m_lineEnd = m_lineEnd.empty() ? "\n" : m_lineEnd;
        m_indent = "  ";
    } else if (!hasLines) {
        m_lineEnd.clear();
    }
}

int Document::IndexOf(ElementId id) const {
    if (!Has(id)) {
        throw EditError("the element does not exist any more");
    }
    return m_indexes[id];
}

std::vector<ElementId> Document::Children(ElementId id) const {
    std::vector<ElementId> ids;
    for (const int child : m_tree.Children(IndexOf(id))) {
        ids.push_back(IdAt(child));
    }
    return ids;
}

std::optional<std::string> Document::TextAt(ElementId id, std::string_view path) const {
    const int index = m_tree.Find(IndexOf(id), path);
    return index == NoIndex ? std::nullopt : std::optional(m_tree.TextOf(index));
}

void Document::Apply(const std::string& step, std::vector<Splice> splices) {
    Edit edit;
    std::size_t end = 0;
    for (Splice& splice : splices) {
        if (splice.offset < end || splice.offset > Text().size() ||
            splice.removed > Text().size() - splice.offset) {
            throw std::logic_error("splices overlap or lie outside of the text");
        }
        end = splice.offset + splice.removed;
        edit.push_back({splice.offset,
                        Text().substr(splice.offset, splice.removed),
                        std::move(splice.inserted),
                        {},
                        std::move(splice.keptIds)});
    }
    Make(edit);
    Record(step, std::move(edit));
}

// Changes the text and notes in `edit` which ids went and came.
void Document::Make(Edit& edit) {
    std::string text;
    std::size_t at = 0;
    for (const Change& change : edit) {
        text.append(Text(), at, change.offset - at);
        text += change.inserted;
        at = change.offset + change.removed.size();
    }
    text.append(Text(), at, std::string::npos);
    SourceTree tree(std::move(text));
    TakeIds(tree, edit);
    m_tree = std::move(tree);
    ++m_revision;
}

// Goes through the old and the new elements side by side. An element is the old one if its beginning is not
// within what was removed or inserted.
void Document::TakeIds(const SourceTree& tree, Edit& edit) {
    std::vector<ElementId> ids;
    ids.reserve(static_cast<std::size_t>(tree.Count()));
    int old = 0, index = 0;
    std::size_t grown = 0, shrunk = 0;  // by the changes before
    const auto copyUpTo = [&](std::size_t end) {
        for (; old < m_tree.Count() && m_tree[old].whole.begin < end; ++old, ++index) {
            ids.push_back(IdAt(old));
        }
    };
    for (Change& change : edit) {
        copyUpTo(change.offset);
        change.removedIds.clear();
        for (; old < m_tree.Count() && m_tree[old].whole.begin < change.offset + change.removed.size();
             ++old) {
            change.removedIds.push_back(IdAt(old));
        }
        const std::size_t end = change.offset + grown - shrunk + change.inserted.size();
        std::size_t taken = 0;
        for (; index < tree.Count() && tree[index].whole.begin < end; ++index, ++taken) {
            if (taken == change.insertedIds.size()) {
                change.insertedIds.push_back(static_cast<ElementId>(m_indexes.size()));
                m_indexes.push_back(NoIndex);
            }
            ids.push_back(change.insertedIds[taken]);
        }
        change.insertedIds.resize(taken);
        grown += change.inserted.size();
        shrunk += change.removed.size();
    }
    copyUpTo(std::string::npos);
    for (const ElementId id : m_ids) {
        m_indexes[id] = NoIndex;
    }
    m_ids = std::move(ids);
    for (std::size_t i = 0; i < m_ids.size(); ++i) {
        m_indexes[m_ids[i]] = static_cast<int>(i);
    }
}

Document::Edit Document::Inverse(const Edit& edit) {
    Edit inverse;
    std::size_t grown = 0, shrunk = 0;
    for (const Change& change : edit) {
        inverse.push_back({change.offset + grown - shrunk, change.inserted, change.removed,
                           change.insertedIds, change.removedIds});
        grown += change.inserted.size();
        shrunk += change.removed.size();
    }
    return inverse;
}

void Document::Record(const std::string& step, Edit edit) {
    if (m_group) {
        m_group->edits.push_back(std::move(edit));
        return;
    }
    BeginGroup(step, {});
    m_group->edits.push_back(std::move(edit));
    EndGroup(true);
}

void Document::BeginGroup(const std::string& step, const std::string& mergeKey) {
    if (m_groups++ == 0) {
        m_group = Step{step, mergeKey, {}};
    }
}

void Document::EndGroup(bool isKept) {
    if (--m_groups > 0) {
        return;
    }
    Step step = std::move(*m_group);
    m_group.reset();
    if (!isKept) {
        for (auto edit = step.edits.rbegin(); edit != step.edits.rend(); ++edit) {
            Edit inverse = Inverse(*edit);
            Make(inverse);
        }
        return;
    }
    if (step.edits.empty()) {
        return;
    }
    ForgetUndone();
    const bool isMerged =
        !step.mergeKey.empty() && m_done > 0 && m_saved != m_done && m_steps.back().mergeKey == step.mergeKey;
    if (isMerged) {
        std::move(step.edits.begin(), step.edits.end(), std::back_inserter(m_steps.back().edits));
        m_steps.back().name = std::move(step.name);
        return;
    }
    m_steps.push_back(std::move(step));
    ++m_done;
}

bool Document::Undo() {
    if (m_done == 0 || m_group) {
        return false;
    }
    Step& step = m_steps[--m_done];
    for (auto edit = step.edits.rbegin(); edit != step.edits.rend(); ++edit) {
        Edit inverse = Inverse(*edit);
        Make(inverse);
    }
    // What follows is a step of its own.
    step.mergeKey.clear();
    if (m_done > 0) {
        m_steps[m_done - 1].mergeKey.clear();
    }
    return true;
}

bool Document::Redo() {
    if (RedoCount() == 0 || m_group) {
        return false;
    }
    Step& step = m_steps[m_done++];
    for (Edit& edit : step.edits) {
        Make(edit);
    }
    return true;
}

void Document::ForgetUndone() {
    if (m_saved != NeverSaved && m_saved > m_done) {
        m_saved = NeverSaved;  // the saved state was undone and cannot be reached any more
    }
    m_steps.resize(m_done);
}

StepGroup::StepGroup(Document& document, const std::string& step, const std::string& mergeKey)
    : m_document(document), m_exceptions(std::uncaught_exceptions()) {
    m_document.BeginGroup(step, mergeKey);
}

StepGroup::~StepGroup() {
    m_document.EndGroup(std::uncaught_exceptions() == m_exceptions);
}

}  // namespace designer
