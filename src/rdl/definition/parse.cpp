// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/parse.h"

#include <algorithm>
#include <fstream>

#include "rdl/definition/context.h"
#include "rdl/definition/data_reader.h"
#include "rdl/definition/default_font.h"
#include "rdl/definition/group_reader.h"
#include "rdl/definition/item_reader.h"
#include "rdl/definition/style_reader.h"
#include "rdl/definition/tree/report_tree.h"
#include "rdl/definition/tree/xml_tree.h"
#include "rdl/values/base64.h"
#include "rdl/values/error_text.h"
#include "rdl/values/whole_file.h"

namespace rdl {
namespace {

constexpr double DefaultColumnSpacing = 36;  // half an inch, by the schema

std::string InOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

class ReportReader {
 public:
    ReportReader(Context& context, const XmlElement& report) : m_context(context), m_report(report) {}

    Definition Read() {
        ReadProperties();
        m_definition.dataSources = ReadDataSources(m_context, m_report);
        m_definition.dataSets = ReadDataSets(m_context, m_report);
        m_definition.parameters = ReadParameters(m_context, m_report);
        for (const ReportParameter& parameter : m_definition.parameters) {
            m_context.AddParameter(parameter.name, parameter.multiValue);
        }
        m_definition.variables = ReadVariables(m_context, m_report, "Report");
        ReadImages();
        ReadSections();
        const Expr font = m_context.ChildExpr(m_report, "DefaultFontFamily", "Report");
        if (font.IsSet() && !font.IsExpression()) {
            m_context.AddFont(std::string(Trimmed(font.source)));
        }
        ApplyDefaultFont(m_definition, font);
        m_definition.fonts.assign(m_context.Fonts().begin(), m_context.Fonts().end());
        m_definition.expressionCount = m_context.ExpressionCount();
        return std::move(m_definition);
    }

 private:
    void ReadProperties() {
        m_definition.description = m_report.ChildText("Description");
        m_definition.author = m_report.ChildText("Author");
        m_definition.languageExpr = m_context.ChildExpr(m_report, "Language", "Report");
        m_definition.language = m_definition.languageExpr.source;
        m_definition.initialPageName = m_context.ChildExpr(m_report, "InitialPageName", "Report");
        if (const XmlElement* code = m_report.Child("Code")) {
            m_definition.code = code->text;
        }
        ReadAssemblies();
        m_definition.consumeContainerWhitespace =
            m_context.Flag(m_report, "ConsumeContainerWhitespace", "Report");
        if (const XmlElement* properties = m_report.Child("CustomProperties")) {
            for (const XmlElement& property : properties->children) {
                TakeCustomProperty(property.ChildText("Name"), property.ChildText("Value"));
            }
        }
    }

    void ReadAssemblies() {
        if (const XmlElement* modules = m_report.Child("CodeModules")) {
            for (const XmlElement& module : modules->children) {
                // Without version, culture and key.
                AddAssembly(module.text.substr(0, module.text.find(',')));
            }
        }
        if (const XmlElement* classes = m_report.Child("Classes")) {
            for (const XmlElement& one : classes->children) {
                AddAssembly(one.ChildText("ClassName"));
            }
        }
    }

    void AddAssembly(std::string_view name) {
        constexpr std::size_t Longest = 400;  // it is for errors
        name = Trimmed(name);
        if (!name.empty() && m_definition.assemblies.size() + name.size() <= Longest) {
            m_definition.assemblies += (m_definition.assemblies.empty() ? "" : ", ") + std::string(name);
        }
    }

    void TakeCustomProperty(const std::string& name, const std::string& value) {
        if (name == "Title") {
            m_definition.title = InOneLine(value);
        } else if (name == "RecordSelectionFormula") {
            m_definition.recordSelectionFormula = value;
        }
    }

    void ReadImages() {
        const XmlElement* images = m_report.Child("EmbeddedImages");
        if (!images) {
            return;
        }
        for (const XmlElement& element : images->children) {
            EmbeddedImage& image = m_definition.images.emplace_back();
            image.name = m_context.NameOf(element);
            m_context.AddImage(image.name);
            image.mimeType = element.ChildText("MIMEType");
            std::optional<std::string> decoded = FromBase64(element.ChildText("ImageData"));
            if (!decoded) {
                m_context.Fail(element, PlaceOf(element) + ", ImageData", "this is not base64");
            }
            image.bytes = std::move(*decoded);
        }
    }

    // From 2010 on there are sections; before, the report itself is the only one.
    void ReadSections() {
        const XmlElement* sections = m_report.Child("ReportSections");
        if (!sections) {
            ReadSection(m_report);
            return;
        }
        for (const XmlElement& section : sections->children) {
            ReadSection(section);
        }
        if (m_definition.sections.empty()) {
            m_context.Fail(*sections, "ReportSections", "there is no section");
        }
    }

    void ReadSection(const XmlElement& element) {
        const XmlElement* body = element.Child("Body");
        if (!body) {
            m_context.Fail(element, std::string(element.name), "it has no Body");
        }
        Section& section = m_definition.sections.emplace_back();
        section.width = m_context.Size(element, "Width", std::string(element.name));
        section.bodyHeight = m_context.Size(*body, "Height", "Body");
        const XmlElement* page = element.Child("Page");
        ReadPage(page ? *page : element, *body, section);
        section.items = ReadItems(m_context, *body, {section.width, section.bodyHeight});
        section.bodyStyle = ReadStyle(m_context, *body, "Body");
    }

