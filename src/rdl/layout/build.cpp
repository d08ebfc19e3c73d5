// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/build.h"

#include <algorithm>
#include <set>

#include "rdl/layout/items/items.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

using PlanList = std::vector<std::unique_ptr<ItemPlan>>;

bool Mentions(const std::string& source, std::string_view lowerWord) {
    const auto found = std::search(source.begin(), source.end(), lowerWord.begin(), lowerWord.end(),
                                   [](char a, char b) { return AsciiLower(a) == b; });
    return found != source.end();
}

// The names in ReportItems!Name and ReportItems("Name").
void NoteReportItems(const std::string& source, std::set<std::string>& names) {
    constexpr std::string_view Word = "reportitems";
    auto at = source.begin();
    while (true) {
        at = std::search(at, source.end(), Word.begin(), Word.end(),
                         [](char a, char b) { return AsciiLower(a) == b; });
        if (at == source.end()) {
            return;
        }
        at += static_cast<std::ptrdiff_t>(Word.size());
        while (at != source.end() && (*at == '!' || *at == '(' || *at == '"' || *at == ' ')) {
            ++at;
        }
        const auto begin = at;
        while (at != source.end() && IsNameByte(*at)) {
            ++at;
        }
        names.emplace(begin, at);
    }
}

// Calls `visit` for every item, those in cells and headers of data regions included.
template <typename Visit>
void ForEachItem(const PlanList& items, const Visit& visit);

template <typename Visit>
void VisitItem(const std::unique_ptr<ItemPlan>& item, const Visit& visit) {
    if (!item) {
        return;
    }
    visit(*item);
    ForEachItem(item->children, visit);
    if (!item->tablix) {
        return;
    }
    for (const auto* hierarchy : {&item->tablix->rows, &item->tablix->columns}) {
        for (const MemberPlan& member : hierarchy->members) {
            VisitItem(member.header, visit);
        }
    }
    for (const auto* block : {&item->tablix->cells, &item->tablix->corner}) {
        for (const auto& row : *block) {
            for (const CellPlan& cell : row) {
                VisitItem(cell.item, visit);
            }
        }
    }
}

template <typename Visit>
void ForEachItem(const PlanList& items, const Visit& visit) {
    for (const auto& item : items) {
        VisitItem(item, visit);
    }
}

template <typename Visit>
void ForEachText(const PlanList& items, const Visit& visit) {
    ForEachItem(items, [&](const ItemPlan& item) {
        visit(item.definition->visibility.hidden.source);
        for (const auto& [name, value] : item.definition->style.properties) {
            visit(value.source);
        }
        for (const ParagraphPlan& paragraph : item.paragraphs) {
            for (const TextRun& run : paragraph.definition->runs) {
                visit(run.value.source);
            }
        }
    });
}

// One body with its margins. Plans live here because instances made later still need them.
class BuiltSection final : public SectionInstance {
 public:
    // `endsWithItems`: the space below the last item is not a part of the body.
    BuiltSection(const Section& definition, Planner& planner, const Programs& programs, Evaluator& evaluator,
                 ItemBuilder& builder, bool endsWithItems)
        : m_evaluator(evaluator),
          m_builder(builder),
          m_body(planner.Items(definition.items)),
          m_endsWithItems(endsWithItems) {
        evaluator.Enter({});
        const auto styleOf = [&](const Style& source, const char* what) {
            BoxStylePlan plan;
            plan.Compile({&source}, programs);
            return builder.BoxOf(plan, BackgroundPlan::Of(source, programs, false).get(), what);
        };
        bodyStyle = styleOf(definition.bodyStyle, "Body");
        bodyWidth = definition.width;
        bodyHeight = definition.bodyHeight;
        SetUp(definition.page, styleOf(definition.page.style, "Page"));
        if (definition.page.header) {
            page.headerStyle = styleOf(definition.page.header->style, "PageHeader");
        }
        if (definition.page.footer) {
            page.footerStyle = styleOf(definition.page.footer->style, "PageFooter");
        }
        Margin(definition.page.header, planner, m_header, page.headerHeight, page.headerOnFirst,
               page.headerOnLast);
        Margin(definition.page.footer, planner, m_footer, page.footerHeight, page.footerOnFirst,
               page.footerOnLast);
        Scan();
    }

