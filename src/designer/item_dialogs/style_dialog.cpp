// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/style_dialog.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "designer/dialogs/form_row.h"
#include "designer/document/item_size.h"
#include "designer/document/placeholder_text.h"
#include "designer/item_dialogs/style_sample.h"
#include "platform/base/ascii.h"
#include "rdl/api/style_values.h"

namespace designer {
namespace {

constexpr const char* UsualLanguage = "en-US";  // of a report that does not say one
constexpr double SampleNumber = 1234.567;
constexpr rdl::SampleDate SampleDay{2026, 3, 9, 14, 5, 30};

constexpr const char* BorderParts[] = {"style", "width", "colour"};

struct FormatRow {
    const char* format;
    const char* title;
};
constexpr FormatRow Formats[] = {
    {"N0", QT_TR_NOOP("Number")},
    {"N2", QT_TR_NOOP("Number, two decimals")},
    {"#,0;(#,0)", QT_TR_NOOP("Negative in parentheses")},
    {"C0", QT_TR_NOOP("Currency")},
    {"C2", QT_TR_NOOP("Currency, two decimals")},
    {"P0", QT_TR_NOOP("Percent")},
    {"P1", QT_TR_NOOP("Percent, one decimal")},
    {"E2", QT_TR_NOOP("Scientific")},
    {"d", QT_TR_NOOP("Date")},
    {"D", QT_TR_NOOP("Long date")},
    {"yyyy-MM-dd", QT_TR_NOOP("Date, year first")},
    {"MMMM yyyy", QT_TR_NOOP("Month")},
    {"t", QT_TR_NOOP("Time")},
    {"HH:mm:ss", QT_TR_NOOP("Time, 24 hours")},
    {"g", QT_TR_NOOP("Date and time")},
};

Qt::PenStyle PenOf(const std::string& style) {
    constexpr std::pair<std::string_view, Qt::PenStyle> Pens[] = {
        {"None", Qt::NoPen},          {"", Qt::NoPen},
        {"Dotted", Qt::DotLine},      {"Dashed", Qt::DashLine},
        {"DashDot", Qt::DashDotLine}, {"DashDotDot", Qt::DashDotDotLine}};
    const auto* const found = std::find_if(std::begin(Pens), std::end(Pens),
                                           [&](const auto& pen) { return SameAscii(pen.first, style); });
    return found == std::end(Pens) ? Qt::SolidLine : found->second;
}

Qt::Alignment AlignmentOf(const std::string& across, const std::string& down) {
    const Qt::Alignment horizontal = SameAscii(across, "Right")    ? Qt::AlignRight
                                     : SameAscii(across, "Center") ? Qt::AlignHCenter
                                                                   : Qt::AlignLeft;
    return horizontal | (SameAscii(down, "Bottom")   ? Qt::AlignBottom
                         : SameAscii(down, "Middle") ? Qt::AlignVCenter
                                                     : Qt::AlignTop);
}

}  // namespace

QString SampleOfFormat(const std::string& format, const std::string& language) {
    if (format.empty() || IsExpression(format)) {
        return {};
    }
    QStringList samples;
    const std::string number = rdl::FormattedNumber(SampleNumber, format, language);
    const std::string date = rdl::FormattedDate(SampleDay, format, language);
    // A custom format of dates leaves the placeholders of numbers out, and the other way round.
    const bool isOfNumbers = number != rdl::FormattedNumber(SampleNumber, "", language) && number != format;
    const bool isOfDates = date != rdl::FormattedDate(SampleDay, "", language) && date != format;
    if (isOfNumbers && number.find_first_of("0123456789") != std::string::npos) {
        samples += QString::fromStdString(number);
        const QString negative =
            QString::fromStdString(rdl::FormattedNumber(-SampleNumber, format, language));
        samples += negative;
    } else if (isOfDates) {
        samples += QString::fromStdString(date);
    }
    return samples.join(" | ");
}

StyleDialog::StyleDialog(DesignModel& model, const std::vector<ElementId>& ids, QWidget* parent)
    : ValuesDialog(model, ids, tr("Style"), StepName(model, tr("Format"), ids), parent) {
    setObjectName("styleDialog");
    BuildFontPage();
    BuildBorderPage();
    BuildFillPage();
    BuildAlignmentPage();
    BuildFormatPage();
    BuildParagraphPage();
    auto* label = new QLabel(tr("Sample:"), this);
    m_sample = new StyleSample(this);
    BelowPages()->addWidget(label);
    BelowPages()->addWidget(m_sample);
    connect(this, &StyleDialog::Edited, this, &StyleDialog::ShowSample);
    ShowSample();
    // The first page that the items have something on.
    ValueField& first = Field(Values().Find("Font") ? "Font" : "Border style");
    ShowPageOf(first);
    first.setFocus();
}

void StyleDialog::BuildFontPage() {
    QVBoxLayout& page = *AddPage(tr("Font"));
    QFormLayout& form = *AddForm(page);
    AddRow(form, tr("&Font:"), "Font");
    AddRow(form, tr("Si&ze:"), "Font size");
    AddRow(form, tr("&Weight:"), "Font weight");
    AddRow(form, tr("S&lant:"), "Font style");
    AddRow(form, tr("&Decoration:"), "Text decoration");
    AddRow(form, tr("&Colour:"), "Text colour");
    page.addStretch();
}

void StyleDialog::BuildBorderPage() {
    QVBoxLayout& page = *AddPage(tr("Borders"));
    auto* presets = new QHBoxLayout;
    const auto add = [&](const QString& text, const char* name, const char* style) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, style] { SetBorders(style); });
        presets->addWidget(button);
    };
    add(tr("&No Borders"), "noBorders", "None");
    add(tr("&All BorderSides"), "allBorders", "Solid");
    presets->addStretch();
    page.addLayout(presets);
    auto* grid = new QGridLayout;
    const QString titles[] = {tr("Style"), tr("Width"), tr("Colour")};
    for (int part = 0; part < 3; ++part) {
        grid->addWidget(new QLabel(titles[part], this), 0, part + 1);
        grid->setColumnStretch(part + 1, 1);
    }
    const QString labels[] = {tr("All &sides:"), tr("&Left:"), tr("&Right:"), tr("&Top:"), tr("&Bottom:")};
    for (int row = 0; row < 5; ++row) {
        auto* label = new QLabel(labels[row], this);
        grid->addWidget(label, row + 1, 0);
        for (int part = 0; part < 3; ++part) {
            const std::string side = row == 0 ? "Border" : BorderSides[row - 1];
            ValueField* field = AddField(side + " " + BorderParts[part]);
            grid->addWidget(field, row + 1, part + 1);
            if (part == 0) {
                label->setBuddy(&EditedPart(*field));
            }
        }
    }
    page.addLayout(grid);
    auto* help = new QLabel(tr("A side that is empty is like all sides."), this);
    help->setWordWrap(true);
    page.addWidget(help);
    page.addStretch();
}

