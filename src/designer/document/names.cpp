// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/names.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
#include <set>

#include "designer/document/editing.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

constexpr std::string_view Items[] = {
    "Textbox", "Line",      "Rectangle", "Image",      "List", "Table", "Matrix",
    "Tablix",  "Subreport", "Chart",     "GaugePanel", "Map",  "Gauge", "CustomReportItem",
    "BarCode"};

enum class NameKind { None, Scope, DataSource, Parameter, Image, Field, Variable };

// What elements of these names have as names: names of one kind differ from each other.
struct NamedElement {
    std::string_view element;
    NameKind kind;
};
constexpr NamedElement NamedElements[] = {
    {"Group", NameKind::Scope},
    {"Grouping", NameKind::Scope},
    {"DataSet", NameKind::Scope},
    {"DataSource", NameKind::DataSource},
    {"ReportParameter", NameKind::Parameter},
    {"EmbeddedImage", NameKind::Image},
    {"Field", NameKind::Field},
    {"Variable", NameKind::Variable},
};

// Elements whose text is a name of the kind.
struct Reference {
    NameKind kind;
    std::string_view element;
};
constexpr Reference References[] = {
    {NameKind::Scope, "ToggleItem"},          {NameKind::Scope, "RepeatWith"},
    {NameKind::Scope, "LinkToChild"},         {NameKind::Scope, "HideDuplicates"},
    {NameKind::Scope, "SortTarget"},          {NameKind::Scope, "SortExpressionScope"},
    {NameKind::Scope, "DataSetName"},         {NameKind::Scope, "MapDataRegionName"},
    {NameKind::DataSource, "DataSourceName"},
};

NameKind KindOf(std::string_view element) {
    if (IsReportItem(element)) {
        return NameKind::Scope;
    }
    const auto* const found = std::find_if(std::begin(NamedElements), std::end(NamedElements),
                                           [&](const NamedElement& row) { return row.element == element; });
    return found == std::end(NamedElements) ? NameKind::None : found->kind;
}

// "ReportItems!" and so on: the collection of expressions that has names of the kind.
std::string_view CollectionOf(NameKind kind) {
    return kind == NameKind::Scope       ? "ReportItems!"
           : kind == NameKind::Parameter ? "Parameters!"
           : kind == NameKind::Variable  ? "Variables!"
                                         : "";
}

// Replaces `before` + old by `before` + name where a name ends there, without regard to the case of ASCII.
std::string WithName(std::string_view text, std::string_view before, std::string_view old,
                     std::string_view name, char after = '\0') {
    std::string result;
    const std::string sought = std::string(before) + std::string(old);
    std::size_t at = 0;
    while (at < text.size()) {
        const std::string_view rest = text.substr(at);
        const bool begins = rest.size() >= sought.size() &&
                            SameAscii(rest.substr(0, sought.size()), sought) &&
                            (at == 0 || !rdl::IsNameByte(before[0]) || !rdl::IsNameByte(text[at - 1]));
        const char next = begins && rest.size() > sought.size() ? rest[sought.size()] : '\0';
        if (begins && (after == '\0' ? !rdl::IsNameByte(next) : next == after)) {
            result.append(rest.substr(0, before.size())).append(name);
            at += sought.size();
        } else {
            result += text[at++];
        }
    }
    return result;
}

bool IsImageReference(const SourceTree& tree, int index) {
    const int parent = tree[index].parent;
    const std::string_view owner = tree.LocalName(parent);
    const int source = tree.Child(parent, "Source");
    return (owner == "Image" || owner == "BackgroundImage") && source != NoIndex &&
           Trim(tree.TextOf(source)) == "Embedded";
}

enum class TextsInExpressions { Follow, Stay };  // texts may be names of scopes

// Changes what refers to the name from within elements `first` up to `end`.
void FollowName(Document& document, int first, std::size_t end, NameKind kind, const std::string& old,
                const std::string& name, TextsInExpressions texts) {
    std::vector<TextChange> changes;
    const SourceTree& tree = document.Tree();
    for (int index = first; index < tree.Count() && tree[index].whole.begin < end; ++index) {
        if (tree[index].firstChild != NoIndex || !tree.IsOfReport(index)) {
            continue;
        }
        const std::string text = tree.TextOf(index);
        const std::string_view element = tree.LocalName(index);
        std::string changed = text;
        const bool isReference =
            std::any_of(std::begin(References), std::end(References),
                        [&](const Reference& row) { return row.kind == kind && row.element == element; });
        const bool isImage = kind == NameKind::Image && element == "Value" && IsImageReference(tree, index);
        if ((isReference || isImage) && Trim(text) == old) {
            changed = name;
        } else if (Trim(text).starts_with('=') && !CollectionOf(kind).empty()) {
            changed = WithName(text, CollectionOf(kind), old, name);
            changed = texts == TextsInExpressions::Follow ? WithName(changed, "\"", old, name, '"') : changed;
        }
        if (changed != text) {
            changes.push_back({document.IdAt(index), {}, changed});
        }
    }
    SetTexts(document, changes, "Rename");
}

