// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/plan/programs.h"

#include <algorithm>

#include "rdl/definition/barcode.h"
#include "rdl/definition/chart.h"
#include "rdl/definition/gauge.h"
#include "rdl/definition/map/map.h"
#include "rdl/expr/code/code.h"
#include "rdl/spool/spool.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

constexpr int MaxNesting = 64;

}  // namespace

class Programs::Context : public expr::CompileContext {
 public:
    Context(const Definition& definition, const std::map<std::string, Table>* tables)
        : m_definition(definition) {
        assemblies = definition.assemblies;
        for (const DataSet& set : definition.dataSets) {
            scopes[set.name] = set.name;
            auto& slots = m_slots[set.name];
            const auto table = tables ? tables->find(set.name) : decltype(tables->find(set.name)){};
            if (tables && table != tables->end()) {
                const auto& names = table->second.fieldNames;
                for (std::size_t i = 0; i < names.size(); ++i) {
                    slots.emplace(LowerAscii(names[i]), static_cast<int>(i));
                }
            } else {
                for (std::size_t i = 0; i < set.fields.size(); ++i) {
                    slots.emplace(LowerAscii(set.fields[i].name), static_cast<int>(i));
                }
            }
        }
    }

    std::optional<int> FieldSlot(const std::string& set, std::string_view field) const override {
        const auto slots = m_slots.find(set);
        if (slots == m_slots.end()) {
            return std::nullopt;
        }
        const auto slot = slots->second.find(LowerAscii(field));
        return slot == slots->second.end() ? std::nullopt : std::optional<int>(slot->second);
    }

    std::optional<int> ParameterIndex(std::string_view name) const override {
        const std::string wanted = LowerAscii(name);
        for (std::size_t i = 0; i < m_definition.parameters.size(); ++i) {
            if (LowerAscii(m_definition.parameters[i].name) == wanted) {
                return static_cast<int>(i);
            }
        }
        return std::nullopt;
    }

    std::optional<std::string> DataSetOfScope(const std::string& scope) const override {
        const auto found = scopes.find(scope);
        return found == scopes.end() ? std::nullopt : std::optional<std::string>(found->second);
    }

    std::vector<std::string> FieldNames(const std::string& set) const override {
        std::vector<std::string> names;
        if (const auto slots = m_slots.find(set); slots != m_slots.end()) {
            for (const auto& [name, slot] : slots->second) {
                names.push_back(name);
            }
        }
        return names;
    }

    // A command text that is an expression is not known before the data is read.
    std::optional<std::string> SourceProperty(std::string_view collection, std::string_view name,
                                              std::string_view property) const override {
        if (collection == "datasets" && (property == "commandtext" || property == "rewrittencommandtext")) {
            for (const DataSet& set : m_definition.dataSets) {
                if (LowerAscii(set.name) == name && !set.commandText.IsExpression()) {
                    return set.longCommand ? set.longCommand->Text() : set.commandText.source;
                }
            }
        }
        for (const DataSource& source : m_definition.dataSources) {
            if (collection == "datasources" && LowerAscii(source.name) == name && property == "type") {
                return source.provider;
            }
            if (collection == "datasources" && LowerAscii(source.name) == name &&
                property == "datasourcereference") {
                return source.reference;
            }
        }
        return std::nullopt;
    }

    std::unordered_map<std::string, std::string> scopes;  // scope -> data set
    std::unique_ptr<expr::CodeLibrary> library;

 private:
    const Definition& m_definition;
    std::unordered_map<std::string, std::unordered_map<std::string, int>> m_slots;
};

// Goes through the definition twice: first for the names of scopes, then for the expressions.
class Programs::Walker {
 public:
    Walker(Programs& programs, const Definition& definition, bool compile)
        : m_programs(programs),
          m_definition(definition),
          m_context(*programs.m_context),
          m_compile(compile) {}

    void Report() {
        m_context.dataSet = m_programs.m_onlyDataSet;
        Add(m_definition.languageExpr);
        Add(m_definition.initialPageName);
        for (const Variable& variable : m_definition.variables) {
            Add(variable.value);
        }
        for (const Section& section : m_definition.sections) {
            Items(section.items);
            Styles(section.bodyStyle);
            Styles(section.page.style);
            for (const auto* margin : {&section.page.header, &section.page.footer}) {
                if (*margin) {
                    Items((*margin)->items);
                    Styles((*margin)->style);
                }
            }
        }
    }

