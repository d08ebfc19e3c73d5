// SPDX-License-Identifier: GPL-3.0-or-later
// Edits of elements. Each is one step of the document, named `step`; an empty name becomes one that says what
// was done. Within a StepGroup they belong to its step. All raise EditError, and change nothing, for an
// element that does not exist any more and for what cannot be written. Paths are those of SourceTree::Find.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// Sets the text of the element at the path, and makes what is missing of the path. An element that has the
// text already is not touched; one that was a CDATA section stays one. Refuses an element that holds
// elements.
void SetText(Document& document, ElementId owner, std::string_view path, std::string_view text,
             const std::string& step = {});

struct TextChange {
    ElementId owner = NoElement;
    std::string path, text;
};
// The same for many texts as one step, which costs about as much as one of them: what a drag changes. Of two
// changes of one element the later one counts.
void SetTexts(Document& document, const std::vector<TextChange>& changes, const std::string& step);

// Removes the element at the path, if there is one, and with it the collections of the path that are left
// empty.
void RemoveAt(Document& document, ElementId owner, std::string_view path, const std::string& step = {});

// Sets the text at the path, or removes the element if the text is empty. What is not there and empty stays
// so.
void SetOrRemove(Document& document, ElementId owner, std::string_view path, std::string_view text);

struct TextPlace {
    ElementId owner = NoElement;
    std::string path;
};
// The same for many paths of different owners, of which none is within an element that goes. Costs about as
// much as one of them if no two are in one element.
void RemoveAllAt(Document& document, const std::vector<TextPlace>& places, const std::string& step);

// Sets an attribute; the name is as written, prefix included.
void SetAttribute(Document& document, ElementId id, std::string_view name, std::string_view value,
                  const std::string& step = {});
void RemoveAttribute(Document& document, ElementId id, std::string_view name, const std::string& step = {});

// Inserts the element `xml` and returns its id. Without `before` it comes where the schemas list it among its
// siblings, after those of the same name; InsertionOf says how it is written.
ElementId InsertXml(Document& document, ElementId parent, std::string_view xml, ElementId before = NoElement,
                    const std::string& step = {});
// Returns the child with this name, which is made if there is none.
ElementId EnsureChild(Document& document, ElementId parent, std::string_view name,
                      const std::string& step = {});

// Removes the element, and collections around it that are left empty.
void Remove(Document& document, ElementId id, const std::string& step = {});

// The same for many elements, none of which is in another one, as one step, which costs about as much as one
// of them.
void RemoveAll(Document& document, const std::vector<ElementId>& ids, const std::string& step);

// Moves the element; ids and names within it stay. Refuses a place within itself.
void Move(Document& document, ElementId id, ElementId parent, ElementId before = NoElement,
          const std::string& step = {});

// Inserts a copy after the element, in which all names are new, and returns its id.
ElementId Duplicate(Document& document, ElementId id, const std::string& step = {});

// Returns the element as `InsertXml` takes it: without the prefix of the report, with the declarations of all
// other prefixes that it uses.
std::string XmlOf(const Document& document, ElementId id);

}  // namespace designer
