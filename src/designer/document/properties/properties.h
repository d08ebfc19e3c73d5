// SPDX-License-Identifier: GPL-3.0-or-later
// What the elements of a report can have set: the properties that the engine reads (MS-RDL, section 2).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

enum class PropertyKind {
    Text,
    Name,  // an identifier; what refers to it follows
    Size,
    Color,
    Font,  // a family
    Words,
    Boolean,
    Integer,
    Number,
    Format,  // of numbers and dates
    // Names of other parts of the report:
    Item,
    DataSet,
    DataSource,
    Image,
    Scope,  // a group, region or data set
};

enum class Expressions { No, Allowed, Only };

struct Property {
    std::string_view name;      // for users
    std::string_view category;  // for users
    // From the element, as Document::Find has it; "@Name" is an attribute.
    std::string_view path;
    PropertyKind kind = PropertyKind::Text;
    Expressions expressions = Expressions::No;
    std::string_view missing = {};  // the value that holds when it is not set; may be empty
    std::string_view words = {};    // of Words, separated by blanks
    // In files of 2003 and 2005, if it is another; "-" if these do not have it.
    std::string_view olderPath = {};
    // Whether it belongs to each element of the path, such as each run of a text box, and not to the first.
    bool isOfEach = false;
};

enum class Schemas { Older, Newer };  // of 2003 and 2005; later ones

// Returns the properties of elements of this name in the order in which a user looks for them, none if it has
// none. The pointers stay valid.
std::vector<const Property*> PropertiesOf(std::string_view element, Schemas schemas);
// The same for an element of a report.
std::vector<const Property*> PropertiesOf(const Document& document, ElementId element);
// Returns the names of all elements that have properties.
std::vector<std::string_view> ElementsWithProperties();

// Whether the report is of the schemas of 2003 or 2005.
bool IsOlderSchema(const Document& document);

struct PropertyValue {
    std::string text;  // as written; if it is not set, Property::missing
    bool isSet = false;
    bool isMixed = false;  // the elements of the path do not have one value: `text` is that of the first
};

PropertyValue ValueOf(const Document& document, ElementId id, const Property& property);

// Returns why the property cannot have this value, as a text for users; empty if it can. An expression is not
// compiled. With the name of its element also a size that only lines can have is one of these.
std::string FaultOf(const Property& property, std::string_view value, std::string_view element = {});

// Sets the value, as one step. A name also changes what refers to it. Raises EditError if FaultOf finds a
// fault.
void SetValue(Document& document, ElementId id, const Property& property, std::string_view value);
// Back to the value that holds when nothing is set.
void ResetValue(Document& document, ElementId id, const Property& property);
// The same for many elements as one step, which costs about as much as one of them.
void SetValueOfAll(Document& document, const std::vector<ElementId>& ids, const Property& property,
                   std::string_view value);
void ResetValueOfAll(Document& document, const std::vector<ElementId>& ids, const Property& property);

}  // namespace designer
