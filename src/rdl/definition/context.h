// SPDX-License-Identifier: GPL-3.0-or-later
// State shared by the readers of all elements: creates values from elements and reports errors with their
// place.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include "rdl/definition/model.h"
#include "rdl/definition/placeholders.h"
#include "rdl/definition/style_constant.h"
#include "rdl/definition/tree/xml_tree.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl {

struct ReportTree;

// `where` names the item in error texts: "Textbox Total"; a property follows after a comma. Every function
// raises rdl::Error through Fail for invalid values.
class Context {
 public:
    Context(const std::string& fileName, const DefinitionLimits& limits);

    // Returns the attribute Name, or an empty text. Raises rdl::Error unless it is an identifier.
    std::string NameOf(const XmlElement& element) const;
    // Returns the element's text as a constant or, if it starts with =, as an expression with the next id.
    Expr MakeExpr(const XmlElement& element, const std::string& where);
    // The same for a child; not set if there is none.
    Expr ChildExpr(const XmlElement& parent, std::string_view name, const std::string& where);
    // The same for a text in which {?Parameter} and {@Global} stand for values; add the parameters first.
    Expr ChildText(const XmlElement& parent, std::string_view name, const std::string& where);
    // The same for a connect string, in which each {?Name} must be a parameter.
    Expr ChildConnection(const XmlElement& parent, std::string_view name, const std::string& where);
    // Has each constant of a style passed on from now on; `take` must outlive the context.
    void PassStyles(const TakeStyleConstant& take) { m_takeStyle = take ? &take : nullptr; }
    void PassStyle(StyleProperty property, const Expr& constant) const {
        if (m_takeStyle) {
            (*m_takeStyle)(property, constant);
        }
    }
    // Notes a font that the report names.
    void AddFont(const std::string& family) { m_fonts.insert(family); }
    const std::set<std::string>& Fonts() const { return m_fonts; }
    void AddParameter(const std::string& name, bool isMultiValue);
    // Returns a size in points; `missing` if the element is absent. A negative size is an error.
    double Size(const XmlElement& parent, std::string_view name, const std::string& where,
                double missing = 0) const;
    // The same for a size that may be negative: a line may run upwards. 0 if the element is absent.
    double SignedSize(const XmlElement& parent, std::string_view name, const std::string& where) const;
    bool Flag(const XmlElement& parent, std::string_view name, const std::string& where,
              bool missing = false) const;
    int Number(const XmlElement& parent, std::string_view name, const std::string& where, int least, int most,
               int missing) const;
    // Raises rdl::Error unless the report embeds an image of this name or `name` is an expression.
    void RequireImage(const XmlElement& element, const std::string& where, const Expr& name) const;
    void AddImage(const std::string& name) { m_images.insert(name); }
    // Refuses network addresses: images come from files and from the report itself.
    void RefuseAddress(const XmlElement& element, const std::string& where, const Expr& source) const;
    // Call this for each new item. Raises rdl::Error past the limit on items.
    void CountItem(const XmlElement& element);
    [[noreturn]] void Fail(const XmlElement& element, const std::string& where,
                           const std::string& what) const;

    // Rows and texts that are not in the tree; `tree` must outlive the context.
    void SetTree(const ReportTree& tree) { m_tree = &tree; }
    const ReportTree& Tree() const { return *m_tree; }

    int ExpressionCount() const { return m_expressions; }

 private:
    std::optional<double> SizeFrom(double least, const XmlElement& parent, std::string_view name,
                                   const std::string& where) const;

    Expr WithPlaceholders(Expr text, const ParameterNames* parameters);

    std::string m_fileName;
    const DefinitionLimits& m_limits;
    const ReportTree* m_tree = nullptr;
    const TakeStyleConstant* m_takeStyle = nullptr;
    std::unordered_set<std::string> m_images;
    ParameterNames m_parameters;
    std::set<std::string> m_fonts;
    int m_expressions = 0;
    int m_items = 0;
};

// "Textbox Total"; without a name "Textbox".
std::string PlaceOf(const XmlElement& element);
// "Textbox Total, Width"
std::string PropertyOf(const std::string& where, std::string_view name);

}  // namespace rdl
