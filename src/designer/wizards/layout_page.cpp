// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/layout_page.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include "designer/wizards/layout_icons.h"

namespace designer {
namespace {

struct Choice {
    ReportLayout layout;
    const char* caption;
    const char* text;
};

constexpr Choice Choices[] = {
    {ReportLayout::Table, QT_TRANSLATE_NOOP("designer::LayoutPage", "&Table, groups above their rows"),
     QT_TRANSLATE_NOOP(
         "designer::LayoutPage",
         "Each group has a row of its own, with its totals. Without groups it is a plain list.")},
    {ReportLayout::Blocked, QT_TRANSLATE_NOOP("designer::LayoutPage", "Table, groups beside their ro&ws"),
     QT_TRANSLATE_NOOP("designer::LayoutPage", "Groups have columns at the left; totals follow each group.")},
    {ReportLayout::Matrix, QT_TRANSLATE_NOOP("designer::LayoutPage", "&Matrix"),
     QT_TRANSLATE_NOOP("designer::LayoutPage",
                       "Sums by the values of two columns: one goes down, the other across the page.")},
    {ReportLayout::Labels, QT_TRANSLATE_NOOP("designer::LayoutPage", "&Labels"),
     QT_TRANSLATE_NOOP("designer::LayoutPage", "A sheet of adhesive labels, one for each row.")},
    {ReportLayout::Letter, QT_TRANSLATE_NOOP("designer::LayoutPage", "L&etter"),
     QT_TRANSLATE_NOOP("designer::LayoutPage", "A page for each group; without groups for each row.")},
};

}  // namespace

LayoutPage::LayoutPage(ReportDraft& draft) : m_draft(draft), m_choices(new QButtonGroup(this)) {
    setObjectName("layoutPage");
    setTitle(tr("Layout"));
    setSubTitle(tr("How are the rows arranged?"));
    // At large fonts the page is scrolled: no text is cut.
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll);
    auto* page = new QWidget(scroll);
    scroll->setWidget(page);
    auto* layout = new QGridLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(1, 1);
    int row = 0;
    for (const Choice& choice : Choices) {
        const auto word = LayoutWords[static_cast<std::size_t>(choice.layout)];
        auto* picture = new QLabel(page);
        picture->setPixmap(LayoutIcon(choice.layout, palette()).pixmap(LayoutIconWidth, LayoutIconHeight));
        auto* button = new QRadioButton(tr(choice.caption), page);
        button->setObjectName("layout" + QString::fromUtf8(word));
        button->setAccessibleDescription(tr(choice.text));
        auto* text = new QLabel(tr(choice.text), page);
        text->setWordWrap(true);
        text->setIndent(button->style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                        button->style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing));
        m_choices->addButton(button, static_cast<int>(choice.layout));
        button->setChecked(choice.layout == m_draft.report.layout);
        layout->addWidget(picture, row, 0, 2, 1, Qt::AlignTop);
        layout->addWidget(button, row, 1);
        layout->addWidget(text, row + 1, 1, Qt::AlignTop);
        layout->setRowMinimumHeight(row + 2, fontMetrics().height() / 2);
        row += 3;
    }
    layout->setRowStretch(row, 1);
    setFocusProxy(m_choices->button(static_cast<int>(m_draft.report.layout)));
}

bool LayoutPage::validatePage() {
    m_draft.report.layout = static_cast<ReportLayout>(m_choices->checkedId());
    setFocusProxy(m_choices->checkedButton());
    return true;
}

}  // namespace designer
