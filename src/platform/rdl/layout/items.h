// From the plan of an item to its instance, at the evaluator's current place.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/rdl/layout/evaluator.h"
#include "platform/rdl/layout/item_images.h"
#include "platform/rdl/layout/pictures.h"

namespace rdl::layout {

class ItemBuilder {
 public:
    ItemBuilder(const ReportInput& input, Evaluator& evaluator)
        : m_input(input), m_evaluator(evaluator), m_images(input, evaluator) {}

    // False when the item is hidden; `out` is not touched then. `out` may be an instance used before: its
    // memory is used again. Raises rdl::Error for an image or subreport that cannot be had.
    bool Fill(ItemPlan& plan, Instance& out);
    std::vector<Instance> FillAll(std::vector<std::unique_ptr<ItemPlan>>& plans);
    // A style with the picture that belongs to it; `background` may be null.
    BoxStylePtr BoxOf(BoxStylePlan& plan, BackgroundPlan* background, const std::string& item);
    // Values that the row before says as well are not left out, at the top of a page.
    void ShowDuplicates(bool shows) { m_showsDuplicates = shows; }
    bool IsTrue(const Property& property);
    std::string Text(const Property& property);  // "" for Null and errors
    Evaluator& Place() { return m_evaluator; }
    ImageBytes PictureOf(const GaugeImage& image, const std::string& item);  // null when it says none

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

    const ReportInput& m_input;
    Evaluator& m_evaluator;
    ItemImages m_images;
    Pictures m_pictures;
    bool m_showsDuplicates = false;
    int m_depth = 0;
};

}  // namespace rdl::layout