// The sides become like all of them.
void StyleDialog::SetBorders(const std::string& style) {
    ValueField& all = Field("Border style");
    if (PenOf(style) == Qt::NoPen || PenOf(all.Effective()) == Qt::NoPen) {
        all.SetText(style);
    }
    for (const char* side : BorderSides) {
        for (const char* part : BorderParts) {
            Field(std::string(side) + " " + part).Reset();
        }
    }
}

void StyleDialog::BuildFillPage() {
    QVBoxLayout& page = *AddPage(tr("Fill"));
    QFormLayout& form = *AddForm(page);
    AddRow(form, tr("&Background:"), "Background colour");
    AddRow(form, tr("&Gradient:"), "Gradient");
    AddRow(form, tr("Gradient &end:"), "Gradient end colour");
    AddRow(form, tr("&Picture:"), "Background picture");
    AddRow(form, tr("Picture &source:"), "Background picture source");
    AddRow(form, tr("&Repeat:"), "Background repeat");
    page.addStretch();
}

void StyleDialog::BuildAlignmentPage() {
    QVBoxLayout& page = *AddPage(tr("Alignment"));
    QFormLayout& form = *AddForm(page);
    AddRow(form, tr("&Across:"), "Text alignment");
    AddRow(form, tr("&Down:"), "Vertical alignment");
    AddRow(form, tr("&Left padding:"), "Left padding");
    AddRow(form, tr("&Right padding:"), "Right padding");
    AddRow(form, tr("&Top padding:"), "Top padding");
    AddRow(form, tr("&Bottom padding:"), "Bottom padding");
    AddRow(form, tr("&Writing mode:"), "Writing mode");
    AddRow(form, tr("D&irection:"), "Direction");
    page.addStretch();
}

void StyleDialog::BuildParagraphPage() {
    QVBoxLayout& page = *AddPage(tr("Paragraph"));
    QFormLayout& form = *AddForm(page);
    AddRow(form, tr("&List:"), "List");
    AddRow(form, tr("List le&vel:"), "List level");
    AddRow(form, tr("L&eft indent:"), "Left indent");
    AddRow(form, tr("&Right indent:"), "Right indent");
    AddRow(form, tr("Han&ging indent:"), "Hanging indent");
    AddRow(form, tr("Space &before:"), "Space before");
    AddRow(form, tr("Space &after:"), "Space after");
    AddRow(form, tr("Line &height:"), "Line height");
    page.addStretch();
}

