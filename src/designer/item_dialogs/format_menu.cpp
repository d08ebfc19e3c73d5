// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/format_menu.h"

#include <QColorDialog>
#include <algorithm>
#include <cmath>
#include <map>

#include "designer/document/item_size.h"
#include "designer/item_dialogs/group_dialogs.h"
#include "designer/item_dialogs/style_dialog.h"
#include "designer/item_dialogs/value_field.h"
#include "designer/item_dialogs/visibility_dialog.h"
#include "designer/model/arranging.h"
#include "designer/model/table_selection.h"
#include "designer/panes/reasons.h"
#include "designer/panes/table_menu.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr double FontSizes[] = {6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 28, 36, 48, 72};  // points
constexpr double SamePlace = 0.5;  // points between edges that meet

// Which sides of the place are at the edge of the whole area, in the order of BorderSides.
std::vector<bool> OuterSides(const Rect& place, const Rect& area) {
    return {std::abs(place.left - area.left) < SamePlace, std::abs(place.Right() - area.Right()) < SamePlace,
            std::abs(place.top - area.top) < SamePlace, std::abs(place.Bottom() - area.Bottom()) < SamePlace};
}

}  // namespace

FormatMenu::FormatMenu(DesignModel& model, QWidget* parent) : QMenu(tr("F&ormat"), parent), m_model(model) {
    setObjectName("menuFormat");
    Add(*this, "formatStyle", tr("&Style..."), QKeySequence(Qt::CTRL | Qt::Key_1), Needs::Element,
        [this] { StyleDialog(m_model, Ids(), parentWidget()).exec(); });
    addSeparator();
    AddFontCommands();
    addSeparator();
    AddAlignmentCommands();
    addSeparator();
    AddBorderCommands();
    addSeparator();
    Add(*this, "formatVisibility", tr("&Visibility and Page Breaks..."), QKeySequence(Qt::CTRL | Qt::Key_2),
        Needs::Item, [this] { VisibilityDialog(m_model, Ids(), parentWidget()).exec(); });
}

QAction* FormatMenu::Add(QMenu& menu, const char* name, const QString& text, const QKeySequence& keys,
                         Needs needs, const std::function<void()>& work) {
    QAction* action = menu.addAction(text);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, work] {
        emit Working();
        work();
        emit Done();
    });
    m_entries.push_back({action, needs});
    return action;
}

void FormatMenu::AddToggle(const char* name, const QString& text, const QKeySequence& keys,
                           std::string_view property, std::string_view value) {
    const QString verb = QString(text).remove('&');
    QAction* action = Add(*this, name, text, keys, Needs::Text,
                          [this, verb, property, value] { Toggle(verb, property, std::string(value)); });
    action->setCheckable(true);
    m_entries.back().property = property;
    m_entries.back().value = value;
}

void FormatMenu::AddFontCommands() {
    AddToggle("formatBold", tr("&Bold"), QKeySequence(Qt::CTRL | Qt::Key_B), "Font weight", "Bold");
    AddToggle("formatItalic", tr("&Italic"), QKeySequence(Qt::CTRL | Qt::Key_I), "Font style", "Italic");
    AddToggle("formatUnderline", tr("&Underline"), QKeySequence(Qt::CTRL | Qt::Key_U), "Text decoration",
              "Underline");
    Add(*this, "formatLarger", tr("Lar&ger Text"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Greater),
        Needs::Text, [this] { ChangeFontSize(1); });
    Add(*this, "formatSmaller", tr("S&maller Text"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Less),
        Needs::Text, [this] { ChangeFontSize(-1); });
    Add(*this, "formatTextColour", tr("&Text Colour..."), {}, Needs::Text,
        [this] { AskForColour(tr("Text colour of"), "Text colour"); });
    Add(*this, "formatFill", tr("&Fill Colour..."), {}, Needs::Fill,
        [this] { AskForColour(tr("Fill"), "Background colour"); });
}