    // What the stages before this one evaluate.
    void Earlier() {
        for (const DataSource& source : m_definition.dataSources) {
            Add(source.connectString);
        }
        for (const ReportParameter& parameter : m_definition.parameters) {
            Add(parameter.prompt);
            for (const Expr& value : parameter.defaultValues) {
                Add(value);
            }
            for (const ParameterValueDef& valid : parameter.validValues) {
                Add(valid.value);
                Add(valid.label);
            }
        }
        for (const DataSet& set : m_definition.dataSets) {
            m_context.dataSet.clear();
            Add(set.commandText);
            for (const QueryParameter& parameter : set.parameters) {
                Add(parameter.value);
            }
            m_context.dataSet = set.name;
            for (const Field& field : set.fields) {
                Add(field.value);
            }
            Filters(set.filters);
        }
    }

 private:
    void Add(const Expr& source) {
        if (!m_compile || !source.IsExpression()) {
            return;
        }
        const auto id = static_cast<std::size_t>(source.id);
        if (id >= m_programs.m_programs.size()) {
            m_programs.m_programs.resize(id + 1);
        }
        try {
            m_programs.m_programs[id] = expr::Compile(source.source, source.where, m_context);
        } catch (const Error& error) {
            Fail(source.line, error.what());
        }
    }

    [[noreturn]] void Fail(int line, const std::string& what) const {
        throw Error(m_definition.fileName + ", line " + std::to_string(line) + ": " + what);
    }

    void Styles(const Style& style) {
        for (const auto& [name, value] : style.properties) {
            Add(value);
        }
    }

    void Filters(const std::vector<Filter>& filters) {
        for (const Filter& filter : filters) {
            Add(filter.expression);
            for (const Expr& value : filter.values) {
                Add(value);
            }
        }
    }

    void Break(const PageBreak& pageBreak) {
        Add(pageBreak.disabled);
        Add(pageBreak.resetPageNumber);
        Add(pageBreak.pageName);
    }

    void Actions(const Action& action) {
        Add(action.hyperlink);
        Add(action.bookmarkLink);
    }

    void Items(const std::vector<ItemPtr>& items) {
        for (const ItemPtr& item : items) {
            Item(item.get());
        }
    }

    void Item(const ReportItem* item) {
        if (!item) {
            return;
        }
        if (++m_depth > MaxNesting) {
            Fail(item->line, item->place + ": items are nested too deeply");
        }
        Styles(item->style);
        Add(item->visibility.hidden);
        Actions(item->action);
        Add(item->toolTip);
        Add(item->bookmark);
        Add(item->documentMapLabel);
        Break(item->pageBreak);
        Kinds(*item);
        --m_depth;
    }

    void Kinds(const ReportItem& item) {
        switch (item.kind) {
            case ItemKind::Textbox:
                Text(static_cast<const Textbox&>(item));
                break;
            case ItemKind::Rectangle:
                Items(static_cast<const Rectangle&>(item).items);
                break;
            case ItemKind::Image:
                Add(static_cast<const Image&>(item).value);
                Add(static_cast<const Image&>(item).mimeType);
                break;
            case ItemKind::Subreport:
                for (const auto& [name, value] : static_cast<const Subreport&>(item).parameters) {
                    Add(value);
                }
                Add(static_cast<const Subreport&>(item).noRows);
                break;
            case ItemKind::Tablix:
                Region(static_cast<const Tablix&>(item));
                break;
            case ItemKind::Chart:
                ChartOf(static_cast<const Chart&>(item));
                break;
            case ItemKind::Gauge:
                GaugeOf(static_cast<const GaugePanel&>(item));
                break;
            case ItemKind::Barcode: {
                const auto& barcode = static_cast<const Barcode&>(item);
                for (const Expr* property :
                     {&barcode.symbology, &barcode.value, &barcode.showText, &barcode.errorCorrection}) {
                    Add(*property);
                }
                break;
            }
            case ItemKind::Map:
                MapOf(static_cast<const Map&>(item));
                break;
            case ItemKind::Line:
                break;
        }
    }

    void Text(const Textbox& box) {
        for (const Paragraph& paragraph : box.paragraphs) {
            Styles(paragraph.style);
            for (const Expr* size : {&paragraph.leftIndent, &paragraph.rightIndent, &paragraph.hangingIndent,
                                     &paragraph.spaceBefore, &paragraph.spaceAfter}) {
                Add(*size);
            }
            for (const TextRun& run : paragraph.runs) {
                Add(run.value);
                Styles(run.style);
                Actions(run.action);
                Add(run.toolTip);
            }
        }
    }

    std::string RegionDataSet(const Tablix& tablix) const {
        if (!tablix.dataSetName.empty()) {
            if (!m_definition.FindDataSet(tablix.dataSetName)) {
                Fail(tablix.line,
                     tablix.place + ": the report has no data set \"" + tablix.dataSetName + "\"");
            }
            return tablix.dataSetName;
        }
        if (m_context.dataSet.empty() && !m_definition.dataSets.empty()) {
            Fail(tablix.line, tablix.place + ": it names no data set, and the report has several");
        }
        return m_context.dataSet;
    }

