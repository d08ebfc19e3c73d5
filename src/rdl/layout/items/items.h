// From the plan of an item to its instance, at the evaluator's current place.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rdl/layout/drawing/pictures.h"

#include "rdl/layout/region/property_reader.h"

namespace rdl::layout {

class ItemBuilder : public PropertyReader {
 public:
    ItemBuilder(const ReportInput& input, Evaluator& evaluator) : PropertyReader(input, evaluator) {}

    // False when the item is hidden; `out` is not touched then. `out` may be an instance used before: its
    // memory is used again. Raises rdl::Error for an image or subreport that cannot be had.
    bool Fill(ItemPlan& plan, Instance& out);
    std::vector<Instance> FillAll(std::vector<std::unique_ptr<ItemPlan>>& plans);
    // Values that the row before says as well are not left out, at the top of a page.
    void ShowDuplicates(bool shows) { m_showsDuplicates = shows; }

 private:
    void Common(ItemPlan& plan, Instance& out);
    void TextOf(ItemPlan& plan, Instance& out);
    void ParagraphOf(ParagraphPlan& plan, bool isOnlyRun, Instance& out, ParagraphInstance& paragraph);
    void RunOf(RunPlan& plan, bool isOnlyRun, Instance& out, RunInstance& run);
    // The texts that are HTML, put in place of what stands for them.
    void ReadMarkup(const ItemPlan& plan, Instance& out) const;
    void NumberLists(std::vector<ParagraphInstance>& paragraphs) const;
    bool IsDuplicate(ItemPlan& plan, const Value& value);
    float Size(const Property& property);
    void ImageOf(ItemPlan& plan, Instance& out);
    void ChartOf(ItemPlan& plan, Instance& out);
    void GaugeOf(ItemPlan& plan, Instance& out);
    // A drawing, or the picture of it where there are no vectors.
    void Show(const std::shared_ptr<DrawingInstance>& drawing, bool mayRepeat, Instance& out);
    void SubreportOf(ItemPlan& plan, Instance& out);

    Pictures m_pictures;
    bool m_showsDuplicates = false;
    int m_depth = 0;
};

}  // namespace rdl::layout