void StyleDialog::BuildFormatPage() {
    QVBoxLayout& page = *AddPage(tr("Number and Date"));
    QFormLayout& form = *AddForm(page);
    AddRow(form, tr("&Format:"), "Format");
    AddRow(form, tr("&Language:"), "Language");
    m_formats = new QTreeWidget(this);
    m_formats->setObjectName("formats");
    m_formats->setAccessibleName(tr("Usual formats"));
    m_formats->setHeaderLabels({tr("Format"), tr("Meaning"), tr("Sample")});
    m_formats->setRootIsDecorated(false);
    m_formats->setUniformRowHeights(true);
    m_formats->setEnabled(Values().Find("Format") != nullptr);
    for (const FormatRow& row : Formats) {
        new QTreeWidgetItem(m_formats, {row.format, tr(row.title), {}});
    }
    FillFormats(Language());
    for (int column = 0; column < 2; ++column) {
        m_formats->resizeColumnToContents(column);
    }
    // The focus alone makes a row current, but does not select it.
    connect(m_formats, &QTreeWidget::itemSelectionChanged, this, [this] {
        for (const QTreeWidgetItem* row : m_formats->selectedItems()) {
            Field("Format").SetText(row->text(0).toStdString());
        }
    });
    page.addWidget(m_formats, 1);
}

void StyleDialog::FillFormats(const std::string& language) {
    m_language = language;
    for (int row = 0; row < m_formats->topLevelItemCount(); ++row) {
        QTreeWidgetItem& one = *m_formats->topLevelItem(row);
        one.setText(2, SampleOfFormat(one.text(0).toStdString(), language));
    }
}

// Returns the language of the items, else that of the report. One that is an expression is not known here.
std::string StyleDialog::Language() const {
    const std::string own = Field("Language").Text();
    const Document& document = Source();
    const std::string language =
        own.empty() ? document.TextAt(document.Root(), "Language").value_or("") : own;
    return language.empty() || IsExpression(language) ? UsualLanguage : language;
}

std::string StyleDialog::OfSide(const std::string& side, const std::string& part) const {
    const std::string own = Field(side + " " + part).Text();
    return own.empty() ? Field("Border " + part).Effective() : own;
}

void StyleDialog::ShowSample() {
    if (Language() != m_language) {
        FillFormats(Language());
    }
    SampleLook look;
    const auto points = [](const std::string& size, double usual) { return PointsOf(size).value_or(usual); };
    look.font.setFamily(QString::fromStdString(Field("Font").Effective()));
    look.font.setPointSizeF(std::clamp(points(Field("Font size").Effective(), 10), 1.0, 72.0));
    const auto isOne = [this](const char* name, std::initializer_list<std::string_view> words) {
        const std::string value = Field(name).Effective();
        return std::any_of(words.begin(), words.end(),
                           [&value](std::string_view word) { return SameAscii(word, value); });
    };
    look.font.setBold(isOne("Font weight", {"SemiBold", "Bold", "ExtraBold", "Heavy", "Bolder"}));
    look.font.setItalic(isOne("Font style", {"Italic"}));
    look.font.setUnderline(isOne("Text decoration", {"Underline"}));
    look.font.setOverline(isOne("Text decoration", {"Overline"}));
    look.font.setStrikeOut(isOne("Text decoration", {"LineThrough"}));
    const QColor text = ColourOf(Field("Text colour").Effective());
    look.colour = text.isValid() ? text : QColor(Qt::black);
    look.fill = ColourOf(Field("Background colour").Effective());
    look.alignment =
        AlignmentOf(Field("Text alignment").Effective(), Field("Vertical alignment").Effective());
    for (std::size_t side = 0; side < look.borders.size(); ++side) {
        const QColor colour = ColourOf(OfSide(BorderSides[side], "colour"));
        const double width = std::min(points(OfSide(BorderSides[side], "width"), 1), 20.0);
        look.borders[side] = {width > 0 ? PenOf(OfSide(BorderSides[side], "style")) : Qt::NoPen,
                              std::max(width, 0.25), colour.isValid() ? colour : QColor(Qt::black)};
    }
    const QString format = SampleOfFormat(Field("Format").Text(), Language());
    look.text = format.isEmpty() ? tr("Sample 123") : format;
    m_sample->Show(look);
}

}  // namespace designer
