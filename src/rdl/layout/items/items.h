// SPDX-License-Identifier: GPL-3.0-or-later
// Builds the instance of an item from its plan, at the evaluator's current place.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rdl/layout/drawing/picture_cache.h"
#include "rdl/layout/region/property_reader.h"

namespace rdl::layout {

struct DrawingData;

class ItemBuilder : public PropertyReader {
 public:
    ItemBuilder(const ReportInput& input, Evaluator& evaluator) : PropertyReader(input, evaluator) {}

    // Returns false and leaves `out` unchanged if the item is hidden. `out` may be a used instance; its
    // memory is reused. Raises rdl::Error naming the item if an image or subreport cannot be loaded.
    bool Fill(ItemPlan& plan, Instance& out);
    std::vector<Instance> FillAll(std::vector<std::unique_ptr<ItemPlan>>& plans);
    // Whether the item is a text that is made of its properties alone.
    bool RepeatsWithoutRows(const ItemPlan& plan) const;
    // Whether nothing else changes if the item is not built. What builds code of the report, or compares
    // itself with the item that was built before it, has to be built in its turn.
    bool MayBeLeftOut(const ItemPlan& plan) const;
    // With true, values equal to those of the previous row are shown, as at the top of a page.
    void ShowDuplicates(bool shows) { m_showsDuplicates = shows; }

 private:
    void Common(ItemPlan& plan, Instance& out);
    // What only items of this kind have, its kind included.
    void OfItsKind(ItemPlan& plan, Instance& out);
    void TextOf(ItemPlan& plan, Instance& out);
    void ParagraphOf(ParagraphPlan& plan, bool isOnlyRun, Instance& out, ParagraphInstance& paragraph);
    void RunOf(RunPlan& plan, bool isOnlyRun, Instance& out, RunInstance& run);
    // Replaces HTML texts by their paragraphs.
    void ReadMarkup(const ItemPlan& plan, Instance& out) const;
    void NumberLists(std::vector<ParagraphInstance>& paragraphs) const;
    bool IsDuplicate(ItemPlan& plan, const Value& value);
    float Size(const Property& property);
    void ImageOf(ItemPlan& plan, Instance& out);
    void ChartOf(ItemPlan& plan, Instance& out);
    void GaugeOf(ItemPlan& plan, Instance& out);
    void BarcodeOf(ItemPlan& plan, Instance& out);
    void MapOf(ItemPlan& plan, Instance& out);
    void ShowData(DrawingData data, Instance& out);
    // Stores the drawing, or its image for formats without vectors.
    // Whether the same drawing may be that of many items, whose picture is made once then.
    enum class Repeats { Never, Maybe };
    void Show(const std::shared_ptr<DrawingInstance>& drawing, Repeats repeats, Instance& out);
    void SubreportOf(ItemPlan& plan, Instance& out);

    PictureCache m_pictures;
    bool m_showsDuplicates = false;
    int m_depth = 0;
};

}  // namespace rdl::layout