void FormatMenu::AddAlignmentCommands() {
    AddToggle("formatLeft", tr("Text &Left"), QKeySequence(Qt::CTRL | Qt::Key_L), "Text alignment", "Left");
    AddToggle("formatCentre", tr("Text &Centre"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
              "Text alignment", "Center");
    AddToggle("formatRight", tr("Text &Right"), QKeySequence(Qt::CTRL | Qt::Key_R), "Text alignment",
              "Right");
}

void FormatMenu::AddBorderCommands() {
    QMenu& menu = *addMenu(tr("Bor&ders"));
    const auto add = [&](const char* name, const QString& text, Borders borders) {
        Add(menu, name, text, {}, Needs::Border, [this, borders] { SetBorders(borders); });
    };
    add("bordersNone", tr("&No Borders"), Borders::None);
    add("bordersAll", tr("&All Borders"), Borders::All);
    add("bordersAround", tr("A&round the Selection"), Borders::Around);
}

void FormatMenu::AddTableCommands(QMenu& menu) {
    menu.addSeparator();
    Add(menu, "groupProperties", tr("Group Properties..."), QKeySequence(Qt::ALT | Qt::Key_Return),
        Needs::Group, [this] {
            const auto table = SelectedTable(m_model);
            const auto group = table ? GroupOf(m_model, *table) : std::nullopt;
            if (group) {
                GroupPropertiesDialog(m_model, table->region, *group, parentWidget()).exec();
            }
        });
    Add(menu, "tableSortFilter", tr("Sort and Filter..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F),
        Needs::Region, [this] {
            if (const auto table = SelectedTable(m_model)) {
                SortFilterDialog(m_model, table->region, parentWidget()).exec();
            }
        });
}

void FormatMenu::Set(const QString& verb, std::string_view property, const std::string& value) {
    const SelectionValues values(m_model, Ids());
    m_model.Edit(StepName(m_model, verb, Ids()),
                 [&](Document& document) { values.Write(document, property, value); });
}

void FormatMenu::Toggle(const QString& verb, std::string_view property, const std::string& value) {
    const PropertyValue now = SelectionValues(m_model, Ids()).ValueOf(property);
    Set(verb, property, !now.isMixed && SameAscii(now.text, value) ? std::string() : value);
}

// Each item goes to the next usual size of its own; one whose size is an expression stays. If all stay, the
// user hears why.
void FormatMenu::ChangeFontSize(int step) {
    bool hasSize = false;
    std::map<double, std::vector<ElementId>> sizes;  // new ones
    for (const ElementId id : Ids()) {
        const auto size = PointsOf(SelectionValues(m_model, {id}).ValueOf("Font size").text);
        const auto* const above =
            std::upper_bound(std::begin(FontSizes), std::end(FontSizes), size.value_or(0));
        const auto* const from =
            std::lower_bound(std::begin(FontSizes), std::end(FontSizes), size.value_or(0));
        hasSize = hasSize || size;
        if (size && (step > 0 ? above != std::end(FontSizes) : from != std::begin(FontSizes))) {
            sizes[step > 0 ? *above : *(from - 1)].push_back(id);
        }
    }
    if (sizes.empty()) {
        m_model.Refuse(!hasSize   ? tr("The size of the text is an expression")
                       : step > 0 ? tr("The text has the largest of the usual sizes")
                                  : tr("The text has the smallest of the usual sizes"));
        return;
    }
    m_model.Edit(StepName(m_model, tr("Size of text of"), Ids()), [&](Document& document) {
        for (const auto& [size, ids] : sizes) {
            SelectionValues(m_model, ids).Write(document, "Font size", SizeText(size, "1pt"));
        }
    });
}

void FormatMenu::AskForColour(const QString& verb, std::string_view property) {
    const QColor now = ColourOf(SelectionValues(m_model, Ids()).ValueOf(property).text);
    const QColor chosen = QColorDialog::getColor(now.isValid() && now.alpha() > 0 ? now : QColor(Qt::white),
                                                 parentWidget(), verb);
    if (chosen.isValid()) {
        Set(verb, property, NameOfColour(chosen));
    }
}

// Around several items only the sides at the edge of their area get a line; the lines between them stay as
// they are.
void FormatMenu::SetBorders(Borders borders) {
    const std::vector<ElementId> ids = Ids();
    m_model.Edit(StepName(m_model, tr("Borders of"), ids), [&](Document& document) {
        if (borders == Borders::Around) {
            SetBordersAround(document);
            return;
        }
        const SelectionValues values(m_model, ids);
        for (const char* side : BorderSides) {
            for (const char* part : {" style", " width", " colour"}) {
                values.Write(document, std::string(side) + part, "");
            }
        }
        values.Write(document, "Border style", borders == Borders::None ? "" : "Solid");
    });
}

void FormatMenu::SetBordersAround(Document& document) const {
    std::vector<Placement> places;
    for (const ElementId id : Ids()) {
        places.push_back({id, m_model.Item(id)->place});
    }
    const Rect area = AreaOf(places);
    for (std::size_t side = 0; side < std::size(BorderSides); ++side) {
        std::vector<ElementId> outer;
        for (const Placement& placement : places) {
            if (OuterSides(placement.place, area)[side]) {
                outer.push_back(placement.id);
            }
        }
        SelectionValues(m_model, outer).Write(document, std::string(BorderSides[side]) + " style", "Solid");
    }
}

// Returns why the selection does not allow it; empty if it does.
QString FormatMenu::ReasonAgainst(Needs needs, const SelectionValues& values) const {
    const bool isItem = !values.Ids().empty() && m_model.Item(values.Ids().front());
    switch (needs) {
        case Needs::Element:
            return !values.Ids().empty() ? QString() : tr("Select an item");
        case Needs::Item:
            return isItem ? QString() : tr("Select an item");
        case Needs::Text:
            return values.Find("Font weight") ? QString() : tr("Select a text box");
        case Needs::Fill:
            return values.Find("Background colour") ? QString() : tr("Select an item with a background");
        case Needs::Border:
            return isItem && values.Find("Border style") ? QString() : tr("Select an item with a border");
        case Needs::Group:
            return ReasonAgainstGroup(m_model);
        case Needs::Region:
            return SelectedTable(m_model) ? QString() : tr("Select a table, a matrix, or a cell of one");
    }
    return {};
}

void FormatMenu::ShowCommands(const QString& off) {
    const bool designs = off.isEmpty();
    const SelectionValues values(m_model, designs ? Ids() : std::vector<ElementId>{});
    for (const Entry& entry : m_entries) {
        QString reason = designs ? ReasonAgainst(entry.needs, values) : off;
        if (reason.isEmpty() && !entry.property.empty() && !values.Find(entry.property)) {
            reason = tr("The selection has no such property");
        }
        ShowReason(*entry.action, reason);
        if (!entry.property.empty()) {
            const PropertyValue value = values.ValueOf(entry.property);
            entry.action->setChecked(!value.isMixed && SameAscii(value.text, entry.value));
        }
    }
    menuAction()->setEnabled(designs);
}

}  // namespace designer