    // Page settings stand in the Page element or, before 2008, in the report, and those of columns in the
    // body.
    void ReadPage(const XmlElement& element, const XmlElement& body, Section& section) {
        Page& page = section.page;
        page.width = m_context.Size(element, "PageWidth", "Page", page.width);
        page.height = m_context.Size(element, "PageHeight", "Page", page.height);
        page.marginLeft = m_context.Size(element, "LeftMargin", "Page");
        page.marginRight = m_context.Size(element, "RightMargin", "Page");
        page.marginTop = m_context.Size(element, "TopMargin", "Page");
        page.marginBottom = m_context.Size(element, "BottomMargin", "Page");
        if (page.width <= page.marginLeft + page.marginRight ||
            page.height <= page.marginTop + page.marginBottom) {
            m_context.Fail(element, "Page", "the margins leave nothing of the page");
        }
        const XmlElement& columns = element.Child("Columns") || element.name == "Page" ? element : body;
        page.columns = m_context.Number(columns, "Columns", "Page", 1, 1000, 1);
        page.columnSpacing = m_context.Size(columns, "ColumnSpacing", "Page", DefaultColumnSpacing);
        page.header = ReadPageSection(element, "PageHeader", section.width);
        page.footer = ReadPageSection(element, "PageFooter", section.width);
        page.style = ReadStyle(m_context, element, "Page");
    }

    std::optional<PageSection> ReadPageSection(const XmlElement& owner, std::string_view name, double width) {
        const XmlElement* element = owner.Child(name);
        if (!element) {
            return std::nullopt;
        }
        PageSection section;
        const std::string where(name);
        section.height = m_context.Size(*element, "Height", where);
        section.printOnFirstPage = m_context.Flag(*element, "PrintOnFirstPage", where);
        section.printOnLastPage = m_context.Flag(*element, "PrintOnLastPage", where);
        section.items = ReadItems(m_context, *element, {width, section.height});
        section.style = ReadStyle(m_context, *element, where);
        return section;
    }

    Context& m_context;
    const XmlElement& m_report;
    Definition m_definition;
};

constexpr std::size_t PieceOfBytes = std::size_t{1} << 20;

Definition DefinitionOf(const ReportTree& tree, const std::string& fileName, const DefinitionLimits& limits,
                        const TakeStyleConstant& takeStyle) {
    Context context(fileName, limits);
    context.SetTree(tree);
    context.PassStyles(takeStyle);
    Definition definition = ReportReader(context, tree.document.root).Read();
    definition.fileName = WithoutMarks(fileName);
    return definition;
}

// A file that is not long is read whole, and so is one that cannot be read: that says why.
std::optional<ReportTree> ReadLongFile(const std::filesystem::path& path, const std::string& name,
                                       const DefinitionLimits& limits) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure) ||
        std::filesystem::file_size(path, failure) <= limits.wholeBytes || failure) {
        return std::nullopt;
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    const auto next = [&file](std::string& bytes) {
        bytes.resize(PieceOfBytes);
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<std::size_t>(file.gcount()));
        if (file.bad()) {
            throw xml::Flaw(1, "it cannot be read");
        }
        return !bytes.empty();
    };
    return ReadReportApart(next, name, limits);
}

Definition Parse(std::string_view bytes, const std::string& fileName, const DefinitionLimits& limits,
                 const TakeStyleConstant& takeStyle) {
    if (bytes.size() > limits.wholeBytes) {
        const auto next = [rest = bytes](std::string& piece) mutable {
            piece = rest.substr(0, PieceOfBytes);
            rest.remove_prefix(piece.size());
            return !piece.empty();
        };
        if (const std::optional<ReportTree> tree = ReadReportApart(next, fileName, limits)) {
            return DefinitionOf(*tree, fileName, limits, takeStyle);
        }
    }
    ReportTree tree;
    tree.document = ReadXmlTree(bytes, fileName, limits);
    return DefinitionOf(tree, fileName, limits, takeStyle);
}

}  // namespace

Definition ParseDefinition(std::string_view bytes, const std::string& fileName,
                           const DefinitionLimits& limits) {
    return Parse(bytes, fileName, limits, {});
}

Definition ParseDefinitionFile(const std::filesystem::path& path, const DefinitionLimits& limits,
                               const TakeStyleConstant& takeStyle) {
    const std::string name = path.filename().string();
    if (std::optional<ReportTree> tree = ReadLongFile(path, name, limits)) {
        return DefinitionOf(*tree, name, limits, takeStyle);
    }
    std::string failure;
    // One byte more than allowed is enough to be refused.
    const std::string bytes = ReadBytes(path, limits.bytes + 1, failure);
    if (!failure.empty()) {
        throw Error(WithoutMarks(name) + " cannot be read: " + failure);
    }
    return Parse(bytes, name, limits, takeStyle);
}

}  // namespace rdl