std::vector<LeftReference> LeftReferences(const Document& document, NameKind kind, const std::string& old) {
    std::vector<LeftReference> left;
    const SourceTree& tree = document.Tree();
    if (kind != NameKind::Scope && kind != NameKind::Field) {
        return left;
    }
    for (int index = 0; index < tree.Count(); ++index) {
        if (tree[index].firstChild != NoIndex) {
            continue;
        }
        const std::string text = tree.TextOf(index);
        const bool isLeft = kind == NameKind::Scope ? WithName(text, "\"", old, "?", '"') != text
                                                    : WithName(text, "Fields!", old, "?") != text;
        if (isLeft && Trim(text).starts_with('=')) {
            left.push_back({document.IdAt(index), text});
        }
    }
    return left;
}

// Names that an element may not have, in lower case. Those of fields differ within their data set.
std::set<std::string> TakenNames(const Document& document, ElementId id) {
    const SourceTree& tree = document.Tree();
    const int own = document.IndexOf(id);
    const NameKind kind = KindOf(tree.LocalName(own));
    std::set<std::string> taken;
    for (int index = 0; index < tree.Count(); ++index) {
        const bool isNear = kind == NameKind::Field  ? tree[index].parent == tree[own].parent
                            : kind == NameKind::None ? tree[index].parent == tree[own].parent
                                                     : KindOf(tree.LocalName(index)) == kind;
        const auto name = index == own || !isNear ? std::nullopt : tree.AttributeOf(index, "Name");
        if (name) {
            taken.insert(UpperText(*name));
        }
    }
    return taken;
}

std::string StemOf(std::string_view name) {
    const std::size_t end = name.find_last_not_of("0123456789");
    return std::string(name.substr(0, end == std::string_view::npos ? 0 : end + 1));
}

// `number` is the first one that is tried, and then the one after that of the name.
std::string NextName(std::string_view wish, const std::set<std::string>& taken, int& number) {
    if (!taken.contains(UpperText(wish))) {
        return std::string(wish);
    }
    const std::string stem = StemOf(wish);
    for (;; ++number) {
        std::string name = stem + std::to_string(number);
        if (!taken.contains(UpperText(name))) {
            return name;
        }
    }
}

}  // namespace

bool IsReportItem(std::string_view element) {
    return std::find(std::begin(Items), std::end(Items), element) != std::end(Items);
}

std::string UniqueName(const Document& document, std::string_view wish) {
    return NewNames(document).Take(std::string(wish));
}

NewNames::NewNames(const Document& document) {
    const SourceTree& tree = document.Tree();
    for (int index = 0; index < tree.Count(); ++index) {
        if (const auto name = tree.AttributeOf(index, "Name")) {
            m_taken.insert(UpperText(*name));
        }
    }
}

std::string NewNames::Take(const std::string& wish) {
    int& number = m_next.try_emplace(StemOf(wish), 1).first->second;
    std::string name = NextName(wish, m_taken, number);
    m_taken.insert(UpperText(name));
    return name;
}

namespace {

using NameMaker = std::function<std::string(ElementId id, const std::string& old)>;

void GiveNames(Document& document, ElementId copy, const NameMaker& make) {
    std::vector<ElementId> named;
    const SourceTree& tree = document.Tree();
    const int first = document.IndexOf(copy);
    for (int index = first; index < tree.Count() && tree[index].whole.begin < tree[first].whole.end;
         ++index) {
        const bool isScope = KindOf(tree.LocalName(index)) == NameKind::Scope;
        if ((isScope || index == first) && tree.AttributeOf(index, "Name")) {
            named.push_back(document.IdAt(index));
        }
    }
    for (const ElementId id : named) {
        const std::string old = *document.Attribute(id, "Name");
        const std::string name = make(id, old);
        if (name == old) {
            continue;
        }
        SetAttribute(document, id, "Name", name);
        const Range whole = document.Tree()[document.IndexOf(copy)].whole;
        FollowName(document, document.IndexOf(copy), whole.end, KindOf(document.Name(id)), old, name,
                   TextsInExpressions::Follow);
    }
}

}  // namespace

void MakeNamesUnique(Document& document, ElementId copy) {
    GiveNames(document, copy, [&](ElementId id, const std::string& old) {
        int number = 1;
        return NextName(old, TakenNames(document, id), number);
    });
}

std::string WithNewNames(const std::string& xml, NewNames& names) {
    Document element(xml);
    GiveNames(element, element.Root(), [&](ElementId, const std::string& old) { return names.Take(old); });
    return element.Text();
}

std::string NotAName(std::string_view name) {
    return "\"" + WithoutControls(CutText(name, 80)) +
           "\" is not a valid name: names begin with a letter or _ and continue with letters, digits and _";
}