    void Region(const Tablix& tablix) {
        const std::string outer = m_context.dataSet;
        m_context.dataSet = RegionDataSet(tablix);
        m_programs.m_dataSets[&tablix] = m_context.dataSet;
        m_context.scopes.emplace(tablix.name, m_context.dataSet);
        Filters(tablix.filters);
        Sorts(tablix.sorts);
        Add(tablix.noRowsMessage);
        Members(tablix.rowMembers);
        Members(tablix.columnMembers);
        for (const auto& row : tablix.corner) {
            Cells(row);
        }
        for (const TablixRow& row : tablix.rows) {
            Cells(row.cells);
        }
        m_context.dataSet = outer;
    }

    void ChartOf(const Chart& chart) {
        Region(chart.data);
        const std::string outer = m_context.dataSet;
        m_context.dataSet = m_programs.m_dataSets[&chart.data];
        const auto add = [this](const Expr& source) { Add(source); };
        ChartWalk(add).Go(chart);
        m_context.dataSet = outer;
    }

    // A panel that names no data set may do without one: its expressions can name theirs.
    void GaugeOf(const GaugePanel& panel) {
        const std::string outer = m_context.dataSet;
        if (panel.data.dataSetName.empty() && outer.empty()) {
            m_programs.m_dataSets[&panel.data] = outer;
        } else {
            Region(panel.data);
            m_context.dataSet = m_programs.m_dataSets[&panel.data];
        }
        WalkGauge(panel, [this](const Expr& source) { Add(source); });
        m_context.dataSet = outer;
    }

    // The properties of a layer are in the data set of its data region.
    void MapOf(const Map& map) {
        const std::string outer = m_context.dataSet;
        for (const auto& region : map.regions) {
            Region(*region);
        }
        const auto add = [this](const Expr& source) { Add(source); };
        const auto within = [&](int region) {
            m_context.dataSet =
                region < 0 ? outer
                           : m_programs.m_dataSets[map.regions[static_cast<std::size_t>(region)].get()];
        };
        WalkMap(map, add);
        for (const MapLayer& layer : map.layers) {
            within(layer.region >= 0 ? layer.region : layer.source);
            WalkMapLayer(layer, add);
            within(layer.source);
            WalkMapSource(layer, add);
        }
        m_context.dataSet = outer;
    }

    void Cells(const std::vector<TablixCell>& cells) {
        for (const TablixCell& cell : cells) {
            Item(cell.item.get());
        }
    }

    void Sorts(const std::vector<Sort>& sorts) {
        for (const Sort& sort : sorts) {
            Add(sort.value);
        }
    }

    void Members(const std::vector<TablixMember>& members) {
        if (++m_depth > MaxNesting) {
            throw Error("Groups are nested too deeply");
        }
        for (const TablixMember& member : members) {
            if (member.group) {
                GroupOf(*member.group);
            }
            Sorts(member.sorts);
            Item(member.header.get());
            Add(member.visibility.hidden);
            Members(member.members);
        }
        --m_depth;
    }

    void GroupOf(const Group& group) {
        m_context.scopes.emplace(group.name, m_context.dataSet);
        for (const Expr& key : group.expressions) {
            Add(key);
        }
        Filters(group.filters);
        for (const Variable& variable : group.variables) {
            Add(variable.value);
        }
        Add(group.parent);
        Add(group.documentMapLabel);
        Break(group.pageBreak);
    }

    Programs& m_programs;
    const Definition& m_definition;
    Context& m_context;
    const bool m_compile;
    int m_depth = 0;
};

Programs::Programs(const Definition& definition, const std::map<std::string, Table>* tables)
    : m_context(std::make_unique<Context>(definition, tables)) {
    if (definition.dataSets.size() == 1) {
        m_onlyDataSet = definition.dataSets.front().name;
    }
    m_programs.resize(static_cast<std::size_t>(std::max(0, definition.expressionCount)));
    if (!definition.code.empty()) {
        m_context->library = std::make_unique<expr::CodeLibrary>(definition.code, *m_context);
        m_context->code = m_context->library.get();
    }
    Walker(*this, definition, false).Report();
    Walker walker(*this, definition, true);
    walker.Report();
    if (!tables) {
        walker.Earlier();
    }
}

Programs::~Programs() = default;

std::shared_ptr<expr::Program> Programs::Compile(const std::string& source, const std::string& where,
                                                 const std::string& dataSet) const {
    m_context->dataSet = dataSet.empty() ? m_onlyDataSet : dataSet;
    return expr::Compile(source, where, *m_context);
}

std::string Programs::DataSetOfScope(const std::string& scope) const {
    return m_context->DataSetOfScope(scope).value_or("");
}

}  // namespace rdl::layout
