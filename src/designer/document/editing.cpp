// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/editing.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "designer/document/child_order.h"
#include "designer/document/insertion.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"

namespace designer {
namespace {

std::string Or(const std::string& step, const char* verb, std::string_view what) {
    return step.empty() ? std::string(verb) + " " + std::string(what) : step;
}

std::string_view LastStep(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

// Splits the first step off.
std::string_view TakeStep(std::string_view& path) {
    const std::size_t slash = std::min(path.find('/'), path.size());
    const std::string_view step = path.substr(0, slash);
    path.remove_prefix(std::min(slash + 1, path.size()));
    return step;
}

// "<a><b>" and "</b></a>" around the escaped text.
std::string XmlOfPath(std::string_view path, std::string_view text, const std::string& lineEnd) {
    std::string before, after;
    while (!path.empty()) {
        const std::string step(TakeStep(path));
        before += "<" + step + ">";
        after.insert(0, "</" + step + ">");
    }
    return before + EscapedText(text, lineEnd) + after;
}

void CheckText(std::string_view text) {
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 && c != '\t' && c != '\n' && c != '\r') {
            throw EditError("the text has a control character, which a report cannot hold");
        }
    }
}

// Returns an empty list if the element has the text already. The first piece of text becomes the new one, the
// others go; comments between them stay.
std::vector<Splice> TextSplices(const Document& document, ElementId id, std::string_view text) {
    const SourceTree& tree = document.Tree();
    const int index = document.IndexOf(id);
    const SourceElement& element = tree[index];
    if (element.firstChild != NoIndex) {
        throw EditError("the element " + document.Name(id) + " holds elements and no text");
    }
    if (tree.TextOf(index) == text) {
        return {};
    }
    const std::string plain = EscapedText(text, document.LineEnd().empty() ? "\n" : document.LineEnd());
    if (element.IsOneTag()) {
        std::size_t end = element.whole.end - 2;
        while (IsBlank(tree.Text().substr(end - 1, 1))) {
            --end;
        }
        const std::string name(tree.QualifiedName(index));
        return {{end, element.whole.end - end, ">" + plain + "</" + name + ">", {}}};
    }
    const std::vector<TextPiece> pieces = tree.TextPieces(index);
    if (pieces.empty()) {
        return {{element.endTag, 0, plain, {}}};
    }
    std::vector<Splice> splices;
    // If there are several pieces, the one that is not blank is the text.
    auto main = std::find_if(pieces.begin(), pieces.end(), [&](const TextPiece& piece) {
        return piece.isCData || !IsBlank(tree.At(piece.range));
    });
    main = main == pieces.end() ? pieces.begin() : main;
    const bool staysCData = main->isCData && text.find("]]>") == std::string_view::npos &&
                            text.find('\r') == std::string_view::npos;
    for (auto piece = pieces.begin(); piece != pieces.end(); ++piece) {
        if (piece == main && staysCData) {
            std::string raw;
            for (const char c : text) {
                raw += c == '\n' && !document.LineEnd().empty() ? document.LineEnd() : std::string(1, c);
            }
            splices.push_back({piece->range.begin, piece->range.Size(), std::move(raw), {}});
        } else if (piece == main || piece->isCData) {
            // With the marks of a section.
            const std::size_t before = piece->isCData ? 9 : 0, after = piece->isCData ? 3 : 0;
            splices.push_back({piece->range.begin - before,
                               piece->range.Size() + before + after,
                               piece == main ? plain : std::string(),
                               {}});
        } else {
            splices.push_back({piece->range.begin, piece->range.Size(), {}, {}});
        }
    }
    return splices;
}

// Inserts into a parent that exists, and returns the new element.
ElementId InsertAt(Document& document, ElementId parent, ElementId before, std::string_view xml,
                   const std::string& step, std::vector<ElementId> keptIds = {}) {
    Splice splice = InsertionOf(document, parent, before, xml);
    splice.keptIds = std::move(keptIds);
    const std::size_t offset = splice.offset + splice.inserted.find('<');
    document.Apply(step, {std::move(splice)});
    return document.IdAt(document.Tree().ElementAt(offset));
}

// The prefix of a step "rd:TypeName" may not be declared yet: the root declares it.
void DeclarePrefixes(Document& document, ElementId parent, std::string_view path) {
    constexpr std::string_view DesignerUri =
        "http://schemas.microsoft.com/SQLServer/reporting/reportdesigner";
    if (path.find("rd:") == std::string_view::npos) {
        return;
    }
    const SourceTree& tree = document.Tree();
    for (int index = document.IndexOf(parent); index != NoIndex; index = tree[index].parent) {
        if (tree.FindAttribute(index, "xmlns:rd")) {
            return;
        }
    }
    SetAttribute(document, document.Root(), "xmlns:rd", DesignerUri);
}

// Returns the outermost of the collections around the element that hold nothing else, or the element itself.
ElementId OutermostEmptied(const Document& document, ElementId id) {
    const SourceTree& tree = document.Tree();
    int index = document.IndexOf(id);
    for (int parent = tree[index].parent; parent != NoIndex; parent = tree[index].parent) {
        const bool isOnly = tree[parent].firstChild == index && tree[index].nextSibling == NoIndex;
        const std::string_view before = tree.At({tree[parent].tagEnd, tree[index].whole.begin});
        const std::string_view after = tree.At({tree[index].whole.end, tree[parent].endTag});
        if (!isOnly || tree[parent].attributeCount > 0 || !IsCollection(tree.LocalName(parent)) ||
            !IsBlank(before) || !IsBlank(after)) {
            break;
        }
        index = parent;
    }
    return document.IdAt(index);
}

void RemoveIfEmpty(Document& document, ElementId id, const std::string& step) {
    const SourceTree& tree = document.Tree();
    const int index = document.IndexOf(id);
    if (tree[index].firstChild == NoIndex && tree[index].attributeCount == 0 &&
        IsCollection(tree.LocalName(index)) && IsBlank(tree.At(tree[index].Content()))) {
        document.Apply(step, {RemovalOf(document, OutermostEmptied(document, id))});
    }
}

// The prefixes of other namespaces that the element and those within it use, and their URIs.
std::map<std::string, std::string> ForeignPrefixes(const SourceTree& tree, int first) {
    std::map<std::string, std::string> prefixes;
    for (int index = first; index < tree.Count() && tree[index].whole.begin < tree[first].whole.end;
         ++index) {
        if (!tree.IsOfReport(index) && !tree.Prefix(index).empty()) {
            prefixes.emplace(tree.Prefix(index), tree.SpaceOf(index));
        }
        for (std::uint32_t i = 0; i < tree[index].attributeCount; ++i) {
            const SourceAttribute& attribute = tree.Attribute(tree[index].firstAttribute + i);
            const std::string_view name = tree.At(attribute.name);
            if (attribute.space != 0) {
                prefixes.emplace(name.substr(0, name.find(':')), tree.SpaceUri(attribute.space));
            }
        }
    }
    prefixes.erase("xml");
    for (std::uint32_t i = 0; i < tree[first].attributeCount; ++i) {
        const std::string_view name = tree.At(tree.Attribute(tree[first].firstAttribute + i).name);
        if (name.starts_with("xmlns:")) {
            prefixes.erase(std::string(name.substr(6)));
        }
    }
    return prefixes;
}

enum class OtherSpaces { Declared, NotDeclared };

// Returns the text of the element without the prefix of the report, with or without the declarations of other
// prefixes.
std::string ElementText(const Document& document, ElementId id, OtherSpaces others) {
    const SourceTree& tree = document.Tree();
    const int first = document.IndexOf(id);
    std::vector<Range> names;
    for (int index = first; index < tree.Count() && tree[index].whole.begin < tree[first].whole.end;
         ++index) {
        names.push_back(tree[index].Name());
        if (!tree[index].IsOneTag()) {
            const std::uint32_t begin = tree[index].endTag + 2;
            names.push_back({begin, begin + tree[index].Name().Size()});
        }
    }
    std::sort(names.begin(), names.end(), [](Range left, Range right) { return left.begin < right.begin; });
    const std::string own = std::string(tree.Prefix(0)) + ":";
    std::string xml;
    std::uint32_t at = tree[first].whole.begin;
    for (const Range& name : names) {
        xml += tree.At({at, name.begin});
        const std::string_view written = tree.At(name);
        xml += own.size() > 1 && written.starts_with(own) ? written.substr(own.size()) : written;
        at = name.end;
        if (others == OtherSpaces::Declared && name.begin == names.front().begin) {
            for (const auto& [prefix, uri] : ForeignPrefixes(tree, first)) {
                xml += " xmlns:" + prefix + "=\"" + EscapedValue(uri, '"') + "\"";
            }
        }
    }
    return xml + std::string(tree.At({at, tree[first].whole.end}));
}

}  // namespace

