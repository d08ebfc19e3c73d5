// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/values_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/form_row.h"
#include "designer/dialogs/note.h"
#include "designer/expressions/expression_check.h"

namespace designer {
namespace {

constexpr int UsualWidth = 75, UsualHeight = 22;  // characters and lines

}  // namespace

ValuesDialog::ValuesDialog(DesignModel& model, std::vector<ElementId> ids, const QString& title,
                           const QString& step, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_values(model, std::move(ids)),
      m_step(step),
      m_pages(new QTabWidget(this)),
      m_below(new QVBoxLayout),
      m_note(new Note(*m_pages, this)) {
    setWindowTitle(title);
    m_pages->setObjectName("pages");
    m_pages->setAccessibleName(title);
    m_note->setObjectName("note");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &ValuesDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ValuesDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages, 1);
    layout->addLayout(m_below);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
}

// Without a size a dialog with texts that wrap would be as low as its first page can be.
void ValuesDialog::setVisible(bool visible) {
    if (visible && !testAttribute(Qt::WA_Resized)) {
        const QSize usual(fontMetrics().averageCharWidth() * UsualWidth,
                          fontMetrics().height() * UsualHeight);
        resize(sizeHint().expandedTo(usual).boundedTo(screen()->availableSize() * 9 / 10));
    }
    QDialog::setVisible(visible);
}

QVBoxLayout* ValuesDialog::AddPage(const QString& title) {
    auto* page = new QWidget(m_pages);
    auto* layout = new QVBoxLayout(page);
    m_pages->addTab(page, title);
    return layout;
}

QFormLayout* ValuesDialog::AddForm(QVBoxLayout& page) {
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    page.addLayout(form);
    return form;
}

ValueField* ValuesDialog::AddField(std::string_view name) {
    auto* field = new ValueField(m_model, m_values, name, this);
    m_fields.push_back(field);
    connect(field, &ValueField::Edited, this, &ValuesDialog::Edited);
    return field;
}

ValueField* ValuesDialog::AddRow(QFormLayout& form, const QString& label, std::string_view name) {
    ValueField* field = AddField(name);
    AddFieldRow(form, label, field);
    return field;
}

ValueField& ValuesDialog::Field(std::string_view name) const {
    return **std::find_if(m_fields.begin(), m_fields.end(),
                          [name](const ValueField* field) { return field->Name() == name; });
}

void ValuesDialog::AddVisibilityPage() {
    QVBoxLayout& page = *AddPage(tr("Visibility"));
    QFormLayout& form = *AddForm(page);
    AddRow(form, tr("&Hidden:"), "Hidden");
    AddRow(form, tr("&Toggled by:"), "Toggled by");
    auto* help = new QLabel(tr("Items are toggled in the viewer and on web pages."), this);
    help->setWordWrap(true);
    page.addWidget(help);
    page.addStretch();
}

// The schemas before 2010 have other properties for the same; what no element has is left out.
void ValuesDialog::AddPageBreakPage() {
    const std::pair<QString, const char*> rows[] = {{tr("Page &break:"), "Page break"},
                                                    {tr("Break bef&ore:"), "Page break before"},
                                                    {tr("Break &after:"), "Page break after"},
                                                    {tr("Break &disabled:"), "Page break disabled"},
                                                    {tr("&Reset page number:"), "Reset page number"},
                                                    {tr("Page &name:"), "Page name"},
                                                    {tr("&Keep together:"), "Keep together"},
                                                    {tr("Repeat &with:"), "Repeat with"}};
    if (std::none_of(std::begin(rows), std::end(rows),
                     [this](const auto& row) { return Values().Find(row.second) != nullptr; })) {
        return;
    }
    QVBoxLayout& page = *AddPage(tr("Page Breaks"));
    QFormLayout& form = *AddForm(page);
    for (const auto& [label, name] : rows) {
        if (Values().Find(name)) {
            AddRow(form, label, name);
        }
    }
    page.addStretch();
}

void ValuesDialog::ShowPageOf(const QWidget& control) {
    for (int page = 0; page < m_pages->count(); ++page) {
        if (m_pages->widget(page)->isAncestorOf(&control)) {
            m_pages->setCurrentIndex(page);
        }
    }
}

void ValuesDialog::Refuse(QWidget& control, const QString& text) {
    ShowPageOf(control);
    m_note->ShowFault(text);
    control.setFocus();
}

void ValuesDialog::accept() {
    for (ValueField* field : m_fields) {
        const std::string fault =
            field->IsChanged() ? m_values.FaultOf(field->Name(), field->Text()) : std::string();
        if (!fault.empty()) {
            Refuse(*field, QString::fromStdString(fault));
            return;
        }
    }
    if (!IsRestValid()) {
        return;
    }
    QString refusal;
    const auto refused =
        connect(&m_model, &DesignModel::Refused, this, [&refusal](const QString& text) { refusal = text; });
    // An expression that the engine does not understand is refused, unless the report has a fault already.
    const bool worked = FaultOfReport(m_model, Source()).empty();
    const bool isDone = m_model.Edit(m_step, [this, worked](Document& document) {
        const std::uint64_t before = document.Revision();
        for (const ValueField* field : m_fields) {
            field->Write(document);
        }
        WriteRest(document);
        const std::string fault =
            worked && document.Revision() != before ? FaultOfReport(m_model, document) : std::string();
        if (!fault.empty()) {
            throw EditError(fault);
        }
    });
    disconnect(refused);
    if (isDone) {
        QDialog::accept();
    } else {
        m_note->ShowFault(refusal);
    }
}

}  // namespace designer