    void MakeItems() {
        m_evaluator.Enter({});
        items = m_builder.FillAll(m_body);
        if (m_endsWithItems) {
            bodyHeight = 0;
            for (const Instance& item : items) {
                bodyHeight = std::max({bodyHeight, item.y, item.y + item.height});
            }
        }
    }

    std::vector<Instance> Header(const PageFacts& facts) override { return Fill(m_header, facts); }
    std::vector<Instance> Footer(const PageFacts& facts) override { return Fill(m_footer, facts); }

 private:
    void SetUp(const Page& source, BoxStylePtr style) {
        page.width = source.width;
        page.height = source.height;
        page.marginLeft = source.marginLeft;
        page.marginRight = source.marginRight;
        page.marginTop = source.marginTop;
        page.marginBottom = source.marginBottom;
        page.columns = std::clamp(source.columns, 1, 100);
        page.columnSpacing = source.columnSpacing;
        page.style = std::move(style);
    }

    static void Margin(const std::optional<PageSection>& source, Planner& planner, PlanList& plans,
                       double& height, bool& onFirst, bool& onLast) {
        if (source) {
            plans = planner.Items(source->items);
            height = source->height;
            onFirst = source->printOnFirstPage;
            onLast = source->printOnLastPage;
        }
    }

    void Scan() {
        std::set<std::string> names;
        for (const PlanList* margin : {&m_header, &m_footer}) {
            ForEachText(*margin, [&](const std::string& source) {
                usesTotalPages = usesTotalPages || Mentions(source, "totalpages");
                NoteReportItems(source, names);
            });
        }
        ForEachText(m_body, [this](const std::string& source) {
            bodyUsesTotalPages = bodyUsesTotalPages || Mentions(source, "totalpages");
        });
        for (const PlanList* plans : {&m_body, &m_header, &m_footer}) {
            ForEachItem(*plans, [this](const ItemPlan& item) { m_evaluator.Announce(item); });
        }
        for (const std::string& name : names) {
            if (const ItemPlan* item = m_evaluator.FindItem(name)) {
                wantedReportItems.push_back(item->definition->name);
            }
        }
    }

    std::vector<Instance> Fill(PlanList& plans, const PageFacts& facts) {
        m_evaluator.Enter({});
        m_evaluator.SetPage(&facts);
        auto made = m_builder.FillAll(plans);
        m_evaluator.SetPage(nullptr);
        return made;
    }

    Evaluator& m_evaluator;
    ItemBuilder& m_builder;
    PlanList m_body, m_header, m_footer;
    const bool m_endsWithItems;
};

class BuiltReport final : public ReportInstance {
 public:
    explicit BuiltReport(ReportInput&& source)
        : m_input(std::move(source)),
          m_programs(*m_input.definition, &m_input.tables),
          m_evaluator(m_input, m_programs),
          m_builder(m_input, m_evaluator) {
        const Definition& definition = *m_input.definition;
        watch = m_input.watch;
        title = definition.title.value_or(m_input.reportName);
        author = definition.author;
        description = definition.description;
        language = m_evaluator.ReportCulture().name;
        m_evaluator.Enter({});
        pageName = m_builder.Text(Property(definition.initialPageName, m_programs));
        hasRows = m_input.tables.empty() ||
                  std::any_of(m_input.tables.begin(), m_input.tables.end(),
                              [](const auto& entry) { return entry.second.RowCount() > 0; });
        Planner planner(m_programs);
        std::vector<BuiltSection*> built;
        for (const Section& section : definition.sections) {
            auto made = std::make_unique<BuiltSection>(section, planner, m_programs, m_evaluator, m_builder,
                                                       definition.consumeContainerWhitespace);
            built.push_back(made.get());
            sections.push_back(std::move(made));
        }
        // Items may ask for items of any section.
        for (BuiltSection* section : built) {
            section->MakeItems();
        }
    }
    // Instances lean on what is below; they go first.
    ~BuiltReport() override { sections.clear(); }
    BuiltReport(const BuiltReport&) = delete;
    BuiltReport& operator=(const BuiltReport&) = delete;

 private:
    const ReportInput m_input;
    const Programs m_programs;
    Evaluator m_evaluator;
    ItemBuilder m_builder;
};

}  // namespace

std::unique_ptr<ReportInstance> Build(ReportInput input) {
    return std::make_unique<BuiltReport>(std::move(input));
}

void CheckExpressions(const Definition& definition) {
    const Programs programs(definition, nullptr);
}

}  // namespace rdl::layout