void SetText(Document& document, ElementId owner, std::string_view path, std::string_view text,
             const std::string& step) {
    CheckText(text);
    const std::string name = Or(step, "Set", LastStep(path));
    const StepGroup group(document, name);
    DeclarePrefixes(document, owner, path);
    ElementId parent = owner;
    std::string_view rest = path;
    while (!rest.empty()) {
        std::string_view next = rest;
        const ElementId child = document.Find(parent, TakeStep(next));
        if (child == NoElement) {
            InsertXml(document, parent, XmlOfPath(rest, text, "\n"), NoElement, name);
            return;
        }
        parent = child;
        rest = next;
    }
    if (std::vector<Splice> splices = TextSplices(document, parent, text); !splices.empty()) {
        document.Apply(name, std::move(splices));
    }
}

namespace {

// What is missing of a path: it is inserted into `parent`.
struct MissingPath {
    ElementId parent = NoElement;
    std::string_view rest;
};

MissingPath MissingOf(const Document& document, const TextChange& change) {
    MissingPath missing{change.owner, change.path};
    for (std::string_view next = missing.rest;; missing.rest = next) {
        const ElementId child = document.Find(missing.parent, TakeStep(next));
        if (child == NoElement) {
            return missing;
        }
        missing.parent = child;
    }
}

// Paths that are missing in elements of their own are inserted by one edit; where two changes meet in one
// element the second one may need what the first one makes.
void InsertTexts(Document& document, const std::vector<const TextChange*>& changes, const std::string& step) {
    std::map<ElementId, int> uses;
    for (const TextChange* change : changes) {
        ++uses[MissingOf(document, *change).parent];
    }
    std::vector<Splice> splices;
    std::vector<const TextChange*> others;
    for (const TextChange* change : changes) {
        const MissingPath missing = MissingOf(document, *change);
        if (uses[missing.parent] > 1 || missing.rest.find(':') != std::string_view::npos) {
            others.push_back(change);
            continue;
        }
        std::string_view rest = missing.rest;
        const ElementId next = FollowingSibling(document, missing.parent, TakeStep(rest));
        splices.push_back(
            InsertionOf(document, missing.parent, next, XmlOfPath(missing.rest, change->text, "\n")));
    }
    std::sort(splices.begin(), splices.end(),
              [](const Splice& left, const Splice& right) { return left.offset < right.offset; });
    if (!splices.empty()) {
        document.Apply(step, std::move(splices));
    }
    for (const TextChange* change : others) {
        SetText(document, change->owner, change->path, change->text);
    }
}

}  // namespace

