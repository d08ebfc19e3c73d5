// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/page_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <charconv>
#include <cmath>

#include "designer/dialogs/note.h"
#include "designer/document/item_size.h"
#include "designer/document/report_items.h"
#include "designer/expressions/expression_check.h"
#include "designer/panes/property_rows.h"

namespace designer {
namespace {

constexpr double Near = 0.5;  // points by which a paper may differ

int NumberOf(const std::string& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

}  // namespace

PageDialog::PageDialog(DesignModel& model, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_section(SectionOfSelection(model)),
      m_old(PageSetupOf(model.Source(), m_section)),
      m_paper(new QComboBox(this)),
      m_orientation(new QComboBox(this)) {
    setObjectName("pageDialog");
    setWindowTitle(tr("Page Set-up"));
    m_paper->setObjectName("paper");
    for (const Paper& paper : Papers()) {
        m_paper->addItem(QString::fromUtf8(paper.name));
    }
    m_paper->addItem(tr("Other"));
    m_orientation->setObjectName("orientation");
    m_orientation->addItems({tr("Upright"), tr("Across")});
    auto* form = new QFormLayout;
    if (const std::size_t sections = SectionsOf(model.Source()).size(); sections > 1) {
        setWindowTitle(tr("Page Set-up, section %1").arg(m_section + 1));
        auto* section = new QLabel(tr("%1 of %2").arg(m_section + 1).arg(sections), this);
        section->setObjectName("section");
        form->addRow(tr("Section:"), section);
    }
    form->addRow(tr("&Paper:"), m_paper);
    form->addRow(tr("&Orientation:"), m_orientation);
    AddLine(*form, PageWidth, "width", tr("&Width:"));
    AddLine(*form, PageHeight, "height", tr("&Height:"));
    AddLine(*form, LeftMargin, "left", tr("&Left margin:"));
    AddLine(*form, RightMargin, "right", tr("&Right margin:"));
    AddLine(*form, TopMargin, "top", tr("&Top margin:"));
    AddLine(*form, BottomMargin, "bottom", tr("&Bottom margin:"));
    AddLine(*form, Columns, "columns", tr("&Columns:"));
    AddLine(*form, ColumnSpacing, "spacing", tr("&Space between them:"));
    m_note = new Note(*m_lines[PageWidth], this);
    m_widthNote = new Note(*m_paper, this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &PageDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PageDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_widthNote);
    layout->addWidget(m_note);
    layout->addStretch();
    layout->addWidget(buttons);
    connect(m_paper, &QComboBox::activated, this, &PageDialog::TakePaper);
    connect(m_orientation, &QComboBox::activated, this, &PageDialog::Turn);
    ShowPaper();
    resize(fontMetrics().averageCharWidth() * 60, sizeHint().height());
}

void PageDialog::AddLine(QFormLayout& form, PageValue value, const char* name, const QString& label) {
    auto* line = new QLineEdit(QString::fromStdString(m_old[value]), this);
    line->setObjectName(name);
    m_lines[value] = line;
    form.addRow(label, line);
    connect(line, &QLineEdit::textEdited, this, [this] {
        m_note->Clear();
        ShowPaper();
    });
}

// A number alone has the unit of the report.
PageSetup PageDialog::Typed() const {
    PageSetup setup;
    for (std::size_t value = 0; value < PageValues; ++value) {
        const std::string text = m_lines[value]->text().trimmed().toStdString();
        setup[value] = value == Columns ? text : WithUnit(m_model.Source(), text);
        // A value that did not change stays as it is written in the file.
        setup[value] = text == m_old[value] ? m_old[value] : setup[value];
    }
    return setup;
}

double PageDialog::Points(PageValue value) const {
    return PointsOf(Typed()[value]).value_or(0);
}

void PageDialog::ShowPaper() {
    const double width = Points(PageWidth), height = Points(PageHeight);
    const auto papers = Papers();
    const auto found = std::find_if(papers.begin(), papers.end(), [&](const Paper& paper) {
        return std::abs(paper.width - std::min(width, height)) < Near &&
               std::abs(paper.height - std::max(width, height)) < Near;
    });
    m_paper->setCurrentIndex(static_cast<int>(found - papers.begin()));
    m_orientation->setCurrentIndex(width > height ? 1 : 0);
    ShowBodyWidth();
}

void PageDialog::TakePaper() {
    const auto index = static_cast<std::size_t>(m_paper->currentIndex());
    if (index >= Papers().size()) {
        m_lines[PageWidth]->setFocus();
        return;
    }
    const Paper& paper = Papers()[index];
    const bool isAcross = m_orientation->currentIndex() == 1;
    m_lines[PageWidth]->setText(
        QString::fromStdString(SizeText(isAcross ? paper.height : paper.width, m_old[PageWidth])));
    m_lines[PageHeight]->setText(
        QString::fromStdString(SizeText(isAcross ? paper.width : paper.height, m_old[PageHeight])));
    m_note->Clear();
    ShowBodyWidth();
}

void PageDialog::Turn() {
    if ((Points(PageWidth) > Points(PageHeight)) != (m_orientation->currentIndex() == 1)) {
        const QString width = m_lines[PageWidth]->text();
        m_lines[PageWidth]->setText(m_lines[PageHeight]->text());
        m_lines[PageHeight]->setText(width);
    }
    ShowBodyWidth();
}

// A body that is wider than its column runs on to further pages.
void PageDialog::ShowBodyWidth() {
    const double widest = WidestBodyOf(Typed());
    double body = 0;
    for (const ReportBand& band : m_model.Items().bands) {
        const bool isOwn = band.kind == BandKind::Body && band.section == m_section;
        body = std::max(body, isOwn ? band.width : 0.0);
    }
    const auto size = [&](double points) {
        return QString::fromStdString(SizeText(points, m_old[PageWidth]));
    };
    if (widest > 0 && body > widest + Near) {
        m_widthNote->ShowFault(
            tr("The body is %1 wide, and a page has room for %2: it takes further pages at its right")
                .arg(size(body), size(widest)));
    } else {
        m_widthNote->ShowText(widest > 0 ? tr("Room for a body of %1").arg(size(widest)) : QString());
    }
}

bool PageDialog::Complain(PageValue value, const QString& text) {
    m_note->ShowFault(text);
    m_lines[value]->setFocus();
    m_lines[value]->selectAll();
    return false;
}

bool PageDialog::IsComplete() {
    const PageSetup setup = Typed();
    for (std::size_t value = 0; value < PageValues; ++value) {
        const auto at = static_cast<PageValue>(value);
        const QString text = m_lines[value]->text();
        if (setup[value] == m_old[value]) {
            continue;
        }
        if (at == Columns) {
            if (NumberOf(setup[value]) < 1 || NumberOf(setup[value]) > MostPageColumns) {
                return Complain(at,
                                tr("\"%1\" is no number of columns: 1 to %2").arg(text).arg(MostPageColumns));
            }
        } else if (!PointsOf(setup[value])) {
            return Complain(at, tr("\"%1\" is no size: a number with in, cm, mm, pt or pc").arg(text));
        } else if (Points(at) < 0 || (Points(at) == 0 && (at == PageWidth || at == PageHeight))) {
            return Complain(at, tr("%1 is too small").arg(text));
        } else if (Points(at) > rdl::MaxSize) {
            return Complain(at, tr("%1 is too large: the most is 455in").arg(text));
        }
    }
    if (setup == m_old) {
        return true;
    }
    if (Points(LeftMargin) + Points(RightMargin) >= Points(PageWidth) - Near) {
        return Complain(LeftMargin, tr("The margins leave nothing of the width"));
    }
    if (Points(TopMargin) + Points(BottomMargin) >= Points(PageHeight) - Near) {
        return Complain(TopMargin, tr("The margins leave nothing of the height"));
    }
    return true;
}

void PageDialog::accept() {
    if (!IsComplete()) {
        return;
    }
    const auto write = [section = m_section, setup = Typed()](Document& document) {
        PutPageSetup(document, section, setup);
    };
    const std::string fault = Typed() == m_old ? std::string() : FaultOfEdit(m_model, write);
    if (!fault.empty()) {
        m_note->ShowError(QString::fromStdString(fault));
    } else if (m_model.Edit(tr("Set Up Page"), write)) {
        QDialog::accept();
    }
}

}  // namespace designer
