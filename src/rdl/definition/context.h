// What every part of the reading shares: how values are made of elements, and how errors say where they are.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "rdl/definition/model.h"
#include "rdl/definition/xml_tree.h"
#include "rdl/values/ascii.h"

namespace rdl {

// `where` names the item for people throughout: "Textbox Total"; a property is put behind it with a comma.
class Context {
 public:
    Context(const std::string& fileName, const DefinitionLimits& limits);

    // The attribute Name, empty when there is none. An error unless it is an identifier.
    std::string NameOf(const XmlElement& element) const;
    // The element's text as a constant or, beginning with =, as an expression with the next number.
    Expr MakeExpr(const XmlElement& element, const std::string& where);
    // The same for a child; not set when there is none.
    Expr ChildExpr(const XmlElement& parent, std::string_view name, const std::string& where);
    // Points. A size that is missing gives `missing`; one below 0 is an error unless `negative` allows it.
    double Size(const XmlElement& parent, std::string_view name, const std::string& where, double missing = 0,
                bool negative = false) const;
    bool Flag(const XmlElement& parent, std::string_view name, const std::string& where,
              bool missing = false) const;
    int Number(const XmlElement& parent, std::string_view name, const std::string& where, int least, int most,
               int missing) const;
    // An error unless the report has an embedded image of this name, or `name` is worked out later.
    void RequireImage(const XmlElement& element, const std::string& where, const Expr& name) const;
    void TellImage(const std::string& name) { m_images.insert(name); }
    // Images are read from files and from the report itself, never fetched from the network.
    void RefuseAddress(const XmlElement& element, const std::string& where, const Expr& source) const;
    // To be called for each item that is made.
    void CountItem(const XmlElement& element);
    [[noreturn]] void Fail(const XmlElement& element, const std::string& where,
                           const std::string& what) const;

    int ExpressionCount() const { return m_expressions; }

 private:
    std::string m_fileName;
    const DefinitionLimits& m_limits;
    std::unordered_set<std::string> m_images;
    int m_expressions = 0;
    int m_items = 0;
};

// "Textbox Total"; without a name "Textbox".
std::string PlaceOf(const XmlElement& element);
// "Textbox Total, Width"
std::string PropertyOf(const std::string& where, std::string_view name);

}  // namespace rdl