void SetTexts(Document& document, const std::vector<TextChange>& changes, const std::string& step) {
    const StepGroup group(document, step);
    std::map<ElementId, std::string_view> texts;  // of elements that are there
    std::vector<const TextChange*> others;
    for (const TextChange& change : changes) {
        CheckText(change.text);
        if (const ElementId id = document.Find(change.owner, change.path); id != NoElement) {
            texts.insert_or_assign(id, change.text);
        } else {
            others.push_back(&change);
        }
    }
    std::vector<Splice> splices;
    for (const auto& [id, text] : texts) {
        const std::vector<Splice> own = TextSplices(document, id, text);
        splices.insert(splices.end(), own.begin(), own.end());
    }
    std::sort(splices.begin(), splices.end(),
              [](const Splice& left, const Splice& right) { return left.offset < right.offset; });
    if (!splices.empty()) {
        document.Apply(step, std::move(splices));
    }
    InsertTexts(document, others, step);
}

void RemoveAt(Document& document, ElementId owner, std::string_view path, const std::string& step) {
    const ElementId found = document.Find(owner, path);
    if (found != NoElement && !path.empty()) {
        Remove(document, found, Or(step, "Reset", LastStep(path)));
    }
}

void SetOrRemove(Document& document, ElementId owner, std::string_view path, std::string_view text) {
    if (text != document.TextAt(owner, path).value_or("")) {
        text.empty() ? RemoveAt(document, owner, path) : SetText(document, owner, path, text);
    }
}

