// SPDX-License-Identifier: GPL-3.0-or-later
// A report file that is being edited: its text, where its elements are in it, and the steps that can be
// undone. An edit replaces a few bytes; all others stay as they are, so that a file that is opened and saved
// has the same bytes, and as many undos as there were steps give the bytes of the beginning.
//
// The edits that know elements are in editing.h. Not thread-safe.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/file_text.h"
#include "designer/document/source_tree.h"

namespace designer {

// Names an element for as long as it exists: edits of other elements and of its content do not change it. An
// element that an undo brings back has its old id again.
using ElementId = std::uint32_t;
inline constexpr ElementId NoElement = 0;

// An edit that is refused. what() is for users, without '.
class EditError : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

// Replaces `removed` bytes from `offset` on. The elements of `inserted` get the ids of `keptIds`, in document
// order, and new ones when there are no more.
struct Splice {
    std::size_t offset = 0;
    std::size_t removed = 0;
    std::string inserted;
    std::vector<ElementId> keptIds;
};

class Document {
 public:
    // Takes the bytes of a file. Raises SourceFlaw if they are not well-formed XML.
    explicit Document(std::string_view bytes) : Document(ReadFileText(bytes)) {}
    Document(Document&&) = default;
    Document& operator=(Document&&) = default;

    // Returns a document with the same text, in which to try an edit: without steps, with ids of its own and
    // the same indexes. Its encoding may lack a character of the text; only Bytes minds.
    Document Copy() const { return Document(FileText{Text(), m_encoding}); }

    // Returns the bytes of the file. Raises SourceFlaw if its encoding does not have a character of the text.
    std::string Bytes() const { return WriteFileText(Text(), m_encoding); }
    const std::string& Text() const { return m_tree.Text(); }
    // Both change with every edit, undo and redo: keep ids, not indexes.
    const SourceTree& Tree() const { return m_tree; }
    // Returns a number that grows with every edit, undo and redo.
    std::uint64_t Revision() const { return m_revision; }
    // Returns the line end of the file, and what an element is indented by more than its parent. In a file
    // without line ends both are empty.
    const std::string& LineEnd() const { return m_lineEnd; }
    const std::string& Indent() const { return m_indent; }

    ElementId Root() const { return IdAt(0); }
    bool Has(ElementId id) const { return id < m_indexes.size() && m_indexes[id] != NoIndex; }
    // Returns the index in Tree(). Raises EditError if the element does not exist any more.
    int IndexOf(ElementId id) const;
    ElementId IdAt(int index) const {
        return index == NoIndex ? NoElement : m_ids[static_cast<std::size_t>(index)];
    }

    // The following raise EditError if `id` does not exist any more. Names are without prefix.
    std::string Name(ElementId id) const { return std::string(m_tree.LocalName(IndexOf(id))); }
    ElementId Parent(ElementId id) const { return IdAt(m_tree[IndexOf(id)].parent); }
    std::vector<ElementId> Children(ElementId id) const;
    // Returns NoElement if a step of the path is missing; SourceTree::Find says what a path is.
    ElementId Find(ElementId id, std::string_view path) const { return IdAt(m_tree.Find(IndexOf(id), path)); }
    // Returns the text of the element at the path; nullopt if there is none.
    std::optional<std::string> TextAt(ElementId id, std::string_view path) const;
    std::optional<std::string> Attribute(ElementId id, std::string_view name) const {
        return m_tree.AttributeOf(IndexOf(id), name);
    }
    Position PlaceOf(ElementId id) const { return m_tree.PositionOf(m_tree[IndexOf(id)].whole.begin); }

    // Makes these edits one step with this name, or adds them to the step that is open. The splices are in
    // ascending order and do not overlap; their offsets are those of the text before all of them. Raises
    // SourceFlaw, and changes nothing, if the text would not be well-formed.
    void Apply(const std::string& step, std::vector<Splice> splices);

    std::size_t UndoCount() const { return m_done; }
    std::size_t RedoCount() const { return m_steps.size() - m_done; }
    // The names of the steps that Undo and Redo would take; empty if there is none.
    std::string UndoName() const { return m_done > 0 ? m_steps[m_done - 1].name : std::string(); }
    std::string RedoName() const { return RedoCount() > 0 ? m_steps[m_done].name : std::string(); }
    // Return false if there is no step.
    bool Undo();
    bool Redo();
    // Forgets the steps that were undone.
    void ForgetUndone();

    // Whether there are steps that were made, or undone, since MarkSaved or the beginning.
    bool IsModified() const { return m_saved != m_done; }
    void MarkSaved() { m_saved = m_done; }

 private:
    explicit Document(FileText file);
    friend class StepGroup;
    struct Change {
        std::size_t offset;  // in the text before the edit
        std::string removed, inserted;
        std::vector<ElementId> removedIds, insertedIds;
    };
    using Edit = std::vector<Change>;
    struct Step {
        std::string name, mergeKey;
        std::vector<Edit> edits;
    };

    void Make(Edit& edit);
    static Edit Inverse(const Edit& edit);
    void TakeIds(const SourceTree& tree, Edit& edit);
    void Record(const std::string& step, Edit edit);
    void FindLayout();
    void BeginGroup(const std::string& step, const std::string& mergeKey);
    void EndGroup(bool isKept);

    FileEncoding m_encoding;
    SourceTree m_tree;
    std::vector<ElementId> m_ids;  // by index
    std::vector<int> m_indexes;    // by id; NoIndex: it does not exist
    std::uint64_t m_revision = 0;
    std::string m_lineEnd, m_indent;
    std::vector<Step> m_steps;  // the first m_done of them are done, the others undone
    std::size_t m_done = 0;
    std::size_t m_saved = 0;
    int m_groups = 0;  // open ones
    std::optional<Step> m_group;
};

// All edits during its life are one step. An exception that leaves its scope takes the edits back. Groups
// within a group belong to the outer one.
class StepGroup {
 public:
    // Steps that follow each other with the same merge key, which is not empty, are one step with the name of
    // the last: a drag, a text while it is typed.
    StepGroup(Document& document, const std::string& step, const std::string& mergeKey = {});
    ~StepGroup();
    StepGroup(const StepGroup&) = delete;
    StepGroup& operator=(const StepGroup&) = delete;

 private:
    Document& m_document;
    const int m_exceptions;
};

}  // namespace designer
