// SPDX-License-Identifier: GPL-3.0-or-later
// What a chart shows: its data set, values, categories and series.
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "designer/graphics/chart_parts.h"
#include "designer/model/design_model.h"
#include "designer/model/field_drag.h"

class QComboBox;
class QFormLayout;
class QGroupBox;

namespace designer {

class ChartList;
class ExpressionField;
class FieldList;

class ChartDataPage : public QWidget {
    Q_OBJECT
 public:
    // `design` is what the page changes; both must live as long as the page. `open` opens the dialog for
    // expressions on a part of it: of an entry of a list the value with this name.
    enum class Part { Values, Categories, Series };
    using Opener =
        std::function<std::optional<std::string>(Part part, std::size_t entry, const std::string& name)>;
    // `isOlder`: of 2003 or 2005, without groups beside each other.
    ChartDataPage(const DesignModel& model, ChartDesign& design, bool isOlder, Opener open,
                  QWidget* parent = nullptr);

    // Shows the design as it is now: its type decides which values an entry has.
    void ShowDesign();
    // Moves the focus to the entry.
    void Choose(Part part, std::size_t entry);

 private:
    struct Line;
    void BuildLists();
    std::vector<ChartGroup>& Groups(Part part);
    void Add(Part part, const DraggedField& field);
    void Remove(Part part, int row);
    void MoveEntry(Part part, int row, int to);
    void ShowLists();
    void ShowEntry(Part part);
    void ShowValue(std::size_t entry);
    void ShowGroup(Part part, std::size_t entry);
    void TakeAggregate(ExpressionField& field, QComboBox& aggregate);
    QString TextOf(const ChartValue& value) const;

    const DesignModel& m_model;
    ChartDesign& m_design;
    const bool m_isOlder;
    const Opener m_open;
    QComboBox* m_set;
    FieldList* m_fields;
    std::array<ChartList*, 3> m_lists{};
    QGroupBox* m_entry;
    QFormLayout* m_form;
    Part m_part = Part::Values;
    std::array<int, 3> m_rows{0, 0, 0};
};

}  // namespace designer