void RemoveAllAt(Document& document, const std::vector<TextPlace>& places, const std::string& step) {
    const StepGroup group(document, step);
    std::map<ElementId, int> uses;  // of parents, by what would go
    std::vector<ElementId> found;
    for (const TextPlace& place : places) {
        const ElementId id = document.Find(place.owner, place.path);
        if (id != NoElement && !place.path.empty()) {
            found.push_back(OutermostEmptied(document, id));
            ++uses[document.Parent(found.back())];
        }
    }
    // An element with two of them may be left empty.
    if (std::any_of(uses.begin(), uses.end(), [](const auto& use) { return use.second > 1; })) {
        for (const TextPlace& place : places) {
            RemoveAt(document, place.owner, place.path, step);
        }
        return;
    }
    std::vector<Splice> splices;
    splices.reserve(found.size());
    for (const ElementId id : found) {
        splices.push_back(RemovalOf(document, id));
    }
    std::sort(splices.begin(), splices.end(),
              [](const Splice& left, const Splice& right) { return left.offset < right.offset; });
    if (!splices.empty()) {
        document.Apply(step, std::move(splices));
    }
}

void SetAttribute(Document& document, ElementId id, std::string_view name, std::string_view value,
                  const std::string& step) {
    CheckText(value);
    const SourceTree& tree = document.Tree();
    const int index = document.IndexOf(id);
    const SourceAttribute* const attribute = tree.FindAttribute(index, name);
    if (!attribute) {
        const SourceElement& element = tree[index];
        const std::size_t at =
            element.attributeCount == 0
                ? element.nameEnd
                : tree.Attribute(element.firstAttribute + element.attributeCount - 1).value.end + 1;
        document.Apply(Or(step, "Set", name),
                       {{at, 0, " " + std::string(name) + "=\"" + EscapedValue(value, '"') + "\"", {}}});
    } else if (ResolvedValue(tree.At(attribute->value)) != value) {
        const char quote = tree.Text()[attribute->value.end];
        document.Apply(Or(step, "Set", name),
                       {{attribute->value.begin, attribute->value.Size(), EscapedValue(value, quote), {}}});
    }
}

void RemoveAttribute(Document& document, ElementId id, std::string_view name, const std::string& step) {
    const SourceTree& tree = document.Tree();
    const SourceAttribute* const attribute = tree.FindAttribute(document.IndexOf(id), name);
    if (attribute) {
        std::size_t begin = attribute->name.begin;
        while (IsBlank(tree.Text().substr(begin - 1, 1))) {
            --begin;
        }
        document.Apply(Or(step, "Reset", name), {{begin, attribute->value.end + 1 - begin, {}, {}}});
    }
}

