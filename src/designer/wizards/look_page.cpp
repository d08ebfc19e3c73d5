// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/look_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>

#include "designer/dialogs/note.h"
#include "designer/new_report/themes.h"
#include "designer/wizards/report_picture.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

constexpr int PicturePause = 200;  // milliseconds after the last change

// A band in the colours of the theme's chart.
QIcon IconOf(const Theme& theme, int height) {
    const int width = static_cast<int>(theme.palette.size()) * height * 2 / 3;
    QPixmap picture(width, height);
    QPainter painter(&picture);
    int left = 0;
    for (const std::string_view colour : theme.palette) {
        painter.fillRect(left, 0, height, height, QColor(QString::fromUtf8(colour)));
        left += height * 2 / 3;
    }
    return picture;
}

}  // namespace

LookPage::LookPage(ReportDraft& draft) : m_draft(draft) {
    setObjectName("lookPage");
    setTitle(tr("Look"));
    setSubTitle(tr("The picture has the first rows of the query."));
    auto* layout = new QHBoxLayout(this);
    auto* left = new QWidget(this);
    m_form = new QFormLayout(left);
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    BuildForm();
    m_picture = new ReportPicture(this);
    layout->addWidget(left, 2);
    layout->addWidget(m_picture, 3);
    m_pause.setSingleShot(true);
    m_pause.setInterval(PicturePause);
    connect(&m_pause, &QTimer::timeout, this, &LookPage::ShowPicture);
    setFocusProxy(m_title);
}

void LookPage::BuildForm() {
    const auto later = [this] { m_pause.start(); };
    m_title = new QLineEdit(this);
    m_title->setObjectName("title");
    m_form->addRow(tr("&Title:"), m_title);
    m_titleNote = new Note(*m_title, this);
    m_form->addRow(m_titleNote);
    connect(m_title, &QLineEdit::textEdited, this, [this] {
        m_hasOwnTitle = true;
        m_titleNote->Clear();
    });
    connect(m_title, &QLineEdit::textChanged, this, later);
    m_chart = new QComboBox(this);
    m_chart->setObjectName("chart");
    m_chart->addItems({tr("No chart"), tr("Columns"), tr("Bars"), tr("Line"), tr("Pie")});
    m_form->addRow(tr("&Chart above the table:"), m_chart);
    connect(m_chart, &QComboBox::currentIndexChanged, this, later);
    m_themes = new QListWidget(this);
    m_themes->setObjectName("themes");
    m_themes->setAccessibleName(tr("Theme"));
    FillThemes();
    m_form->addRow(tr("The&me:"), m_themes);
    connect(m_themes, &QListWidget::currentRowChanged, this, later);
    m_paper = new QComboBox(this);
    m_paper->setObjectName("paper");
    m_paper->addItems({tr("A4"), tr("Letter")});
    m_paper->setCurrentIndex(static_cast<int>(m_draft.report.paper));
    m_form->addRow(tr("&Paper:"), m_paper);
    connect(m_paper, &QComboBox::currentIndexChanged, this, later);
    m_landscape = new QCheckBox(tr("&Landscape"), this);
    m_landscape->setObjectName("landscape");
    m_form->addRow(m_landscape);
    connect(m_landscape, &QCheckBox::toggled, this, later);
    m_note = new Note(*m_themes, this);
    m_form->addRow(m_note);
}

void LookPage::FillThemes() {
    const int height = fontMetrics().height();
    m_themes->setIconSize({height * 4, height});
    for (const Theme& theme : Themes) {
        m_themes->addItem(new QListWidgetItem(IconOf(theme, height), QString::fromUtf8(theme.title)));
    }
    m_themes->setCurrentRow(0);
    const int rows = static_cast<int>(Themes.size());
    m_themes->setFixedHeight(m_themes->sizeHintForRow(0) * rows + 2 * m_themes->frameWidth());
}

void LookPage::initializePage() {
    const ReportLayout layout = m_draft.report.layout;
    const bool hasChart = layout != ReportLayout::Labels && layout != ReportLayout::Letter;
    m_form->setRowVisible(m_chart, hasChart);
    m_form->setRowVisible(m_landscape, layout != ReportLayout::Labels);
    if (!m_hasOwnTitle) {
        const std::string& subject = m_draft.subject;
        m_title->setText(subject.empty() ? tr("New report") : QString::fromStdString(CaptionOf(subject)));
        m_title->selectAll();
    }
    m_titleNote->Clear();
    ShowPicture();
}

void LookPage::Take() {
    NewReport& report = m_draft.report;
    const bool isLabels = report.layout == ReportLayout::Labels;
    report.title = m_title->text().trimmed().toStdString();
    report.chart = isLabels || report.layout == ReportLayout::Letter
                       ? ReportChart::None
                       : static_cast<ReportChart>(m_chart->currentIndex());
    report.theme = Themes[static_cast<std::size_t>(std::max(0, m_themes->currentRow()))].name;
    report.paper = static_cast<ReportPaper>(m_paper->currentIndex());
    report.landscape = m_landscape->isChecked() && !isLabels;
}

void LookPage::ShowPicture() {
    m_pause.stop();
    Take();
    if (m_picture->ShowReport(m_draft)) {
        m_note->Clear();
    }
}

bool LookPage::validatePage() {
    ShowPicture();
    if (m_draft.report.title.empty()) {
        m_titleNote->ShowError(tr("Give the report a title"));
        return false;
    }
    if (!m_picture->HasPage()) {
        m_note->ShowError(m_picture->Failure());
        return false;
    }
    return true;
}

}  // namespace designer