std::vector<LeftReference> Rename(Document& document, ElementId id, const std::string& name) {
    if (!rdl::IsIdentifier(name)) {
        throw EditError(NotAName(name));
    }
    if (TakenNames(document, id).contains(UpperText(name))) {
        throw EditError("the name " + name + " is taken");
    }
    const std::string old = document.Attribute(id, "Name").value_or("");
    const StepGroup group(document, "Rename " + (old.empty() ? document.Name(id) : old));
    SetAttribute(document, id, "Name", name);
    const NameKind kind = KindOf(document.Name(id));
    if (old.empty() || old == name || kind == NameKind::None) {
        return {};
    }
    FollowName(document, 0, document.Text().size(), kind, old, name, TextsInExpressions::Stay);
    return LeftReferences(document, kind, old);
}

// If one item gets the name of another, all names that change get another name first.
void RenameAll(Document& document, const std::vector<ElementId>& ids, const std::vector<std::string>& names) {
    std::set<std::string> before;
    for (const ElementId id : ids) {
        before.insert(UpperText(document.Attribute(id, "Name").value_or("")));
    }
    std::vector<std::size_t> changed;
    bool isDetour = false;
    for (std::size_t row = 0; row < ids.size(); ++row) {
        const std::string old = document.Attribute(ids[row], "Name").value_or("");
        if (old != names[row]) {
            changed.push_back(row);
            isDetour = isDetour || (!SameAscii(old, names[row]) && before.contains(UpperText(names[row])));
        }
    }
    for (const std::size_t row : isDetour ? changed : std::vector<std::size_t>()) {
        Rename(document, ids[row], UniqueName(document, names[row] + "_1"));
    }
    for (const std::size_t row : changed) {
        Rename(document, ids[row], names[row]);
    }
}

std::optional<LeftReference> UseOf(const Document& document, const std::vector<std::string>& names) {
    const SourceTree& tree = document.Tree();
    for (int index = 0; index < tree.Count(); ++index) {
        if (tree[index].firstChild != NoIndex || !tree.IsOfReport(index)) {
            continue;
        }
        const std::string text = tree.TextOf(index);
        const bool isExpression = Trim(text).starts_with('=');
        const bool isReference =
            std::any_of(std::begin(References), std::end(References), [&](const Reference& row) {
                return row.kind == NameKind::Scope && row.element == tree.LocalName(index);
            });
        if (!isExpression && !isReference) {
            continue;
        }
        for (const std::string& name : names) {
            const bool uses = isExpression
                                  ? WithName(text, "\"", name, "?", '"') != text ||
                                        WithName(text, CollectionOf(NameKind::Scope), name, "?") != text
                                  : SameAscii(Trim(text), name);
            if (uses) {
                return LeftReference{document.IdAt(index), text};
            }
        }
    }
    return std::nullopt;
}

std::vector<LeftReference> ReferencesTo(const Document& document, ElementId id) {
    constexpr std::size_t Most = 1000;
    const SourceTree& tree = document.Tree();
    const int own = document.IndexOf(id);
    const NameKind kind = KindOf(tree.LocalName(own));
    const std::string name = document.Attribute(id, "Name").value_or("");
    const std::string_view collection = kind == NameKind::Field ? "Fields!" : CollectionOf(kind);
    std::vector<LeftReference> found;
    if (kind == NameKind::None || name.empty()) {
        return found;
    }
    for (int index = 0; index < tree.Count() && found.size() < Most; ++index) {
        const bool isWithin =
            tree[index].whole.begin >= tree[own].whole.begin && tree[index].whole.begin < tree[own].whole.end;
        if (isWithin || tree[index].firstChild != NoIndex || !tree.IsOfReport(index)) {
            continue;
        }
        const std::string text = tree.TextOf(index);
        const bool isReference =
            (kind == NameKind::Image && tree.LocalName(index) == "Value" && IsImageReference(tree, index)) ||
            std::any_of(std::begin(References), std::end(References), [&](const Reference& row) {
                return row.kind == kind && row.element == tree.LocalName(index);
            });
        const bool isQuoted = isReference || kind == NameKind::Scope;
        const bool refers = Trim(text).starts_with('=')
                                ? (!collection.empty() && WithName(text, collection, name, "?") != text) ||
                                      (isQuoted && WithName(text, "\"", name, "?", '"') != text)
                                : isReference && SameAscii(Trim(text), name);
        if (refers) {
            found.push_back({document.IdAt(index), text});
        }
    }
    return found;
}

std::string NamedOwnerOf(const Document& document, ElementId id) {
    const SourceTree& tree = document.Tree();
    for (int index = document.IndexOf(id); index != NoIndex; index = tree[index].parent) {
        if (const auto name = tree.AttributeOf(index, "Name")) {
            return std::string(tree.LocalName(index)) + " " + *name;
        }
    }
    return {};
}

std::vector<std::string> ScopesIn(const Document& document, ElementId id) {
    std::vector<std::string> names;
    const SourceTree& tree = document.Tree();
    const int first = document.IndexOf(id);
    for (int index = first; index < tree.Count() && tree[index].whole.begin < tree[first].whole.end;
         ++index) {
        const auto name = tree.AttributeOf(index, "Name");
        if (name && KindOf(tree.LocalName(index)) == NameKind::Scope) {
            names.push_back(*name);
        }
    }
    return names;
}

}  // namespace designer