ElementId InsertXml(Document& document, ElementId parent, std::string_view xml, ElementId before,
                    const std::string& step) {
    const std::size_t begin = std::min(xml.find('<'), xml.size() - 1) + 1;
    const std::string_view name = xml.substr(begin, NameLength(xml.substr(begin)));
    const ElementId next = before != NoElement ? before : FollowingSibling(document, parent, name);
    return InsertAt(document, parent, next, xml, Or(step, "Insert", name));
}

ElementId EnsureChild(Document& document, ElementId parent, std::string_view name, const std::string& step) {
    const ElementId child = document.Find(parent, name);
    return child != NoElement ? child
                              : InsertXml(document, parent, "<" + std::string(name) + "/>", NoElement, step);
}

void Remove(Document& document, ElementId id, const std::string& step) {
    if (document.Parent(id) == NoElement) {
        throw EditError("the report itself cannot be removed");
    }
    const std::string name = Or(step, "Remove", document.Attribute(id, "Name").value_or(document.Name(id)));
    document.Apply(name, {RemovalOf(document, OutermostEmptied(document, id))});
}

void RemoveAll(Document& document, const std::vector<ElementId>& ids, const std::string& step) {
    std::vector<Splice> splices;
    std::set<ElementId> parents;
    for (const ElementId id : ids) {
        if (document.Parent(id) == NoElement) {
            throw EditError("the report itself cannot be removed");
        }
        parents.insert(document.Parent(id));
        splices.push_back(RemovalOf(document, id));
    }
    if (splices.empty()) {
        return;
    }
    std::sort(splices.begin(), splices.end(),
              [](const Splice& a, const Splice& b) { return a.offset < b.offset; });
    const StepGroup group(document, step);
    document.Apply(step, std::move(splices));
    for (const ElementId parent : parents) {
        if (document.Has(parent)) {
            RemoveIfEmpty(document, parent, step);
        }
    }
}

void Move(Document& document, ElementId id, ElementId parent, ElementId before, const std::string& step) {
    const SourceTree& tree = document.Tree();
    for (int index = document.IndexOf(parent); index != NoIndex; index = tree[index].parent) {
        if (document.IdAt(index) == id) {
            throw EditError("an element cannot be moved into itself");
        }
    }
    if (document.Parent(id) == NoElement || before == id) {
        throw EditError("the element cannot be moved there");
    }
    const ElementId from = document.Parent(id);
    const std::string xml = ElementText(document, id, OtherSpaces::NotDeclared);
    const std::string name = Or(step, "Move", document.Attribute(id, "Name").value_or(document.Name(id)));
    std::vector<ElementId> kept;
    const int begin = document.IndexOf(id);
    for (int index = begin; index < tree.Count() && tree[index].whole.begin < tree[begin].whole.end;
         ++index) {
        kept.push_back(document.IdAt(index));
    }
    const StepGroup group(document, name);
    const ElementId next =
        before != NoElement ? before : FollowingSibling(document, parent, document.Name(id));
    document.Apply(name, {RemovalOf(document, id)});
    InsertAt(document, parent, next, xml, name, std::move(kept));
    RemoveIfEmpty(document, from, name);
}

ElementId Duplicate(Document& document, ElementId id, const std::string& step) {
    if (document.Parent(id) == NoElement) {
        throw EditError("the report itself cannot be copied");
    }
    const std::string name =
        Or(step, "Duplicate", document.Attribute(id, "Name").value_or(document.Name(id)));
    const StepGroup group(document, name);
    const SourceTree& tree = document.Tree();
    const ElementId next = document.IdAt(tree[document.IndexOf(id)].nextSibling);
    const ElementId copy = InsertAt(document, document.Parent(id), next,
                                    ElementText(document, id, OtherSpaces::NotDeclared), name);
    MakeNamesUnique(document, copy);
    return copy;
}

std::string XmlOf(const Document& document, ElementId id) {
    return ElementText(document, id, OtherSpaces::Declared);
}

}  // namespace designer
